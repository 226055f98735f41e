#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QSqlDatabase>

#include "store/bulk_writer.h"
#include "store/connection_string.h"
#include "tests/store/store_fixture.h"

namespace store {
namespace {

QString Sqlite(const QString& path) {
    return "Provider=SQLite;Data Source=" + path + ";";
}

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(ConnectionString, IsReadInEverySpelling) {
    const ConnectionString parts(
        "provider=A.1; USER id=;;noise;Password = p=w ;Data Source=\"C:\\a;b\"\"c\\x.accdb\" ;Data source='y;z'");
    EXPECT_EQ(parts.Value("Provider"), "A.1");
    EXPECT_EQ(parts.Value("User ID"), "");
    EXPECT_EQ(parts.Value("PASSWORD"), "p=w");
    EXPECT_EQ(parts.Value("Data Source"), "y;z");
    EXPECT_EQ(ConnectionString("Data Source=\"C:\\a;b\"\"c\\x.accdb\"").Value("data source"), "C:\\a;b\"c\\x.accdb");
    EXPECT_EQ(ConnectionString("Data Source=\"open").Value("data source"), "open");
    EXPECT_EQ(ConnectionString("=;=;;").Value("x"), "");
}

TEST(Open, FindsTheFileUnderEitherSeparatorAndAnyName) {
    QTemporaryDir root;
    const QString name = QString::fromUtf8("営 業%41#?&+;é.accdb");
    QDir(root.path()).mkpath("data");
    Fault fault;
    ASSERT_TRUE(CreateSqliteStore(root.filePath("data/" + name), fault)) << fault.description.toStdString();
    for (const QString& source : {"data\\" + name, "data/" + name, root.filePath("data/" + name)}) {
        for (const QString provider : {"Microsoft.ACE.OLEDB.12.0", "microsoft.jet.oledb.4.0", "SQLite"}) {
            const QString text = "Provider=" + provider + ";User ID=;Password=;Data Source=\"" + source + "\";";
            EXPECT_TRUE(OpenConnection(text, root.path(), fault)) << fault.description.toStdString();
        }
    }
    EXPECT_EQ(QDir(root.filePath("data")).entryList(QDir::Files), QStringList{name}) << "no second file";
}

TEST(Open, AStoreThatIsNoneIsRefusedAndLeftAlone) {
    QTemporaryDir root;
    const QString good = root.filePath("good");
    Fault fault;
    ASSERT_TRUE(CreateSqliteStore(good, fault));
    WriteFile(root.filePath("empty"), "");
    WriteFile(root.filePath("short"), "x");
    WriteFile(root.filePath("garbage"), QByteArray(20000, 'g'));
    WriteFile(root.filePath("damaged"), ReadFile(good).left(100) + QByteArray(3996, '\xff'));
    QDir(root.path()).mkdir("folder");
    QFile::link(root.filePath("nowhere"), root.filePath("dangling"));
    ASSERT_EQ(mkfifo(root.filePath("pipe").toLocal8Bit().constData(), 0600), 0);
    const auto before = QDir(root.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString name : {"missing", "no/folder/missing", "empty", "short", "garbage", "damaged", "folder",
                               "dangling", "pipe", "good/below"}) {
        const QByteArray bytes = name == "pipe" ? QByteArray() : ReadFile(root.filePath(name));
        fault = {};
        EXPECT_FALSE(OpenConnection(Sqlite(name), root.path(), fault)) << name.toStdString();
        EXPECT_TRUE(fault.description.contains(root.filePath(name))) << fault.description.toStdString();
        EXPECT_EQ(fault.kind == FaultKind::Away && fault.ofFile, !QFileInfo::exists(root.filePath(name)));
        EXPECT_EQ(name == "pipe" ? QByteArray() : ReadFile(root.filePath(name)), bytes);
    }
    EXPECT_EQ(QDir(root.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot), before);
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty());
}

TEST(Open, NamesAnUnknownProviderAndAMissingSource) {
    Fault fault;
    EXPECT_FALSE(OpenConnection("Provider=OraOLEDB.Oracle;Data Source=x;", "/", fault));
    EXPECT_TRUE(fault.description.contains("OraOLEDB.Oracle"));
    for (const QString text : {"", "Data Source=x", "Provider=SQLite;", "Provider=SQLite;Data Source=;"}) {
        fault = {};
        EXPECT_FALSE(OpenConnection(text, "/tmp", fault)) << text.toStdString();
        EXPECT_NE(fault.description, "") << text.toStdString();
    }
}

// Lays root's rights down for a while: root may write everything.
class AsNobody {
  public:
    AsNobody() : root_(geteuid() == 0) { EXPECT_TRUE(!root_ || seteuid(65534) == 0); }
    ~AsNobody() { EXPECT_TRUE(!root_ || seteuid(0) == 0); }

  private:
    bool root_;
};

TEST(Open, AReadOnlyStoreOpensAndItsWritesFault) {
    OpenStore db;
    db.Do("CREATE TABLE t (a TEXT)");
    db->Close();
    ASSERT_EQ(chmod(db.Path().toLocal8Bit().constData(), 0444), 0);
    ASSERT_EQ(chmod(db.Folder().toLocal8Bit().constData(), 0755), 0);
    const QByteArray before = ReadFile(db.Path());
    {
        const AsNobody rights;
        Fault fault;
        const auto connection = OpenConnection(Sqlite(db.Path()), "/", fault);
        ASSERT_TRUE(connection) << fault.description.toStdString();
        EXPECT_TRUE(connection->Query("SELECT * FROM t", fault));
        EXPECT_FALSE(connection->Execute("INSERT INTO t VALUES ('1')", fault));
        EXPECT_EQ(fault.kind, FaultKind::NotWritable) << fault.description.toStdString();
    }
    EXPECT_EQ(ReadFile(db.Path()), before);
    EXPECT_EQ(QDir(db.Folder()).entryList(QDir::Files), QStringList{"store.accdb"});
}

TEST(Open, AStoreThatWasTakenAwayIsAway) {
    OpenStore db;
    db.Do("CREATE TABLE t (a TEXT)");
    ASSERT_TRUE(QFile::remove(db.Path()));
    Fault fault;
    EXPECT_FALSE(db->Execute("INSERT INTO t VALUES ('1')", fault));
    EXPECT_TRUE(fault.kind == FaultKind::Away && fault.ofFile) << fault.number << fault.description.toStdString();
}

TEST(Open, AStoreInTheMiddleOfAWriteOpens) {
    OpenStore db;
    db.Do("CREATE TABLE t (a TEXT)");
    db.Do("BEGIN IMMEDIATE");
    db.Do("INSERT INTO t VALUES ('1')");
    const auto other = db.Another();
    Fault fault;
    const auto rows = other->Query("SELECT * FROM t", fault);
    ASSERT_TRUE(rows) << fault.description.toStdString();
    EXPECT_TRUE(rows->Eof()) << "what isn't committed isn't there";
    db.Do("ROLLBACK");
}

TEST(Create, NeverTouchesAFileThatIsThere) {
    QTemporaryDir root;
    WriteFile(root.filePath("there"), "mine");
    Fault fault;
    EXPECT_FALSE(CreateSqliteStore(root.filePath("there"), fault));
    EXPECT_EQ(ReadFile(root.filePath("there")), "mine");
    EXPECT_FALSE(CreateSqliteStore(root.filePath("no/folder"), fault));
    EXPECT_NE(fault.description, "");
}

TEST(Bulk, WritesWhatTheConnectionReads) {
    OpenStore db;
    db.Do("CREATE TABLE T (コード TEXT PRIMARY KEY)");
    Fault fault;
    const auto writer = BulkWriter::Open(db.Path(), fault);
    ASSERT_TRUE(writer) << fault.description.toStdString();
    ASSERT_TRUE(writer->Begin(fault));
    ASSERT_TRUE(writer->Run("INSERT INTO T VALUES ('00001'), ('00002')", fault)) << fault.description.toStdString();
    EXPECT_FALSE(writer->Run("INSERT INTO T VALUES ('00002')", fault));
    ASSERT_TRUE(writer->Commit(fault)) << fault.description.toStdString();
    EXPECT_EQ(db.Rows("SELECT COUNT(*) AS n FROM T"), "2");
    EXPECT_EQ(db.Rows("PRAGMA journal_mode"), "delete");
}

TEST(Open, AStoreThatIsReplacedOrRemovedIsNoticedByTheNextStatement) {
    OpenStore store;
    store.Do("CREATE TABLE a (x TEXT)");
    store.Do("INSERT INTO a VALUES ('old')");
    EXPECT_EQ(store.Rows("PRAGMA synchronous"), "3") << "a commit outlives a power cut";
    // A backup is put back by renaming.
    const QString kept = store.Path() + ".kept", removed = store.Path() + ".removed";
    ASSERT_TRUE(QFile::copy(store.Path(), kept));
    ASSERT_TRUE(QFile::rename(store.Path(), removed) && QFile::rename(kept, store.Path()));
    store.Do("INSERT INTO a VALUES ('new')");
    EXPECT_EQ(store.Rows("PRAGMA synchronous"), "3");
    Fault fault;
    const auto seen = store.Another()->Query("SELECT COUNT(*) AS n FROM a", fault);
    ASSERT_TRUE(seen) << fault.description.toStdString();
    EXPECT_EQ(seen->Value("n"), "2") << "written into the file that lies there";

    ASSERT_TRUE(QFile::remove(store.Path()));
    EXPECT_FALSE(store->Execute("INSERT INTO a VALUES ('lost')", fault));
    EXPECT_EQ(fault.kind, FaultKind::Away);
    EXPECT_FALSE(QFile::exists(store.Path()));
    ASSERT_TRUE(QFile::rename(removed, store.Path()));
    EXPECT_EQ(store.Rows("SELECT x FROM a"), "old");
}

}  // namespace
}  // namespace store
