#pragma once

#include "bench/search_times.h"
#include "setup/tree.h"

namespace bench {

/// Times the searches of the party lists where the main store is on a server: the bare statement by a link of its own,
/// the program's store::Connection, and `fill`. Prints a table to `out`; false with words there when the store can't be
/// read or two ways found different numbers of rows. The tree's own login is used for all.
bool RunServerLists(const setup::Tree& tree, const Fill& fill, QTextStream& out);

}  // namespace bench
