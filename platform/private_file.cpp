#include "platform/private_file.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace platform {

namespace {

constexpr QFile::Permissions kOwner = QFile::ReadOwner | QFile::WriteOwner;

bool MakePrivateFolder(const QString& folder) {
    if (QFileInfo(folder).isDir()) return true;
    return QDir().mkpath(folder) && QFile::setPermissions(folder, kOwner | QFile::ExeOwner);
}

/// A file that was renamed into its place is there after a power cut only when the folder is on the disk as well.
void SyncFolder([[maybe_unused]] const QString& folder) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
#endif
}

}  // namespace

bool WritePrivately(const QString& path, const QByteArray& content) {
    const QString folder = QFileInfo(path).absolutePath();
    if (!MakePrivateFolder(folder)) return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !file.setPermissions(kOwner)) return false;
    // The commit brings the content to the disk before it gives it the name.
    if (file.write(content) != content.size() || !file.commit()) return false;
    SyncFolder(folder);
    return true;
}

}  // namespace platform
