// Plays every scenario file, without windows and with them; both must give the same answers.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDirIterator>
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

/// The office is made once for the process and copied for each play.
class Scenario : public testing::TestWithParam<std::string> {
  protected:
    static void SetUpTestSuite() {
        office_ = new QTemporaryDir;
        ASSERT_EQ(scenario::MakeOffice(office_->path() + "/office"), QString());
    }
    static void TearDownTestSuite() { delete office_; }

    static std::vector<QJsonObject> Play(const QString& file, bool window) {
        const QTemporaryDir place;
        const QString root = place.path() + "/office";
        EXPECT_TRUE(scenario::CopyTree(office_->path() + "/office", root));
        scenario::ScenarioPlayer player(root, window);
        player.Play(file);
        return player.Answers();
    }

    static inline QTemporaryDir* office_ = nullptr;
};

TEST_P(Scenario, GivesTheSameAnswersWithAndWithoutWindows) {
    const QString file = QString::fromStdString(GetParam());
    const std::vector<QJsonObject> headless = Play(file, false);
    ASSERT_FALSE(HasFailure()) << "without windows";
    const std::vector<QJsonObject> drawn = Play(file, true);
    ASSERT_EQ(headless.size(), drawn.size());
    for (std::size_t index = 0; index < headless.size(); ++index)
        ASSERT_EQ(scenario::Difference(headless[index], drawn[index]).toStdString(), "") << "answer " << index + 1;
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
