// Plays every scenario file, without windows and with them, and with the main store on a server, which is reached in
// two ways: all must give the same answers.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "tests/scenarios/office.h"
#include "tests/scenarios/scenario_player.h"

namespace {

QStringList ScenarioFiles() {
    QStringList files;
    QDirIterator found(QStringLiteral(KATSUDO_SCENARIOS), {"*.jsonl"}, QDir::Files, QDirIterator::Subdirectories);
    while (found.hasNext())
        files << found.next();
    files.sort();
    return files;
}

// The folders whose files tell most about what lies between the program and its engine.
bool TellsOfDrivers(const QString& file) {
    return QStringList{"day", "faults", "history", "lists"}.contains(QFileInfo(file).dir().dirName());
}

/// The office is made once for the process and copied for each play.
class Scenario : public testing::TestWithParam<std::string> {
  protected:
    static void SetUpTestSuite() {
        office_ = new QTemporaryDir;
        ASSERT_EQ(scenario::MakeOffice(office_->path() + "/office"), QString());
    }
    static void TearDownTestSuite() {
        scenario::DropServerStore(ServerOffice());
        delete office_;
    }

    static QString ServerOffice() { return office_->path() + "/server_office"; }
    static QString Database(const char* name) {
        return QString("%1_%2").arg(name).arg(QCoreApplication::applicationPid());
    }

    static std::vector<QJsonObject> Play(const QString& file, bool window) {
        const QTemporaryDir place;
        const QString root = place.path() + "/office";
        EXPECT_TRUE(scenario::CopyTree(office_->path() + "/office", root));
        scenario::ScenarioPlayer player(root, window, "sqlite");
        player.Play(file);
        return player.Answers();
    }

    static std::vector<QJsonObject> PlayOnServer(const QString& file, const QString& provider = {}) {
        if (!QFile::exists(ServerOffice())) {
            EXPECT_EQ(scenario::MakeOffice(ServerOffice(), Database("office")).toStdString(), "");
        }
        const QTemporaryDir place;
        const QString root = place.path() + "/office";
        EXPECT_TRUE(scenario::CopyTree(ServerOffice(), root, Database("play")));
        if (!provider.isEmpty())
            scenario::Execute(root, "conf", "UPDATE データベース定義 SET プロバイダ名 = '" + provider + "'");
        scenario::ScenarioPlayer player(root, false, provider.isEmpty() ? "server" : "odbc");
        player.Play(file);
        scenario::DropServerStore(root);
        return player.Answers();
    }

    /// Each engine complains of a missing table in its own words.
    static QJsonObject WithoutEngineWords(QJsonObject answer) {
        static const QRegularExpression words("（(ERROR:|no such)[^）]*）");
        const QByteArray text = QJsonDocument(answer).toJson();
        return QJsonDocument::fromJson(QString::fromUtf8(text).replace(words, "（…）").toUtf8()).object();
    }

    static void ExpectSame(const std::vector<QJsonObject>& first, const std::vector<QJsonObject>& second) {
        ASSERT_EQ(first.size(), second.size());
        for (std::size_t index = 0; index < first.size(); ++index)
            ASSERT_EQ(
                scenario::Difference(WithoutEngineWords(first[index]), WithoutEngineWords(second[index])).toStdString(),
                "")
                << "answer " << index + 1;
    }

    static inline QTemporaryDir* office_ = nullptr;
};

TEST_P(Scenario, GivesTheSameAnswersWithAndWithoutWindows) {
    const QString file = QString::fromStdString(GetParam());
    const std::vector<QJsonObject> headless = Play(file, false);
    ASSERT_FALSE(HasFailure()) << "without windows";
    ExpectSame(headless, Play(file, true));
}

TEST_P(Scenario, GivesTheSameAnswersOnAServer) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the client's own code is looked through without a server; the release build plays this";
#endif
    if (scenario::TestServer().isEmpty()) GTEST_SKIP() << "no test server was started";
    const QString file = QString::fromStdString(GetParam());
    const std::vector<QJsonObject> served = PlayOnServer(file);
    ASSERT_FALSE(HasFailure()) << "on the server";
    const std::vector<QJsonObject> fromFile = Play(file, false);
    // A file may be for one of the two only.
    if (served.empty() || fromFile.empty()) return;
    ExpectSame(fromFile, served);
    if (!TellsOfDrivers(file)) return;
    const std::vector<QJsonObject> byOdbc = PlayOnServer(file, "ODBC:PostgreSQL Unicode");
    ASSERT_FALSE(HasFailure()) << "on the server, through ODBC";
    ExpectSame(fromFile, byOdbc);
}

std::vector<std::string> Parameters() {
    std::vector<std::string> files;
    for (const QString& file : ScenarioFiles())
        files.push_back(file.toStdString());
    return files;
}

INSTANTIATE_TEST_SUITE_P(Files, Scenario, testing::ValuesIn(Parameters()),
                         [](const testing::TestParamInfo<std::string>& file) {
                             return QFileInfo(QString::fromStdString(file.param)).completeBaseName().toStdString();
                         });

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
