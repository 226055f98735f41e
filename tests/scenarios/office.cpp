#include "tests/scenarios/office.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QThread>

#include "session/schema.h"
#include "setup/create_tree.h"
#include "store/connection.h"
#include "store/postgres_link.h"

namespace scenario {

namespace {

const QString kAdmin = QStringLiteral("katsudo_admin");

// Where a tree notes the database that is its main store: its own definition may be what a scenario spoils.
QString NoteOf(const QString& root) {
    return root + "/data/server_database";
}

QString ServerDatabase(const QString& root) {
    QFile note(NoteOf(root));
    return note.open(QIODevice::ReadOnly) ? QString::fromUtf8(note.readAll()) : QString();
}

bool NoteDatabase(const QString& root, const QString& database) {
    QFile note(NoteOf(root));
    return note.open(QIODevice::WriteOnly) && note.write(database.toUtf8()) > 0;
}

// Several test programs may make their offices at the same time.
QString ClientLogin() {
    return QString("client_%1").arg(QCoreApplication::applicationPid());
}

QString ServerString(const QString& database) {
    return QString("Provider=PostgreSQL;User ID=%1;Data Source=%2;Initial Catalog=%3;")
        .arg(kAdmin, TestServer(), database);
}

// "data" is opened as the rest of the suite does, which may change every table.
std::unique_ptr<store::Connection> OpenStore(const QString& root, const QString& store, QString& problem) {
    const QString file = store == "data" ? QString("data/gnrdb.accdb") : store + "/usrcnfg.accdb";
    const QString database = store == "data" ? ServerDatabase(root) : QString();
    store::Fault fault;
    auto connection = store::OpenConnection(
        database.isEmpty() ? "Provider=SQLite;Data Source=" + file + ";" : ServerString(database), root, fault);
    if (!connection) problem = fault.description;
    return connection;
}

store::PostgresLogin AdminLogin(const QString& database) {
    return {TestServer(), 0, database, kAdmin, {}};
}

// Runs a statement of the server's own.
QString OnServer(const QString& sql) {
    store::Fault fault;
    const auto server = store::PostgresLink::Open(AdminLogin("postgres"), {}, fault);
    return server && server->Run(sql, fault) ? QString() : fault.description;
}

// A trigger as the server takes it: with a function of its own, which must say what becomes of the row.
QString MakeServerTrigger(const QString& database, const QString& sql) {
    static const QRegularExpression form(
        "^CREATE TRIGGER (\\w+) (BEFORE|AFTER) (\\w+) ON (\\S+)(?: WHEN (.+))? BEGIN (.+) END$");
    static const QRegularExpression name("(?<!')\\b(\\w*[^\\x00-\\x7f\\W]\\w*)",
                                         QRegularExpression::UseUnicodePropertiesOption);
    const auto parts = form.match(sql);
    if (!parts.hasMatch()) return "no such form of a trigger";
    const auto part = [&](int index) { return parts.captured(index).replace(name, "\"\\1\""); };
    QString body = part(6).replace("SELECT RAISE(IGNORE)", "RETURN NULL");
    body.replace(QRegularExpression("SELECT RAISE\\(FAIL, ('[^']*')\\)"), "RAISE EXCEPTION \\1");
    const QString condition = parts.captured(5).isEmpty() ? QString("true") : part(5);
    const QString row = parts.captured(3) == "DELETE" ? "OLD" : "NEW";
    store::Fault fault;
    const auto link = store::PostgresLink::Open(AdminLogin(database), {}, fault);
    const QString function = QString(
                                 "CREATE FUNCTION \"%1\"() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN IF %2 THEN %3 "
                                 "END IF; RETURN %4; END $$")
                                 .arg(part(1), condition, body, row);
    const QString trigger = QString("CREATE TRIGGER \"%1\" %2 %3 ON %4 FOR EACH ROW EXECUTE FUNCTION \"%1\"()")
                                .arg(part(1), part(2), part(3), part(4));
    return link && link->Run(function, fault) && link->Run(trigger, fault) ? QString() : fault.description;
}

// Statements that keep every other program away from the main store, readers too.
QStringList LockStatements(const QString& root, const QString& store) {
    if (store != "data" || ServerDatabase(root).isEmpty()) return {"BEGIN EXCLUSIVE"};
    QStringList names;
    for (const session::Table& table : session::MainTables())
        names << "[" + table.name + "]";
    return {"BEGIN", "LOCK TABLE " + names.join(',') + " IN ACCESS EXCLUSIVE MODE"};
}

}  // namespace

QString LetIn(const QString& root, bool in) {
    const QString database = ServerDatabase(root);
    QString problem =
        OnServer(QString("ALTER DATABASE \"%1\" ALLOW_CONNECTIONS %2").arg(database, in ? "true" : "false"));
    if (!in)
        problem +=
            OnServer("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity WHERE datname = '" + database + "'");
    return problem;
}

QString Execute(const QString& root, const QString& store, const QString& sql) {
    const QString database = store == "data" ? ServerDatabase(root) : QString();
    if (sql.contains("{client}")) return Execute(root, store, QString(sql).replace("{client}", ClientLogin()));
    if (!database.isEmpty() && sql.startsWith("ALTER ROLE")) return OnServer(sql);
    if (!database.isEmpty() && sql.startsWith("CREATE TRIGGER")) return MakeServerTrigger(database, sql);
    if (!database.isEmpty() && sql.startsWith("DROP TRIGGER"))
        return Execute(root, store, "DROP FUNCTION [" + sql.section(u' ', 2) + "] CASCADE");
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
    for (const QString& statement : LockStatements(root, store))
        if (connection && !connection->Execute(statement, fault)) problem = fault.description;
    held(problem);
    if (!problem.isEmpty()) return;
    QThread::msleep(static_cast<unsigned long>(milliseconds));
    connection->Execute("ROLLBACK", fault);
}

QString TestServer() {
    return qEnvironmentVariable("KATSUDO_TEST_SERVER");
}

QString MakeOffice(const QString& root, const QString& database) {
    setup::CreateOrder order;
    order.tree.root = root;
    if (!database.isEmpty())
        order.server = setup::ServerOrder{TestServer(), database, kAdmin, {}, ClientLogin(), "se cret", true};
    const QString problem = setup::CreateTree(order);
    if (!problem.isEmpty()) return problem;
    if (!database.isEmpty() && !NoteDatabase(root, database)) return NoteOf(root) + " can't be written";
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

bool CopyTree(const QString& from, const QString& to, const QString& database) {
    QDirIterator entries(from, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot | QDir::Hidden,
                         QDirIterator::Subdirectories);
    bool copied = QDir().mkpath(to);
    while (copied && entries.hasNext()) {
        const QString path = entries.next();
        const QString target = to + path.mid(from.size());
        copied = entries.fileInfo().isDir() ? QDir().mkpath(target) : QFile::copy(path, target);
    }
    if (!copied || database.isEmpty()) return copied;
    const QString problem =
        OnServer(QString("CREATE DATABASE \"%1\" TEMPLATE \"%2\"").arg(database, ServerDatabase(from))) +
        Execute(to, "conf", "UPDATE データベース定義 SET データベース名 = '" + database + "'");
    return problem.isEmpty() && NoteDatabase(to, database);
}

void DropServerStore(const QString& root) {
    const QString database = ServerDatabase(root);
    if (!database.isEmpty()) OnServer(QString("DROP DATABASE IF EXISTS \"%1\" WITH (FORCE)").arg(database));
}

}  // namespace scenario
