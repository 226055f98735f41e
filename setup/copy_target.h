#pragma once

#include <memory>
#include <vector>

#include "session/schema.h"
#include "setup/tree.h"
#include "store/bulk_writer.h"

namespace setup {

/// The main store of a tree while a company is carried into it. Whatever engine holds it: rows are read by its
/// connection, and written by its bulk writer where it has one. What was committed outlives an interruption.
class CopyTarget {
  public:
    /// Opens it; `admin` for a server, whose client may not write every table. Null with words in `problem`.
    static std::unique_ptr<CopyTarget> Open(const Tree& tree, const std::optional<ServerAdmin>& admin,
                                            QString& problem);

    store::Connection& Config() { return *open_.config; }
    store::Connection& Main() { return *open_.main; }

    /// Runs a statement that every engine takes. False on a fault, with words in `problem`.
    bool Run(const QString& sql, QString& problem);
    bool Begin(QString& problem);
    bool Commit(QString& problem) { return Run("COMMIT", problem); }

    /// Takes the further indexes of the tables away, and all else that would be in the way of many rows, and makes it
    /// again. An engine that isn't known keeps them.
    bool DropIndexes(QString& problem);
    bool MakeIndexes(QString& problem);

    /// Makes a server's database that another version of the program made fold its texts as this one does. To be called
    /// without the further indexes, some of which hold folded texts.
    bool RenewFold(QString& problem);

  private:
    using Statements = QStringList (*)(const session::Table&);

    OpenTree open_;
    std::unique_ptr<store::BulkWriter> writer_;  // null for an engine without one
    Statements indexes_ = nullptr;
    // Of a server, whose parties gather what their contacts have.
    Statements gather_ = nullptr, stopGathering_ = nullptr;
    QStringList last_;  // statements when all indexes are there
};

}  // namespace setup
