#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "bench/recording_connection.h"
#include "setup/tree.h"

namespace bench {

/// An engine with nothing of the program's between: what a statement takes at least. A file is reached by SQLite's own
/// interface, a server by a link of its driver's, with the settings of the program's own where StatementTrace watches.
class BareEngine {
  public:
    enum class Use { Reading, Writing };
    enum class Like { Ours, Engines };

    /// Opens the file of that path, or the server of that connection string (always for writing). `like` chooses what a
    /// file compares texts by. Null when that fails.
    static std::unique_ptr<BareEngine> Open(const QString& place, Use use = Use::Reading, Like like = Like::Ours);
    virtual ~BareEngine() = default;

    /// Runs a statement of the engine's own SQL and reads every value of every row, or of the first `mostRows`. The
    /// number of rows; -1 on a fault.
    virtual int Step(const QString& sql, int mostRows = store::kAllRows) = 0;

    /// The first value of the first row; empty when there is none.
    virtual QString Value(const QString& sql) = 0;

    /// Steps statements one after the other. The number of all rows; -1 on a fault.
    int StepAll(const std::vector<Recorded>& statements);
};

/// The main store of a tree as `BareEngine` opens it. On a server `admin` may do more than the clients' own login.
QString MainPlace(const setup::Tree& tree, const std::optional<setup::ServerAdmin>& admin);

/// True for the connection string of a server.
bool IsServer(const QString& place);

/// What a store's engine is, in words: its version, and of a server the settings that its speed depends on most.
QString EngineInWords(const QString& place);

/// Takes back what statements wrote, so that the engine can write it anew: the row of the key with which an INSERT
/// begins, and the number that was drawn from a series. (A row that stays as it is would cost the engine nothing.)
bool TakeBack(BareEngine& engine, const std::vector<Recorded>& statements);

}  // namespace bench
