// Two clients of two logins on one tree, each reporting as fast as it can; with the main store in a file and on a
// server.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QTemporaryDir>
#include <thread>

#include "drive/driver_process.h"
#include "tests/scenarios/office.h"

namespace {

constexpr int kSaves = 500;
constexpr int kLooks = 1000;

/// What a person does for a slot on the next day: the step (which writes a row of the viewing log), the staff member,
/// the party, and off the last item, which asks and stores.
std::vector<QJsonObject> SlotCommands(const QString& staff, int number) {
    return {{{"do", "click"}, {"item", "btn_翌日"}},
            {{"do", "focus"}, {"item", "担当者コード"}},
            {{"do", "type"}, {"text", staff}},
            {{"do", "focus"}, {"item", "相手先略称"}},
            {{"do", "type"}, {"text", QString("客%1").arg(number)}},
            {{"do", "focus"}, {"item", "相手先電話"}},
            {{"do", "type"}, {"text", "03-9999-0000"}},
            {{"do", "focus"}, {"item", "テイル終了"}},
            {{"do", "click"}, {"item", "btn_登録"}}};
}

/// Who turns over the pages of the diary: every step is a look, and so a row of the viewing log.
std::vector<QJsonObject> LookCommands(const QString&, int) {
    return {{{"do", "click"}, {"item", "btn_翌日"}}};
}

using Commands = std::vector<QJsonObject> (*)(const QString& staff, int number);

/// Plays one client, the commands `times` times; gives the words of the first thing that went wrong.
QString PlayClient(const QString& root, const QString& login, const QString& staff, int times, Commands commands) {
    drive::DriverProcess client;
    if (!client.Start({"--root", root, "--login", login, "--computer", "PC-" + login, "--now", "20261120 100512"}))
        return "no client";
    for (int number = 0; number < times; ++number) {
        for (const QJsonObject& command : commands(staff, number)) {
            const QJsonObject answer = client.Play(command);
            if (!answer["ok"].toBool() || !answer["message"].isNull())
                return QString("turn %1, %2: %3 %4")
                    .arg(number)
                    .arg(command["item"].toString(), answer["error"].toString(),
                         answer["message"].toObject()["text"].toString());
        }
    }
    const QJsonObject end = client.Play({{"do", "click"}, {"item", "btn_終了"}});
    return end["ended"].toBool() ? QString() : "not ended";
}

int Count(const QString& root, const QString& store, const QString& what) {
    QString problem;
    const QJsonArray rows = scenario::Select(root, store, "SELECT COUNT(" + what, problem);
    EXPECT_EQ(problem, QString());
    return rows.isEmpty() ? -1 : rows[0][0].toString().toInt();
}

void PlayTwoClients(const QString& root, int times, Commands commands) {
    QString satoProblem;
    QString suzukiProblem;
    std::thread sato([&] { satoProblem = PlayClient(root, "sato", "1", times, commands); });
    std::thread suzuki([&] { suzukiProblem = PlayClient(root, "suzuki", "2", times, commands); });
    sato.join();
    suzuki.join();
    EXPECT_EQ(satoProblem.toStdString(), "");
    EXPECT_EQ(suzukiProblem.toStdString(), "");
}

/// The parameter is true for a server.
class TwoClientsSideBySide : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        if (GetParam() && scenario::TestServer().isEmpty()) GTEST_SKIP() << "no test server was started";
        const QString database = QString("two_%1").arg(QCoreApplication::applicationPid());
        ASSERT_EQ(scenario::MakeOffice(root, GetParam() ? database : QString()).toStdString(), "");
    }
    void TearDown() override { scenario::DropServerStore(root); }

    QTemporaryDir place_;
    const QString root = place_.path() + "/office";
};

TEST_P(TwoClientsSideBySide, KeepEverySlotAndNeverShareAViewingNumber) {
    PlayTwoClients(root, kSaves, SlotCommands);
    EXPECT_EQ(Count(root, "data", "DISTINCT 担当者コード || 日付 || 相手先略称) FROM T営業活動明細"), 2 * kSaves);
    EXPECT_EQ(Count(root, "data", "*) FROM T営業活動"), 2 * kSaves);
    EXPECT_EQ(Count(root, "data", "*) FROM M電話番号"), 1);
    EXPECT_EQ(Count(root, "conf", "*) FROM プログラム稼動履歴 WHERE 摘要 LIKE '出力終了%'"), 4 * kSaves);

    // Two clients may draw one number between the other's test and its insert: the table then refuses the second row,
    // and its client draws anew, so that no viewing is lost.
    const int refused = Count(root, "conf", "*) FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー %[T閲覧]%'");
    EXPECT_EQ(Count(root, "data", "DISTINCT 閲覧No) FROM T閲覧"), 2 * kSaves);
    EXPECT_EQ(Count(root, "data", "*) FROM T閲覧"), 2 * kSaves);
    // Nothing else may fail, above all not for the other client's lock. Both may meet the new number of the directory,
    // or the day's first number, at the same moment.
    EXPECT_LE(Count(root, "conf", "*) FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー%'"), refused + 2);
    EXPECT_EQ(Count(root, "conf", "*) FROM プログラム稼動履歴 WHERE 摘要 LIKE '%locked%'"), 0);
    RecordProperty("refused", refused);
}

TEST_P(TwoClientsSideBySide, EachLookOfBothIsLoggedUnderANumberOfItsOwn) {
    PlayTwoClients(root, kLooks, LookCommands);
    for (const QString login : {"sato", "suzuki"})
        EXPECT_EQ(Count(root, "data", "*) FROM T閲覧 WHERE ユーザID LIKE '" + login + "%'"), kLooks);
    // Every number up to the last one stands in a row: none was shared, and none was drawn in vain.
    EXPECT_EQ(Count(root, "data",
                    QString("DISTINCT 閲覧No) FROM T閲覧 WHERE 閲覧No <= '%1'").arg(2 * kLooks, 8, 10, QChar('0'))),
              2 * kLooks);
    // A number may be refused to the one that comes second; nothing else may fail.
    const QString words = GetParam() ? "duplicate key" : "UNIQUE";
    const QString refused = QString(" AND 摘要 NOT LIKE '%%1%[T閲覧]%' AND 摘要 NOT LIKE '%%1%[A期日別番号情報]%'");
    EXPECT_EQ(Count(root, "conf", "*) FROM プログラム稼動履歴 WHERE 摘要 LIKE 'エラー %'" + refused.arg(words)), 0);
}

INSTANTIATE_TEST_SUITE_P(Stores, TwoClientsSideBySide, testing::Bool(),
                         [](const auto& info) { return info.param ? "server" : "file"; });

}  // namespace
