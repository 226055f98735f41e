#pragma once

#include <QStringList>

#include "setup/tree.h"

namespace setup {

/// Everything that is wrong with a tree, a sentence each; empty when all is well. Changes nothing.
QStringList CheckTree(const Tree& tree);

}  // namespace setup
