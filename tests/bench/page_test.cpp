// The page of benchmarks from a company of a few hundred parties: everything is measured for real, by the program
// itself.
#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "lists/list_families.h"

namespace {

using testing::HasSubstr;
using testing::Not;

struct Ended {
    int code = -1;
    std::string said;
};

Ended RunPage(const QString& work, const QStringList& words) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(KATSUDO_BENCH,
                  QStringList{"page", "--work", work, "--out", work + "/page.md", "--quick", "yes"} + words);
    process.waitForFinished(500'000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAll().toStdString()};
}

std::string Content(const QString& file) {
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll().toStdString() : "no file";
}

std::vector<lists::ListDescription> AllLists() {
    std::vector<lists::ListDescription> all{lists::StaffList(), lists::CombinedPartyList()};
    for (const auto& family :
         {lists::SmallLists(), lists::PartyLists(), lists::ContactLists(), lists::NumberLists(), lists::NameLists()})
        all.insert(all.end(), family.begin(), family.end());
    return all;
}

void ExpectWhole(const std::string& page) {
    EXPECT_THAT(page, HasSubstr("Everything was found, stored and shown as it should be."));
    EXPECT_THAT(page, Not(HasSubstr("{{")));
    for (const lists::ListDescription& list : AllLists())
        EXPECT_THAT(page, HasSubstr("| " + list.name.toStdString() + " |"));
}

TEST(BenchmarkPage, HasEverySectionOfAFile) {
    const QTemporaryDir work;
    const QStringList words{"--sizes", "500", "--slots", "5000"};
    const Ended first = RunPage(work.path(), words);
    ASSERT_EQ(first.code, 0) << first.said;
    const std::string page = Content(work.path() + "/page.md");
    ExpectWhole(page);
    EXPECT_THAT(page, HasSubstr("| T営業受注 |"));
    // What is known isn't measured again, what was removed is.
    QFile::remove(work.path() + "/results/file-500-indexes.json");
    EXPECT_EQ(RunPage(work.path(), words).code, 0);
    const Ended third = RunPage(work.path(), words);
    EXPECT_EQ(third.code, 0);
    EXPECT_EQ(third.said, "");
    EXPECT_TRUE(QFile::exists(work.path() + "/results/file-500-indexes.json"));
}

TEST(BenchmarkPage, HasEverySectionOfAServer) {
    const QString server = qEnvironmentVariable("KATSUDO_TEST_SERVER");
    if (server.isEmpty()) GTEST_SKIP() << "KATSUDO_TEST_SERVER names no server";
    const QTemporaryDir work;
    // The file's side is the other test's.
    QDir().mkpath(work.path() + "/results");
    for (const char* measurement : {"lists", "documents", "client", "indexes"}) {
        QFile known(work.path() + "/results/file-510-" + measurement + ".json");
        ASSERT_TRUE(known.open(QIODevice::WriteOnly) && known.write(R"({"tables": []})") > 0);
    }
    const Ended ended = RunPage(work.path(), {"--sizes", "510", "--slots", "5000", "--server", server, "--admin-user",
                                              "katsudo_admin", "--clients", "3", "--seconds", "1"});
    ASSERT_EQ(ended.code, 0) << ended.said;
    const std::string page = Content(work.path() + "/page.md");
    ExpectWhole(page);
    EXPECT_THAT(page, HasSubstr("slowest hundredth from, ms"));
}

TEST(BenchmarkPage, ToldWhatCannotBeMadeEndsWithAnError) {
    const QTemporaryDir work;
    const Ended ended = RunPage(work.path(), {"--sizes", "500,100"});
    EXPECT_EQ(ended.code, 2) << "sizes have to rise";
    EXPECT_THAT(ended.said, HasSubstr("Usage"));
}

}  // namespace
