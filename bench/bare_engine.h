#pragma once

#include <QString>
#include <memory>

#include "store/connection.h"

struct sqlite3;

namespace bench {

/// The engine by its own interface, with nothing of the program's between: what a statement takes at least.
class BareEngine {
  public:
    enum class Use { Reading, Writing };

    /// Opens a store. Null when that fails.
    static std::unique_ptr<BareEngine> Open(const QString& path, Use use = Use::Reading);
    ~BareEngine();
    BareEngine(const BareEngine&) = delete;
    BareEngine& operator=(const BareEngine&) = delete;

    /// Replaces the engine's own LIKE by the program's.
    bool UseOurLike();

    /// Runs a statement of the engine's own SQL and reads every value of every row, or of the first `mostRows`. The
    /// number of rows; -1 on a fault.
    int Step(const QString& sql, int mostRows = store::kAllRows);

    /// The first value of the first row as a number; 0 when there is none.
    double Number(const QString& sql);

  private:
    explicit BareEngine(sqlite3* engine) : engine_(engine) {}

    sqlite3* engine_;
};

}  // namespace bench
