#include "store/odbc_connection.h"

#include <QLibrary>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QVariant>
#include <array>

#include "store/odbc_engine.h"
#include "store/qt_query.h"

namespace store {
namespace {

constexpr auto kNameOfEngine = static_cast<unsigned short>(17);  // SQL_DBMS_NAME
constexpr int kConnectionDead = 1209;                            // SQL_ATTR_CONNECTION_DEAD
constexpr int kLongestOpen = 20;                                 // seconds

// The questions that Qt doesn't put to a driver, put to the driver manager that Qt's plugin has loaded already.
class DriverManager {
  public:
    static QString EngineName(const QSqlDatabase& database) {
        using GetInfo = short (*)(void*, unsigned short, void*, short, short*);
        const auto ask = reinterpret_cast<GetInfo>(Resolve("SQLGetInfoW"));
        std::array<char16_t, 256> name{};
        short bytes = 0;
        if (!ask || !Succeeded(ask(Handle(database), kNameOfEngine, name.data(), short(sizeof name), &bytes)))
            return {};
        return QString::fromUtf16(name.data());
    }

    // False too when the driver doesn't know.
    static bool IsDead(const QSqlDatabase& database) {
        using GetAttribute = short (*)(void*, int, void*, int, int*);
        const auto ask = reinterpret_cast<GetAttribute>(Resolve("SQLGetConnectAttrW"));
        unsigned int dead = 0;
        return ask && Succeeded(ask(Handle(database), kConnectionDead, &dead, 0, nullptr)) && dead == 1;
    }

  private:
    static bool Succeeded(short code) { return code == 0 || code == 1; }

    static void* Handle(const QSqlDatabase& database) {
        const QVariant handle = database.driver()->handle();
        return *static_cast<void* const*>(handle.constData());
    }

    static QFunctionPointer Resolve(const char* symbol) {
#ifdef Q_OS_WIN
        static QLibrary library(QStringLiteral("odbc32"));
#else
        static QLibrary library(QStringLiteral("odbc"), 2);
#endif
        return library.resolve(symbol);
    }
};

/// One open ODBC connection under a name of its own; closed and forgotten when it goes.
class OdbcSession {
  public:
    OdbcSession() : database_(QSqlDatabase::addDatabase(QStringLiteral("QODBC"), name_)) {}
    ~OdbcSession() {
        database_.close();
        // The list of connections must hold the last reference, or removing the name would be reported as a misuse.
        database_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(name_);
    }
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;

    bool Open(const QString& text, Fault& fault) {
        database_.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=%1").arg(kLongestOpen));
        database_.setDatabaseName(text);
        if (database_.open()) return true;
        fault = FaultOf(database_.lastError());
        return false;
    }

    QSqlQuery NewQuery() const { return QSqlQuery(database_); }
    QString EngineName() const { return DriverManager::EngineName(database_); }
    bool IsDead() const { return !database_.isOpen() || DriverManager::IsDead(database_); }

    bool Run(const QString& sql, Fault& fault) const {
        QSqlQuery query = NewQuery();
        const bool done = StartQuery(query, sql, fault);
        query.finish();
        return done;
    }

    // A driver that takes texts in an encoding of its own changes them on the way, there or back.
    bool CarriesJapanese() const {
        const QString sample = QStringLiteral("活動手帳ｶﾅ髙①〜");
        QSqlQuery query = NewQuery();
        Fault unused;
        return StartQuery(query, QStringLiteral("SELECT '%1' AS 見本").arg(sample), unused) && query.next() &&
               query.value(0).toString() == sample;
    }

  private:
    QString name_ = NewConnectionName();
    QSqlDatabase database_;
};

// What opens the connection, now and again after it broke.
class OdbcDoor {
  public:
    OdbcDoor(const ConnectionString& parts, const QString& installRoot, int patience)
        : name_(parts.Value(QStringLiteral("Provider")).section(u':', 1).trimmed()),
          attributes_(OdbcAttributes(parts, installRoot)),
          patience_(patience) {}

    std::unique_ptr<OdbcSession> Open(const OdbcEngine*& engine, Fault& fault) const {
        auto session = Connect(fault);
        if (!session) return nullptr;
        const QString name = session->EngineName();
        engine = FindOdbcEngine(name);
        if (!engine) {
            fault = {0, QStringLiteral("ODBC の先のデータベースには対応していません: 「%1」").arg(name)};
        } else if (!session->CarriesJapanese()) {
            fault = {0, QStringLiteral("ODBC ドライバが日本語を正しく伝えません: %1").arg(name_)};
        } else if (engine->patience.isEmpty() || session->Run(QString(engine->patience).arg(patience_), fault)) {
            return session;
        }
        return nullptr;
    }

  private:
    std::unique_ptr<OdbcSession> Connect(Fault& fault) const {
        const QString driver = name_.startsWith(u'{') ? name_ : u'{' + name_ + u'}';
        Fault asSource;
        auto session = std::make_unique<OdbcSession>();
        if (!name_.startsWith(u'{') && session->Open("DSN=" + name_ + u';' + attributes_, asSource)) return session;
        Fault asDriver;
        if (session->Open("DRIVER=" + driver + u';' + attributes_, asDriver)) return session;
        fault = {asSource.number ? asSource.number : asDriver.number,
                 QStringLiteral("ODBC の「%1」に接続できません: %2 %3")
                     .arg(name_, asSource.description, asDriver.description)};
        return nullptr;
    }

    QString name_;
    QString attributes_;
    int patience_;  // milliseconds
};

class OdbcConnection : public Connection {
  public:
    OdbcConnection(OdbcDoor door, const OdbcEngine* engine, std::unique_ptr<OdbcSession> session)
        : door_(std::move(door)), engine_(engine), session_(std::move(session)) {}

    std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) return nullptr;
        std::unique_ptr<Recordset> rows;
        {
            QSqlQuery query = session_->NewQuery();
            query.setForwardOnly(true);
            if (StartQuery(query, *rewritten, fault)) rows = ReadRows(query, mostRows, fault);
            query.finish();
        }
        if (!rows) LeaveIfDead();
        return rows;
    }

    bool Execute(const QString& sql, Fault& fault) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) return false;
        const bool done = session_->Run(*rewritten, fault);
        if (!done) LeaveIfDead();
        return done;
    }

    void Close() override {
        session_.reset();
        closed_ = true;
    }

  private:
    std::optional<QString> Prepare(const QString& sql, Fault& fault) {
        if (closed_) {
            fault = {0, QStringLiteral("データベースの接続は閉じています。")};
            return std::nullopt;
        }
        if (!session_) session_ = door_.Open(engine_, fault);
        return session_ ? engine_->dialect(sql, fault) : std::nullopt;
    }

    void LeaveIfDead() {
        if (session_->IsDead()) session_.reset();
    }

    OdbcDoor door_;
    const OdbcEngine* engine_;
    std::unique_ptr<OdbcSession> session_;
    bool closed_ = false;
};

}  // namespace

std::unique_ptr<Connection> OpenOdbcConnection(const ConnectionString& parts, const QString& installRoot, Fault& fault,
                                               int patience) {
    OdbcDoor door(parts, installRoot, patience);
    const OdbcEngine* engine = nullptr;
    auto session = door.Open(engine, fault);
    return session ? std::make_unique<OdbcConnection>(std::move(door), engine, std::move(session)) : nullptr;
}

}  // namespace store
