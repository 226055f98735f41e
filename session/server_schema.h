#pragma once

#include "session/schema.h"

// The tables of the main database as a PostgreSQL server holds them, in its own SQL.
namespace session {

/// The table, with its key. Columns of the key refuse Null; all others take it.
QStringList ServerTableStatements(const Table& table);

/// Its further indexes: the orders in which lists show it, and one that finds a piece of a text however it is written.
QStringList ServerIndexStatements(const Table& table);

/// What the client's role must be allowed to do with the table: read it, and write it where its own statements do.
QStringList ClientRights(const Table& table);

/// Gives a role these rights.
QStringList ServerRightsStatements(const Table& table, const QString& role);

}  // namespace session
