#pragma once

#include "platform/document_opener.h"
#include "session/session_context.h"

namespace hostsetup {

/// Opens a document, or a folder, with the program that the desktop has for it. False when it can't be opened.
bool OpenDocument(platform::DocumentOpener& opener, const QString& path);

/// Opens the program's manual in the manual folder of the installation. False when it isn't there or can't be opened.
bool OpenManual(platform::DocumentOpener& opener, const session::SessionContext& context);

}  // namespace hostsetup
