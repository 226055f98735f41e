#include "store/odbc_engine.h"

#include <QDir>
#include <QFileInfo>
#include <array>

#include "store/fault_kinds.h"
#include "store/postgres_connection.h"
#include "store/postgres_dialect.h"
#include "store/postgres_link.h"
#include "store/sql_tokens.h"
#include "store/sqlite_dialect.h"

namespace store {
namespace {

std::optional<QString> AsItIs(const QString& sql, Fault& fault) {
    return ReadStatement(sql, fault) ? std::optional(sql) : std::nullopt;
}

QString BusyTimeout(int patience) {
    return QStringLiteral("PRAGMA busy_timeout = %1").arg(patience);
}

// The first name that fits counts. An engine that speaks the program's SQL itself gets it unchanged.
constexpr std::array kEngines = {
    OdbcEngine{QLatin1String("SQLite"), ToSqliteOverOdbc, BusyTimeout, LimitedTo, KindOfSqlite},
    OdbcEngine{QLatin1String("PostgreSQL"), ToPostgres, PostgresClientSettings, LimitedTo},
    OdbcEngine{QLatin1String("ACCESS"), AsItIs, nullptr, nullptr},
    OdbcEngine{QLatin1String("Microsoft Jet"), AsItIs, nullptr, nullptr},
};

bool IsBeyond(const QString& text) {
    for (const QChar c : text)
        if (c.isSurrogate()) return true;
    return false;
}

// 'a𠮷b' as ('a' || char(134071) || 'b'); nothing when it holds half a character.
std::optional<QString> SpelledOut(const QString& literal) {
    QString written = QStringLiteral("(");
    qsizetype start = 0;
    for (qsizetype i = 0; i < literal.size(); ++i) {
        if (!literal[i].isSurrogate()) continue;
        if (!literal[i].isHighSurrogate() || !literal[i + 1].isLowSurrogate()) return std::nullopt;
        written += literal.mid(start, i - start) +
                   QStringLiteral("' || char(%1) || '").arg(QChar::surrogateToUcs4(literal[i], literal[i + 1]));
        start = i += 2;
        --i;
    }
    return written + literal.mid(start) + u')';
}

// A part of an ODBC connection string. In braces only where it needs them: not every driver takes them off again.
QString Attribute(const char* key, const QString& value) {
    if (value.isEmpty()) return {};
    QString written = value;
    if (value.contains(u';') || value.contains(u'{') || value.contains(u'}'))
        written = u'{' + written.replace(u'}', QLatin1String("}}")) + u'}';
    return QLatin1String(key) + u'=' + written + u';';
}

QString AbsoluteIfFile(const QString& source, const QString& installRoot) {
    QString path = source;
    path.replace(u'\\', u'/');
    path = QDir::cleanPath(QDir(installRoot).absoluteFilePath(path));
    return QFileInfo(path).isFile() ? path : source;
}

QString ServerAttributes(const QString& server) {
    PostgresLogin login;
    TakeServer(server, login);
    QString text = Attribute("Server", login.host);
    if (login.port > 0) text += QStringLiteral("Port=%1;").arg(login.port);
    return text;
}

// How much the other end is trusted. A driver takes of these what it knows, and passes over the others.
QString TrustAttributes(const QString& installRoot, bool bareServer) {
    const QString authority = ServerAuthority(installRoot);
    const QString keepAlive = QString(kKeepAlive).replace(u';', u' ');
    if (!authority.isEmpty())
        return QStringLiteral("SSLmode=verify-full;pqopt={%1 %2};").arg(keepAlive, AuthorityOption(authority));
    return bareServer ? QStringLiteral("SSLmode=prefer;pqopt={%1};").arg(keepAlive) : QString();
}

}  // namespace

const OdbcEngine* FindOdbcEngine(const QString& name) {
    for (const OdbcEngine& engine : kEngines)
        if (name.startsWith(engine.name, Qt::CaseInsensitive)) return &engine;
    return nullptr;
}

std::optional<QString> ToSqliteOverOdbc(const QString& sql, Fault& fault) {
    const auto rewritten = ToSqlite(sql, fault);
    if (!rewritten || !IsBeyond(*rewritten)) return rewritten;
    QString written;
    qsizetype at = 0;
    if (const auto tokens = TokenizedSql::Read(*rewritten)) {
        for (std::size_t i = 0; i < tokens->Size(); ++i) {
            const SqlToken& token = tokens->At(i);
            const QString text = tokens->Slice({i, i + 1});
            if (token.kind != SqlToken::Kind::Text || !IsBeyond(text)) continue;
            const auto spelled = SpelledOut(text);
            if (!spelled) break;
            written += rewritten->mid(at, token.start - at) + *spelled;
            at = token.End();
        }
    }
    written += rewritten->mid(at);
    // The driver manager would send another text in its place, cut down to single bytes.
    if (!IsBeyond(written)) return written;
    fault = {0, QStringLiteral("SQL 文に ODBC で送れない文字があります。")};
    return std::nullopt;
}

QString OdbcAttributes(const ConnectionString& parts, const QString& installRoot, bool bareDriver) {
    const QString source = parts.Value(QStringLiteral("Data Source"));
    const QString database = parts.Value(QStringLiteral("Initial Catalog"));
    // A driver for files would make one that is missing.
    QString text = database.isEmpty() ? Attribute("Database", AbsoluteIfFile(source, installRoot)) + "NoCreat=1;"
                                      : ServerAttributes(source) + Attribute("Database", database);
    text += TrustAttributes(installRoot, bareDriver && !database.isEmpty());
    return text + Attribute("UID", parts.Value(QStringLiteral("User ID"))) +
           Attribute("PWD", parts.Value(QStringLiteral("Password")));
}

}  // namespace store
