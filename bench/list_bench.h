#pragma once

#include <QTextStream>
#include <functional>

#include "bench/list_cases.h"

namespace bench {

/// Does what a press of the search button does, up to the filled list, and gives the number of rows. Empty where there
/// is no window; its column is then left out.
using Fill = std::function<int(const ListCase&)>;

/// Times the searches of the party lists on a main store: the bare engine, the program's store::Connection, and `fill`.
/// Then LIKE itself, and what the indexes cost. Prints tables to `out`; false with words there when the store can't be
/// read or two ways found different numbers of rows.
bool RunListBench(const QString& mainStore, const Fill& fill, QTextStream& out);

}  // namespace bench
