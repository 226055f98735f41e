#pragma once

#include <QString>
#include <QStringList>

#include "platform/file_copy.h"
#include "setup/tree.h"

namespace setup {

/// The files of a tree that hold a company: its stores, its PIN key and its documents.
struct TreeFiles {
    QStringList stores;  ///< paths below the root: the main store, the environment store, those of users with their own
    QString documents;   ///< absolute path of the document folder; empty without one
    bool documentsInside = false;  ///< it lies in the tree
    QString problem;               ///< why the stores can't be named, in words; empty on success
};

/// Finds them by what the tree's own tables name. A main store on a server, or outside the tree, is a problem.
TreeFiles FindTreeFiles(const Tree& tree);

/// Path of the file that a tree's environment store names as its main store; empty when it names none.
QString MainStoreFile(const Tree& tree, store::Connection& config);

/// Path of the document folder that a main store names, from the root of the tree; empty without one.
QString DocumentFolderOf(const Tree& tree, store::Connection& main);

/// True when the absolute path lies below the root.
bool LiesInTree(const Tree& tree, const QString& path);

/// Copies every entry of a folder of documents that `to` lacks; `to` is made. What is being copied there by a client,
/// or goes while it is copied, is passed over. Gives the words of what went wrong; empty on success.
QString CopyMissingDocuments(const QString& from, const QString& to);

/// Copies a PIN key in place of one that is there; only its owner can read it. False on a fault.
bool CopyPinKey(const QString& from, const QString& to);

/// Words for a fault of a file operation.
QString FileFaultWords(platform::FileFault fault);

}  // namespace setup
