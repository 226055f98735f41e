#pragma once

#include "store/postgres_link.h"

namespace store {

/// Opens a database of a PostgreSQL server. A link that breaks is opened again by the next statement; the one that met
/// the break is a fault. A statement waits `patience` milliseconds for another's lock. Returns null on a fault and
/// fills `fault`.
std::unique_ptr<Connection> OpenPostgresConnection(const PostgresLogin& login, Fault& fault, int patience);

/// Statements that a client's connection begins with: it waits `patience` milliseconds for another's lock, a minute for
/// a statement altogether, and finds texts by their index.
QString PostgresClientSettings(int patience);

}  // namespace store
