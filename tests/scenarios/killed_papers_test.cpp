// A client that is killed anywhere in a move, an add or a save under another end: behind the next start each stored
// slot has its papers, rows and copies, and nothing lies about that belongs to none.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QThread>
#include <memory>
#include <random>

#include "drive/driver_process.h"
#include "tests/scenarios/office.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kKills = 12;
#else
constexpr int kKills = 60;
#endif

class KilledPapers : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(scenario::MakeOffice(root_), QString());
        Run("INSERT INTO T営業活動明細 (担当者コード, 日付, 開始時刻, 終了時刻, 事業所コード, 部門コード, "
            "セクションコード, 発信区分, 応対方法, 要件分類, 対応分類, 相手先略称) VALUES "
            "('00001','20261120','10:00','10:30','000','100','110','1','1','1','1','青葉')");
        Run("UPDATE Mユーザ SET ドキュメントフォルダ = 'documents'");
        Run("INSERT INTO M付属書類 (情報名, 情報識別ID, SEQNo, 書類名) VALUES "
            "('活動手帳','202611201000103000001','001','/x/一'), ('活動手帳','202611201000103000001','002','/x/二')");
        for (const QString name : {"001_一", "002_二"}) {
            QFile file(root_ + "/documents/活動手帳_202611201000103000001_" + name);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }
    void Run(const QString& sql) { ASSERT_EQ(scenario::Execute(root_, "data", sql).toStdString(), ""); }
    QStringList Column(const QString& sql) {
        QString problem;
        QStringList texts;
        for (const QJsonValue row : scenario::Select(root_, "data", sql, problem))
            texts << row.toArray()[0].toString();
        EXPECT_EQ(problem, QString());
        return texts;
    }
    /// The slots as date, start and end.
    QStringList Slots() { return Column("SELECT 日付 || 開始時刻 || 終了時刻 AS a FROM T営業活動明細 ORDER BY a"); }
    bool Do(const QJsonObject& command) { return client_->Play(command)["ok"].toBool(); }
    void Click(const QString& item) { EXPECT_TRUE(Do({{"do", "click"}, {"item", item}})) << item.toStdString(); }
    void Type(const QString& item, const QString& text) {
        EXPECT_TRUE(Do({{"do", "focus"}, {"item", item}})) << item.toStdString();
        Do({{"do", "type"}, {"text", text}});
    }
    /// Starts on a slot, or on none; what was typed and not saved is given up.
    void Start(const QString& slot) {
        client_ = std::make_unique<drive::DriverProcess>();
        QStringList words{"--root", root_, "--login", "sato", "--computer", "PC1", "--now", "20261120 100512"};
        if (!slot.isEmpty()) words << QStringList{"--tail", "000" + slot + "00001"};
        ASSERT_TRUE(client_->Start(words));
        while (!client_->Play({{"do", "state"}})["message"].isNull())
            ASSERT_TRUE(Do({{"do", "answer"}, {"button", "No"}}));
    }
    /// Up to the last click, which is sent and not waited for.
    void Begin(int kind, const QString& slot) {
        if (kind == 0) {
            Type("終了時刻分", slot.endsWith("30") ? "45" : "30");
            for (const QString item : {"相手先略称", "相手先住所A"})
                Do({{"do", "focus"}, {"item", item}});
            Click("btn_登録");
        } else {
            Click("btn_移動");
            Click(slot.startsWith("20261120") ? "btn_翌日" : "btn_前日");
            Click(kind == 1 ? "btn_移動" : "btn_追加");
        }
        client_->Send({{"do", "click"}, {"item", "btn_登録"}});
    }
    bool NoteLeft() const {
        return QDirIterator(root_ + "/state", {"*.papers"}, QDir::Files, QDirIterator::Subdirectories).hasNext();
    }
    void ExpectAllTogether(int round) {
        QStringList rows, copies;
        for (QString slot : Slots()) {
            slot.remove(u':');
            for (const QString number : {"001", "002"})
                rows << slot + "00001" + number;
        }
        EXPECT_EQ(Column("SELECT 情報識別ID || SEQNo AS a FROM M付属書類 ORDER BY a"), rows) << round;
        for (const QString& row : rows)
            copies << "活動手帳_" + row.left(21) + "_" + row.mid(21) + (row.endsWith("1") ? "_一" : "_二");
        EXPECT_EQ(QDir(root_ + "/documents").entryList(QDir::Files, QDir::Name), copies) << round;
    }

    QTemporaryDir place_;
    QString root_ = place_.path() + "/office", slot_;
    std::unique_ptr<drive::DriverProcess> client_;
};

TEST_F(KilledPapers, AreWithTheirSlotBehindTheNextStart) {
    std::mt19937 dice(20261123);
    int finished = 0;
    for (int round = 0; round < kKills && !HasFailure(); ++round) {
        slot_ = Slots().value(0);
        ASSERT_NO_FATAL_FAILURE(Start(slot_));
        Begin(round % 3, slot_);
        QThread::usleep(dice() % 40'000);
        client_->Kill();
        finished += NoteLeft();
        // Only the deletion of a save came through: who declines the change has the old slot back.
        if (Slots().isEmpty()) {
            ASSERT_NO_FATAL_FAILURE(Start({}));
            client_->Kill();
        }
        ASSERT_NO_FATAL_FAILURE(Start(Slots().value(0)));
        EXPECT_FALSE(NoteLeft()) << round;
        ExpectAllTogether(round);
        client_->Kill();
        if (Slots().size() < 2) continue;
        // The copy has done its duty.
        const QString copy = Slots()[1];
        Run("DELETE FROM T営業活動明細 WHERE 日付 = '" + copy.left(8) + "'");
        Run("DELETE FROM M付属書類 WHERE 情報識別ID LIKE '" + copy.left(8) + "%'");
        for (const QString& name : QDir(root_ + "/documents").entryList({"活動手帳_" + copy.left(8) + "*"}))
            QFile::remove(root_ + "/documents/" + name);
    }
    EXPECT_GT(finished, 0) << "no moment was met";
}

}  // namespace
