#include <signal.h>
#include <unistd.h>

#include <QDir>
#include <QProcess>

#include "setup/check_tree.h"
#include "setup/copy_tree.h"
#include "setup_fixture.h"

namespace setup {
namespace {

const ServerAdmin kAdmin{"katsudo_admin", ""};

QString TestServer() {
    return qEnvironmentVariable("KATSUDO_TEST_SERVER");
}

/// Where the main store of a tree is, and by what driver it is reached.
enum class Place { File, Server, FileByOdbc, ServerByOdbc };

bool OnServer(Place place) {
    return place == Place::Server || place == Place::ServerByOdbc;
}

/// A tree whose main store lies in it or in a database of its own on the test server.
class EngineTree : public TemporaryTree {
  public:
    QString Create(std::optional<DemoSizes> demo, Place place) {
        CreateOrder order;
        order.tree = tree;
        order.demo = std::move(demo);
        if (OnServer(place)) {
            static int count = 0;
            const QString name = QString("copy_%1_%2").arg(getpid()).arg(++count);
            order.server = ServerOrder{TestServer(), name, kAdmin.user, "", name + "_client", "secret", true};
        }
        server_ = order.server;
        const QString problem = CreateTree(order);
        if (place == Place::FileByOdbc) return problem + TakeProvider("ODBC:SQLite3");
        return place == Place::ServerByOdbc ? problem + TakeProvider("ODBC:PostgreSQL Unicode") : problem;
    }
    ~EngineTree() {
        if (!server_) return;
        store::Fault fault;
        if (auto link = store::PostgresLink::Open(AdminLogin(*server_, "postgres"), {}, fault)) {
            link->Run("DROP DATABASE IF EXISTS \"" + server_->database + "\" WITH (FORCE)", fault);
            link->Run("DROP ROLE IF EXISTS \"" + server_->user + "\"", fault);
        }
    }
    /// In the server's own SQL.
    void RunOnServer(const QString& sql) const {
        store::Fault fault;
        const auto link = store::PostgresLink::Open(AdminLogin(*server_, server_->database), {}, fault);
        ASSERT_TRUE(link && link->Run(sql, fault)) << fault.description.toStdString();
    }
    std::optional<ServerAdmin> Admin() const { return server_ ? std::optional(kAdmin) : std::nullopt; }

  private:
    QString TakeProvider(const QString& provider) const {
        store::Fault fault;
        OpenStores(tree).config->Execute("UPDATE データベース定義 SET プロバイダ名 = '" + provider + "'", fault);
        return fault.description;
    }

    std::optional<ServerOrder> server_;
};

void RunSql(const EngineTree& made, const QString& sql, bool environment = false) {
    const OpenTree open = OpenStores(made.tree, made.Admin());
    ASSERT_EQ(open.problem, "");
    store::Fault fault;
    ASSERT_TRUE((environment ? open.config : open.main)->Execute(sql, fault)) << fault.description.toStdString();
}

/// The first table that two trees don't hold alike; empty when there is none.
QString Difference(const Tree& one, const Tree& other) {
    for (const session::Table& table : session::MainTables()) {
        const QString all = "SELECT * FROM " + table.name + " ORDER BY " + table.key.join(u',');
        if (Rows(one, all) != Rows(other, all)) return table.name;
    }
    return {};
}

QString Copy(const EngineTree& from, const EngineTree& to) {
    CopyOrder order;
    order.from = from.tree;
    order.to = to.tree;
    order.admin = to.Admin();
    return CopyTree(order);
}

struct Engines {
    const char* name;
    Place from, to;
};

class Copying : public testing::TestWithParam<Engines> {
  protected:
    void SetUp() override {
        const auto& [name, from, to] = GetParam();
        if ((OnServer(from) || OnServer(to)) && TestServer().isEmpty()) GTEST_SKIP() << "no test server was started";
        ASSERT_EQ(from_.Create(Size(), from), "");
        ASSERT_EQ(to_.Create({}, to), "");
        // More than a hundred thousand rows that tell nothing new.
        RunSql(from_, "DELETE FROM M郵便番号 WHERE 郵便番号 > '0100000'");
        QFile paper(from_.tree.Folder("documents/見積.txt"));
        ASSERT_TRUE(paper.open(QIODevice::WriteOnly) && paper.write("paper") == 5);
    }
    virtual DemoSizes Size() const { return SmallDemo(); }

    QStringList Indexes() const {
        return OnServer(GetParam().to)
                   ? Rows(to_.tree, "SELECT indexname FROM pg_indexes ORDER BY indexname")
                   : Rows(to_.tree, "SELECT name FROM sqlite_master WHERE type = 'index' ORDER BY name");
    }

    EngineTree from_, to_;
};

class CopyingToServer : public Copying {};

class CopyingByOdbc : public Copying {
  protected:
    void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "Qt's ODBC driver takes 128 kB for each value, which the sanitizer makes minutes of";
#endif
        Copying::SetUp();
    }
};

std::string NameOf(const testing::TestParamInfo<Engines>& info) {
    return info.param.name;
}

const QString kAwkwardNames =
    "UPDATE M得意先 SET 名称A = '髙橋''s 〜\n', 名称B = NULL, カナ = '' WHERE コード < '000050'";

TEST_P(Copying, CarriesEveryRowAsItIsAndWhatBelongsToTheCompany) {
    RunSql(from_, kAwkwardNames);
    RunSql(from_, "UPDATE T営業活動明細 SET 活動時間 = NULL WHERE 開始時刻 < '12:00'");
    RunSql(from_, "UPDATE 動作環境定義 SET 運用事業所コード = '001'", true);
    const QStringList indexes = Indexes();
    ASSERT_GT(indexes.size(), 50);
    ASSERT_EQ(Copy(from_, to_), "");
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_EQ(CheckTree(to_.tree).wrong, QStringList{});
    EXPECT_EQ(Indexes(), indexes);
    EXPECT_EQ(Rows(to_.tree, "SELECT 運用事業所コード FROM 動作環境定義", true), QStringList{"001"});
    EXPECT_TRUE(QFile::exists(to_.tree.Folder("documents/見積.txt")));
    QFile key(from_.tree.PinKey()), carried(to_.tree.PinKey());
    ASSERT_TRUE(key.open(QIODevice::ReadOnly) && carried.open(QIODevice::ReadOnly));
    EXPECT_EQ(key.readAll(), carried.readAll()) << "or no PIN fits any more";

    EXPECT_TRUE(Copy(from_, to_).contains("holds a company already"));
    EXPECT_NE(Copy(from_, from_), "");
}

// What a run that was cut short leaves, and what happened to it since.
TEST_P(Copying, GoesOnWhereItWasAndFindsWhatDiffers) {
    QFile mark(UnfinishedCopy(to_.tree));
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly) && mark.write(from_.tree.root.toUtf8() + '\n') > 0);
    mark.close();
    EXPECT_NE(CheckTree(to_.tree).wrong.join(u'\n').indexOf("unfinished copy"), -1);
    // The first rows of the staff: two of them changed and one missing. Then a department that there never was.
    for (const QString code : {"00001", "00002", "00004"})
        RunSql(to_, "INSERT INTO M担当者 (コード, 氏名) VALUES ('" + code + "', 'x')");
    RunSql(to_, "INSERT INTO M部門 (コード, 名称) VALUES ('000', 'nobody''s')");
    ASSERT_EQ(Copy(from_, to_), "");
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_EQ(CheckTree(to_.tree).wrong, QStringList{});
}

INSTANTIATE_TEST_SUITE_P(Engines, Copying,
                         testing::Values(Engines{"files", Place::File, Place::File},
                                         Engines{"toServer", Place::File, Place::Server},
                                         Engines{"fromServer", Place::Server, Place::File}),
                         NameOf);

// An earlier version, which told more signs apart, made the target and began the copy.
TEST_P(CopyingToServer, AnOlderFoldIsToldAndMadeAnew) {
    RunSql(from_, "UPDATE M得意先 SET 名称A = 'ａ—’￥' WHERE コード < '000050'");
    ASSERT_EQ(Copy(from_, to_), "");
    to_.RunOnServer(
        "CREATE OR REPLACE FUNCTION katsudo_fold(t text) RETURNS text IMMUTABLE STRICT LANGUAGE sql "
        "AS $$ SELECT lower(normalize(t, NFKC)) $$; UPDATE \"M得意先\" SET \"名称A\" = \"名称A\"");
    const QString found = "SELECT COUNT(*) AS 件数 FROM M得意先 WHERE katsudo_名称A = 'a-''\\'";
    ASSERT_EQ(First(to_.tree, found), "0");
    EXPECT_TRUE(CheckTree(to_.tree).wrong.join(u'\n').contains("katsudo-setup copy --from " + to_.tree.root));
    QFile mark(UnfinishedCopy(to_.tree));
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly) && mark.write(from_.tree.root.toUtf8() + '\n') > 0);
    mark.close();
    ASSERT_EQ(Copy(from_, to_), "");
    EXPECT_NE(First(to_.tree, found), "0");
    EXPECT_EQ(CheckTree(to_.tree).wrong, QStringList{});
}

INSTANTIATE_TEST_SUITE_P(Engines, CopyingToServer, testing::Values(Engines{"toServer", Place::File, Place::Server}),
                         NameOf);

TEST_P(CopyingByOdbc, CarriesEveryRowAsItIs) {
    RunSql(from_, kAwkwardNames);
    ASSERT_EQ(Copy(from_, to_), "");
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_EQ(CheckTree(to_.tree).wrong, QStringList{});
}

INSTANTIATE_TEST_SUITE_P(Engines, CopyingByOdbc,
                         testing::Values(Engines{"toFile", Place::ServerByOdbc, Place::FileByOdbc},
                                         Engines{"toServer", Place::FileByOdbc, Place::ServerByOdbc}),
                         NameOf);

class CopyingMuch : public Copying {
  protected:
    DemoSizes Size() const override {
        DemoSizes sizes = SmallDemo();
        sizes.activities = 30'000;
        return sizes;
    }
    void Start(QProcess& copy) const {
        QStringList arguments = {"copy", "--from", from_.tree.root, "--to", to_.tree.root, "--progress"};
        if (to_.Admin()) arguments << "--admin-user" << to_.Admin()->user;
        copy.setProcessChannelMode(QProcess::MergedChannels);
        copy.start(KATSUDO_SETUP, arguments);
        ASSERT_TRUE(copy.waitForStarted());
    }
};

TEST_P(CopyingMuch, KilledAnywhereIsRunAgain) {
    // At its beginning, in the middle of the biggest table, and after it.
    for (const QByteArray words : {"\rT営業活動 ", "\rT営業活動明細 25000", "\rT案件 "}) {
        QProcess copy;
        Start(copy);
        QByteArray told;
        while (!told.contains(words) && copy.waitForReadyRead(60'000))
            told += copy.readAll();
        ::kill(pid_t(copy.processId()), SIGKILL);
        copy.waitForFinished();
        ASSERT_EQ(copy.exitStatus(), QProcess::CrashExit) << told.toStdString();
        ASSERT_TRUE(QFile::exists(UnfinishedCopy(to_.tree)));
    }
    EngineTree other;
    ASSERT_EQ(other.Create({}, Place::File), "");
    EXPECT_TRUE(Copy(other, to_).contains("unfinished copy of " + from_.tree.root));
    QProcess copy;
    Start(copy);
    ASSERT_TRUE(copy.waitForFinished(120'000));
    const QByteArray told = copy.readAll();
    EXPECT_EQ(copy.exitCode(), 0) << told.right(500).toStdString();
    EXPECT_FALSE(told.contains("\rT営業活動明細 5000")) << "it went on, and didn't begin again";
    EXPECT_EQ(Difference(from_.tree, to_.tree), "");
    EXPECT_FALSE(QFile::exists(UnfinishedCopy(to_.tree)));
}

INSTANTIATE_TEST_SUITE_P(Engines, CopyingMuch,
                         testing::Values(Engines{"files", Place::File, Place::File},
                                         Engines{"toServer", Place::File, Place::Server}),
                         NameOf);

TEST(CopyingColumns, ThatTheTargetLacksAreRefusedBeforeAnythingIsDone) {
    EngineTree from, to;
    ASSERT_EQ(from.Create(SmallDemo(), Place::File), "");
    ASSERT_EQ(to.Create({}, Place::File), "");
    RunSql(from, "ALTER TABLE Mセクション ADD COLUMN 備考 TEXT");
    RunSql(from, "UPDATE Mセクション SET 備考 = コード || '課'");
    EXPECT_TRUE(Copy(from, to).contains("Mセクション has no column 備考"));
    EXPECT_EQ(First(to.tree, "SELECT COUNT(*) AS 件数 FROM Mユーザ"), "1");
    RunSql(to, "ALTER TABLE Mセクション ADD COLUMN 備考 TEXT");
    ASSERT_EQ(Copy(from, to), "");
    EXPECT_EQ(Difference(from.tree, to.tree), "");
}

}  // namespace
}  // namespace setup
