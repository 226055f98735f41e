#include "bench/bare_engine.h"

#include <sqlite3.h>

#include <QRegularExpression>
#include <QSqlRecord>
#include <QVariant>

#include "bench/statement_trace.h"
#include "session/schema.h"
#include "setup/tree_files.h"
#include "store/like_function.h"
#include "store/postgres_link.h"

namespace bench {
namespace {

class BareFile : public BareEngine {
  public:
    explicit BareFile(sqlite3* engine) : engine_(engine) {}
    ~BareFile() override { sqlite3_close(engine_); }
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    int Step(const QString& sql, int mostRows) override {
        sqlite3_stmt* statement = Prepared(sql);
        if (!statement) return -1;
        int rows = 0;
        int code = SQLITE_ROW;
        while (rows < mostRows && (code = sqlite3_step(statement)) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(statement); ++column)
                sqlite3_column_text(statement, column);
            ++rows;
        }
        sqlite3_finalize(statement);
        return code == SQLITE_DONE || rows == mostRows ? rows : -1;
    }

    QString Value(const QString& sql) override {
        sqlite3_stmt* statement = Prepared(sql);
        QString value;
        if (statement && sqlite3_step(statement) == SQLITE_ROW)
            value = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
        return value;
    }

  private:
    sqlite3_stmt* Prepared(const QString& sql) const {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(engine_, sql.toUtf8().constData(), -1, &statement, nullptr);
        return statement;
    }

    sqlite3* engine_;
};

class BareServer : public BareEngine {
  public:
    explicit BareServer(std::unique_ptr<store::PostgresLink> link) : link_(std::move(link)) {}

    int Step(const QString& sql, int mostRows) override {
        store::Fault fault;
        QSqlQuery query = link_->NewQuery();
        query.setForwardOnly(true);
        if (!store::PostgresLink::Start(query, sql, fault)) return -1;
        int rows = 0;
        for (const int width = query.record().count(); rows < mostRows && query.next(); ++rows)
            for (int column = 0; column < width; ++column)
                query.value(column).toString();
        return rows;
    }

    QString Value(const QString& sql) override {
        store::Fault fault;
        QSqlQuery query = link_->NewQuery();
        return store::PostgresLink::Start(query, sql, fault) && query.next() ? query.value(0).toString() : QString();
    }

  private:
    std::unique_ptr<store::PostgresLink> link_;
};

std::unique_ptr<BareEngine> OpenFile(const QString& path, BareEngine::Use use, BareEngine::Like like) {
    sqlite3* engine = nullptr;
    const int flags = use == BareEngine::Use::Writing ? SQLITE_OPEN_READWRITE : SQLITE_OPEN_READONLY;
    bool good = sqlite3_open_v2(path.toUtf8().constData(), &engine, flags, nullptr) == SQLITE_OK;
    auto opened = std::make_unique<BareFile>(engine);
    sqlite3_busy_timeout(engine, store::kPatience);
    if (good && like == BareEngine::Like::Ours) good = store::RegisterLike(engine) == SQLITE_OK;
    return good ? std::move(opened) : nullptr;
}

// What the program sets on a link of its own decides how the server goes about a statement.
std::vector<Recorded> SettingsOfTheProgram(const QString& place) {
    if (!StatementTrace::Watching()) return {};
    store::Fault fault;
    StatementTrace::Begin();
    const auto program = store::OpenConnection(place, {}, fault);
    std::vector<Recorded> settings;
    for (const Traced& statement : StatementTrace::End())
        if (statement.sql.startsWith(QLatin1String("SET"))) settings.push_back({statement.sql});
    return settings;
}

std::unique_ptr<BareEngine> OpenServer(const QString& place) {
    store::Fault fault;
    auto link = store::PostgresLink::Open(store::LoginOf(store::ConnectionString(place)), {}, fault);
    if (!link) return nullptr;
    auto opened = std::make_unique<BareServer>(std::move(link));
    return opened->StepAll(SettingsOfTheProgram(place)) >= 0 ? std::move(opened) : nullptr;
}

QString DeleteOf(const QString& insert) {
    static const QRegularExpression shape(
        QStringLiteral("INSERT INTO [\\[\"]?([^\\]\" (]+)[\\]\"]? *\\((.*?)\\) *VALUES"));
    static const QRegularExpression literal(QStringLiteral("'([^']*)'"));
    const auto found = shape.match(insert);
    const session::Table* table = session::FindTable(found.captured(1));
    if (!table) return {};
    QStringList conditions;
    auto values = literal.globalMatch(insert, found.capturedEnd());
    for (const QString& column : table->key)
        conditions << "\"" + column + "\" = '" + (values.hasNext() ? values.next().captured(1) : QString()) + "'";
    return "DELETE FROM \"" + table->name + "\" WHERE " + conditions.join(" AND ");
}

}  // namespace

std::unique_ptr<BareEngine> BareEngine::Open(const QString& place, Use use, Like like) {
    return IsServer(place) ? OpenServer(place) : OpenFile(place, use, like);
}

int BareEngine::StepAll(const std::vector<Recorded>& statements) {
    int rows = 0;
    for (const auto& [sql, mostRows] : statements) {
        const int found = Step(sql, mostRows);
        if (found < 0) return -1;
        rows += found;
    }
    return rows;
}

QString MainPlace(const setup::Tree& tree, const std::optional<setup::ServerAdmin>& admin) {
    const setup::OpenTree open = setup::OpenStores(tree);
    if (!open.config) return {};
    const auto value = [&open](const QString& column) {
        return setup::ReadValue(*open.config, "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'", column);
    };
    if (open.dbKind != "S") return setup::MainStoreFile(tree, *open.config);
    return QString("Provider=%1;User ID=%2;Password=%3;Data Source=%4;Initial Catalog=%5;")
        .arg(value("プロバイダ名"), admin ? admin->user : value("ユーザーID"),
             admin ? admin->password : value("パスワード"), value("サーバー名"), value("データベース名"));
}

bool IsServer(const QString& place) {
    return place.startsWith(QLatin1String("Provider="));
}

QString EngineInWords(const QString& place) {
    if (!IsServer(place)) return QStringLiteral("SQLite %1").arg(QLatin1String(sqlite3_libversion()));
    const auto server = BareEngine::Open(place);
    if (!server) return QStringLiteral("PostgreSQL");
    const auto show = [&server](const QString& setting) { return server->Value("SHOW " + setting); };
    return QString("PostgreSQL %1 (fsync %2, shared_buffers %3)")
        .arg(show("server_version"), show("fsync"), show("shared_buffers"));
}

bool TakeBack(BareEngine& engine, const std::vector<Recorded>& statements) {
    static const QRegularExpression drawn(QStringLiteral("\"?連番\"? = '[0-9]+'"));
    bool good = true;
    for (const auto& [sql, mostRows] : statements) {
        if (sql.startsWith(QLatin1String("INSERT")))
            good = engine.Step(DeleteOf(sql)) >= 0 && good;
        else if (sql.startsWith(QLatin1String("UPDATE")) && sql.contains(drawn))
            good = engine.Step(QString(sql).replace(drawn, QStringLiteral("\"連番\" = '00000000'"))) >= 0 && good;
    }
    return good;
}

}  // namespace bench
