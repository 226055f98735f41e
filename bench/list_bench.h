#pragma once

#include "bench/search_times.h"

namespace bench {

/// Times the searches of the party lists on a main store: the bare engine, the program's store::Connection, and `fill`.
/// Then LIKE itself, and what the indexes cost. Prints tables to `out`; false with words there when the store can't be
/// read or two ways found different numbers of rows.
bool RunListBench(const QString& mainStore, const Fill& fill, QTextStream& out);

}  // namespace bench
