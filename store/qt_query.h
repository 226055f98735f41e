#pragma once

#include <QSqlError>
#include <QSqlQuery>
#include <memory>

#include "store/connection.h"

// What every engine that is reached through Qt needs.
namespace store {

/// A connection name that no other connection of this process has.
QString NewConnectionName();

/// The fault of an engine's error: its number, and its own words where it has some.
Fault FaultOf(const QSqlError& error);

/// False, with `fault`, for an empty statement and one with a zero character.
bool CanBeSent(const QString& sql, Fault& fault);

/// Starts one statement of the engine's own SQL on a new query. Returns false on a fault and fills `fault`.
bool StartQuery(QSqlQuery& query, const QString& sql, Fault& fault);

/// Reads the result of a query that was started, whole or its first `mostRows` rows, and finishes it; without the
/// columns that a server keeps for its searches (FoldedColumn). A result that is left half read would keep its read
/// lock and make other processes' saves fail. Returns null on a fault and fills `fault`.
std::unique_ptr<Recordset> ReadRows(QSqlQuery& query, int mostRows, Fault& fault);

}  // namespace store
