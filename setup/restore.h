#pragma once

#include "setup/tree.h"

namespace setup {

/// What became of a restore.
struct Restored {
    QString problem;   ///< what went wrong, in words; empty on success
    QStringList kept;  ///< what was replaced, under the names that it has now
};

/// Puts a backup that is found to be whole in place of the stores, the PIN key and the documents of a tree; a tree that
/// isn't there is made. What is replaced stays beside, under its name and ".replaced-" with the time. Clients may run:
/// each store changes in one step, their last saves are in what is kept, and their next statement finds the restored
/// rows. A document folder outside the tree may serve others too: it gets back what it lacks, and nothing there is
/// replaced. A restore that was interrupted can be run again.
Restored RestoreTree(const Tree& tree, const QString& backupFolder);

}  // namespace setup
