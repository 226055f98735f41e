#include "platform/files.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>

namespace platform {

QString NativePath(const QString& path) {
    QString native = path;
    native.replace(u'\\', u'/');
    return QDir::toNativeSeparators(native);
}

bool FileExists(const QString& path) {
    return QFileInfo(NativePath(path)).isFile();
}

bool FolderExists(const QString& path) {
    return QFileInfo(NativePath(path)).isDir();
}

std::error_code MakeFolder(const QString& path) {
    std::error_code fault;
    std::filesystem::create_directory(NativePath(path).toStdString(), fault);
    return fault;
}

std::optional<FileIdentity> IdentityOf(const QString& path) {
    struct stat found {};
    if (stat(QFile::encodeName(path).constData(), &found) != 0) return std::nullopt;
    return FileIdentity{found.st_dev, found.st_ino};
}

bool CopyFile(const QString& from, const QString& to) {
    return QFile::copy(NativePath(from), NativePath(to));
}

}  // namespace platform
