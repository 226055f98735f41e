#include "desktop/document_opener.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace desktop {

bool DesktopOpener::Open(const QString& path) {
    const QFileInfo document(path);
    // Some desktops take any path and tell nothing when there is no such document.
    if (!document.exists()) return false;
    const QUrl address = QUrl::fromLocalFile(document.absoluteFilePath());
    // The program that is started begins where this one stands.
    const QString here = QDir::currentPath();
    QDir::setCurrent(document.absolutePath());
    const bool opened = QDesktopServices::openUrl(address);
    QDir::setCurrent(here);
    return opened;
}

}  // namespace desktop
