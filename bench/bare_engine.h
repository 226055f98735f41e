#pragma once

#include <QString>
#include <memory>

struct sqlite3;

namespace bench {

/// The engine by its own interface, with nothing of the program's between: what a statement takes at least.
class BareEngine {
  public:
    /// Opens a store for reading. Null when that fails.
    static std::unique_ptr<BareEngine> Open(const QString& path);
    ~BareEngine();
    BareEngine(const BareEngine&) = delete;
    BareEngine& operator=(const BareEngine&) = delete;

    /// Replaces the engine's own LIKE by the program's.
    bool UseOurLike();

    /// Runs a statement of the engine's own SQL and reads every value of every row. The number of rows; -1 on a fault.
    int Step(const QString& sql);

  private:
    explicit BareEngine(sqlite3* engine) : engine_(engine) {}

    sqlite3* engine_;
};

}  // namespace bench
