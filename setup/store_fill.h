#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>

#include "session/schema.h"
#include "store/bulk_writer.h"

namespace setup {

class StoreFill;

/// Rows of one table, given by a fixed choice of its columns; all others take the empty text.
class RowSink {
  public:
    /// Adds a row of the values of the chosen columns. After a fault nothing more is added.
    void Add(const QStringList& values);

  private:
    friend class StoreFill;
    RowSink(StoreFill& fill, const QString& table, const QStringList& columns);
    void Flush();

    StoreFill& fill_;
    QString head_;
    qsizetype width_;
    QString blanks_;  // the values of the columns that weren't chosen, ready for the statement
    QString pending_;
    int pendingRows_ = 0;
};

/// A new store that is being filled. Faults are kept and told at the end, so that the fillers need not ask after each
/// row.
class StoreFill {
  public:
    /// Makes the file (an older one is replaced) with its tables, still without indexes.
    StoreFill(const QString& path, const std::vector<session::Table>& tables);

    /// Makes the tables and the functions that their indexes call in an empty database of a server; `name` is for
    /// words of faults.
    StoreFill(std::unique_ptr<store::BulkWriter> server, const QString& name,
              const std::vector<session::Table>& tables);

    /// The sink stays valid as long as this object.
    RowSink& Rows(const QString& table, const QStringList& columns);
    /// One row whose columns are named.
    void AddRow(const QString& table, const QStringList& columns, const QStringList& values) {
        Rows(table, columns).Add(values);
    }

    bool Failed() const { return !problem_.isEmpty(); }

    /// Commits, makes the indexes, gathers the engine's statistics and closes the file. Gives the words of the first
    /// fault; empty on success.
    QString Finish();

  private:
    friend class RowSink;
    void Note(bool done, const store::Fault& fault);
    void Run(const QString& statement);
    void CountRows(int rows);

    void MakeTables();

    QString path_;
    std::vector<session::Table> tables_;
    /// The engine's own statements for a table, and for its further indexes.
    std::function<QStringList(const session::Table&)> tableStatements_;
    std::function<QStringList(const session::Table&)> gatherStatements_;
    std::function<QStringList(const session::Table&)> indexStatements_;
    QStringList lastStatements_;  // when all is there
    std::unique_ptr<store::BulkWriter> writer_;
    std::map<QString, std::unique_ptr<RowSink>> sinks_;
    int uncommitted_ = 0;
    QString problem_;
};

}  // namespace setup
