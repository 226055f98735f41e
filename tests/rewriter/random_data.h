#pragma once

#include "tests/rewriter/dice.h"
#include "tests/rewriter/plain_evaluator.h"

namespace plain {

/// The table and its columns as a statement writes them; the names of columns with numbers are listed again.
struct TableShape {
    QString name;
    QStringList columns;
    QStringList integers = {};

    /// Without keys: every column of every row may be Null, and rows may stand twice.
    QString CreateStatement() const;
};

/// Four tables for made-up statements.
const std::vector<TableShape>& MadeUpTables();

/// A value that columns of that name hold, also the only values that are worth looking for in them.
QString ValueFor(const QString& column, Dice& dice);

/// Up to eight rows for each table; about a third of all values are Null.
Data RandomData(const std::vector<TableShape>& tables, Dice& dice);

/// One INSERT of all rows; nothing for an empty table.
std::optional<QString> InsertStatement(const TableShape& shape, const Table& table);

}  // namespace plain
