#pragma once

#include <QString>
#include <optional>

#include "store/connection.h"
#include "store/connection_string.h"

namespace store {

/// An engine that may stand behind an ODBC driver: the transport says nothing about the SQL that it speaks.
struct OdbcEngine {
    /// What the driver calls it begins with this, in any case.
    QLatin1String name;
    /// Writes a statement of the program's one kind of SQL as this engine's; nothing, and `fault`, when it can't.
    std::optional<QString> (*dialect)(const QString& sql, Fault& fault);
    /// What a connection begins with so that it waits that many milliseconds for another's lock; null for nothing.
    QString (*settings)(int patience);
    /// Keeps a SELECT of its own SQL from giving more than that many rows; null when that can't be told.
    QString (*limited)(const QString& sql, int mostRows);
    /// What a fault of its own number and words is about, where the driver tells none of the common states; null when
    /// that can't be told.
    FaultKind (*kind)(int number, const QString& words) = nullptr;
};

/// The engine that a driver calls by this name; null for one whose SQL the program can't write.
const OdbcEngine* FindOdbcEngine(const QString& name);

/// Turns a statement into that of SQLite behind an ODBC driver manager: as ToSqlite does, and a character outside of
/// the basic plane (𠮷) in a literal becomes a call of char(), since such a manager can't carry it. Elsewhere in the
/// statement such a character is a fault.
std::optional<QString> ToSqliteOverOdbc(const QString& sql, Fault& fault);

/// The other parts of a connection string whose provider is "ODBC:…", as an ODBC connection string without "DSN=" or
/// "Driver=": the database (a path that is a file below `installRoot` becomes absolute), the server and its port, user
/// and password, each only when it is given; and a certified server where `installRoot` asks for it (ServerAuthority).
/// A `bareDriver` is also told what else a data source says: to use TLS where the server offers it, and to notice a
/// peer that is cut off.
QString OdbcAttributes(const ConnectionString& parts, const QString& installRoot, bool bareDriver);

}  // namespace store
