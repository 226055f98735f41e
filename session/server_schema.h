#pragma once

#include "session/schema.h"

// The tables of the main database as a PostgreSQL server holds them, in its own SQL.
namespace session {

/// Columns of which the table holds a folded copy beside them (store::FoldedColumn), which the engine keeps up to date
/// by itself: a search then compares without folding. A party's have one that gathers what its contacts have
/// (store::GatheredColumn). The copies and this one are in no description of the table.
QStringList FoldedColumns(const Table& table);

/// The table, with its key. Columns of the key refuse Null; all others take it.
QStringList ServerTableStatements(const Table& table);

/// What makes it fold a table's texts anew, behind a change of katsudo_fold.
QStringList ServerRefoldStatements(const Table& table);

/// What makes the engine gather its contacts' texts for a party, once both tables are filled; outside of a transaction.
/// It may be run again.
QStringList ServerGatherStatements(const Table& table);

/// What makes it stop until then, so that many rows are written quickly.
QStringList ServerStopGatherStatements(const Table& table);

/// Its further indexes: the orders in which lists show it, those of a searched column with all that the search looks at
/// ("…_walk1"), and one that finds a piece of a text however it is written.
QStringList ServerIndexStatements(const Table& table);

/// What has the engine know the filled and indexed tables. Outside of a transaction.
QStringList ServerStatisticsStatements();

/// What the client's role must be allowed to do with the table: read it, and write it where its own statements do.
QStringList ClientRights(const Table& table);

/// Gives a role these rights.
QStringList ServerRightsStatements(const Table& table, const QString& role);

}  // namespace session
