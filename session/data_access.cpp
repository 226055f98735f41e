#include "session/data_access.h"

#include "items/text_rules.h"

namespace session {

namespace {

const QString kHistoryTable = QStringLiteral("プログラム稼動履歴");
const QString kNoConnection = QStringLiteral("接続が開かれていません。");

}  // namespace

bool DataAccess::Read(store::Connection* connection, std::unique_ptr<store::Recordset>& recordset, const QString& sql,
                      store::Fault& fault, int mostRows) {
    if (connection)
        recordset = connection->Query(sql, fault, mostRows);
    else
        fault.description = kNoConnection;
    const bool failed = !connection || !recordset;
    if (failed) recordset = std::make_unique<store::Recordset>(QStringList(), std::vector<store::Recordset::Row>());
    return !failed;
}

bool DataAccess::Run(store::Connection* connection, const QString& sql, store::Fault& fault) {
    if (connection) return connection->Execute(sql, fault);
    fault.description = kNoConnection;
    return false;
}

bool DataAccess::OpenMainRecordset(std::unique_ptr<store::Recordset>& recordset, const QString& sql, bool writeLog,
                                   int mostRows) {
    store::Fault fault;
    mainReadFailed_ = !Read(context_.MainConnection.get(), recordset, sql, fault, mostRows);
    if (mainReadFailed_) {
        lastMainFault_ = fault;
        log_.WriteErrorHistory(fault.description + sql);
        return false;
    }
    if (writeLog) log_.WriteOutputHistory(sql);
    return !recordset->Eof();
}

std::unique_ptr<store::Recordset> DataAccess::ReadMainUntold(const QString& sql, int mostRows) {
    store::Fault untold;
    std::unique_ptr<store::Recordset> recordset;
    return Read(context_.MainConnection.get(), recordset, sql, untold, mostRows) ? std::move(recordset) : nullptr;
}

bool DataAccess::ExecuteMain(const QString& sql, bool writeLog) {
    store::Fault fault;
    if (!Run(context_.MainConnection.get(), sql, fault)) {
        lastMainFault_ = fault;
        ++failedWrites_;
        log_.WriteErrorHistory(fault.description + sql);
        return false;
    }
    if (writeLog) log_.WriteOutputHistory(sql);
    return true;
}

void DataAccess::LogConfigFault(const store::Fault& fault, const QString& sql) {
    // A fault of the history's own table can't be told there: telling it would fail the same way.
    if (!sql.contains(kHistoryTable)) log_.WriteErrorHistory(fault.description + sql);
}

bool DataAccess::OpenConfigRecordset(std::unique_ptr<store::Recordset>& recordset, const QString& sql) {
    store::Fault fault;
    if (Read(context_.ConfigConnection.get(), recordset, sql, fault)) return !recordset->Eof();
    LogConfigFault(fault, sql);
    return false;
}

bool DataAccess::ExecuteConfig(const QString& sql) {
    store::Fault fault;
    if (Run(context_.ConfigConnection.get(), sql, fault)) return true;
    LogConfigFault(fault, sql);
    return false;
}

bool DataAccess::ExecuteConfigLogged(const QString& sql) {
    if (!ExecuteConfig(sql)) return false;
    log_.WriteOutputHistory(sql);
    return true;
}

std::optional<int> NumberColumn(const store::Recordset& row, const QString& column) {
    const auto value = row.Value(column);
    return value ? std::optional(items::Val16(*value)) : std::nullopt;
}

void TakeColumn(const store::Recordset& row, const QString& column, QString& field) {
    if (const auto value = row.Value(column)) field = *value;
}

void TakeColumn(const store::Recordset& row, const QString& column, int& field) {
    if (const auto value = NumberColumn(row, column)) field = *value;
}

}  // namespace session
