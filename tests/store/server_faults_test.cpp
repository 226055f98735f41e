// Faults of a server and of its network, made to happen on a server of the test's own.
#include <QDir>
#include <QFile>

#include "tests/own_server.h"
#include "tests/small_disk.h"
#include "tests/store/store_fixture.h"

namespace store {
namespace {

/// The providers by which a PostgreSQL server is reached.
class OverProvider : public testing::TestWithParam<const char*> {
  protected:
    std::unique_ptr<Connection> Open(const QString& server, const QString& user = "katsudo_admin") {
        fault_ = {};
        return OpenConnection(
            QString("Provider=%1;User ID=%2;Password=se cret;Data Source=%3;Initial Catalog=postgres;")
                .arg(GetParam(), user, server),
            root_.path(), fault_, 3000);
    }

    /// Whether the connection is encrypted, "1" or "0"; why there is none otherwise.
    QString Encrypted(const QString& server, const QString& user = "katsudo_admin") {
        const auto connection = Open(server, user);
        const auto row = connection ? connection->Query(
                                          "SELECT CAST(ssl AS INTEGER) AS tls FROM pg_stat_ssl WHERE pid = "
                                          "pg_backend_pid()",
                                          fault_)
                                    : nullptr;
        return row ? row->Value("tls").value_or("no row") : fault_.description;
    }

    void AskForCertificate(const QByteArray& authority) const {
        ASSERT_TRUE(QDir(root_.path()).mkpath("conf"));
        QFile file(root_.filePath("conf/server-ca.crt"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(authority) == authority.size());
    }

    QTemporaryDir root_;
    Fault fault_;
};

std::string NameOf(const testing::TestParamInfo<const char*>& info) {
    return QString(info.param).startsWith("ODBC") ? "odbc" : "qt";
}

class OnNetwork : public OverProvider {};

QByteArray Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST_P(OnNetwork, EncryptsWhereTheServerOffersItAndTrustsWhomTheTreeTrusts) {
    const OwnServer server({"network"});
    if (!server.Running()) GTEST_SKIP() << "there is no PostgreSQL server";
    server.Do("CREATE ROLE client LOGIN PASSWORD 'se cret'");
    // The server takes this login over TLS only, and its certificate is for "localhost".
    EXPECT_EQ(Encrypted(server.At("localhost"), "client"), "1");
    EXPECT_EQ(Encrypted(server.At("127.0.0.1"), "client"), "1") << "no certificate is asked for";
    EXPECT_TRUE(Encrypted(server.At("localhost"), "nobody").contains("password authentication failed"));

    AskForCertificate(Content(server.File("authority.crt")));
    EXPECT_EQ(Encrypted(server.At("localhost"), "client"), "1");
    EXPECT_EQ(Encrypted(server.Place()), "0") << "a socket of this machine has no certificate";
    EXPECT_TRUE(Encrypted(server.At("127.0.0.1"), "client").contains("certificate")) << "another name";
    const OwnServer other({"network"});
    EXPECT_TRUE(Encrypted(other.At("localhost")).contains("certificate")) << "another authority";
    AskForCertificate("no certificate");
    EXPECT_NE(Encrypted(server.At("localhost")), "1");

    server.Do("ALTER SYSTEM SET ssl = off");
    server.Do("SELECT pg_reload_conf()");
    AskForCertificate(Content(server.File("authority.crt")));
    EXPECT_TRUE(Encrypted(server.At("localhost")).contains("does not support SSL")) << fault_.description.toStdString();
    QFile::remove(root_.filePath("conf/server-ca.crt"));
    EXPECT_EQ(Encrypted(server.At("localhost")), "0");
    EXPECT_TRUE(Encrypted(server.At("localhost"), "client").contains("no encryption"));
}

// What this machine demands is more than what a server offers.
TEST(Libpq, ItsEnvironmentCounts) {
    const OwnServer server({"network"});
    if (!server.Running()) GTEST_SKIP() << "there is no PostgreSQL server";
    server.Do("ALTER SYSTEM SET ssl = off");
    server.Do("SELECT pg_reload_conf()");
    PostgresLogin login;
    TakeServer(server.At("localhost"), login);
    login.database = "postgres";
    login.user = "katsudo_admin";
    Fault fault;
    EXPECT_TRUE(PostgresLink::Open(login, {}, fault)) << fault.description.toStdString();
    qputenv("PGSSLMODE", "require");
    EXPECT_FALSE(PostgresLink::Open(login, {}, fault));
    qunsetenv("PGSSLMODE");
    EXPECT_TRUE(fault.description.contains("does not support SSL")) << fault.description.toStdString();
}

/// A file of data sources, which counts as this user's.
class DataSources {
  public:
    explicit DataSources(const QByteArray& content) {
        QFile file(folder_.filePath("odbc.ini"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        qputenv("ODBCINI", file.fileName().toUtf8());
    }
    ~DataSources() { qunsetenv("ODBCINI"); }

  private:
    QTemporaryDir folder_;
};

TEST(DataSource, KeepsItsOwnWordUnlessTheConnectionSaysOtherwise) {
    const OwnServer server({"network"});
    if (!server.Running()) GTEST_SKIP() << "there is no PostgreSQL server";
    const QByteArray common =
        "]\nDriver=PostgreSQL Unicode\nServername=localhost\nDatabase=postgres\nSSLmode=require\n";
    const DataSources sources("[katsudo-right" + common + "Port=" + server.Place().section(u':', 1).toUtf8() +
                              "\n[katsudo-wrong" + common + "Port=1\n");
    const QTemporaryDir root;
    const auto open = [&root](const QString& parts) {
        Fault fault;
        const auto connection = OpenConnection("User ID=katsudo_admin;Password=x;" + parts, root.path(), fault);
        return connection ? QString("open") : fault.description;
    };
    const QString here = "Data Source=" + server.At("localhost") + ";Initial Catalog=postgres;";
    EXPECT_EQ(open("Provider=ODBC:katsudo-right;"), "open");
    EXPECT_EQ(open("Provider=ODBC:katsudo-right;" + here), "open");
    EXPECT_TRUE(open("Provider=ODBC:katsudo-wrong;").contains("port 1 failed"));
    EXPECT_EQ(open("Provider=ODBC:katsudo-wrong;" + here), "open") << "the port of the server's name";
    ASSERT_TRUE(QDir(root.path()).mkpath("conf"));
    ASSERT_TRUE(QFile::copy(server.File("authority.crt"), root.filePath("conf/server-ca.crt")));
    EXPECT_EQ(open("Provider=ODBC:katsudo-right;"), "open");
    ASSERT_TRUE(QFile::remove(root.filePath("conf/server-ca.crt")));
    ASSERT_TRUE(QFile::copy(server.File("server.crt"), root.filePath("conf/server-ca.crt")));
    EXPECT_TRUE(open("Provider=ODBC:katsudo-right;").contains("certificate")) << "the authority of another server";
    ASSERT_TRUE(QFile::remove(root.filePath("conf/server-ca.crt")));
    server.Do("ALTER SYSTEM SET ssl = off");
    server.Do("SELECT pg_reload_conf()");
    EXPECT_TRUE(open("Provider=ODBC:katsudo-right;").contains("does not support SSL"));
    EXPECT_TRUE(open("Provider=ODBC:katsudo-right;" + here).contains("does not support SSL"));
}

TEST(DataSource, LeadsToAFile) {
    const OpenStore db;
    const DataSources sources("[katsudo-named]\nDriver=SQLite3\nDatabase=" + db.Path().toUtf8() +
                              "\n[katsudo-bare]\nDriver=SQLite3\n");
    Fault fault;
    EXPECT_TRUE(OpenConnection("Provider=ODBC:katsudo-named;", "/", fault)) << fault.description.toStdString();
    EXPECT_TRUE(OpenConnection("Provider=ODBC:katsudo-bare;Data Source=store.accdb;", db.Folder(), fault))
        << fault.description.toStdString();
    EXPECT_FALSE(OpenConnection("Provider=ODBC:katsudo-bare;Data Source=missing.accdb;", db.Folder(), fault));
    EXPECT_EQ(QDir(db.Folder()).entryList(QDir::Files), QStringList{"store.accdb"});
}

INSTANTIATE_TEST_SUITE_P(Providers, OnNetwork, testing::Values("PostgreSQL", "ODBC:PostgreSQL Unicode"), NameOf);

class AtServer : public OverProvider {};

TEST_P(AtServer, ACrashCostsTheStatementsUntilItIsUpAgain) {
    const OwnServer server;
    if (!server.Running()) GTEST_SKIP() << "there is no PostgreSQL server";
    const auto connection = Open(server.Place());
    ASSERT_TRUE(connection) << fault_.description.toStdString();
    ASSERT_TRUE(connection->Execute("CREATE TABLE t (a TEXT)", fault_));
    ASSERT_TRUE(connection->Execute("INSERT INTO t VALUES ('before')", fault_));
    server.Down();
    // The first meets the break, the others find nobody.
    for (const QString text : {"1", "2", "3"}) {
        fault_ = {};
        EXPECT_FALSE(connection->Execute("INSERT INTO t VALUES ('" + text + "')", fault_));
        EXPECT_EQ(fault_.kind, FaultKind::Away) << fault_.description.toStdString();
    }
    EXPECT_FALSE(connection->Query("SELECT a FROM t", fault_));
    server.Up();
    EXPECT_TRUE(connection->Execute("INSERT INTO t VALUES ('after')", fault_)) << fault_.description.toStdString();
    QStringList rows;
    for (const auto found = connection->Query("SELECT a FROM t", fault_); found && !found->Eof(); found->MoveNext())
        rows << found->Value("a").value_or("Null");
    EXPECT_EQ(rows.join(','), "before,after");
}

TEST_P(AtServer, AFullDiskIsToldAndTheSameStatementGoesThroughLater) {
    const OwnServer server({"small"});
    if (!server.Running()) GTEST_SKIP() << "there is no PostgreSQL server";
    if (!server.HasSmallDisk()) GTEST_SKIP() << "no disk may be mounted here";
    const auto connection = Open(server.Place());
    ASSERT_TRUE(connection) << fault_.description.toStdString();
    server.Do("CREATE TABLE t (a TEXT) TABLESPACE katsudo_small");
    server.FillSmallDisk("postgres");
    const QString process = "SELECT CAST(pg_backend_pid() AS TEXT) AS id";
    const auto before = connection->Query(process, fault_);
    EXPECT_FALSE(connection->Execute("INSERT INTO t VALUES ('髙橋')", fault_));
    EXPECT_TRUE(fault_.description.contains("No space left")) << fault_.description.toStdString();
    EXPECT_EQ(fault_.kind, FaultKind::DiskFull);
    server.FreeSmallDisk("postgres");
    EXPECT_TRUE(connection->Execute("INSERT INTO t VALUES ('髙橋')", fault_)) << fault_.description.toStdString();
    EXPECT_EQ(connection->Query(process, fault_)->Value("id"), before->Value("id")) << "the link wasn't lost";
}

INSTANTIATE_TEST_SUITE_P(Providers, AtServer, testing::Values("PostgreSQL", "ODBC:PostgreSQL Unicode"), NameOf);

class OnSmallDisk : public testing::TestWithParam<const char*> {};

TEST_P(OnSmallDisk, AFileKeepsItsRowsAndTheSameStatementGoesThroughLater) {
    const QTemporaryDir folder;
    const SmallDisk disk(folder.path(), 256);
    if (!disk) GTEST_SKIP() << "no disk may be mounted here";
    Fault fault;
    const QString path = folder.filePath("store.accdb");
    ASSERT_TRUE(CreateSqliteStore(path, fault)) << fault.description.toStdString();
    const QString text = QString("Provider=%1;Data Source=%2;").arg(GetParam(), path);
    const auto connection = OpenConnection(text, "/", fault);
    ASSERT_TRUE(connection) << fault.description.toStdString();
    ASSERT_TRUE(connection->Execute("CREATE TABLE t (a TEXT)", fault));
    ASSERT_TRUE(connection->Execute("INSERT INTO t VALUES ('before')", fault));
    disk.Fill();
    EXPECT_FALSE(connection->Execute("INSERT INTO t VALUES ('after')", fault));
    EXPECT_EQ(fault.kind, FaultKind::DiskFull) << fault.description.toStdString();
    EXPECT_TRUE(connection->Query("SELECT a FROM t WHERE a = 'before'", fault)) << "what is there can be read";
    disk.Free();
    EXPECT_TRUE(connection->Execute("INSERT INTO t VALUES ('after')", fault)) << fault.description.toStdString();
    const auto another = OpenConnection(text, "/", fault);
    ASSERT_TRUE(another) << fault.description.toStdString();
    EXPECT_EQ(another->Query("SELECT COUNT(*) AS n FROM t", fault)->Value("n"), "2");
}

INSTANTIATE_TEST_SUITE_P(Providers, OnSmallDisk, testing::Values("SQLite", "ODBC:SQLite3"), NameOf);

}  // namespace
}  // namespace store
