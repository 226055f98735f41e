#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <memory>

#include "store/connection.h"

namespace store {

/// One open SQLite file under a connection name of its own; closed and forgotten when it goes. To be used by the thread
/// that opened it.
class SqliteFile {
  public:
    enum class Mode {
        Existing,  ///< an existing file only: nothing is ever created
        Create,    ///< a new file (the caller made sure that there is none)
    };

    /// Opens the file at an absolute path. Another process's lock is waited for, `patience` milliseconds a statement.
    /// Returns null on a fault and fills `fault`. A file that can only be read opens too.
    static std::unique_ptr<SqliteFile> Open(const QString& path, Mode mode, Fault& fault, int patience = kPatience);

    ~SqliteFile();
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;

    /// A query on this file that has not run yet.
    QSqlQuery NewQuery() const;

    /// True when the last read or write that the system refused found no room on the disk.
    bool DiskWasFull() const;

    /// Runs one statement and drops its result. Returns false on a fault and fills `fault`.
    bool Run(const QString& sql, Fault& fault) const;

  private:
    explicit SqliteFile(QString name);

    QString name_;
    QSqlDatabase database_;
};

}  // namespace store
