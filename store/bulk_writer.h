#pragma once

#include <QString>
#include <memory>

#include "store/connection.h"

namespace store {

class SqliteFile;

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

  private:
    explicit BulkWriter(std::unique_ptr<SqliteFile> file);

    std::unique_ptr<SqliteFile> file_;
};

}  // namespace store
