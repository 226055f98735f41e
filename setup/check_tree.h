#pragma once

#include <QStringList>

#include "setup/tree.h"

namespace setup {

/// What a look at a tree finds, a sentence each.
struct TreeReport {
    QStringList wrong;       ///< the client can't work so
    QStringList unfinished;  ///< the client starts, but a slot can't be registered until these rows are entered
    QStringList stranded;    ///< nothing works less for it, but somebody may want to look at it
};

/// Looks at folders, stores, tables and rows. Changes nothing.
TreeReport CheckTree(const Tree& tree);

}  // namespace setup
