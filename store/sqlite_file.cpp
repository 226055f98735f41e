#include "store/sqlite_file.h"

#include <QSqlError>
#include <QUrl>
#include <atomic>

#include "store/like_function.h"

namespace store {
namespace {

QString NewName() {
    static std::atomic<int> count = 0;
    return QStringLiteral("katsudo-%1").arg(++count);
}

// As an URI, since only an URI can forbid the engine to create a missing file.
QString UriOf(const QString& path, SqliteFile::Mode mode) {
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(path, "/:"));
    return QStringLiteral("file://") + (path.startsWith(u'/') ? QString() : QStringLiteral("/")) + encoded +
           (mode == SqliteFile::Mode::Create ? QStringLiteral("?mode=rwc") : QStringLiteral("?mode=rw"));
}

}  // namespace

Fault FaultOf(const QSqlError& error) {
    Fault fault;
    fault.number = error.nativeErrorCode().toInt();
    fault.description = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    if (fault.description.isEmpty()) {
        fault.description = QStringLiteral("SQL 文を実行できません。");
    }
    return fault;
}

SqliteFile::SqliteFile(QString name)
    : name_(std::move(name)), database_(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_)) {}

SqliteFile::~SqliteFile() {
    database_.close();
    // The list of connections must hold the last reference, or removing the name would be reported as a misuse.
    database_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(name_);
}

std::unique_ptr<SqliteFile> SqliteFile::Open(const QString& path, Mode mode, Fault& fault, int patience) {
    std::unique_ptr<SqliteFile> file(new SqliteFile(NewName()));
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

bool SqliteFile::Start(QSqlQuery& query, const QString& sql, Fault& fault) {
    if (sql.trimmed().isEmpty()) {
        fault = {0, QStringLiteral("SQL 文が空です。")};
        return false;
    }
    // The engine would stop reading at a zero character and run what stands before it.
    if (sql.contains(QChar(u'\0'))) {
        fault = {0, QStringLiteral("SQL 文に NUL 文字があります。")};
        return false;
    }
    if (!query.exec(sql)) {
        fault = FaultOf(query.lastError());
        return false;
    }
    return true;
}

bool SqliteFile::Run(const QString& sql, Fault& fault) const {
    QSqlQuery query = NewQuery();
    const bool done = Start(query, sql, fault);
    query.finish();
    return done;
}

}  // namespace store
