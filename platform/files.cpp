#include "platform/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

bool MakeFolder(const QString& path) {
    return QDir().mkdir(NativePath(path));
}

bool CopyFile(const QString& from, const QString& to) {
    return QFile::copy(NativePath(from), NativePath(to));
}

}  // namespace platform
