#pragma once

#include "store/postgres_link.h"

namespace store {

/// Opens a database of a PostgreSQL server. A link that breaks is opened again by the next statement; the one that met
/// the break is a fault. A statement waits `patience` milliseconds for another's lock. Returns null on a fault and
/// fills `fault`.
std::unique_ptr<Connection> OpenPostgresConnection(const PostgresLogin& login, Fault& fault, int patience);

}  // namespace store
