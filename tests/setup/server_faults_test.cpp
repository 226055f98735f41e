// What set-up leaves when its server goes away, or a disk is full, and that it can be run again.
#include <QProcess>

#include "setup/check_tree.h"
#include "setup/copy_tree.h"
#include "setup_fixture.h"
#include "tests/own_server.h"
#include "tests/small_disk.h"

namespace setup {
namespace {

class SetupAtServer : public testing::Test {
  protected:
    void Start(const QStringList& options = {}) {
        server_ = std::make_unique<OwnServer>(options);
        if (!server_->Running()) GTEST_SKIP() << "there is no PostgreSQL server";
        if (options.contains("small") && !server_->HasSmallDisk()) GTEST_SKIP() << "no disk may be mounted here";
    }

    QStringList CreateWords(const QStringList& what) const {
        return QStringList{"create",     "--root",       served_.tree.root, "--engine",
                           "postgresql", "--server",     server_->Place(),  "--database",
                           "company",    "--admin-user", "katsudo_admin",   "--progress"} +
               what;
    }
    QStringList CopyWords() const {
        return {"copy",         "--from",        file_.tree.root, "--to", served_.tree.root,
                "--admin-user", "katsudo_admin", "--progress"};
    }

    /// Runs katsudo-setup; when it tells `moment` of its progress, the server goes down. Gives what it told.
    QString Run(const QStringList& words, int expected, const QByteArray& moment = {}) const {
        QProcess setup;
        setup.setProcessChannelMode(QProcess::MergedChannels);
        setup.start(KATSUDO_SETUP, words);
        QByteArray told;
        while (!moment.isEmpty() && !told.contains(moment) && setup.waitForReadyRead(60'000))
            told += setup.readAll();
        if (!moment.isEmpty()) server_->Down();
        EXPECT_TRUE(setup.waitForFinished(120'000));
        told += setup.readAll();
        EXPECT_EQ(setup.exitStatus() == QProcess::NormalExit ? setup.exitCode() : -1, expected)
            << told.right(800).toStdString();
        return QString::fromUtf8(told);
    }

    std::unique_ptr<OwnServer> server_;
    TemporaryTree file_, served_;
};

TEST_F(SetupAtServer, ACreateThatTheServerLeftIsRunAgain) {
    Start();
    if (IsSkipped()) return;
    const QStringList words = CreateWords({"--demo", "--staff", "10", "--parties", "5000", "--today", "20260731"});
    EXPECT_TRUE(Run(words, 1, "\rparties").contains("The database company can't be made: ")) << "it went down too late";
    EXPECT_FALSE(served_.tree.Exists());
    EXPECT_TRUE(Run(words, 1).contains("データベースサーバーに接続できません"));
    EXPECT_FALSE(served_.tree.Exists());
    server_->Up();
    Run(words, 0);
    EXPECT_EQ(CheckTree(served_.tree).wrong, QStringList{});
    EXPECT_EQ(server_->Ask("SELECT count(*) FROM pg_database WHERE datname LIKE 'company%'"), "1");
}

TEST_F(SetupAtServer, ACopyThatTheServerLeftIsRunAgain) {
    Start();
    if (IsSkipped()) return;
    DemoSizes sizes = SmallDemo();
    sizes.activities = 12'000;
    ASSERT_EQ(file_.Create(sizes), "");
    // More than a hundred thousand rows that tell nothing new.
    store::Fault fault;
    ASSERT_TRUE(OpenStores(file_.tree).main->Execute("DELETE FROM M郵便番号 WHERE 郵便番号 > '0100000'", fault));
    Run(CreateWords({"--empty"}), 0);
    EXPECT_TRUE(Run(CopyWords(), 1, "\rT営業活動明細 5000").contains("can't be"));
    EXPECT_TRUE(Run(CopyWords(), 1).contains(served_.tree.root + ": The main store can't be opened: "));
    server_->Up();
    EXPECT_TRUE(CheckTree(served_.tree).wrong.join('\n').contains("unfinished copy"));
    Run(CopyWords(), 0);
    EXPECT_EQ(CheckTree(served_.tree).wrong, QStringList{});
    EXPECT_EQ(First(served_.tree, "SELECT COUNT(*) AS n FROM T営業活動明細"),
              First(file_.tree, "SELECT COUNT(*) AS n FROM T営業活動明細"));
}

TEST_F(SetupAtServer, AFullDiskIsToldAndTheWorkRunAgain) {
    Start({"small"});
    if (IsSkipped()) return;
    server_->Do("ALTER ROLE katsudo_admin SET default_tablespace = katsudo_small");
    EXPECT_TRUE(Run(CreateWords({"--demo"}), 1).contains("No space left"));
    EXPECT_FALSE(served_.tree.Exists());
    server_->Do("ALTER ROLE katsudo_admin RESET default_tablespace");
    Run(CreateWords({"--empty"}), 0);

    ASSERT_EQ(file_.Create(SmallDemo()), "");
    server_->Do("ALTER TABLE \"M郵便番号\" SET TABLESPACE katsudo_small", "company");
    EXPECT_TRUE(Run(CopyWords(), 1).contains("No space left"));
    server_->Do("ALTER TABLE \"M郵便番号\" SET TABLESPACE pg_default", "company");
    Run(CopyWords(), 0);
    EXPECT_EQ(CheckTree(served_.tree).wrong, QStringList{});
}

// A mistake of the server's administrator shows in a check, before it costs a save.
TEST_F(SetupAtServer, ACheckTellsWhoMayNotDoWhat) {
    Start();
    if (IsSkipped()) return;
    Run(CreateWords({"--empty", "--password", "secret"}), 0);
    const QStringList check = {"check", "--root", served_.tree.root};
    Run(check, 0);
    server_->Do(
        "REVOKE INSERT, DELETE ON \"T営業活動明細\" FROM company_client; REVOKE ALL ON \"M部門\" FROM "
        "company_client",
        "company");
    const QStringList wrong = CheckTree(served_.tree).wrong;
    EXPECT_TRUE(wrong.contains("The clients' login has no right to INSERT, DELETE on the table T営業活動明細."))
        << wrong.join('\n').toStdString();
    EXPECT_TRUE(wrong.join('\n').contains("The table M部門 can't be read: ERROR: permission denied"));
    const std::vector<std::pair<QString, QString>> spoilt = {
        {"ALTER ROLE company_client PASSWORD 'another'", "password authentication failed"},
        {"ALTER ROLE company_client NOLOGIN PASSWORD 'secret'", "not permitted to log in"},
        {"ALTER DATABASE company RENAME TO elsewhere", "does not exist"}};
    for (const auto& [sql, words] : spoilt) {
        server_->Do(sql);
        EXPECT_TRUE(Run(check, 1).contains(words)) << sql.toStdString();
        server_->Do("ALTER ROLE company_client LOGIN");
    }
    server_->Down();
    EXPECT_TRUE(Run(check, 1).contains("The main store can't be opened: データベースサーバーに接続できません"));
}

TEST_F(SetupAtServer, ACertifiedServerIsAskedForFromTheStart) {
    Start({"network"});
    if (IsSkipped()) return;
    ASSERT_TRUE(QDir().mkpath(served_.tree.Folder("conf")));
    const QString file = served_.tree.Folder("conf") + "/server-ca.crt";
    ASSERT_TRUE(QFile::copy(server_->File("authority.crt"), file));
    QStringList words = CreateWords({"--empty"});
    QString& server = words[words.indexOf("--server") + 1];
    server = server_->At("127.0.0.1");
    EXPECT_TRUE(Run(words, 1).contains("certificate")) << "it is for another name";
    server = server_->At("localhost");
    Run(words, 0);
    EXPECT_EQ(CheckTree(served_.tree).wrong, QStringList{});

    ASSERT_EQ(file_.Create({}), "");
    server_->Do("ALTER SYSTEM SET ssl = off");
    server_->Do("SELECT pg_reload_conf()");
    EXPECT_TRUE(Run(CopyWords(), 1).contains("does not support SSL"));
    server_->Do("ALTER SYSTEM SET ssl = on");
    server_->Do("SELECT pg_reload_conf()");
    Run(CopyWords(), 0);
}

TEST(SetupOnSmallDisk, AFullDiskLeavesTheTreeThatWasThere) {
    TemporaryTree large, made;
    ASSERT_TRUE(QDir().mkpath(made.tree.Folder("data")));
    const SmallDisk disk(made.tree.Folder("data"), 4096);
    if (!disk) GTEST_SKIP() << "no disk may be mounted here";
    ASSERT_EQ(made.Create({}), "");
    const QStringList rows = Rows(made.tree, "SELECT * FROM A番号情報");
    CreateOrder order;
    order.tree = made.tree;
    order.demo = SmallDemo();
    order.force = true;
    EXPECT_TRUE(CreateTree(order).contains("full"));
    EXPECT_EQ(Rows(made.tree, "SELECT * FROM A番号情報"), rows);
    EXPECT_EQ(QDir(made.tree.Folder("data")).entryList(QDir::Files), QStringList{"gnrdb.accdb"});

    // A copy into it fails as well, and goes on when there is room.
    ASSERT_EQ(large.Create(SmallDemo()), "");
    CopyOrder copy;
    copy.from = large.tree;
    copy.to = made.tree;
    EXPECT_TRUE(CopyTree(copy).contains("full"));
    TemporaryTree roomy;
    ASSERT_TRUE(QProcess::execute("cp", {"-r", made.tree.root, roomy.tree.root}) == 0);
    copy.to = roomy.tree;
    ASSERT_EQ(CopyTree(copy), "");
    EXPECT_EQ(CheckTree(roomy.tree).wrong, QStringList{});
}

}  // namespace
}  // namespace setup
