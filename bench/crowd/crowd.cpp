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

void PrintTimes(const QString& what, std::vector<double> times, QTextStream& out) {
    if (times.empty()) return;
    std::sort(times.begin(), times.end());
    const auto at = [&times](double share) {
        return times[static_cast<std::size_t>(share * double(times.size() - 1))];
    };
    out << QString("| %1 | %2 | %3 | %4 | %5 |\n")
               .arg(what)
               .arg(times.size())
               .arg(at(0.5), 0, 'f', 1)
               .arg(at(0.99), 0, 'f', 1)
               .arg(times.back(), 0, 'f', 1);
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

}  // namespace

bool RunCrowd(const CrowdOrder& order, QTextStream& out) {
    const QString mark = "群 " + QDateTime::currentDateTime().toString("yyyyMMddHHmmss");
    setup::OpenTree tree = setup::OpenStores({order.root});
    if (!tree.config || !tree.main) {
        out << tree.problem << '\n';
        return false;
    }
    const QStringList staff = StaffAtWork(*tree.main);
    if (staff.size() < order.clients) {
        out << "The installation has only " << staff.size() << " staff members at work.\n";
        return false;
    }
    const int faultsBefore = FaultRows(order.root);

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
    QStringList problems;
    for (const Work& work : works) {
        all.saves.insert(all.saves.end(), work.saves.begin(), work.saves.end());
        all.searches.insert(all.searches.end(), work.searches.begin(), work.searches.end());
        if (!work.problem.isEmpty()) problems << work.problem;
    }
    out << "| " << order.clients << " clients, " << order.seconds
        << " s | Number | Median ms | Slowest hundredth from ms | Slowest ms |\n| --- | ---: | ---: | ---: | ---: |\n";
    PrintTimes("Save", all.saves, out);
    PrintTimes("Search", all.searches, out);
    const int stored =
        Count(tree.main.get(), "SELECT COUNT(*) AS a FROM T営業活動明細 WHERE 営業活動摘要 = '" + mark + "'");
    const int faults = FaultRows(order.root) - faultsBefore;
    out << "\nSlots reported: " << all.saves.size() << ", stored: " << stored
        << ". Rows of the run history that tell of a failed statement: " << faults << ".\n";
    for (const QString& problem : problems)
        out << problem << '\n';
    return problems.isEmpty() && stored == static_cast<int>(all.saves.size());
}

}  // namespace bench
