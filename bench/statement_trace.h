#pragma once

#include <QString>
#include <vector>

namespace bench {

/// A statement that the engine was given.
struct Traced {
    QString store;  ///< path of its file, or the connection string of a server
    QString sql;    ///< in the engine's own form
};

/// Notes what the stores of this process are given, whoever opened them.
class StatementTrace {
  public:
    /// Watches every file that is opened from now on, and the server.
    static void Watch(const QString& server);
    static bool Watching();
    /// Begins to note, forgetting what was noted.
    static void Begin();
    /// Ends it. The statements that read or change rows, and a server's settings, in their order.
    static std::vector<Traced> End();
};

}  // namespace bench
