#include <signal.h>

#include <QDir>
#include <QProcess>

#include "setup/check_tree.h"
#include "setup/copy_tree.h"
#include "setup_fixture.h"

namespace setup {
namespace {

void RunSql(const Tree& tree, const QString& sql, bool environment = false) {
    const OpenTree open = OpenStores(tree);
    store::Fault fault;
    ASSERT_TRUE((environment ? open.config : open.main)->Execute(sql, fault)) << fault.description.toStdString();
}

/// The first table that two trees don't hold alike; empty when there is none.
QString Difference(const Tree& one, const Tree& other) {
    for (const session::Table& table : session::MainTables()) {
        const QString all = "SELECT * FROM " + table.name + " ORDER BY " + table.key.join(u',');
        if (Rows(one, all) != Rows(other, all)) return table.name;
    }
    return {};
}

QString Copy(const Tree& from, const Tree& to) {
    CopyOrder order;
    order.from = from;
    order.to = to;
    return CopyTree(order);
}

class Copying : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(from_.Create(Size()), "");
        ASSERT_EQ(to_.Create({}), "");
        QFile paper(from_.tree.Folder("documents/見積.txt"));
        ASSERT_TRUE(paper.open(QIODevice::WriteOnly) && paper.write("paper") == 5);
    }
    virtual DemoSizes Size() const { return SmallDemo(); }

    TemporaryTree from_, to_;
};

TEST_F(Copying, CarriesEveryRowAsItIsAndWhatBelongsToTheCompany) {
    RunSql(from_.tree, "UPDATE M得意先 SET 名称A = '髙橋''s 〜\n', 名称B = NULL, カナ = '' WHERE コード < '000050'");
    RunSql(from_.tree, "UPDATE T営業活動明細 SET 活動時間 = NULL WHERE 開始時刻 < '12:00'");
    RunSql(from_.tree, "ALTER TABLE Mセクション ADD COLUMN 備考 TEXT");
    EXPECT_TRUE(Copy(from_.tree, to_.tree).contains("Mセクション has no column 備考"));
    EXPECT_EQ(First(to_.tree, "SELECT COUNT(*) AS 件数 FROM Mユーザ"), "1") << "nothing was begun";
    RunSql(to_.tree, "ALTER TABLE Mセクション ADD COLUMN 備考 TEXT");
    RunSql(from_.tree, "UPDATE 動作環境定義 SET 運用事業所コード = '001'", true);
    ASSERT_EQ(Copy(from_.tree, to_.tree), "");
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_EQ(CheckTree(to_.tree).wrong, QStringList{});
    EXPECT_EQ(Rows(to_.tree, "SELECT 運用事業所コード FROM 動作環境定義", true), QStringList{"001"});
    EXPECT_TRUE(QFile::exists(to_.tree.Folder("documents/見積.txt")));
    QFile key(from_.tree.PinKey()), carried(to_.tree.PinKey());
    ASSERT_TRUE(key.open(QIODevice::ReadOnly) && carried.open(QIODevice::ReadOnly));
    EXPECT_EQ(key.readAll(), carried.readAll()) << "or no PIN fits any more";
    const QString indexes = "SELECT name FROM sqlite_master WHERE type = 'index' ORDER BY name";
    EXPECT_EQ(Rows(to_.tree, indexes), Rows(from_.tree, indexes));

    EXPECT_TRUE(Copy(from_.tree, to_.tree).contains("holds a company already"));
    EXPECT_NE(Copy(from_.tree, from_.tree), "");
}

// What a run that was cut short leaves, and what happened to it since.
TEST_F(Copying, GoesOnWhereItWasAndFindsWhatDiffers) {
    QFile mark(UnfinishedCopy(to_.tree));
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly) && mark.write(from_.tree.root.toUtf8() + '\n') > 0);
    mark.close();
    EXPECT_NE(CheckTree(to_.tree).wrong.join(u'\n').indexOf("unfinished copy"), -1);
    // The first half of the staff. Of these rows one was changed, one is too many, and one is missing.
    for (const QString code : {"00001", "00002", "00004"})
        RunSql(to_.tree, "INSERT INTO M担当者 (コード, 氏名) VALUES ('" + code + "', 'x')");
    RunSql(to_.tree, "INSERT INTO M部門 (コード, 名称) VALUES ('000', 'nobody''s')");
    ASSERT_EQ(Copy(from_.tree, to_.tree), "");
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_EQ(CheckTree(to_.tree).wrong, QStringList{});
}

class CopyingMuch : public Copying {
  protected:
    DemoSizes Size() const override {
        DemoSizes sizes = SmallDemo();
        sizes.activities = 30'000;
        sizes.parties = 1000;
        return sizes;
    }
};

TEST_F(CopyingMuch, KilledAnywhereIsRunAgain) {
    const QStringList arguments = {"copy", "--from", from_.tree.root, "--to", to_.tree.root, "--progress"};
    const auto start = [&arguments](QProcess& copy) {
        copy.setProcessChannelMode(QProcess::MergedChannels);
        copy.start(KATSUDO_SETUP, arguments);
        return copy.waitForStarted();
    };
    // At its beginning, in the middle of the biggest table, and after it.
    QByteArray told;
    for (const QByteArray words : {"T営業活動 ", "T営業活動明細 25000", "T案件 "}) {
        QProcess copy;
        ASSERT_TRUE(start(copy));
        told.clear();
        while (!told.contains(words) && copy.waitForReadyRead(60'000))
            told += copy.readAll();
        ::kill(pid_t(copy.processId()), SIGKILL);
        copy.waitForFinished();
        ASSERT_EQ(copy.exitStatus(), QProcess::CrashExit) << told.toStdString();
        ASSERT_TRUE(QFile::exists(UnfinishedCopy(to_.tree)));
    }
    // Carried already, and so not carried again: it keeps the place that it gets now.
    ASSERT_GE(First(to_.tree, "SELECT COUNT(*) AS 件数 FROM T営業活動明細").toInt(), 20'000);
    RunSql(to_.tree, "UPDATE T営業活動明細 SET ROWID = 10000000 WHERE ROWID = 1");
    TemporaryTree other;
    ASSERT_EQ(other.Create({}), "");
    EXPECT_TRUE(Copy(other.tree, to_.tree).contains("unfinished copy of " + from_.tree.root));
    QProcess copy;
    ASSERT_TRUE(start(copy) && copy.waitForFinished(120'000));
    EXPECT_EQ(copy.exitCode(), 0) << copy.readAll().right(500).toStdString();
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_EQ(First(to_.tree, "SELECT MAX(ROWID) >= 10000000 AS 続き FROM T営業活動明細"), "1");
    EXPECT_FALSE(QFile::exists(UnfinishedCopy(to_.tree)));
}

}  // namespace
}  // namespace setup
