#pragma once

#include "store/connection.h"
#include "store/connection_string.h"

namespace store {

/// Opens the store behind the data source or driver that the provider "ODBC:name" names. A name in braces is a
/// driver's, any other one a data source's or, when there is none of that name, a driver's. The driver is asked which
/// engine it leads to, and the statements are written for that one; an engine whose SQL the program can't write is a
/// failed open, and so is a driver that doesn't carry Japanese. What LIKE takes for equal is the engine's own rule.
/// When the connection breaks, the statement at hand is a fault and the next one opens it again. A statement waits
/// `patience` milliseconds for a lock where the engine can be told so.
/// Returns null on a fault and fills `fault`.
std::unique_ptr<Connection> OpenOdbcConnection(const ConnectionString& parts, const QString& installRoot, Fault& fault,
                                               int patience);

}  // namespace store
