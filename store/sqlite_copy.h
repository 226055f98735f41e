#pragma once

#include <QString>
#include <functional>

#include "store/connection.h"

namespace store {

/// Told from time to time how many pages of a store are copied, of how many.
using PageProgress = std::function<void(qint64 done, qint64 total)>;

/// Copies the whole store at `from` as it stands at one moment into a new file at `to`, while others read and write it:
/// each of their saves is in the copy whole or not at all. They are let in between pieces; what they change begins the
/// copy anew, and a store that can be copied within seconds then makes them wait for these. Paths are absolute.
/// Returns false on a fault and fills `fault`; nothing is left at `to` then. A file that is there already, a store that
/// stays locked for `patience` milliseconds and one that never rests long enough are faults.
bool CopySqliteStore(const QString& from, const QString& to, Fault& fault, const PageProgress& progress = {},
                     int patience = kPatience);

/// Puts the content of the store at `from` in place of that of the store at `to`, which others may have open: they find
/// it at their next statement, and an interruption leaves what was there. Its earlier content is kept in a new file at
/// `keep`: exactly the last that anybody saved. Returns false on a fault and fills `fault`; the store at `to` is
/// unchanged then and nothing is left at `keep`. When the fault is that the file at `to` holds no store at all,
/// `IsNoStore` knows it.
bool ReplaceSqliteStore(const QString& from, const QString& to, const QString& keep, Fault& fault,
                        int patience = kPatience);

/// True for the fault of a file that the engine can't take for a store, or whose first page it can't read.
bool IsNoStore(const Fault& fault);

/// Looks at every page, index and row of a store. Returns false with the first damage in `fault`.
bool CheckSqliteStore(const QString& path, Fault& fault);

}  // namespace store
