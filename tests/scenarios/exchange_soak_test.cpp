// Two clients on one store that start other programs all the time: each gets the answers to its own questions.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <thread>

#include "drive/driver_process.h"
#include "setup/command_line.h"
#include "tests/scenarios/office.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kExchanges = 40;
#else
constexpr int kExchanges = 250;
#endif

QString CodeOf(int client, int number) {
    return QString::number(100000 * (client + 1) + number);
}

/// A party that is only typed in is handed to its card, which makes it one with a code: what the card answers is read
/// off what it was given. The code that comes back must be that of this client's party.
QString HandOverParties(const QString& root, int client) {
    const QString login = client == 0 ? "sato" : "suzuki";
    drive::DriverProcess driver;
    if (!driver.Start({"--root", root, "--login", login, "--computer", "PC-" + login})) return "no client";
    const auto play = [&driver](const QJsonObject& command) { return driver.Play(command); };
    play({{"do", "focus"}, {"item", "担当者コード"}});
    play({{"do", "type"}, {"text", QString::number(client + 1)}});
    for (int number = 0; number < kExchanges; ++number) {
        const QString code = CodeOf(client, number);
        play({{"do", "focus"}, {"item", "相手先コード"}});
        play({{"do", "type"}, {"text", ""}});
        play({{"do", "focus"}, {"item", "相手先略称"}});
        play({{"do", "type"}, {"text", code + "商店"}});
        const QJsonObject answer = play({{"do", "click"}, {"item", "bak_相手先"}});
        if (!answer["ok"].toBool() || !answer["message"].isNull())
            return QString("%1: %2").arg(code, answer["error"].toString());
        const QJsonObject items = play({{"do", "state"}})["items"].toObject();
        if (items["相手先コード"].toObject()["text"] != code)
            return code + " came back as " + items["相手先コード"].toObject()["text"].toString();
    }
    return {};
}

TEST(Exchanges, OfTwoClientsAreNeitherLostNorMixedUp) {
    const QTemporaryDir place;
    const QString root = place.path() + "/office";
    ASSERT_EQ(scenario::MakeOffice(root), QString());
    ASSERT_EQ(setup::RunSetup({"stand-ins", "--root", root}, QCoreApplication::applicationDirPath()), 0);
    QFile told(root + "/prgbin/窓口先カード.answer");
    ASSERT_TRUE(told.open(QIODevice::WriteOnly));
    told.write("echo=10,6\n");
    told.close();
    QStringList rows;
    for (int client = 0; client < 2; ++client)
        for (int number = 0; number < kExchanges; ++number)
            rows << QString("('%1', '%1商店', '1')").arg(CodeOf(client, number));
    ASSERT_EQ(
        scenario::Execute(root, "data", "INSERT INTO M対応先 (コード, 略称, 名称入力区分) VALUES " + rows.join(", ")),
        QString());

    QString problems[2];
    std::thread other([&] { problems[1] = HandOverParties(root, 1); });
    problems[0] = HandOverParties(root, 0);
    other.join();
    EXPECT_EQ(problems[0].toStdString(), "");
    EXPECT_EQ(problems[1].toStdString(), "");
    QString problem;
    EXPECT_TRUE(scenario::Select(root, "conf", "SELECT * FROM プログラム連携情報", problem).isEmpty());
}

}  // namespace
