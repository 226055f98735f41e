#pragma once

#include <QByteArray>
#include <functional>
#include <optional>

#include "session/schema.h"
#include "store/connection.h"

// Whole tables in the order of their keys, in the one kind of SQL that every engine takes.
namespace setup {

/// The columns that a table really has; empty with words in `problem` when it can't be read.
QStringList ColumnsOf(store::Connection& connection, const session::Table& table, QString& problem);

/// The values of the key columns of one row.
using Key = QStringList;

/// Walks through a table piece by piece.
class TableReader {
  public:
    /// `columns` are what is read of it; the table must have a key. `after` is the key behind which it begins.
    TableReader(store::Connection& connection, const session::Table& table, QStringList columns,
                std::optional<Key> after = {});

    /// The next rows; empty at the end and on a fault, which `Problem` then tells.
    std::vector<store::Recordset::Row> Next();
    const QString& Problem() const { return problem_; }

  private:
    store::Connection& connection_;
    const session::Table& table_;
    QStringList columns_;
    std::optional<Key> after_;
    QString problem_;
};

/// The last key of a table; nothing when it is empty, or on a fault with words in `problem`.
std::optional<Key> LastKey(store::Connection& connection, const session::Table& table, QString& problem);

/// How many rows a table has and what stands in them: two tables with the same digest hold the same.
struct Digest {
    qint64 rows = 0;
    QByteArray hash;
    bool operator==(const Digest&) const = default;
};

/// Told how many rows were read; it may take its time.
using RowsRead = std::function<void(qint64 rows)>;

/// Reads all of the columns of a table. Nothing on a fault, with words in `problem`. An empty number counts as none at
/// all: there are engines that can't keep it.
std::optional<Digest> DigestOf(store::Connection& connection, const session::Table& table, const QStringList& columns,
                               QString& problem, const RowsRead& progress = {});

/// The start of an INSERT up to its VALUES, and one row of it; Null stays Null.
QString InsertHead(const QString& table, const QStringList& columns);
QString InsertRow(const session::Table& table, const QStringList& columns, const store::Recordset::Row& row);

}  // namespace setup
