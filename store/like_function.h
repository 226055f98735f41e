#pragma once

#include <QSqlDatabase>

#include "store/connection.h"

struct sqlite3;

namespace store {

/// Makes LIKE and NOT LIKE of an open SQLite connection find a text however it is written (store/kana_fold.h); Null on
/// either side gives Null as before. Returns false on a fault and fills `fault`.
bool InstallLike(const QSqlDatabase& database, Fault& fault);

/// The same for a connection of the engine's own interface. Returns the engine's code, 0 for success.
int RegisterLike(sqlite3* engine);

}  // namespace store
