#include "platform/instance_guard.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <memory>

namespace {

/// Runs of one user of one tree, with temporary files of their own.
class InstanceGuard : public testing::Test {
  protected:
    void SetUp() override {
        qputenv("TMPDIR", QFile::encodeName(temporary_.path()));
        qunsetenv("XDG_RUNTIME_DIR");
    }
    void TearDown() override { qunsetenv("TMPDIR"); }

    static std::unique_ptr<platform::InstanceGuard> Run() {
        return std::make_unique<platform::InstanceGuard>("/somewhere/prgbin", "sato", "PC1");
    }
    static QStringList FoldersIn(const QTemporaryDir& place) {
        return QDir(place.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    static int ModeOf(const QString& path) {
        struct stat found {};
        EXPECT_EQ(stat(QFile::encodeName(path).constData(), &found), 0);
        return found.st_mode & 07777;
    }

    QTemporaryDir temporary_, runtime_;
};

TEST_F(InstanceGuard, KnowsTheRunsBeforeItAndLeavesNothing) {
    auto first = Run();
    auto second = Run();
    EXPECT_FALSE(first->AnotherRuns());
    EXPECT_TRUE(second->AnotherRuns());
    ASSERT_EQ(FoldersIn(temporary_).size(), 1);
    EXPECT_EQ(ModeOf(temporary_.filePath(FoldersIn(temporary_).first())), 0700);
    first.reset();
    EXPECT_FALSE(second->AnotherRuns());
    second.reset();
    EXPECT_EQ(FoldersIn(temporary_), QStringList());
}

TEST_F(InstanceGuard, KeepsAwayFromWhatOthersCanReach) {
    Run();
    auto probe = Run();
    const QString name = temporary_.filePath(FoldersIn(temporary_).first());
    probe.reset();
    // Made by somebody beforehand: open to all, another user's, a link to a folder of this user's.
    const auto open = [&] {
        EXPECT_TRUE(mkdir(QFile::encodeName(name).constData(), 0) == 0 &&
                    QFile::setPermissions(name, QFile::Permissions::fromInt(0x7777)));
    };
    const auto link = [&] { EXPECT_TRUE(QFile::link(runtime_.path(), name)); };
    const auto file = [&] { EXPECT_TRUE(QFile(name).open(QIODevice::WriteOnly)); };
    for (const std::function<void()>& trap : std::initializer_list<std::function<void()>>{open, link, file}) {
        trap();
        auto first = Run();
        auto second = Run();
        EXPECT_TRUE(second->AnotherRuns());
        EXPECT_EQ(FoldersIn(runtime_), QStringList());
        EXPECT_EQ(FoldersIn(temporary_).size(), 2);
        first.reset();
        second.reset();
        EXPECT_EQ(FoldersIn(temporary_).size(), 1) << "only what lay there";
        if (!QFile::remove(name)) QDir().rmdir(name);
    }
}

TEST_F(InstanceGuard, LiesInTheUsersRuntimeFolderWhereThereIsOne) {
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime_.path()));
    auto run = Run();
    EXPECT_EQ(FoldersIn(runtime_).size(), 1);
    EXPECT_EQ(FoldersIn(temporary_), QStringList());
    run.reset();
    EXPECT_EQ(FoldersIn(runtime_), QStringList());
}

}  // namespace
