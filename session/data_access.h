#pragma once

#include <QString>
#include <memory>

#include "session/session_context.h"
#include "store/recordset.h"

namespace session {

/// Where the data layer reports what it did; the run history stands behind it.
class StatementLog {
  public:
    virtual ~StatementLog() = default;
    /// A statement that was to be logged ran.
    virtual void WriteOutputHistory(const QString& sql) = 0;
    /// Something failed; `text` tells what.
    virtual void WriteErrorHistory(const QString& text) = 0;
};

/// All database traffic of the program. Statements are whole texts; a fault is trapped, written to the run history and
/// told as false, so that a failed read looks like an empty result. Nothing is shown to the user from here.
class DataAccess {
  public:
    DataAccess(SessionContext& context, StatementLog& log) : context_(context), log_(log) {}

    /// Reads from the main database. True when there is a current row; the recordset is never null, at its end after a
    /// fault or an empty result. No more than `mostRows` rows are read.
    bool OpenMainRecordset(std::unique_ptr<store::Recordset>& recordset, const QString& sql, bool writeLog = false,
                           int mostRows = store::kAllRows);

    /// Runs a statement on the main database. True when it ran.
    bool ExecuteMain(const QString& sql, bool writeLog = false);

    /// The same two on the configuration store. A failed statement on the run history itself isn't written to it.
    bool OpenConfigRecordset(std::unique_ptr<store::Recordset>& recordset, const QString& sql);
    bool ExecuteConfig(const QString& sql);

    /// ExecuteConfig that also leaves the statement in the run history when it ran.
    bool ExecuteConfigLogged(const QString& sql);

    /// Reads from the main database for what the user is only told: nothing of it goes to the run history, whatever
    /// becomes of it. Null on a fault; an empty result is a recordset at its end.
    std::unique_ptr<store::Recordset> ReadMainUntold(const QString& sql, int mostRows = store::kAllRows);

    /// True when the last read of the main database failed: what it gave tells nothing of what is stored.
    bool MainReadFailed() const { return mainReadFailed_; }

    /// The fault of the last statement on the main database that failed.
    const store::Fault& LastMainFault() const { return lastMainFault_; }
    /// How many statements that write to the main database have failed in this run.
    int FailedWrites() const { return failedWrites_; }

  private:
    bool Read(store::Connection* connection, std::unique_ptr<store::Recordset>& recordset, const QString& sql,
              store::Fault& fault, int mostRows = store::kAllRows);
    bool Run(store::Connection* connection, const QString& sql, store::Fault& fault);
    void LogConfigFault(const store::Fault& fault, const QString& sql);

    SessionContext& context_;
    StatementLog& log_;
    store::Fault lastMainFault_;
    int failedWrites_ = 0;
    bool mainReadFailed_ = false;
};

/// A column's value as a whole number; nothing when it is Null.
std::optional<int> NumberColumn(const store::Recordset& row, const QString& column);

/// Takes a column into a field, unless it is Null: a Null leaves the field as it was.
void TakeColumn(const store::Recordset& row, const QString& column, QString& field);
void TakeColumn(const store::Recordset& row, const QString& column, int& field);

}  // namespace session
