// A save on a disk that is full, of the machine or of the server: what was typed isn't lost, and the same save works
// when there is room again.
#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>

#include "drive/driver_process.h"
#include "tests/own_server.h"
#include "tests/scenarios/office.h"
#include "tests/small_disk.h"

namespace {

class FullDisk : public testing::Test {
  protected:
    void TearDown() override {
        client_.reset();
        qputenv("KATSUDO_TEST_SERVER", testServer_);
    }

    QJsonObject Play(const QJsonObject& command) { return client_->Play(command); }
    void Enter(const QString& item, const QString& text) {
        EXPECT_TRUE(Play({{"do", "focus"}, {"item", item}})["ok"].toBool()) << item.toStdString();
        EXPECT_TRUE(Play({{"do", "type"}, {"text", text}})["ok"].toBool()) << item.toStdString();
    }
    void Start(const QString& now) {
        client_ = std::make_unique<drive::DriverProcess>();
        ASSERT_TRUE(client_->Start({"--root", root_, "--login", "sato", "--computer", "PC1", "--now", now}));
    }
    /// The client goes on as after any save, without a message.
    void Register() {
        for (int press = 0; press < 2; ++press)
            EXPECT_TRUE(Play({{"do", "click"}, {"item", "btn_登録"}})["ok"].toBool());
        const QJsonObject after = Play({{"do", "state"}});
        EXPECT_EQ(after["window"].toString(), "frm活動手帳");
        EXPECT_TRUE(after["message"].isNull());
        EXPECT_EQ(after["items"].toObject()["担当者コード"].toObject()["text"].toString(), "");
    }
    QString Told() {
        return Play({{"do", "state"}})["items"].toObject()["結果"].toObject()["caption"].toString();
    }
    QString Count(const QString& store, const QString& from) const {
        QString problem;
        const QJsonArray rows = scenario::Select(root_, store, "SELECT COUNT(*) AS n FROM " + from, problem);
        return rows[0].toArray()[0].toString(problem);
    }

    void SaveOnAFullDisk(const QString& words, const std::function<void()>& fill, const std::function<void()>& free) {
        ASSERT_NO_FATAL_FAILURE(Start("20261120 100512"));
        Enter("担当者コード", "1");
        for (const QString group : {"opb_発信区分", "opb_応対方法", "opb_要件分類"})
            Play({{"do", "click"}, {"item", group}, {"index", 0}});
        Play({{"do", "set"}, {"item", "対応分類"}, {"index", 0}, {"value", 1}});
        Enter("相手先略称", "青葉");
        Enter("営業活動摘要", "満杯の日");
        fill();
        Register();
        const QString told = Told();
        EXPECT_TRUE(told.startsWith("登録できませんでした（") && told.endsWith("）。入力内容は控えてあります（Ctrl+F2）。"))
            << told.toStdString();
        EXPECT_EQ(Count("data", "T営業活動明細"), "0");
        EXPECT_EQ(Count("conf", "プログラム稼動履歴 WHERE 摘要 LIKE 'エラー %" + words +
                                    "%INSERT INTO [T営業活動明細] (%満杯の日%'"),
                  "1");
        Play({{"do", "click"}, {"item", "btn_終了"}});
        free();

        // The next start asks nothing; the list has it.
        ASSERT_NO_FATAL_FAILURE(Start("20261120 110000"));
        Play({{"do", "click"}, {"item", "btn_控え一覧"}});
        Play({{"do", "select"}, {"item", "List控え"}, {"row", 0}});
        Play({{"do", "doubleclick"}, {"item", "List控え"}});
        Play({{"do", "focus"}, {"item", "営業活動摘要"}});
        Register();
        EXPECT_EQ(Count("data", "T営業活動明細 WHERE 相手先略称 = '青葉' AND 営業活動摘要 = '満杯の日'"), "1");
    }

    QTemporaryDir place_;
    QString root_ = place_.path() + "/office";
    std::unique_ptr<drive::DriverProcess> client_;
    QByteArray testServer_ = qgetenv("KATSUDO_TEST_SERVER");
};

TEST_F(FullDisk, OfTheMachineLosesNothing) {
    ASSERT_TRUE(QDir().mkpath(root_ + "/data"));
    const SmallDisk disk(root_ + "/data", 8192);
    if (!disk) GTEST_SKIP() << "no disk may be mounted here";
    ASSERT_EQ(scenario::MakeOffice(root_).toStdString(), "");
    SaveOnAFullDisk(
        "full", [&] { disk.Fill(); }, [&] { disk.Free(); });
}

TEST_F(FullDisk, OfTheServerLosesNothing) {
    const OwnServer server({"small"});
    if (!server.Running()) GTEST_SKIP() << "there is no PostgreSQL server";
    if (!server.HasSmallDisk()) GTEST_SKIP() << "no disk may be mounted here";
    qputenv("KATSUDO_TEST_SERVER", server.Place().toUtf8());
    ASSERT_EQ(scenario::MakeOffice(root_, "office").toStdString(), "");
    server.Do("ALTER TABLE \"T営業活動明細\" SET TABLESPACE katsudo_small", "office");
    SaveOnAFullDisk(
        "No space left", [&] { server.FillSmallDisk("office"); }, [&] { server.FreeSmallDisk("office"); });
}

}  // namespace
