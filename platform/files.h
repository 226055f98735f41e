#pragma once

#include <QString>
#include <system_error>

// File system operations on paths of either separator. Each result is true when it was done; nothing is thrown.
namespace platform {

/// The path with the platform's own separator throughout.
QString NativePath(const QString& path);

bool FileExists(const QString& path);
bool FolderExists(const QString& path);
/// Makes one folder; its parent must be there. The result tells by number and words why it couldn't be made.
std::error_code MakeFolder(const QString& path);
/// Copies a file; one that is there already stays and fails the copy.
bool CopyFile(const QString& from, const QString& to);

}  // namespace platform
