#pragma once

#include <QString>
#include <memory>

namespace bench {

/// A store by its engine's own interface, whatever engine that is: a file by SQLite's, a server by a link of its
/// driver's.
class BareStore {
  public:
    /// Opens the file of that path, or the server of that connection string. Null when that fails.
    static std::unique_ptr<BareStore> Open(const QString& place);
    virtual ~BareStore() = default;

    /// Runs a statement of the engine's own SQL and reads every value of every row. False on a fault.
    virtual bool Step(const QString& sql) = 0;
};

}  // namespace bench
