#include "tests/scenarios/office.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QThread>

#include "setup/create_tree.h"
#include "store/connection.h"

namespace scenario {

namespace {

std::unique_ptr<store::Connection> OpenStore(const QString& root, const QString& store, QString& problem) {
    const QString file = store == "data" ? QString("data/gnrdb.accdb") : store + "/usrcnfg.accdb";
    store::Fault fault;
    auto connection = store::OpenConnection("Provider=SQLite;Data Source=" + file + ";", root, fault);
    if (!connection) problem = fault.description;
    return connection;
}

}  // namespace

QString Execute(const QString& root, const QString& store, const QString& sql) {
    QString problem;
    const auto connection = OpenStore(root, store, problem);
    store::Fault fault;
    if (connection && !connection->Execute(sql, fault)) problem = fault.description + ": " + sql;
    return problem;
}

QJsonArray Select(const QString& root, const QString& store, const QString& sql, QString& problem) {
    QJsonArray rows;
    const auto connection = OpenStore(root, store, problem);
    if (!connection) return rows;
    store::Fault fault;
    const auto found = connection->Query(sql, fault);
    if (!found) problem = fault.description + ": " + sql;
    for (; found && !found->Eof(); found->MoveNext()) {
        QJsonArray row;
        for (const QString& column : found->Columns()) {
            const auto value = found->Value(column);
            row.append(value ? QJsonValue(*value) : QJsonValue());
        }
        rows.append(row);
    }
    return rows;
}

void HoldStore(const QString& root, const QString& store, int milliseconds,
               const std::function<void(const QString& problem)>& held) {
    QString problem;
    const auto connection = OpenStore(root, store, problem);
    store::Fault fault;
    if (connection && !connection->Execute("BEGIN EXCLUSIVE", fault)) problem = fault.description;
    held(problem);
    if (!problem.isEmpty()) return;
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    connection->Execute("ROLLBACK", fault);
}

QString MakeOffice(const QString& root) {
    setup::CreateOrder order;
    order.tree.root = root;
    const QString problem = setup::CreateTree(order);
    if (!problem.isEmpty()) return problem;
    QFile rows(QStringLiteral(KATSUDO_SCENARIOS "/office.sql"));
    if (!rows.open(QIODevice::ReadOnly)) return "office.sql is missing";
    QString unopened;
    const auto connection = OpenStore(root, "data", unopened);
    if (!connection) return unopened;
    for (const QString& statement : QString::fromUtf8(rows.readAll()).split(";\n", Qt::SkipEmptyParts)) {
        store::Fault fault;
        if (!statement.trimmed().isEmpty() && !connection->Execute(statement, fault))
            return fault.description + ": " + statement;
    }
    return {};
}

bool CopyTree(const QString& from, const QString& to) {
    QDirIterator entries(from, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot | QDir::Hidden,
                         QDirIterator::Subdirectories);
    bool copied = QDir().mkpath(to);
    while (copied && entries.hasNext()) {
        const QString path = entries.next();
        const QString target = to + path.mid(from.size());
        copied = entries.fileInfo().isDir() ? QDir().mkpath(target) : QFile::copy(path, target);
    }
    return copied;
}

}  // namespace scenario
