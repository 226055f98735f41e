#pragma once

#include <QSqlQuery>
#include <QStringList>
#include <QVariantList>
#include <memory>
#include <vector>

#include "store/connection.h"

namespace store {

class SqliteFile;

/// Columns with their texts.
using FixedTexts = QList<std::pair<QString, QString>>;

/// The prepared INSERT of one table with a fixed list of columns.
class BulkTable {
  public:
    /// Adds a row: one value a column, in the order of the list; an invalid QVariant is Null.
    /// Returns false on a fault (a wrong count among them) and fills `fault`; the row is not there then.
    bool Append(const QVariantList& row, Fault& fault);

    /// The same for a row of texts; here even a null QString is the empty text.
    bool Append(const QStringList& row, Fault& fault);

  private:
    friend class BulkWriter;
    BulkTable(QSqlQuery query, qsizetype width);
    bool Insert(Fault& fault);
    bool WidthFits(qsizetype given, Fault& fault) const;

    QSqlQuery query_;
    qsizetype width_;
};

/// Fills a store file with very many rows. For set-up programs, with nobody else on the file: for speed it does without
/// the safety against a power cut, so a run that was cut short leaves a file to be thrown away.
class BulkWriter {
  public:
    /// Opens an existing store file at an absolute path. Returns null on a fault and fills `fault`.
    static std::unique_ptr<BulkWriter> Open(const QString& path, Fault& fault);
    ~BulkWriter();

    /// Runs one statement of the engine's own SQL, such as CREATE TABLE, CREATE INDEX or ANALYZE.
    bool Run(const QString& sql, Fault& fault);

    /// Starts a transaction: rows outside of one are slow. What was not committed at the end is undone.
    bool Begin(Fault& fault);

    /// Ends the transaction.
    bool Commit(Fault& fault);

    /// Prepares the INSERT of a table; several may be in use side by side. The object lives as long as the writer.
    /// `fixed` names further columns that hold the same text in every row: those cost next to nothing, while a value of
    /// a row costs half a microsecond. Returns null on a fault (an unknown table or column) and fills `fault`.
    BulkTable* Table(const QString& table, const QStringList& columns, Fault& fault, const FixedTexts& fixed = {});

  private:
    explicit BulkWriter(std::unique_ptr<SqliteFile> file);

    std::unique_ptr<SqliteFile> file_;
    std::vector<std::unique_ptr<BulkTable>> tables_;
};

}  // namespace store
