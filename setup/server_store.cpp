#include "setup/server_store.h"

#include <QRandomGenerator>

#include "session/server_schema.h"
#include "store/postgres_dialect.h"

namespace setup {
namespace {

using store::Fault;
using store::PostgresLink;
using store::QuotedForPostgres;

QString Literal(QString text) {
    return "'" + text.replace("'", "''") + "'";
}

// The database that every server has, to stand in while another is made or renamed.
const QString kStandIn = "postgres";

/// Runs statements one after the other until one faults.
class Statements {
  public:
    explicit Statements(std::unique_ptr<PostgresLink> link) : link_(std::move(link)) {}

    void Run(const QString& sql) {
        if (fault_.isEmpty() && !link_->Run(sql, engine_)) fault_ = engine_.description;
    }
    bool Finds(const QString& sql) {
        QSqlQuery query = link_->NewQuery();
        return PostgresLink::Start(query, sql, engine_) && query.next();
    }
    const QString& Problem() const { return fault_; }

  private:
    std::unique_ptr<PostgresLink> link_;
    Fault engine_;
    QString fault_;
};

QString WithServer(const ServerOrder& order, const QString& database, const std::function<void(Statements&)>& work) {
    Fault fault;
    auto link = PostgresLink::Open(AdminLogin(order, database), {}, fault);
    if (!link) return fault.description;
    Statements statements(std::move(link));
    work(statements);
    return statements.Problem();
}

QString Unfinished(const ServerOrder& order) {
    return order.database + ".new";
}

// Texts are ordered and compared by their bytes; the letters beyond ASCII are letters nevertheless.
void MakeDatabase(Statements& server, const ServerOrder& order) {
    server.Run("DROP DATABASE IF EXISTS " + QuotedForPostgres(Unfinished(order)) + " WITH (FORCE)");
    server.Run("CREATE DATABASE " + QuotedForPostgres(Unfinished(order)) +
               " TEMPLATE template0 ENCODING 'UTF8' LC_COLLATE 'C' LC_CTYPE 'C.UTF-8'");
    server.Run("REVOKE ALL ON DATABASE " + QuotedForPostgres(Unfinished(order)) + " FROM PUBLIC");
    const QString role = QuotedForPostgres(order.user);
    const bool known = server.Finds("SELECT 1 FROM pg_roles WHERE rolname = " + Literal(order.user));
    // A role that is there keeps what it is; only its password is the one of this order.
    server.Run(known ? "ALTER ROLE " + role + " PASSWORD " + Literal(order.password)
                     : "CREATE ROLE " + role + " LOGIN NOSUPERUSER NOCREATEDB NOCREATEROLE PASSWORD " +
                           Literal(order.password));
    server.Run("GRANT CONNECT ON DATABASE " + QuotedForPostgres(Unfinished(order)) + " TO " + role);
}

void GiveRights(Statements& database, const ServerOrder& order) {
    database.Run("REVOKE ALL ON SCHEMA public FROM PUBLIC");
    database.Run("GRANT USAGE ON SCHEMA public TO " + QuotedForPostgres(order.user));
    for (const session::Table& table : session::MainTables())
        for (const QString& statement : session::ServerRightsStatements(table, order.user))
            database.Run(statement);
}

void TakePlace(Statements& server, const ServerOrder& order) {
    const QString name = QuotedForPostgres(order.database);
    if (order.force) server.Run("DROP DATABASE IF EXISTS " + name + " WITH (FORCE)");
    server.Run("ALTER DATABASE " + QuotedForPostgres(Unfinished(order)) + " RENAME TO " + name);
}

QString FillDatabase(const ServerOrder& order, const std::function<void(StoreFill&)>& fill) {
    Fault fault;
    auto writer = store::BulkWriter::Open(AdminLogin(order, Unfinished(order)), fault);
    if (!writer) return fault.description;
    StoreFill rows(std::move(writer), order.database, session::MainTables());
    fill(rows);
    return rows.Finish();
}

}  // namespace

store::PostgresLogin AdminLogin(const ServerOrder& order, const QString& database) {
    store::PostgresLogin login;
    store::TakeServer(order.server, login);
    login.database = database;
    login.user = order.adminUser;
    login.password = order.adminPassword;
    login.authority = order.authority;
    return login;
}

QString MakeServerStore(const ServerOrder& order, const std::function<void(StoreFill&)>& fill) {
    bool there = false;
    QString problem = WithServer(order, kStandIn, [&](Statements& server) {
        there = server.Finds("SELECT 1 FROM pg_database WHERE datname = " + Literal(order.database));
        if (!there || order.force) MakeDatabase(server, order);
    });
    if (there && !order.force) return "The server has a database " + order.database + " already; --force replaces it.";
    if (problem.isEmpty()) problem = FillDatabase(order, fill);
    if (problem.isEmpty())
        problem = WithServer(order, Unfinished(order), [&](Statements& database) { GiveRights(database, order); });
    if (problem.isEmpty()) problem = WithServer(order, kStandIn, [&](Statements& server) { TakePlace(server, order); });
    return problem.isEmpty() ? problem : "The database " + order.database + " can't be made: " + problem;
}

QString FaultOfOrder(const ServerOrder& order) {
    for (const QString& text : {order.server, order.database, order.user, order.password})
        if (text.isEmpty() || text != text.trimmed() || text.contains(u';') || text[0] == u'\'' || text[0] == u'"')
            return "'" + text +
                   "' can't stand in a connection string: it must not be empty, begin with a quote, hold a semicolon, "
                   "or have blanks around it.";
    return {};
}

QString MakePassword() {
    static const QString letters = "ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnpqrstuvwxyz23456789";
    QString password;
    for (int i = 0; i < 32; ++i)
        password += letters[QRandomGenerator::system()->bounded(int(letters.size()))];
    return password;
}

}  // namespace setup
