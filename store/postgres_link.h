#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <functional>
#include <memory>

#include "store/connection.h"
#include "store/connection_string.h"

namespace store {

/// Which server and database, and as whom.
struct PostgresLogin {
    QString host;  ///< a host's name or address, or the folder of a socket; empty for the machine's own
    int port = 0;  ///< 0 for the usual one
    QString database, user, password;
    /// The certificate file of the authority that must have certified the server, for the host's name; empty for any
    /// server, and for one without TLS.
    QString authority = {};
};

/// The file by which an installation asks for a certified server: "conf/server-ca.crt" below its root. Empty when there
/// is none.
QString ServerAuthority(const QString& installRoot);

/// By these options a connection notices within seconds that its peer is cut off.
inline constexpr QLatin1String kKeepAlive(
    "keepalives=1;keepalives_idle=10;keepalives_interval=5;keepalives_count=3;tcp_user_timeout=20000");

/// The option of a connection to such a server that names the authority's file.
QString AuthorityOption(QString file);

/// The login that a connection string names: "Data Source" is the host or the socket's folder, with ":port" behind it
/// where the port isn't the usual one; "Initial Catalog" the database.
PostgresLogin LoginOf(const ConnectionString& parts);

/// A host with an optional ":port"; an IPv6 address with a port stands in square brackets.
void TakeServer(const QString& server, PostgresLogin& login);

/// One link to a PostgreSQL server. It takes the server's own SQL. Nothing here waits for ever for a server that is
/// gone: neither the opening nor a statement whose other end no longer answers.
class PostgresLink {
  public:
    /// How long the link waits; in milliseconds, 0 for no limit of its own.
    struct Waits {
        int lock = 0;       ///< for another's lock
        int statement = 0;  ///< for a statement as a whole
    };

    /// Connects, over TLS where the server offers it, or as the login's authority and libpq's own environment demand;
    /// `seconds` at most for each address of the host. Returns null on a fault and fills `fault`.
    static std::unique_ptr<PostgresLink> Open(const PostgresLogin& login, Waits waits, Fault& fault, int seconds = 10);

    /// Statements by which the server waits so long and no longer, and takes texts as the program writes them.
    static QString Settings(Waits waits);

    /// Told each statement that a link of this process is given, as it is given; nobody unless a measurement asks.
    static inline std::function<void(const QString& sql)> watcher;

    ~PostgresLink();
    PostgresLink(const PostgresLink&) = delete;
    PostgresLink& operator=(const PostgresLink&) = delete;

    QSqlQuery NewQuery() const { return QSqlQuery(database_); }

    /// Starts one statement on a new query. Returns false on a fault and fills `fault`: its number is 0, the engine's
    /// five-character code stands behind its words.
    static bool Start(QSqlQuery& query, const QString& sql, Fault& fault);

    /// Runs statements and drops their results. Returns false on a fault and fills `fault`.
    bool Run(const QString& sql, Fault& fault) const;

    /// How long statements wait for another's lock from now on, in milliseconds.
    void WaitForLocks(int milliseconds) const;

    /// True when the last fault was one of the link itself, which can't be used any more.
    bool IsLost(const QString& code) const;

  private:
    explicit PostgresLink(QString name);

    QString name_;
    QSqlDatabase database_;
};

/// The five-character code of a fault of Start() or Run(); empty when the server gave none.
QString CodeOf(const Fault& fault);

}  // namespace store
