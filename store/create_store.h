#pragma once

#include <QString>

#include "store/connection.h"

namespace store {

/// Makes a new store without tables at an absolute path, with the rollback journal (several machines may share the
/// file). For set-up only: the client never creates a store. An existing file of that name is a fault and stays as it
/// is. Returns false on a fault and fills `fault`.
bool CreateSqliteStore(const QString& path, Fault& fault);

}  // namespace store
