#include "store/postgres_link.h"

#include <QFileInfo>
#include <QSqlError>

#include "store/fault_kinds.h"
#include "store/qt_query.h"

namespace store {
namespace {

// No sslmode means "prefer", or what PGSSLMODE asks for on this machine.
QString Options(const PostgresLogin& login, int seconds) {
    const QString options =
        QStringLiteral("connect_timeout=%1;application_name=katsudo-techo;%2").arg(seconds).arg(kKeepAlive);
    return login.authority.isEmpty()
               ? options
               : options + QLatin1String(";sslmode=verify-full;") + AuthorityOption(login.authority);
}

// The server's first line tells what is wrong; the others repeat the statement. The line behind "DETAIL" names the key
// that is there already.
Fault ServerFault(const QSqlError& error) {
    const QStringList lines =
        (error.databaseText().isEmpty() ? error.driverText() : error.databaseText()).split(u'\n', Qt::SkipEmptyParts);
    QString words = lines.value(0).simplified();
    for (const QString& line : lines)
        if (line.startsWith(QLatin1String("DETAIL:"))) words += u' ' + line.mid(7).simplified();
    if (words.isEmpty()) words = QStringLiteral("SQL 文を実行できません。");
    const QString code = error.nativeErrorCode();
    if (!code.isEmpty()) words += QStringLiteral(" (%1)").arg(code);
    return {0, words, KindOfSqlState(code)};
}

}  // namespace

QString ServerAuthority(const QString& installRoot) {
    const QString file = installRoot + QStringLiteral("/conf/server-ca.crt");
    return QFileInfo::exists(file) ? file : QString();
}

QString AuthorityOption(QString file) {
    file.replace(u'\\', QLatin1String("\\\\")).replace(u'\'', QLatin1String("\\'"));
    return QStringLiteral("sslrootcert='%1'").arg(file);
}

void TakeServer(const QString& server, PostgresLogin& login) {
    const auto colon = server.lastIndexOf(u':');
    bool number = false;
    const int port = server.mid(colon + 1).toInt(&number);
    const bool bracketed = server.startsWith(u'[');
    // Without brackets, more than one colon is an address.
    const bool withPort =
        colon >= 0 && number && (bracketed ? server[colon - 1] == u']' : server.indexOf(u':') == colon);
    login.host = withPort ? server.left(colon) : server;
    if (login.host.startsWith(u'[') && login.host.endsWith(u']')) login.host = login.host.mid(1).chopped(1);
    login.port = withPort ? port : 0;
}

PostgresLogin LoginOf(const ConnectionString& parts) {
    PostgresLogin login;
    TakeServer(parts.Value(QStringLiteral("Data Source")), login);
    login.database = parts.Value(QStringLiteral("Initial Catalog"));
    login.user = parts.Value(QStringLiteral("User ID"));
    login.password = parts.Value(QStringLiteral("Password"));
    return login;
}

PostgresLink::PostgresLink(QString name)
    : name_(std::move(name)), database_(QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name_)) {}

PostgresLink::~PostgresLink() {
    database_.close();
    // The list of connections must hold the last reference, or removing the name would be reported as a misuse.
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

std::unique_ptr<PostgresLink> PostgresLink::Open(const PostgresLogin& login, Waits waits, Fault& fault, int seconds) {
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL"))) {
        fault = {0, QStringLiteral("PostgreSQL のドライバ (Qt の QPSQL) がありません。")};
        return nullptr;
    }
    std::unique_ptr<PostgresLink> link(new PostgresLink(NewConnectionName()));
    QSqlDatabase& database = link->database_;
    database.setHostName(login.host);
    if (login.port > 0) database.setPort(login.port);
    database.setDatabaseName(login.database);
    database.setUserName(login.user);
    database.setPassword(login.password);
    database.setConnectOptions(Options(login, seconds));
    if (!database.open()) {
        const QString words = database.lastError().databaseText().simplified();
        fault = {0, QStringLiteral("データベースサーバーに接続できません: %1").arg(words), FaultKind::Away};
        return nullptr;
    }
    return link->Run(Settings(waits), fault) ? std::move(link) : nullptr;
}

QString PostgresLink::Settings(Waits waits) {
    return QStringLiteral(
               "SET standard_conforming_strings = on; SET client_min_messages = error; SET jit = off; "
               "SET lock_timeout = %1; SET statement_timeout = %2")
        .arg(waits.lock)
        .arg(waits.statement);
}

bool PostgresLink::Start(QSqlQuery& query, const QString& sql, Fault& fault) {
    if (!CanBeSent(sql, fault)) return false;
    if (watcher) watcher(sql);
    if (query.exec(sql)) return true;
    fault = ServerFault(query.lastError());
    return false;
}

bool PostgresLink::Run(const QString& sql, Fault& fault) const {
    QSqlQuery query = NewQuery();
    return Start(query, sql, fault);
}

void PostgresLink::WaitForLocks(int milliseconds) const {
    Fault unused;
    Run(QStringLiteral("SET lock_timeout = %1").arg(milliseconds), unused);
}

bool PostgresLink::IsLost(const QString& code) const {
    // The server told why it refused the statement: the link stands. Classes 08 and 57P are its own end.
    if (!code.isEmpty() && !code.startsWith(QLatin1String("08")) && !code.startsWith(QLatin1String("57P")))
        return false;
    Fault unused;
    return !database_.isOpen() || !Run(QStringLiteral("SELECT 1"), unused);
}

QString CodeOf(const Fault& fault) {
    const QString& words = fault.description;
    const auto open = words.size() - 7;
    return open >= 0 && words[open] == u'(' && words.endsWith(u')') ? words.mid(open + 1, 5) : QString();
}

}  // namespace store
