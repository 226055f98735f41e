#pragma once

#include "store/connection.h"

namespace store {

/// Opens the SQLite file at an absolute path. Never creates, changes or locks it for longer than one look: a missing or
/// empty file, something other than a file, and a file that is no store are faults that name the path. A file that is
/// replaced or removed later is noticed by the next statement: it is opened anew, or the statement fails as that does.
/// `patience` as for OpenConnection. Returns null on a fault and fills `fault`.
std::unique_ptr<Connection> OpenSqliteConnection(const QString& path, Fault& fault, int patience = kPatience);

}  // namespace store
