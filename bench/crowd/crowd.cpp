#include "bench/crowd/crowd.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <algorithm>
#include <barrier>
#include <thread>
#include <vector>

#include "drive/driver_process.h"
#include "setup/tree.h"

namespace bench {

namespace {

/// What one client did.
struct Work {
    std::vector<double> saves, searches;  ///< milliseconds
    QString problem;
};

/// A client and its hands. The first refusal stays in `problem`, and nothing is done behind it.
class Worker {
  public:
    Worker(const CrowdOrder& order, const QString& staff, const QString& mark) : staff_(staff), mark_(mark) {
        const QString login = "crowd" + staff_;
        if (!driver_.Start(
                {"--root", order.root, "--login", login, "--computer", "PC-" + login, "--now", "20300101 080012"}))
            work_.problem = "a client didn't start";
        Play({{"do", "state"}});
    }

    bool Good() const { return work_.problem.isEmpty(); }
    Work& Done() { return work_; }

    /// A slot of the next day, from the step to the cleared screen.
    void SaveSlot() {
        Click("btn_翌日");
        Enter("担当者コード", staff_);
        for (const QString group : {"opb_発信区分", "opb_応対方法", "opb_要件分類"})
            Click(group, 0);
        Play({{"do", "set"}, {"item", "対応分類"}, {"index", 0}, {"value", 1}});
        Enter("相手先略称", QString("客%1").arg(work_.saves.size()));
        Enter("営業活動摘要", mark_);
        Click("btn_登録");
        Measure(work_.saves, "btn_登録");
    }

    /// Customers by name, from the press of the button to the filled list.
    void Search() {
        static const QStringList parts{"電機", "商店", "中央", "山", "印刷"};
        Play({{"do", "set"}, {"item", "相手先区分"}, {"value", 1}});
        Click("btn_相手先コード");
        Enter("名称", parts[work_.searches.size() % parts.size()]);
        Measure(work_.searches, "btn_名称検索");
        Click("btn_戻る");
    }

    void End() {
        // The party kind that was set is input; nothing of it is wanted.
        Click("btn_終了");
        if (!message_.isEmpty()) Play({{"do", "answer"}, {"button", "Yes"}});
    }

  private:
    void Play(const QJsonObject& command) {
        if (!Good()) return;
        const QJsonObject answer = driver_.Play(command);
        message_ = answer["message"].toObject()["text"].toString();
        if (!answer["ok"].toBool())
            work_.problem = staff_ + " " + command["item"].toString() + ": " + answer["error"].toString();
    }
    void Click(const QString& item) { Play({{"do", "click"}, {"item", item}}); }
    void Click(const QString& item, int index) { Play({{"do", "click"}, {"item", item}, {"index", index}}); }
    void Enter(const QString& item, const QString& text) {
        Play({{"do", "focus"}, {"item", item}});
        Play({{"do", "type"}, {"text", text}});
    }
    /// A press that counts, once it was carried out.
    void Measure(std::vector<double>& times, const QString& button) {
        QElapsedTimer timer;
        timer.start();
        Click(button);
        if (Good()) times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }

    QString staff_, mark_, message_;
    drive::DriverProcess driver_;
    Work work_;
};

Work WorkForAWhile(const CrowdOrder& order, const QString& staff, const QString& mark, std::barrier<>& start) {
    Worker worker(order, staff, mark);
    start.arrive_and_wait();
    QElapsedTimer timer;
    timer.start();
    while (worker.Good() && timer.elapsed() < order.seconds * 1000) {
        worker.SaveSlot();
        worker.Search();
    }
    worker.End();
    return worker.Done();
}

void AddTimes(const QString& what, std::vector<double> times, Table& table) {
    const auto add = [&](const QString& told, double number) { table.rows.push_back({{what, told}, {number}}); };
    add("number", double(times.size()));
    std::sort(times.begin(), times.end());
    for (const auto& [told, share] :
         {std::pair("median, ms", 0.5), std::pair("slowest hundredth from, ms", 0.99), std::pair("slowest, ms", 1.0)})
        if (!times.empty()) add(told, times[std::size_t(share * double(times.size() - 1))]);
}

int Count(store::Connection* connection, const QString& sql) {
    store::Fault fault;
    const auto rows = connection ? connection->Query(sql, fault) : nullptr;
    return rows ? rows->Value("a").value_or("-1").toInt() : -1;
}

/// Rows of the crowd's run history that tell of a fault, in the shared environment store and in those of the users.
int FaultRows(const QString& root) {
    QStringList stores{root + "/conf/usrcnfg.accdb"};
    for (const QString& user : QDir(root + "/users").entryList({"crowd*"}, QDir::Dirs))
        stores << root + "/users/" + user + "/conf/usrcnfg.accdb";
    int rows = 0;
    for (const QString& file : stores) {
        store::Fault fault;
        const auto store = store::OpenConnection("Provider=SQLite;Data Source=" + file + ";", root, fault);
        rows += std::max(0, Count(store.get(),
                                  "SELECT COUNT(*) AS a FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー%' AND ユーザID "
                                  "LIKE 'crowd%'"));
    }
    return rows;
}

/// Codes of the staff that a slot can be reported for.
QStringList StaffAtWork(store::Connection& main) {
    QStringList codes;
    store::Fault fault;
    const auto rows =
        main.Query("SELECT コード FROM M担当者 WHERE 在籍区分 = '0' AND 部門コード <> '' ORDER BY コード", fault);
    for (; rows && !rows->Eof(); rows->MoveNext())
        codes << rows->Value("コード").value_or(QString());
    return codes;
}

/// Has each user of an installation work on an environment store of its own while it lives.
class OwnStores {
  public:
    OwnStores(store::Connection& config, bool wanted) : config_(config), wanted_(wanted) {
        if (!wanted_) return;
        before_ = setup::ReadValue(config_, "SELECT * FROM 動作環境定義", "インストール区分");
        Set("1");
    }
    ~OwnStores() {
        if (wanted_) Set(before_);
    }
    OwnStores(const OwnStores&) = delete;
    OwnStores& operator=(const OwnStores&) = delete;

  private:
    void Set(const QString& kind) {
        store::Fault fault;
        config_.Execute("UPDATE 動作環境定義 SET インストール区分 = '" + kind + "'", fault);
    }

    store::Connection& config_;
    bool wanted_;
    QString before_;
};

Work LetThemWork(const CrowdOrder& order, const QStringList& staff, const QString& mark, QStringList& problems) {
    std::vector<Work> works(static_cast<std::size_t>(order.clients));
    std::barrier<> start(order.clients);
    std::vector<std::thread> clients;
    for (int number = 0; number < order.clients; ++number)
        clients.emplace_back([&, number] {
            works[static_cast<std::size_t>(number)] = WorkForAWhile(order, staff[number], mark, start);
        });
    for (std::thread& client : clients)
        client.join();
    Work all;
    for (const Work& work : works) {
        all.saves.insert(all.saves.end(), work.saves.begin(), work.saves.end());
        all.searches.insert(all.searches.end(), work.searches.begin(), work.searches.end());
        if (!work.problem.isEmpty()) problems << work.problem;
    }
    return all;
}

}  // namespace

Results RunCrowd(const CrowdOrder& order) {
    Results results;
    const QString mark = "群 " + QDateTime::currentDateTime().toString("yyyyMMddHHmmss");
    setup::OpenTree tree = setup::OpenStores({order.root});
    const QStringList staff = tree.config && tree.main ? StaffAtWork(*tree.main) : QStringList();
    if (staff.size() < order.clients) {
        results.faults << QString("The installation has only %1 staff members at work. ").arg(staff.size()) +
                              tree.problem;
        return results;
    }
    const int faultsBefore = FaultRows(order.root);
    const OwnStores stores(*tree.config, order.ownStores);
    const Work all = LetThemWork(order, staff, mark, results.faults);
    Table table{table::kCrowd, {"What", "Told"}, {kProgram}, {}};
    table.rows.push_back({{"Clients", "at once"}, {double(order.clients)}});
    table.rows.push_back({{"Clients", "seconds"}, {double(order.seconds)}});
    AddTimes("Save", all.saves, table);
    AddTimes("Search", all.searches, table);
    const int stored =
        Count(tree.main.get(), "SELECT COUNT(*) AS a FROM T営業活動明細 WHERE 担当者コード IN ('" + staff.join("','") +
                                   "') AND 日付 >= '20300101' AND 営業活動摘要 = '" + mark + "'");
    table.rows.push_back({{"Slots", "stored"}, {double(stored)}});
    table.rows.push_back({{"Clients", "that failed"}, {double(results.faults.size())}});
    table.rows.push_back({{"Statements", "that failed"}, {double(FaultRows(order.root) - faultsBefore)}});
    if (stored != int(all.saves.size()))
        results.faults << QString("%1 slots were reported, %2 are stored.").arg(all.saves.size()).arg(stored);
    results.Add(std::move(table));
    return results;
}

}  // namespace bench
