#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <array>

#include "store/connection.h"
#include "store/connection_string.h"
#include "store/odbc_connection.h"
#include "store/postgres_connection.h"
#include "store/postgres_link.h"
#include "store/sqlite_connection.h"

namespace store {
namespace {

using Opener = std::unique_ptr<Connection> (*)(const ConnectionString&, const QString& installRoot, Fault&,
                                               int patience);

QString FilePath(const QString& dataSource, const QString& installRoot) {
    // Stored paths may have been written on another platform.
    QString path = dataSource;
    path.replace(u'\\', u'/');
    QString root = installRoot;
    root.replace(u'\\', u'/');
    return QDir::cleanPath(QDir(root).absoluteFilePath(path));
}

std::unique_ptr<Connection> OpenFile(const ConnectionString& parts, const QString& installRoot, Fault& fault,
                                     int patience) {
    const QString source = parts.Value(QStringLiteral("Data Source"));
    if (source.isEmpty()) {
        fault = {0, QStringLiteral("接続文字列にデータソースがありません。")};
        return nullptr;
    }
    return OpenSqliteConnection(FilePath(source, installRoot), fault, patience);
}

// The engine touches its file at each commit, or the log beside it.
QString FileMark(const ConnectionString& parts, const QString& installRoot) {
    const QString path = FilePath(parts.Value(QStringLiteral("Data Source")), installRoot);
    QString mark;
    for (const QString& file : {path, path + "-wal"}) {
        const QFileInfo info(file);
        mark += QStringLiteral("%1 %2 ").arg(info.lastModified().toMSecsSinceEpoch()).arg(info.size());
    }
    return mark;
}

std::unique_ptr<Connection> OpenServer(const ConnectionString& parts, const QString& installRoot, Fault& fault,
                                       int patience) {
    PostgresLogin login = LoginOf(parts);
    login.authority = ServerAuthority(installRoot);
    if (login.database.isEmpty()) {
        fault = {0, QStringLiteral("接続文字列にデータベース名がありません。")};
        return nullptr;
    }
    return OpenPostgresConnection(login, fault, patience);
}

struct Provider {
    QLatin1String name;
    Opener open;
    QString (*mark)(const ConnectionString&, const QString& installRoot);
};

// An engine joins the house here.
constexpr std::array kProviders = {
    Provider{QLatin1String("Microsoft.ACE.OLEDB.12.0"), OpenFile, FileMark},
    Provider{QLatin1String("Microsoft.Jet.OLEDB.4.0"), OpenFile, FileMark},
    Provider{QLatin1String("SQLite"), OpenFile, FileMark},
    Provider{QLatin1String("PostgreSQL"), OpenServer, nullptr},
    Provider{QLatin1String("ODBC:"), OpenOdbcConnection, nullptr},
};

// A name with a colon at its end is the beginning of a provider's text.
bool Fits(const Provider& provider, const QString& text) {
    return provider.name.endsWith(QLatin1Char(':')) ? text.startsWith(provider.name, Qt::CaseInsensitive)
                                                    : text.compare(provider.name, Qt::CaseInsensitive) == 0;
}

const Provider* ProviderOf(const ConnectionString& parts) {
    const QString name = parts.Value(QStringLiteral("Provider"));
    for (const Provider& provider : kProviders)
        if (Fits(provider, name)) return &provider;
    return nullptr;
}

}  // namespace

std::unique_ptr<Connection> OpenConnection(const QString& connectionString, const QString& installRoot, Fault& fault,
                                           int patience) {
    const ConnectionString parts(connectionString);
    if (const Provider* provider = ProviderOf(parts)) return provider->open(parts, installRoot, fault, patience);
    fault = {
        0, QStringLiteral("データベースのプロバイダ名が不明です: 「%1」").arg(parts.Value(QStringLiteral("Provider")))};
    return nullptr;
}

QString StoreName(const QString& connectionString, const QString& installRoot) {
    const ConnectionString parts(connectionString);
    const QString source = parts.Value(QStringLiteral("Data Source"));
    const Provider* provider = ProviderOf(parts);
    const bool isFile = provider && provider->mark;
    if (!isFile) return source + "\n" + parts.Value(QStringLiteral("Initial Catalog"));
    const QString path = FilePath(source, installRoot);
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

QString ChangeMark(const QString& connectionString, const QString& installRoot) {
    const ConnectionString parts(connectionString);
    const Provider* provider = ProviderOf(parts);
    return provider && provider->mark ? provider->mark(parts, installRoot) : QString();
}

}  // namespace store
