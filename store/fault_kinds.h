#pragma once

#include "store/connection.h"

// What the engines' own codes say about a fault.
namespace store {

/// By SQLite's result code, extended where it is known; `words` are the engine's, which alone tell a taken key from
/// another broken rule where a driver cut the code down.
FaultKind KindOfSqlite(int code, const QString& words);

/// True for the result code of a read or write that the system refused, which doesn't say why.
bool IsSqliteIoFault(int code);

/// By the five characters of an SQLSTATE; Other for none.
FaultKind KindOfSqlState(const QString& state);

}  // namespace store
