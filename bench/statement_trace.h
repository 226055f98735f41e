#pragma once

#include <QString>
#include <vector>

namespace bench {

/// A statement that the engine was given.
struct Traced {
    QString file;  ///< of the store
    QString sql;   ///< in the engine's own form
};

/// Notes what the SQLite stores of this process are given, whoever opened them.
class StatementTrace {
  public:
    /// Watches every store that is opened from now on.
    static void Watch();
    /// Begins to note, forgetting what was noted.
    static void Begin();
    /// Ends it. The statements that read or change rows, in their order.
    static std::vector<Traced> End();
};

}  // namespace bench
