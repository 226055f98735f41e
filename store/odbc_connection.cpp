#include "store/odbc_connection.h"

#include <QElapsedTimer>
#include <QLibrary>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlResult>
#include <QVariant>
#include <algorithm>
#include <array>

#include "store/fault_kinds.h"
#include "store/odbc_engine.h"
#include "store/patience.h"
#include "store/qt_query.h"

namespace store {
namespace {

constexpr auto kNameOfEngine = static_cast<unsigned short>(17);  // SQL_DBMS_NAME
constexpr int kConnectionDead = 1209;                            // SQL_ATTR_CONNECTION_DEAD
constexpr short kStatementHandle = 3;                            // SQL_HANDLE_STMT

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

    // The five characters by which the driver tells what its last fault on a statement was about; empty for none.
    static QString StateOf(const QSqlQuery& query) {
        using GetRecord = short (*)(short, void*, short, char16_t*, int*, char16_t*, short, short*);
        const auto ask = reinterpret_cast<GetRecord>(Resolve("SQLGetDiagRecW"));
        const QVariant handle = query.result() ? query.result()->handle() : QVariant();
        if (!ask || !handle.isValid()) return {};
        std::array<char16_t, 6> state{};
        std::array<char16_t, 256> words{};
        int number = 0;
        short length = 0;
        const short code = ask(kStatementHandle, *static_cast<void* const*>(handle.constData()), 1, state.data(),
                               &number, words.data(), short(words.size()), &length);
        return Succeeded(code) ? QString::fromUtf16(state.data()) : QString();
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

    bool Open(const QString& text, int seconds, Fault& fault) {
        database_.setConnectOptions(QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=%1").arg(seconds));
        database_.setDatabaseName(text);
        if (database_.open()) return true;
        fault = FaultOf(database_.lastError());
        return false;
    }

    QSqlQuery NewQuery() const { return QSqlQuery(database_); }
    QString EngineName() const { return DriverManager::EngineName(database_); }
    // To be asked after a fault. A driver may go on for ever without noticing that the server went away.
    bool IsDead() const {
        Fault unused;
        return !database_.isOpen() || DriverManager::IsDead(database_) || !Run(QStringLiteral("SELECT 1"), unused);
    }

    static bool Start(QSqlQuery& query, const QString& sql, Fault& fault) {
        if (StartQuery(query, sql, fault)) return true;
        fault.kind = KindOfSqlState(DriverManager::StateOf(query));
        return false;
    }

    bool Run(const QString& sql, Fault& fault) const {
        QSqlQuery query = NewQuery();
        const bool done = Start(query, sql, fault);
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
    OdbcDoor(const ConnectionString& parts, const QString& installRoot)
        : name_(parts.Value(QStringLiteral("Provider")).section(u':', 1).trimmed()),
          sourceAttributes_(OdbcAttributes(parts, installRoot, false)),
          driverAttributes_(OdbcAttributes(parts, installRoot, true)) {}

    std::unique_ptr<OdbcSession> Open(const OdbcEngine*& engine, int patience, int seconds, Fault& fault) const {
        auto session = Connect(seconds, fault);
        if (!session) return nullptr;
        const QString name = session->EngineName();
        engine = FindOdbcEngine(name);
        if (!engine) {
            fault = {0, QStringLiteral("ODBC の先のデータベースには対応していません: 「%1」").arg(name)};
        } else if (!session->CarriesJapanese()) {
            fault = {0, QStringLiteral("ODBC ドライバが日本語を正しく伝えません: %1").arg(name_)};
        } else if (!engine->settings || session->Run(engine->settings(patience), fault)) {
            return session;
        }
        return nullptr;
    }

  private:
    std::unique_ptr<OdbcSession> Connect(int seconds, Fault& fault) const {
        const QString driver = name_.startsWith(u'{') ? name_ : u'{' + name_ + u'}';
        Fault asSource;
        auto session = std::make_unique<OdbcSession>();
        if (!name_.startsWith(u'{') && session->Open(AsSource(), seconds, asSource)) return session;
        Fault asDriver;
        if (session->Open("DRIVER=" + driver + u';' + driverAttributes_, seconds, asDriver)) return session;
        fault = {asSource.number ? asSource.number : asDriver.number,
                 QStringLiteral("ODBC の「%1」に接続できません: %2 %3")
                     .arg(name_, asSource.description, asDriver.description),
                 FaultKind::Away};
        return nullptr;
    }

    // Qt writes "DSN=" before a text in which it finds neither a driver nor a server.
    QString AsSource() const {
        const QString text = name_ + u';' + sourceAttributes_;
        const bool asItIs = text.contains(QLatin1String("DRIVER="), Qt::CaseInsensitive) ||
                            text.contains(QLatin1String("SERVER="), Qt::CaseInsensitive);
        return asItIs ? "DSN=" + text : text;
    }

    QString name_;
    QString sourceAttributes_, driverAttributes_;
};

class OdbcConnection : public Connection {
  public:
    OdbcConnection(OdbcDoor door, int patience) : door_(std::move(door)), patience_(patience) {}

    /// Opens the connection when there is none. Who waited in vain once doesn't wait as long again.
    bool Open(Fault& fault) {
        if (session_) return true;
        session_ = door_.Open(engine_, patience_, reachable_ ? kConnectSeconds : kImpatientConnectSeconds, fault);
        reachable_ = session_ != nullptr;
        patient_ = true;
        return reachable_;
    }

    std::unique_ptr<Recordset> Query(const QString& sql, Fault& fault, int mostRows) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) return nullptr;
        const bool all = mostRows == kAllRows || !engine_->limited;
        std::unique_ptr<Recordset> rows;
        {
            QSqlQuery query = session_->NewQuery();
            query.setForwardOnly(true);
            if (OdbcSession::Start(query, all ? *rewritten : engine_->limited(*rewritten, mostRows), fault))
                rows = ReadRows(query, mostRows, fault);
            query.finish();
        }
        Learn(rows != nullptr, fault);
        return rows;
    }

    bool Execute(const QString& sql, Fault& fault) override {
        const auto rewritten = Prepare(sql, fault);
        if (!rewritten) return false;
        const bool done = session_->Run(*rewritten, fault);
        Learn(done, fault);
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
        if (!Open(fault)) return std::nullopt;
        started_.start();
        return engine_->dialect(sql, fault);
    }

    // The drivers don't say in one way that a lock was waited for in vain, so the clock has to. That of the engine may
    // run a little faster.
    void Learn(bool done, Fault& fault) {
        const auto took = started_.elapsed();
        if (!done && session_->IsDead()) {
            fault.kind = FaultKind::Away;
            session_.reset();
            return;
        }
        const bool wanted = done || (patient_ && took < patience_ - patience_ / 10);
        if (!done && fault.kind == FaultKind::Other && engine_->kind)
            fault.kind = engine_->kind(fault.number, fault.description);
        if (!wanted && patient_ && fault.kind == FaultKind::Other) fault.kind = FaultKind::Locked;
        if (wanted == patient_ || !engine_->settings) return;
        patient_ = wanted;
        Fault unused;
        session_->Run(engine_->settings(patient_ ? patience_ : std::min(patience_, kImpatience)), unused);
    }

    OdbcDoor door_;
    const OdbcEngine* engine_ = nullptr;
    std::unique_ptr<OdbcSession> session_;
    QElapsedTimer started_;
    int patience_;  // milliseconds
    bool patient_ = true;
    bool reachable_ = true;
    bool closed_ = false;
};

}  // namespace

std::unique_ptr<Connection> OpenOdbcConnection(const ConnectionString& parts, const QString& installRoot, Fault& fault,
                                               int patience) {
    auto connection = std::make_unique<OdbcConnection>(OdbcDoor(parts, installRoot), patience);
    return connection->Open(fault) ? std::move(connection) : nullptr;
}

}  // namespace store
