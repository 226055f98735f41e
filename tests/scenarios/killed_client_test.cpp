// A client that is killed at any moment of typing and saving loses nothing: either the slot is stored, or the next
// start offers what was typed.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QTemporaryDir>
#include <QThread>
#include <memory>
#include <random>

#include "drive/driver_process.h"
#include "tests/scenarios/office.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kKills = 30;
#else
constexpr int kKills = 200;
#endif

class Victim {
  public:
    explicit Victim(const QString& root) : root_(root) {}

    /// Starts a client; what an earlier one left is taken.
    void Start() {
        driver_ = std::make_unique<drive::DriverProcess>();
        ASSERT_TRUE(
            driver_->Start({"--root", root_, "--login", "sato", "--computer", "PC1", "--now", "20261120 100512"}));
        const QJsonObject first = driver_->Play({{"do", "state"}});
        restored_.reset();
        if (first["message"].isNull()) return;
        ASSERT_EQ(first["message"].toObject()["text"].toString(), "前回の入力内容が残っています。復元しますか？");
        driver_->Play({{"do", "answer"}, {"button", "Yes"}});
        restored_ = Memo();
    }

    QString Memo() {
        return driver_->Play({{"do", "state"}})["items"].toObject()["営業活動摘要"].toObject()["text"].toString();
    }

    bool Do(const QJsonObject& command) { return driver_->Play(command)["ok"].toBool(); }
    void Send(const QJsonObject& command) { driver_->Send(command); }
    void Kill() { driver_->Kill(); }

    void FillSlot() {
        Do({{"do", "focus"}, {"item", "担当者コード"}});
        Do({{"do", "type"}, {"text", "1"}});
        for (const QString group : {"opb_発信区分", "opb_応対方法", "opb_要件分類"})
            Do({{"do", "click"}, {"item", group}, {"index", 0}});
        Do({{"do", "set"}, {"item", "対応分類"}, {"index", 0}, {"value", 1}});
        // The memo's page opens when the key is complete and the focus moves on.
        Do({{"do", "focus"}, {"item", "相手先略称"}});
        EXPECT_TRUE(Do({{"do", "focus"}, {"item", "営業活動摘要"}}));
    }

    /// The memo that the start took over; nothing when it was offered none.
    const std::optional<QString>& Restored() const { return restored_; }

    bool IsStored(const QString& memo) const {
        QString problem;
        return !scenario::Select(root_, "data", "SELECT 1 AS a FROM T営業活動明細 WHERE 営業活動摘要 = '" + memo + "'",
                                 problem)
                    .isEmpty();
    }

  private:
    QString root_;
    std::unique_ptr<drive::DriverProcess> driver_;
    std::optional<QString> restored_;
};

TEST(KilledClient, LosesNoCharacterThatItTook) {
    const QTemporaryDir place;
    const QString root = place.path() + "/office";
    ASSERT_EQ(scenario::MakeOffice(root), QString());
    std::mt19937 dice(20261120);
    const auto upTo = [&dice](unsigned most) { return dice() % (most + 1); };

    Victim client(root);
    ASSERT_NO_FATAL_FAILURE(client.Start());
    int offered = 0, stored = 0;
    for (int round = 0; round < kKills; ++round) {
        client.FillSlot();
        QString taken;
        for (unsigned step = 0, steps = 1 + upTo(5); step < steps; ++step) {
            taken += QString("%1回目の%2行目\r\n").arg(round).arg(step);
            ASSERT_TRUE(client.Do({{"do", "type"}, {"text", taken}})) << round;
        }
        QString underWay = taken;
        if (upTo(1) == 0) {
            // Somewhere in a save.
            ASSERT_TRUE(client.Do({{"do", "click"}, {"item", "btn_登録"}})) << round;
            client.Send({{"do", "click"}, {"item", "btn_登録"}});
            QThread::usleep(upTo(120'000));
        } else {
            underWay += "最後の語";
            client.Send({{"do", "type"}, {"text", underWay}});
            QThread::usleep(upTo(3'000));
        }
        client.Kill();
        ASSERT_NO_FATAL_FAILURE(client.Start());
        const bool back = client.Restored() && (*client.Restored() == taken || *client.Restored() == underWay);
        EXPECT_TRUE(back || client.IsStored(taken))
            << "round " << round << ": " << taken.toStdString() << " restored "
            << client.Restored().value_or("(none)").toStdString() << (underWay == taken ? " save" : " type");
        ++(back ? offered : stored);
    }
    // Both ends were met, or the moments weren't random.
    EXPECT_GT(offered, 0);
    EXPECT_GT(stored, 0);
}

}  // namespace
