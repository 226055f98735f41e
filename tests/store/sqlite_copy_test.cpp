#include "store/sqlite_copy.h"

#include <QFile>
#include <atomic>
#include <chrono>
#include <thread>

#include "tests/store/store_fixture.h"

namespace store {
namespace {

using std::chrono::milliseconds;

/// A store of two tables with many megabytes between them, so that a copy takes several pieces.
class StoreCopy : public testing::Test {
  protected:
    void SetUp() override {
        db_.Do("CREATE TABLE 先 (番号 INTEGER)");
        db_.Do("CREATE TABLE 間 (本文 TEXT)");
        db_.Do("CREATE TABLE 後 (番号 INTEGER)");
        db_.Do(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 4000) "
            "INSERT INTO 間 SELECT hex(randomblob(2000)) FROM n");
    }
    QString At(const QString& name) const { return db_.Folder() + "/" + name; }

    /// Opens the store at a path and reads one value.
    static QString Read(const QString& path, const QString& sql) {
        Fault fault;
        const auto connection = OpenConnection("Provider=SQLite;Data Source=" + path + ";", {}, fault);
        const auto rows = connection ? connection->Query(sql, fault) : nullptr;
        return rows && !rows->Eof() ? rows->Value(rows->Columns().first()).value_or("NULL") : fault.description;
    }

    OpenStore db_;
    Fault fault_;
};

/// Another client: saves one number after the other, each into both tables or into neither.
class Saver {
  public:
    explicit Saver(const OpenStore& db)
        : thread_([this, &db] {
              const auto connection = db.Another();
              Fault fault;
              while (!ends_ && !failed_) {
                  const QString number = QString::number(saved_ + 1);
                  failed_ = !connection->Execute("BEGIN IMMEDIATE", fault) ||
                            !connection->Execute("INSERT INTO 先 VALUES (" + number + ")", fault) ||
                            !connection->Execute("INSERT INTO 後 VALUES (" + number + ")", fault) ||
                            !connection->Execute("COMMIT", fault);
                  if (!failed_) ++saved_;
                  std::this_thread::sleep_for(milliseconds(2));
              }
          }) {
        while (saved_ < 3 && !failed_)
            std::this_thread::sleep_for(milliseconds(1));
    }
    /// How many it saved; -1 when one failed.
    int End() {
        ends_ = true;
        if (thread_.joinable()) thread_.join();
        return failed_ ? -1 : int(saved_);
    }
    int Saved() const { return saved_; }
    ~Saver() { End(); }

  private:
    std::atomic<bool> ends_ = false, failed_ = false;
    std::atomic<int> saved_ = 0;
    std::thread thread_;
};

TEST_F(StoreCopy, IsOneMomentOfAStoreThatOthersSaveInto) {
    Saver saver(db_);
    const int before = saver.Saved();
    int looks = 0;
    EXPECT_TRUE(CopySqliteStore(db_.Path(), At("copy"), fault_, [&](qint64, qint64) { ++looks; }))
        << fault_.description.toStdString();
    const int after = saver.Saved();
    EXPECT_GT(saver.End(), 0) << "nobody's save failed";
    EXPECT_GT(looks, 1);
    EXPECT_TRUE(CheckSqliteStore(At("copy"), fault_)) << fault_.description.toStdString();
    const int copied = Read(At("copy"), "SELECT COUNT(*) FROM 先").toInt();
    EXPECT_EQ(Read(At("copy"), "SELECT COUNT(*) FROM 後").toInt(), copied);
    EXPECT_EQ(Read(At("copy"), "SELECT MAX(番号) FROM 後").toInt(), copied);
    EXPECT_GE(copied, before);
    EXPECT_LE(copied, after + 1);
}

TEST_F(StoreCopy, TakesNothingOfAChangeThatIsNotDone) {
    const auto other = db_.Another();
    ASSERT_TRUE(other->Execute("PRAGMA cache_size = 5", fault_));
    ASSERT_TRUE(other->Execute("PRAGMA synchronous = OFF", fault_));
    ASSERT_TRUE(other->Execute("BEGIN IMMEDIATE", fault_));
    // More than the engine keeps in memory: the file itself is changed by now.
    ASSERT_TRUE(other->Execute("UPDATE 間 SET 本文 = 'x' WHERE ROWID < 500", fault_));
    EXPECT_FALSE(CopySqliteStore(db_.Path(), At("copy"), fault_, {}, 200));
    EXPECT_FALSE(QFile::exists(At("copy"))) << "nothing half-written";
    bool copied = false;
    std::thread thread([&] { copied = CopySqliteStore(db_.Path(), At("copy"), fault_); });
    std::this_thread::sleep_for(milliseconds(300));
    Fault fault;
    ASSERT_TRUE(other->Execute("ROLLBACK", fault));
    thread.join();
    ASSERT_TRUE(copied) << fault_.description.toStdString();
    EXPECT_EQ(Read(At("copy"), "SELECT COUNT(*) FROM 間 WHERE 本文 = 'x'"), "0");
    EXPECT_FALSE(CopySqliteStore(db_.Path(), At("copy"), fault_)) << "a file that is there stays";
}

TEST_F(StoreCopy, ReplacesAStoreUnderItsClientsAndLosesNoSave) {
    ASSERT_TRUE(CopySqliteStore(db_.Path(), At("backup"), fault_));
    Saver saver(db_);
    const int before = saver.Saved();
    ASSERT_TRUE(ReplaceSqliteStore(At("backup"), db_.Path(), At("kept"), fault_)) << fault_.description.toStdString();
    while (saver.Saved() < before + 20)
        std::this_thread::sleep_for(milliseconds(5));
    const int saved = saver.End();
    ASSERT_GT(saved, 0) << "the open client went on";
    // What it saved before stands in the kept store, what it saved after in the new one, and nothing twice.
    const int kept = Read(At("kept"), "SELECT COUNT(*) FROM 後").toInt();
    EXPECT_EQ(Read(At("kept"), "SELECT MAX(番号) FROM 後").toInt(), kept);
    EXPECT_EQ(db_.Rows("SELECT MIN(番号), COUNT(*) FROM 後"), QString("%1,%2").arg(kept + 1).arg(saved - kept));
    EXPECT_EQ(db_.Rows("SELECT COUNT(*) FROM 先"), QString::number(saved - kept));
    EXPECT_TRUE(CheckSqliteStore(db_.Path(), fault_)) << fault_.description.toStdString();
}

TEST_F(StoreCopy, ALockedOrRuinedStoreIsNotReplaced) {
    ASSERT_TRUE(CopySqliteStore(db_.Path(), At("backup"), fault_));
    db_.Do("DELETE FROM 間");
    const auto other = db_.Another();
    ASSERT_TRUE(other->Execute("BEGIN IMMEDIATE", fault_));
    EXPECT_FALSE(ReplaceSqliteStore(At("backup"), db_.Path(), At("kept"), fault_, 200));
    EXPECT_FALSE(IsNoStore(fault_)) << fault_.description.toStdString();
    EXPECT_FALSE(QFile::exists(At("kept")));
    ASSERT_TRUE(other->Execute("ROLLBACK", fault_));
    EXPECT_EQ(db_.Rows("SELECT COUNT(*) FROM 間"), "0");

    QFile garbage(At("garbage"));
    ASSERT_TRUE(garbage.open(QIODevice::WriteOnly) && garbage.write(QByteArray(5000, 'x')) == 5000);
    garbage.close();
    EXPECT_FALSE(ReplaceSqliteStore(At("backup"), At("garbage"), At("kept"), fault_));
    EXPECT_TRUE(IsNoStore(fault_)) << fault_.description.toStdString();
    EXPECT_FALSE(QFile::exists(At("kept")));
}

}  // namespace
}  // namespace store
