#include "desktop/document_opener.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace desktop {

bool DesktopOpener::Open(const QString& path) {
    // Some desktops take any path and tell nothing when there is no such document.
    return QFileInfo::exists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace desktop
