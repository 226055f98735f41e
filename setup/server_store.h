#pragma once

#include <QString>
#include <functional>

#include "setup/store_fill.h"
#include "store/postgres_link.h"

namespace setup {

/// A main database on a PostgreSQL server.
struct ServerOrder {
    QString server;  ///< host or socket folder, with ":port" where it isn't the usual one
    QString database;
    QString adminUser, adminPassword;  ///< who makes it
    QString user, password;            ///< the client's own login, made or given this password
    bool force = false;                ///< replace a database of that name
    QString authority = {};            ///< who must have certified the server; see PostgresLogin
};

/// The login of the order's administrator to a database of its server.
store::PostgresLogin AdminLogin(const ServerOrder& order, const QString& database);

/// Makes the database of the order, lets `fill` fill it, makes its indexes, and gives the client's login its rights.
/// The database gets its name when it is complete: until then it is called NAME.new, and one of that name from an
/// earlier run is thrown away. Gives the words of what went wrong; empty on success.
QString MakeServerStore(const ServerOrder& order, const std::function<void(StoreFill&)>& fill);

/// What is wrong with the names and passwords of an order; empty for nothing. They go into a connection string, whose
/// parts end at a semicolon.
QString FaultOfOrder(const ServerOrder& order);

/// A password nobody has thought of: 32 letters and digits.
QString MakePassword();

}  // namespace setup
