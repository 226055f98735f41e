#include "bench/window/client_bench.h"

#include <sys/resource.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryFile>
#include <QThread>
#include <QWidget>
#include <limits>
#include <map>

#include "bench/bare_engine.h"
#include "bench/statement_trace.h"
#include "bench/window/driven_client.h"
#include "bench/window/window_fill.h"
#include "screen/user_input.h"

namespace bench {
namespace {

constexpr int kPaceMilliseconds = 20;  // between two looks of a waiting client
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

/// Who reports, and on which days nobody has reported yet.
struct Reporter {
    QString login, staff;
    QDateTime now;
};

std::optional<Reporter> FindReporter(const setup::Tree& tree) {
    const setup::OpenTree open = setup::OpenStores(tree);
    if (!open.main) return std::nullopt;
    const QString staff = "SELECT * FROM M担当者 WHERE ログインID <> '' AND 在籍区分 = '0' ORDER BY コード";
    const QString day = setup::ReadValue(*open.main, "SELECT MAX(日付) AS 日付 FROM T営業活動明細", "日付");
    QDate free = QDate::fromString(day, "yyyyMMdd").addDays(1);
    if (!free.isValid()) free = QDate(2026, 4, 1);
    Reporter reporter{setup::ReadValue(*open.main, staff, "ログインID"), setup::ReadValue(*open.main, staff, "コード"),
                      QDateTime(free, QTime(10, 0))};
    return reporter.login.isEmpty() ? std::nullopt : std::optional(reporter);
}

double CpuMilliseconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto milliseconds = [](const timeval& time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

/// The bare engines on the stores of a tree.
class BareStores {
  public:
    BareStores(const QString& main, const QString& config) : main_(main) {
        for (const QString& place : {main, config})
            stores_[place] = BareEngine::Open(place, BareEngine::Use::Writing);
    }
    bool Good() const {
        return std::all_of(stores_.begin(), stores_.end(), [](const auto& store) { return store.second != nullptr; });
    }

    bool Step(const std::vector<Traced>& statements) {
        return std::all_of(statements.begin(), statements.end(), [this](const Traced& statement) {
            const auto store = stores_.find(statement.store);
            return store != stores_.end() && store->second->Step(statement.sql) >= 0;
        });
    }

    /// Takes back what the client wrote into the main store with these statements.
    bool TakeBack(const std::vector<Traced>& statements) {
        std::vector<Recorded> ofMain;
        for (const auto& [store, sql] : statements)
            if (store == main_) ofMain.push_back({sql});
        return bench::TakeBack(*stores_[main_], ofMain);
    }

    /// Takes away all that a measurement left.
    void Forget(const Reporter& who) {
        const QString days =
            " WHERE \"担当者コード\" = '" + who.staff + "' AND \"日付\" >= '" + who.now.toString("yyyyMMdd") + "'";
        stores_[main_]->Step("DELETE FROM \"T営業活動明細\"" + days);
        stores_[main_]->Step("DELETE FROM \"T営業活動\"" + days);
        stores_[main_]->Step("DELETE FROM \"T閲覧\" WHERE \"ユーザID\" LIKE '%" + kBenchComputer + "%'");
    }

  private:
    QString main_;
    std::map<QString, std::unique_ptr<BareEngine>> stores_;
};

/// The client and the engine doing the same in turns, in milliseconds.
struct Pair {
    std::vector<double> client, engine;
    std::size_t statements = 0;
};

/// The gestures of a user who reports, on the client's real windows.
class Session {
  public:
    /// `main` is for looks at what was stored.
    Session(DrivenHost& host, const Reporter& who, BareStores& bare, store::Connection& main, const Effort& effort)
        : host_(host), who_(who), bare_(bare), main_(main), effort_(effort) {}

    /// The whole of it, from the ready screen on.
    void Play() {
        host_.ProcessEvents();
        start = StatementTrace::End();
        form_ = host_.Front();
        for (int slot = 0; slot < effort_.slotCount && problem.isEmpty(); ++slot)
            Save(slot);
        // A saved slot leaves the screen without a staff member.
        Type("担当者コード", who_.staff);
        screen::UserFocus(form_->At("相手先略称"));
        for (int slot = effort_.slotCount - 2; slot >= 0 && problem.isEmpty(); --slot)
            Load(slot);
        if (problem.isEmpty()) Wait();
        atEnd = ResidentMegabytes();
        host_.EndProgram();
    }

    QString problem;
    Pair saves, loads;
    std::vector<Traced> start, look;
    double atEnd = 0;      ///< megabytes
    double waitShare = 0;  ///< of a core

  private:
    static QString NameOf(int slot) { return QString("計測%1").arg(slot); }
    void Type(const char* item, const QString& text) {
        screen::UserFocus(form_->At(item));
        screen::UserType(form_->At(item), text);
    }

    void BeginMeasure() {
        StatementTrace::Begin();
        clock_.start();
    }
    // Painted as well. Then the engine's turn.
    void EndMeasure(Pair& pair) {
        host_.ProcessEvents();
        pair.client.push_back(double(clock_.nsecsElapsed()) / 1e6);
        const std::vector<Traced> statements = StatementTrace::End();
        bool good = bare_.TakeBack(statements);
        pair.engine.push_back(Milliseconds([&] { good = bare_.Step(statements) && good; }));
        pair.statements = statements.size();
        if (!good) problem = "The engine refuses a statement.";
    }

    // A slot of the next day, all typed; the time is that of the answer to "shall it be stored?" and what follows.
    void Save(int slot) {
        screen::UserClick(form_->At("btn_翌日"));
        Type("担当者コード", who_.staff);
        Type("相手先略称", NameOf(slot));
        Type("営業活動摘要", QString("見積を提出。来週返事。").repeated(10));
        host_.ProcessEvents();
        host_.onWait = [this] {
            host_.ProcessEvents();
            BeginMeasure();
            screen::UserClick(host_.Front()->At("btn_登録"));
        };
        screen::UserFocus(form_->At("テイル終了"));
        EndMeasure(saves);
        const QString row = "SELECT * FROM T営業活動明細 WHERE 相手先略称 = '" + NameOf(slot) +
                            "' AND 担当者コード = '" + who_.staff + "' AND 日付 >= '" + who_.now.toString("yyyyMMdd") +
                            "'";
        if (setup::ReadValue(main_, row, "相手先略称").isEmpty()) problem = "A slot isn't stored: " + host_.Problem();
    }

    void Load(int slot) {
        BeginMeasure();
        screen::UserClick(form_->At("btn_前日"));
        EndMeasure(loads);
        if (form_->At("相手先略称").Text() != NameOf(slot))
            problem = "A slot isn't loaded: " + NameOf(slot) + " " + form_->At("相手先略称").Text();
    }

    // The answer never comes.
    void Wait() {
        QElapsedTimer wall;
        double before = 0;
        host_.onSleep = [&] {
            if (host_.Waiting().isEmpty()) return;
            if (!wall.isValid()) {
                wall.start();
                before = CpuMilliseconds();
                StatementTrace::Begin();
            }
            if (wall.elapsed() < effort_.waitMilliseconds) return;
            waitShare = (CpuMilliseconds() - before) / double(wall.elapsed());
            look = StatementTrace::End();
            host_.EndProgram();
        };
        screen::UserClick(form_->At("bak_相手先"));
        host_.onSleep = {};
        if (look.empty()) problem = "The client doesn't wait for another program.";
    }

    DrivenHost& host_;
    const Reporter& who_;
    BareStores& bare_;
    store::Connection& main_;
    const Effort& effort_;
    screen::Form* form_ = nullptr;
    QElapsedTimer clock_;
};

/// The same looks by the bare engine, each on a store opened for it, as a client's is.
double BareWaitShare(const std::vector<Traced>& looks, int milliseconds) {
    const auto look = std::find_if(looks.begin(), looks.end(),
                                   [](const Traced& one) { return one.sql.contains("プログラム連携情報"); });
    if (look == looks.end()) return 0;
    QElapsedTimer wall;
    wall.start();
    const double before = CpuMilliseconds();
    while (wall.elapsed() < milliseconds) {
        if (const auto engine = BareEngine::Open(look->store, BareEngine::Use::Writing)) engine->Step(look->sql);
        QThread::msleep(kPaceMilliseconds);
    }
    return (CpuMilliseconds() - before) / double(wall.elapsed());
}

/// Starts this program with those words; the time until it says that it is ready, and the megabytes that it tells.
std::pair<double, double> StartProcess(const QStringList& words) {
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    process.start(QCoreApplication::applicationFilePath(), words);
    while (!process.canReadLine() && process.waitForReadyRead(60'000)) {
    }
    const double time = double(clock.nsecsElapsed()) / 1e6;
    const QStringList told = QString::fromUtf8(process.readLine()).split(u' ');
    process.waitForFinished();
    return told.value(0) == "ready" ? std::pair(time, told.value(1).toDouble()) : std::pair(-1.0, 0.0);
}

QByteArray AsJson(const std::vector<Traced>& statements) {
    QJsonArray list;
    for (const auto& [store, sql] : statements)
        list.append(QJsonArray{store, sql});
    return QJsonDocument(list).toJson();
}

Row PairRow(const QString& what, std::size_t statements, const std::vector<double>& engine,
            const std::vector<double>& client) {
    return {{what}, {double(statements), Median(engine), Median(client)}};
}

// False when a process doesn't come up.
bool TimeStarts(const QString& root, const Reporter& who, const std::vector<Traced>& statements, const Effort& effort,
                Table& table) {
    QTemporaryFile list;
    if (!list.open() || list.write(AsJson(statements)) < 0 || !list.flush()) return false;
    std::vector<double> client, bare, clientMemory, bareMemory;
    for (int start = 0; start < effort.starts; ++start) {
        const auto [bareTime, bareMegabytes] = StartProcess({"start-bare", list.fileName()});
        const auto [time, megabytes] = StartProcess({"start-client", root, who.login, who.now.toString(Qt::ISODate)});
        if (time < 0 || bareTime < 0) return false;
        client.push_back(time);
        bare.push_back(bareTime);
        clientMemory.push_back(megabytes);
        bareMemory.push_back(bareMegabytes);
    }
    table.rows.push_back(PairRow("start to ready screen, ms", statements.size(), bare, client));
    table.rows.push_back({{"memory on the ready screen, MB"}, {kNone, Median(bareMemory), Median(clientMemory)}});
    return true;
}

void AddSession(const Session& session, const Effort& effort, Table& table) {
    for (const auto& [what, pair] :
         {std::pair("a slot saved, ms", session.saves), std::pair("a slot loaded, ms", session.loads)})
        table.rows.push_back(PairRow(what, pair.statements, pair.engine, pair.client));
    table.rows.push_back(
        {{kWaitShare}, {1, BareWaitShare(session.look, effort.waitMilliseconds) * 100, session.waitShare * 100}});
    table.rows.push_back({{"memory after all that, MB"}, {kNone, kNone, session.atEnd}});
}

void TellReady() {
    QTextStream(stdout) << "ready " << ResidentMegabytes() << '\n' << Qt::flush;
}

}  // namespace

Results RunClientBench(const setup::Tree& tree, const std::optional<setup::ServerAdmin>& admin, const Effort& effort) {
    Results results;
    const auto who = FindReporter(tree);
    const setup::OpenTree open = setup::OpenStores(tree);
    const QString place = MainPlace(tree, admin);
    StatementTrace::Watch(place);
    BareStores bare(place, tree.ConfigStore());
    if (!who || !open.main || !bare.Good()) {
        results.faults << "The stores can't be used, or nobody has a login: " + tree.root;
        return results;
    }
    bare.Forget(*who);
    DrivenHost host;
    Session session(host, *who, bare, *open.main, effort);
    host.onWait = [&session] { session.Play(); };
    StatementTrace::Begin();
    RunClient(host, tree.root, who->now, who->login);
    if (session.problem.isEmpty()) session.problem = host.Problem();
    Table table{table::kClient, {"What"}, {"Statements", kEngine, kProgram}, {}};
    if (session.problem.isEmpty() && !TimeStarts(tree.root, *who, session.start, effort, table))
        session.problem = "A process doesn't come up.";
    bare.Forget(*who);
    if (session.problem.isEmpty())
        AddSession(session, effort, table);
    else
        results.faults << session.problem;
    results.Add(std::move(table));
    return results;
}

int StartClientOnce(const QString& root, const QString& login, const QString& now) {
    DrivenHost host;
    bool ready = false;
    host.onWait = [&] {
        host.ProcessEvents();
        TellReady();
        ready = true;
        host.EndProgram();
    };
    RunClient(host, root, QDateTime::fromString(now, Qt::ISODate), login);
    return ready ? 0 : 1;
}

int StartBareOnce(const QString& statements) {
    QFile list(statements);
    if (!list.open(QIODevice::ReadOnly)) return 1;
    QWidget window;
    window.resize(1000, 720);
    window.show();
    std::map<QString, std::unique_ptr<BareEngine>> stores;
    for (const QJsonValue& statement : QJsonDocument::fromJson(list.readAll()).array()) {
        auto& store = stores[statement[0].toString()];
        if (!store) store = BareEngine::Open(statement[0].toString(), BareEngine::Use::Writing);
        if (!store || store->Step(statement[1].toString()) < 0) return 1;
    }
    QApplication::processEvents();
    TellReady();
    return 0;
}

}  // namespace bench
