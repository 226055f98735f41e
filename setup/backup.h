#pragma once

#include <map>
#include <vector>

#include "setup/tree.h"
#include "setup/tree_files.h"

namespace setup {

/// Copies the stores of a tree, its PIN key and its documents into a new folder, while clients run. Each store is there
/// as it was at one moment and was looked through; "backup.json" tells of every file its size and SHA-256, and of a
/// store how many rows each table has. The folder gets its name when all is there and on the disk. `folder` must not
/// exist or be empty. Gives the words of what went wrong, and leaves nothing then; empty on success.
QString BackupTree(const Tree& tree, const QString& folder);

/// One file of a backup.
struct BackupFile {
    QString name;  ///< below the backup's folder, as below the root of the tree
    qint64 bytes = 0;
    QString sha256;
    std::map<QString, qint64> rows;  ///< of a store, by table; empty for another file
};

/// A backup that was found to be whole.
struct Backup {
    std::vector<BackupFile> files;
    QString problem;  ///< what is wrong with it, in words; empty for nothing
};

/// Reads what a backup says of itself, and holds every file of it to that: size, SHA-256, and of a store each page and
/// the number of rows.
Backup ReadBackup(const QString& folder);

}  // namespace setup
