// An installation is backed up and restored under a client that goes on reporting.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QProcess>
#include <QTemporaryDir>
#include <atomic>
#include <chrono>
#include <thread>

#include "tests/scenarios/driver_process.h"
#include "tests/scenarios/office.h"

namespace {

/// A client that saves slot after slot, each for a customer of the next number, until it is told to end.
class Reporter {
  public:
    explicit Reporter(const QString& root) : thread_([this, root] { Report(root); }) {}
    ~Reporter() { End(); }

    /// Waits until it has saved that many more. False when it stopped before.
    bool SavesMore(int count) {
        const int wanted = saved + count;
        while (saved < wanted && !stopped_)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return saved >= wanted;
    }
    /// What went wrong, in words.
    QString End() {
        ends_ = true;
        if (thread_.joinable()) thread_.join();
        return problem_;
    }

    std::atomic<int> saved = 0;

  private:
    static std::vector<QJsonObject> SlotCommands(int number) {
        return {{{"do", "click"}, {"item", "btn_翌日"}},
                {{"do", "focus"}, {"item", "担当者コード"}},
                {{"do", "type"}, {"text", "1"}},
                {{"do", "focus"}, {"item", "相手先略称"}},
                {{"do", "type"}, {"text", QString("客%1").arg(number, 4, 10, QChar(u'0'))}},
                {{"do", "focus"}, {"item", "テイル終了"}},
                {{"do", "click"}, {"item", "btn_登録"}}};
    }
    void Report(const QString& root) {
        scenario::DriverProcess client;
        bool good = client.Start({"--root", root, "--login", "sato", "--computer", "PC", "--now", "20261120 100512"});
        while (good && !ends_) {
            for (const QJsonObject& command : SlotCommands(saved + 1)) {
                const QJsonObject answer = client.Play(command);
                good = good && answer["ok"].toBool() && answer["message"].isNull();
            }
            if (good) ++saved;
        }
        stopped_ = true;
        if (!good || !client.Play({{"do", "click"}, {"item", "btn_終了"}})["ended"].toBool()) problem_ = "it stopped";
    }

    std::atomic<bool> ends_ = false, stopped_ = false;
    QString problem_;
    std::thread thread_;
};

QString RunSetup(const QStringList& arguments) {
    QProcess setup;
    setup.start(QCoreApplication::applicationDirPath() + "/katsudo-setup", arguments);
    return setup.waitForFinished(120'000) && setup.exitCode() == 0
               ? QString()
               : "failed: " + QString::fromUtf8(setup.readAllStandardError());
}

/// The customers of the slots in the main store of a tree or backup.
QStringList Customers(const QString& root) {
    QString problem;
    QStringList names;
    const QJsonArray rows = scenario::Select(
        root, "data", "SELECT 相手先略称 FROM T営業活動明細 WHERE 相手先略称 LIKE '客%' ORDER BY 相手先略称", problem);
    EXPECT_EQ(problem.toStdString(), "");
    for (const QJsonValue& row : rows)
        names << row[0].toString();
    return names;
}

QStringList Numbers(int first, int last) {
    QStringList names;
    for (int number = first; number <= last; ++number)
        names << QString("客%1").arg(number, 4, 10, QChar(u'0'));
    return names;
}

TEST(Backup, AndRestoreUnderAClientThatReports) {
    const QTemporaryDir place;
    const QString root = place.path() + "/office", first = place.path() + "/first", second = place.path() + "/second";
    ASSERT_EQ(scenario::MakeOffice(root).toStdString(), "");
    ASSERT_EQ(RunSetup({"backup", "--root", root, "--to", first}).toStdString(), "");
    Reporter client(root);
    ASSERT_TRUE(client.SavesMore(20));
    const int before = client.saved;
    ASSERT_EQ(RunSetup({"backup", "--root", root, "--to", second}).toStdString(), "");
    const int copied = int(Customers(second).size());
    EXPECT_EQ(Customers(second), Numbers(1, copied));
    EXPECT_GE(copied, before);

    ASSERT_EQ(RunSetup({"restore", "--root", root, "--from", first}).toStdString(), "");
    ASSERT_TRUE(client.SavesMore(20));
    ASSERT_EQ(client.End().toStdString(), "");
    // Every slot is in the store that was replaced or in the one that took its place.
    const QStringList kept = QDir(root + "/data").entryList({"gnrdb.accdb.replaced-*"});
    ASSERT_EQ(kept.size(), 1);
    const QStringList now = Customers(root);
    ASSERT_TRUE(QDir().mkpath(place.path() + "/old/data"));
    ASSERT_TRUE(QFile::rename(root + "/data/" + kept[0], place.path() + "/old/data/gnrdb.accdb"));
    const QStringList old = Customers(place.path() + "/old");
    EXPECT_EQ(old, Numbers(1, int(old.size())));
    EXPECT_EQ(now, Numbers(int(old.size()) + 1, client.saved));
    QString problem;
    EXPECT_EQ(scenario::Select(root, "conf", "SELECT 摘要 FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー%'", problem),
              QJsonArray());
}

}  // namespace
