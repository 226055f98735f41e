#include "store/qt_query.h"

#include <QSqlRecord>
#include <QVariant>
#include <atomic>

#include "store/postgres_dialect.h"

namespace store {
namespace {

Recordset::Row ReadRow(const QSqlQuery& query, const std::vector<int>& places) {
    Recordset::Row row;
    row.reserve(places.size());
    for (const int place : places) {
        const QVariant value = query.value(place);
        row.push_back(value.isNull() ? std::nullopt : std::optional(value.toString()));
    }
    return row;
}

// Some ODBC drivers tell a name's length in bytes where characters are asked for; what stands behind the zero
// character is chance.
QString BareName(const QString& name) {
    const auto end = name.indexOf(QChar(u'\0'));
    return end < 0 ? name : name.left(end);
}

// A server's "*" gives what the engine keeps for its searches as well, which is its own affair.
bool IsKeptForSearches(const QString& name) {
    static const QString head = FoldedColumn({});
    return name.startsWith(head);
}

}  // namespace

QString NewConnectionName() {
    static std::atomic<int> count = 0;
    return QStringLiteral("katsudo-%1").arg(++count);
}

Fault FaultOf(const QSqlError& error) {
    Fault fault;
    fault.number = error.nativeErrorCode().toInt();
    // On one line, as the run history shows it.
    fault.description = (error.databaseText().isEmpty() ? error.driverText() : error.databaseText()).simplified();
    if (fault.description.isEmpty()) {
        fault.description = QStringLiteral("SQL 文を実行できません。");
    }
    return fault;
}

bool CanBeSent(const QString& sql, Fault& fault) {
    if (sql.trimmed().isEmpty()) {
        fault = {0, QStringLiteral("SQL 文が空です。")};
        return false;
    }
    // The engine would stop reading at a zero character and run what stands before it.
    if (sql.contains(QChar(u'\0'))) {
        fault = {0, QStringLiteral("SQL 文に NUL 文字があります。")};
        return false;
    }
    return true;
}

bool StartQuery(QSqlQuery& query, const QString& sql, Fault& fault) {
    if (!CanBeSent(sql, fault)) return false;
    if (!query.exec(sql)) {
        fault = FaultOf(query.lastError());
        return false;
    }
    return true;
}

std::unique_ptr<Recordset> ReadRows(QSqlQuery& query, int mostRows, Fault& fault) {
    const QSqlRecord record = query.record();
    QStringList columns;
    std::vector<int> places;
    for (int i = 0; i < record.count(); ++i) {
        const QString name = BareName(record.fieldName(i));
        if (IsKeptForSearches(name)) continue;
        columns.append(name);
        places.push_back(i);
    }
    std::vector<Recordset::Row> rows;
    while (static_cast<int>(rows.size()) < mostRows && query.next()) {
        rows.push_back(ReadRow(query, places));
    }
    if (query.lastError().isValid()) {
        fault = FaultOf(query.lastError());
        return nullptr;
    }
    query.finish();
    return std::make_unique<Recordset>(std::move(columns), std::move(rows));
}

}  // namespace store
