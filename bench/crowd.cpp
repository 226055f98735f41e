#include "bench/crowd.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <algorithm>
#include <atomic>
#include <thread>

#include "bench/search_times.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

constexpr int kAnswerMilliseconds = 60'000;

struct Member {
    QString staff, login;
};

/// What one client did, and the first thing that went wrong.
struct Account {
    std::vector<double> saves, searches;  ///< milliseconds
    QString problem;
};

/// One running client.
class Client {
  public:
    /// `lastDay` is the last one with activity, "yyyymmdd": all days behind it are empty.
    Client(const CrowdOrder& order, const Member& member, const QString& lastDay, Account& account)
        : account_(account) {
        process_.start(order.driver, {"--root", order.tree.root, "--login", member.login, "--computer",
                                      "PC-" + member.login, "--now", lastDay + " 100512"});
        if (!process_.waitForStarted()) account_.problem = order.driver + " doesn't start";
    }

    bool Good() const { return account_.problem.isEmpty(); }

    /// Plays a command; its time in milliseconds.
    double Do(const QJsonObject& command, bool last = false) {
        if (!Good()) return 0;
        QJsonObject answer;
        const double time = Milliseconds([&] {
            process_.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
            while (!process_.canReadLine() && process_.waitForReadyRead(kAnswerMilliseconds)) {
            }
            answer = QJsonDocument::fromJson(process_.readLine()).object();
        });
        const bool refused = !answer["ok"].toBool() || !answer["message"].isNull() || answer["ended"].toBool() != last;
        if (refused)
            account_.problem = QString::fromUtf8(QJsonDocument(command).toJson(QJsonDocument::Compact)) + ": " +
                               answer["error"].toString() + answer["message"].toObject()["text"].toString();
        return time;
    }
    double Click(const QString& item) { return Do({{"do", "click"}, {"item", item}}); }
    void Enter(const QString& item, const QString& text) {
        Do({{"do", "focus"}, {"item", item}});
        Do({{"do", "type"}, {"text", text}});
    }

    void End() {
        Do({{"do", "click"}, {"item", "btn_終了"}}, true);
        process_.closeWriteChannel();
        process_.waitForFinished();
    }

  private:
    QProcess process_;
    Account& account_;
};

/// The name by which a slot of the crowd is known.
const QString kParty = QStringLiteral("大勢");

void Work(const CrowdOrder& order, const Member& member, int number, const QString& lastDay, Account& account) {
    static const QStringList texts = {"ヤマ", "ｷﾞﾝｶﾞ", "さき", "タナカ", "ナカ"};
    Client client(order, member, lastDay, account);
    QElapsedTimer clock;
    clock.start();
    for (int turn = 0; client.Good() && clock.elapsed() < order.seconds * 1000; ++turn) {
        client.Click("btn_翌日");
        client.Enter("担当者コード", member.staff);
        client.Click("btn_相手先コード");
        client.Enter("カナ", texts[(turn + number) % texts.size()]);
        const double searched = client.Click("btn_カナ検索");
        client.Do({{"do", "close"}});
        client.Enter("相手先略称", QString("%1%2").arg(kParty).arg(turn));
        // Off the last item, which asks, and yes.
        const double asked = client.Do({{"do", "focus"}, {"item", "テイル終了"}});
        const double saved = client.Click("btn_登録");
        if (!client.Good()) break;
        account.searches.push_back(searched);
        account.saves.push_back(asked + saved);
    }
    client.End();
}

std::vector<Member> ReadMembers(store::Connection& main, int most) {
    std::vector<Member> members;
    store::Fault fault;
    const auto rows =
        main.Query("SELECT コード, ログインID FROM M担当者 WHERE 在籍区分 = '0' AND ログインID <> '' ORDER BY コード",
                   fault, most);
    for (; rows && !rows->Eof(); rows->MoveNext())
        members.push_back({rows->Value("コード").value_or(""), rows->Value("ログインID").value_or("")});
    return members;
}

int CountSlots(store::Connection& main) {
    return setup::ReadValue(main, "SELECT COUNT(*) AS n FROM T営業活動明細 WHERE 相手先略称 LIKE '" + kParty + "%'",
                            "n")
        .toInt();
}

// Two clients may draw one number of the viewing log; the second draws anew. Nothing else may fail.
int CountFaults(const setup::Tree& tree, const Member& member) {
    const QString file = tree.root + "/users/" + member.login + "/conf/usrcnfg.accdb";
    store::Fault fault;
    const auto config = store::OpenConnection("Provider=SQLite;Data Source=" + file + ";", tree.root, fault);
    if (!config) return 1;
    return setup::ReadValue(*config,
                            "SELECT COUNT(*) AS n FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー%' AND 摘要 NOT LIKE "
                            "'%INSERT INTO [T閲覧]%' AND 摘要 NOT LIKE '%INSERT INTO [A期日別番号情報]%'",
                            "n")
        .toInt();
}

void PrintTimes(const QString& what, std::vector<double> times, QTextStream& out) {
    if (times.empty()) return;
    std::sort(times.begin(), times.end());
    const auto at = [&times](double share) { return times[std::size_t(share * double(times.size() - 1))]; };
    out << QString("| %1 | %2 | %3 | %4 | %5 |\n")
               .arg(what)
               .arg(times.size())
               .arg(Cell(at(0.5)), Cell(at(0.99)), Cell(times.back()));
}

bool Report(const CrowdOrder& order, const std::vector<Member>& members, const std::vector<Account>& accounts,
            int stored, QTextStream& out) {
    std::vector<double> saves, searches;
    bool good = true;
    for (std::size_t i = 0; i < accounts.size(); ++i) {
        saves.insert(saves.end(), accounts[i].saves.begin(), accounts[i].saves.end());
        searches.insert(searches.end(), accounts[i].searches.begin(), accounts[i].searches.end());
        const int faults = CountFaults(order.tree, members[i]);
        if (accounts[i].problem.isEmpty() && faults == 0) continue;
        good = false;
        out << members[i].login << ": " << faults << " faults in its history; " << accounts[i].problem << '\n';
    }
    out << "| | Times | Median | Slowest hundredth | Slowest |\n| --- | --: | --: | --: | --: |\n";
    PrintTimes("Save", saves, out);
    PrintTimes("Search", searches, out);
    if (stored != int(saves.size())) out << stored << " slots are stored of " << saves.size() << ".\n";
    return good && stored == int(saves.size());
}

}  // namespace

bool RunCrowd(const CrowdOrder& order, QTextStream& out) {
    setup::OpenTree open = setup::OpenStores(order.tree);
    if (!open.main) {
        out << open.problem << '\n';
        return false;
    }
    const std::vector<Member> members = ReadMembers(*open.main, order.clients);
    if (int(members.size()) < order.clients) {
        out << "The company has only " << members.size() << " staff members with a login.\n";
        return false;
    }
    // A machine has a configuration store of its own, so each client gets one.
    store::Fault fault;
    open.config->Execute("UPDATE 動作環境定義 SET インストール区分 = '1'", fault);
    open.config->Close();
    const int before = CountSlots(*open.main);
    const QString lastDay = setup::ReadValue(*open.main, "SELECT MAX(日付) AS 日付 FROM T営業活動明細", "日付");
    std::vector<Account> accounts(members.size());
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < members.size(); ++i)
        threads.emplace_back([&, i] { Work(order, members[i], int(i), lastDay, accounts[i]); });
    threads.clear();
    return Report(order, members, accounts, CountSlots(*open.main) - before, out);
}

}  // namespace bench
