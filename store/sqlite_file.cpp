#include "store/sqlite_file.h"

#include <sqlite3.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QUrl>
#include <QVariant>
#include <cerrno>

#include "store/like_function.h"
#include "store/qt_query.h"

namespace store {
namespace {

// As an URI, since only an URI can forbid the engine to create a missing file.
QString UriOf(const QString& path, SqliteFile::Mode mode) {
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(path, "/:"));
    return QStringLiteral("file://") + (path.startsWith(u'/') ? QString() : QStringLiteral("/")) + encoded +
           (mode == SqliteFile::Mode::Create ? QStringLiteral("?mode=rwc") : QStringLiteral("?mode=rw"));
}

}  // namespace

SqliteFile::SqliteFile(QString name)
    : name_(std::move(name)), database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)) {}

SqliteFile::~SqliteFile() {
    database_.close();
    // The list of connections must hold the last reference, or removing the name would be reported as a misuse.
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

std::unique_ptr<SqliteFile> SqliteFile::Open(const QString& path, Mode mode, Fault& fault, int patience) {
    std::unique_ptr<SqliteFile> file(new SqliteFile(NewConnectionName()));
    file->database_.setConnectOptions(QStringLiteral("QSQLITE_OPEN_URI;QSQLITE_BUSY_TIMEOUT=%1").arg(patience));
    file->database_.setDatabaseName(UriOf(path, mode));
    if (!file->database_.open()) {
        fault = FaultOf(file->database_.lastError());
        return nullptr;
    }
    return InstallLike(file->database_, fault) ? std::move(file) : nullptr;
}

QSqlQuery SqliteFile::NewQuery() const {
    return QSqlQuery(database_);
}

bool SqliteFile::DiskWasFull() const {
    const QVariant handle = database_.driver()->handle();
    const int error = sqlite3_system_errno(*static_cast<sqlite3* const*>(handle.constData()));
#ifdef EDQUOT
    if (error == EDQUOT) return true;
#endif
    return error == ENOSPC;
}

bool SqliteFile::Run(const QString& sql, Fault& fault) const {
    QSqlQuery query = NewQuery();
    const bool done = StartQuery(query, sql, fault);
    query.finish();
    return done;
}

}  // namespace store
