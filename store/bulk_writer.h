#pragma once

#include <QString>
#include <memory>

#include "store/connection.h"

namespace store {

struct PostgresLogin;

/// Fills a store with very many rows. For set-up programs, with nobody else on the store.
class BulkWriter {
  public:
    /// What a run that is cut short leaves of a file.
    enum class CutShort {
        Rubbish,    ///< a store to be thrown away; the fastest
        Committed,  ///< what was committed, and nothing else
    };

    /// Opens an existing store file at an absolute path. Returns null on a fault and fills `fault`.
    static std::unique_ptr<BulkWriter> Open(const QString& path, Fault& fault, CutShort leaves = CutShort::Rubbish);

    /// The same for a database of a PostgreSQL server, which always keeps what was committed, but for the last moment
    /// before a power cut. Its statements wait as long as they take.
    static std::unique_ptr<BulkWriter> Open(const PostgresLogin& login, Fault& fault);

    virtual ~BulkWriter() = default;

    /// Runs one statement of the engine's own SQL, such as CREATE TABLE, CREATE INDEX or ANALYZE.
    virtual bool Run(const QString& sql, Fault& fault) = 0;

    /// Starts a transaction: rows outside of one are slow. What was not committed at the end is undone.
    virtual bool Begin(Fault& fault) = 0;

    /// Ends the transaction.
    bool Commit(Fault& fault) { return Run(QStringLiteral("COMMIT"), fault); }
};

}  // namespace store
