#include "hostsetup/documents.h"

#include "items/full_width.h"
#include "platform/files.h"

namespace hostsetup {

bool OpenDocument(platform::DocumentOpener& opener, const QString& path) {
    return opener.Open(platform::NativePath(path));
}

bool OpenManual(platform::DocumentOpener& opener, const session::SessionContext& context) {
    return OpenDocument(opener, context.ManualFolder + "/" + items::ToFullWidth(session::kProgramId) + ".doc");
}

}  // namespace hostsetup
