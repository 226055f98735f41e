#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <system_error>

// File system operations on paths of either separator. Each result is true when it was done; nothing is thrown.
namespace platform {

/// The path with the platform's own separator throughout.
QString NativePath(const QString& path);

bool FileExists(const QString& path);
bool FolderExists(const QString& path);
/// Makes one folder; its parent must be there. The result tells by number and words why it couldn't be made.
std::error_code MakeFolder(const QString& path);
/// Tells one file from another, whatever name it bears: two looks at a path that differ saw two files. Cheap.
struct FileIdentity {
    std::uint64_t device = 0, number = 0;
    bool operator==(const FileIdentity&) const = default;
};
/// Nothing when there is no such file, or it can't be reached.
std::optional<FileIdentity> IdentityOf(const QString& path);

/// Copies a file; one that is there already stays and fails the copy.
bool CopyFile(const QString& from, const QString& to);

}  // namespace platform
