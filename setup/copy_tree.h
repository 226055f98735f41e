#pragma once

#include "setup/demo_company.h"
#include "setup/tree.h"

namespace setup {

/// What `CopyTree` carries, and where to.
struct CopyOrder {
    Tree from, to;
    std::optional<ServerAdmin> admin;  ///< of the target's server
    Progress progress = [](const QString&, qint64, qint64) {};
};

/// Carries a company into a tree that was made empty, whatever engines hold the two: every table of the main store, the
/// environment and menu rows (but not where the main store is), the PIN key, and the documents that lie in the tree.
/// At the end both stores are read whole and compared, table by table; a table that differs is carried once more. An
/// interrupted copy goes on where it was when it is run again; until it is complete the target holds
/// "conf/copy.unfinished". Run histories and messages between programs stay where they are.
/// Gives the words of what went wrong; empty on success.
QString CopyTree(const CopyOrder& order);

/// The file that marks a tree whose company isn't complete.
QString UnfinishedCopy(const Tree& tree);

}  // namespace setup
