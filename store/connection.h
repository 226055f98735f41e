#pragma once

#include <QString>
#include <limits>
#include <memory>
#include <optional>

#include "store/recordset.h"

namespace store {

/// What a fault is about, as far as an engine tells it.
enum class FaultKind {
    Other,        ///< the engine's words say it
    DiskFull,     ///< no room for what was to be written
    NotWritable,  ///< the store, or its folder, may not be written
    Away,         ///< the server, or the file's share, can't be reached
    Locked,       ///< another process held it for longer than is waited
    KeyTaken,     ///< a row of that key is there already
    RuleBroken,   ///< a rule of the table other than its key
};

/// What went wrong in the last operation of a store: the engine's own number (0 when it gave none) and its words.
struct Fault {
    int number = 0;
    QString description;
    FaultKind kind = FaultKind::Other;
    bool ofFile = false;  ///< the store is a file, not a server
};

/// How long a statement waits for another process's lock unless told otherwise, in milliseconds.
inline constexpr int kPatience = 20'000;

/// No limit to the rows that are read.
inline constexpr int kAllRows = std::numeric_limits<int>::max();

/// One open connection to a store. It takes statements in the program's one kind of SQL; the engine's dialect rewrites
/// them on the way. Another process's lock is waited for. Nothing here throws.
class Connection {
  public:
    virtual ~Connection() = default;

    /// Runs a SELECT and reads its result, so that no read lock outlives the call: the whole of it, or its first
    /// `mostRows` rows. The engine stops looking behind those, and a statement that it can walk in order costs no more
    /// than they do.
    /// Returns null on a fault and fills `fault`; an empty result is a recordset at its end.
    virtual std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows = kAllRows) = 0;

    /// Runs a statement that changes data. Returns false on a fault and fills `fault`; no row changed is a success.
    virtual bool Execute(const QString& sql, Fault& fault) = 0;

    /// False when it is certain beforehand that rows of the table can't be stored or removed: a store on a disk that can
    /// only be read, a server or a role that takes no writes.
    virtual bool MayWrite(const QString& /*table*/) { return true; }

    /// Closes the connection; a later call of the other two is a fault.
    virtual void Close() = 0;
};

/// Opens the store that `connectionString` names ("Provider=…;User ID=…;Password=…;Data Source=…;"; keys in any case,
/// unknown keys ignored, a trailing semicolon allowed). The provider chooses the engine: "Microsoft.ACE.OLEDB.12.0",
/// "Microsoft.Jet.OLEDB.4.0" and "SQLite" open an SQLite file at the data source; a relative path is read from
/// `installRoot`, and either path separator will do. It never creates a file. An empty file, a file that is no store, a
/// missing file and an unknown provider are failed opens. "PostgreSQL" opens the database "Initial Catalog" of the
/// server "Data Source" (a host or the folder of a socket, with ":port" where it isn't the usual one), a certified one
/// where `installRoot` asks for it (ServerAuthority); a connection that breaks is opened again by the next statement. A
/// statement waits `patience` milliseconds for another process's lock. Returns null on a fault and fills `fault`.
std::unique_ptr<Connection> OpenConnection(const QString& connectionString, const QString& installRoot, Fault& fault,
                                           int patience = kPatience);

/// A name of the store that a connection string leads to: the same for all that lead there. The file's path, or the
/// server with the database.
QString StoreName(const QString& connectionString, const QString& installRoot);

/// A text that is another one after any process has changed the store: cheap to ask for, without opening anything. Two
/// changes within a moment may share one, so who must not miss any looks now and then all the same. Empty for a store
/// that can't tell.
QString ChangeMark(const QString& connectionString, const QString& installRoot);

}  // namespace store
