#pragma once

#include "setup/tree.h"

namespace setup {

/// Puts the program file `standIn` (katsudo-sibling) into the tree's program folder under the name of every program
/// that the client starts, in place of what stands there. Gives the words of what went wrong; empty on success.
QString InstallStandIns(const Tree& tree, const QString& standIn);

}  // namespace setup
