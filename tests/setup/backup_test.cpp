#include <sys/resource.h>

#include <QDir>
#include <QDirIterator>
#include <csignal>

#include "setup/backup.h"
#include "setup/check_tree.h"
#include "setup/restore.h"
#include "setup_fixture.h"

namespace setup {
namespace {

void Write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()) << path.toStdString();
}

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

void RunSql(const Tree& tree, const QString& sql) {
    store::Fault fault;
    ASSERT_TRUE(OpenStores(tree).main->Execute(sql, fault)) << fault.description.toStdString();
}

/// A small company with a paper, and a backup of it.
class Backups : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(made_.Create(SmallDemo()), "");
        Write(tree_.Folder("documents/見積.txt"), "paper");
        Write(tree_.Folder("documents/図面/一.txt"), "drawing");
        Write(tree_.Folder("documents/.katsudo-123456789abc"), "on its way");
        ASSERT_TRUE(QDir().mkpath(tree_.Folder("users/sato/conf")));
        ASSERT_TRUE(QFile::copy(tree_.ConfigStore(), tree_.Folder("users/sato/conf/usrcnfg.accdb")));
        staff_ = Rows(tree_, "SELECT * FROM M担当者 ORDER BY コード");
        key_ = Content(tree_.PinKey());
        ASSERT_EQ(BackupTree(tree_, place_), "");
    }

    void ExpectAsBackedUp() {
        EXPECT_EQ(CheckTree(tree_).wrong, QStringList{});
        EXPECT_EQ(Rows(tree_, "SELECT * FROM M担当者 ORDER BY コード"), staff_);
        EXPECT_EQ(Content(tree_.PinKey()), key_);
        EXPECT_EQ(QFileInfo(tree_.PinKey()).permissions() & 0x0077, 0) << "others can read the key";
        EXPECT_EQ(Content(tree_.Folder("documents/見積.txt")), "paper");
        EXPECT_EQ(Content(tree_.Folder("documents/図面/一.txt")), "drawing");
        EXPECT_TRUE(QFile::exists(tree_.Folder("users/sato/conf/usrcnfg.accdb")));
    }
    static QString KeptOf(const Restored& restored, const QString& name) {
        return restored.kept.filter(name + ".replaced-").value(0);
    }

    TemporaryTree made_;
    const Tree& tree_ = made_.tree;
    QString place_ = made_.folder.path() + "/backups/月曜";
    QStringList staff_;
    QByteArray key_;
};

TEST_F(Backups, BringBackWhatWasAndKeepWhatIs) {
    EXPECT_FALSE(QFile::exists(place_ + "/documents/.katsudo-123456789abc"));
    EXPECT_EQ(QFileInfo(place_ + "/conf/pin.key").permissions() & 0x0077, 0);
    RunSql(tree_, "DELETE FROM M担当者 WHERE コード > '00003'");
    Write(tree_.PinKey(), "another");
    Write(tree_.Folder("documents/見積.txt"), "changed");
    Write(tree_.Folder("documents/新.txt"), "new");
    const Restored restored = RestoreTree(tree_, place_);
    ASSERT_EQ(restored.problem, "");
    ExpectAsBackedUp();
    EXPECT_FALSE(QFile::exists(tree_.Folder("documents/新.txt")));

    EXPECT_EQ(Content(KeptOf(restored, "pin.key")), "another");
    EXPECT_EQ(Content(KeptOf(restored, "documents") + "/新.txt"), "new");
    ASSERT_TRUE(QFile::remove(tree_.MainStore()));
    ASSERT_TRUE(QFile::rename(KeptOf(restored, "gnrdb.accdb"), tree_.MainStore()));
    EXPECT_EQ(First(tree_, "SELECT COUNT(*) AS 件数 FROM M担当者"), "3");
}

TEST_F(Backups, BringBackATreeThatIsGoneOrRuined) {
    Write(tree_.MainStore(), QByteArray(9000, 'x'));
    // Left by a client that was killed: the engine would take it for the new store's.
    Write(tree_.MainStore() + "-journal", QByteArray(1000, 'j'));
    ASSERT_TRUE(QFile::remove(tree_.ConfigStore()));
    const Restored restored = RestoreTree(tree_, place_);
    ASSERT_EQ(restored.problem, "");
    ExpectAsBackedUp();
    EXPECT_EQ(Content(KeptOf(restored, "gnrdb.accdb")), QByteArray(9000, 'x'));
    EXPECT_FALSE(QFile::exists(tree_.MainStore() + "-journal"));

    ASSERT_TRUE(QDir(tree_.root).removeRecursively());
    ASSERT_EQ(RestoreTree(tree_, place_).problem, "");
    ExpectAsBackedUp();
}

TEST_F(Backups, ThatWereTouchedAreRefusedBeforeAnythingIsReplaced) {
    const auto rows = [this] { return First(tree_, "SELECT COUNT(*) AS 件数 FROM M担当者"); };
    RunSql(tree_, "DELETE FROM M担当者 WHERE コード > '00003'");
    const std::vector<std::pair<QString, std::function<void(const QString&)>>> touches = {
        {"gnrdb.accdb", [](const QString& place) { RunSql({place}, "UPDATE M担当者 SET 氏名 = '誰か'"); }},
        {"pin.key", [](const QString& place) { QFile::remove(place + "/conf/pin.key"); }},
        {"一.txt", [](const QString& place) { Write(place + "/documents/図面/一.txt", "drawinG"); }},
        {"other rows",
         [](const QString& place) {
             const QByteArray list = Content(place + "/backup.json");
             Write(place + "/backup.json", QByteArray(list).replace("\"M担当者\": 14", "\"M担当者\": 15"));
         }},
        {"its own",
         [](const QString& place) {
             const QByteArray list = Content(place + "/backup.json");
             Write(place + "/backup.json", QByteArray(list).replace("conf/pin.key", "../conf/pin.key"));
         }},
        {"can't be understood", [](const QString& place) { Write(place + "/backup.json", "{\"form\": 1"); }},
        {"no backup", [](const QString& place) { QFile::remove(place + "/backup.json"); }},
    };
    for (const auto& [words, touch] : touches) {
        const QString copy = made_.folder.path() + "/copy";
        QDir(copy).removeRecursively();
        ASSERT_EQ(platform::CopyWhole(place_, copy).fault, platform::FileFault::None);
        ASSERT_EQ(ReadBackup(copy).problem, "");
        touch(copy);
        const Restored restored = RestoreTree(tree_, copy);
        EXPECT_TRUE(restored.problem.contains(words)) << words.toStdString() << ": " << restored.problem.toStdString();
        EXPECT_EQ(restored.kept, QStringList{}) << words.toStdString();
        EXPECT_EQ(rows(), "3") << words.toStdString();
    }
}

TEST_F(Backups, HaveTheirNameOnlyWhenTheyAreWhole) {
    const QString second = made_.folder.path() + "/second";
    EXPECT_NE(BackupTree(tree_, place_), "") << "an older backup stays";
    EXPECT_NE(BackupTree(tree_, tree_.Folder("data/backup")), "");
    // Left by a run that was killed.
    Write(second + ".unfinished/data/gnrdb.accdb", "half");
    {
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit full = before;
        full.rlim_cur = 100'000;
        setrlimit(RLIMIT_FSIZE, &full);
        const QString problem = BackupTree(tree_, second);
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
        EXPECT_NE(problem, "") << "the disk is full";
    }
    EXPECT_EQ(QDir(made_.folder.path()).entryList({"second*"}), QStringList{});
    // A page far behind the first row.
    QFile store(tree_.MainStore());
    ASSERT_TRUE(store.open(QIODevice::ReadWrite) && store.seek(store.size() / 2));
    ASSERT_EQ(store.write(QByteArray(100'000, 'x')), 100'000);
    store.close();
    EXPECT_TRUE(BackupTree(tree_, second).contains("damaged"));
    EXPECT_EQ(QDir(made_.folder.path()).entryList({"second*"}), QStringList{});
}

TEST_F(Backups, GiveASharedDocumentFolderBackWhatItLacks) {
    const QString shared = made_.folder.path() + "/shared";
    Write(shared + "/一.txt", "one");
    Write(shared + "/二.txt", "two");
    RunSql(tree_, "UPDATE Mユーザ SET ドキュメントフォルダ = '" + shared + "'");
    const QString second = made_.folder.path() + "/second";
    ASSERT_EQ(BackupTree(tree_, second), "");
    ASSERT_TRUE(QFile::remove(shared + "/一.txt"));
    Write(shared + "/二.txt", "of another tree");
    ASSERT_EQ(RestoreTree(tree_, second).problem, "");
    EXPECT_EQ(Content(shared + "/一.txt"), "one");
    EXPECT_EQ(Content(shared + "/二.txt"), "of another tree");
}

}  // namespace
}  // namespace setup
