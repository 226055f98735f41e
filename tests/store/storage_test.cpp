#include <QSqlDatabase>
#include <chrono>
#include <thread>

#include "tests/store/store_fixture.h"

namespace store {
namespace {

// What every engine must do. A new engine is one more line at the end of this file.
class Storage : public OnEngine {
  protected:
    void SetUp() override {
        OnEngine::SetUp();
        if (IsSkipped()) return;
        store_ = std::make_unique<OpenStore>(GetParam());
        store_->Do("CREATE TABLE M担当者 (コード TEXT, 氏名 TEXT, 部門コード TEXT, SEQNo TEXT)");
        store_->Do("CREATE TABLE M部門 (コード TEXT, 名称 TEXT)");
        store_->Do("INSERT INTO [M担当者] ([コード], [氏名], [部門コード]) VALUES ('00002', '鈴木', '001')");
        store_->Do("INSERT INTO M担当者 (コード, 氏名, 部門コード, SEQNo) VALUES ('00001', '佐藤', NULL, '')");
        store_->Do("INSERT INTO M担当者 VALUES ('00003', '髙橋①', '009', '7')");
        store_->Do("INSERT INTO M部門 VALUES ('001', '営業部')");
    }

    std::unique_ptr<OpenStore> store_;
};

TEST_P(Storage, ReadsRowsForwardOnly) {
    Fault fault;
    const auto rows = (*store_)->Query("SELECT * FROM M担当者 ORDER BY コード", fault);
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->Columns(), (QStringList{"コード", "氏名", "部門コード", "SEQNo"}));
    EXPECT_EQ(rows->Value("コード"), "00001") << "leading zeros stay";
    EXPECT_EQ(rows->Value("部門コード"), std::nullopt);
    EXPECT_EQ(rows->Value("SEQNo"), "") << "the empty text is not Null";
    EXPECT_EQ(rows->Value("そんな列"), std::nullopt);
    rows->MoveNext();
    rows->MoveNext();
    EXPECT_EQ(rows->Value("氏名"), "髙橋①");
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
    EXPECT_EQ(rows->Value("氏名"), std::nullopt);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
}

TEST_P(Storage, ColumnsAreReadByTheirBareNames) {
    struct Case {
        QString sql;
        QString column;
        QString value;
    };
    const std::vector<Case> cases = {
        {"SELECT M担当者.氏名 FROM M担当者 WHERE M担当者.コード = '00002'", "氏名", "鈴木"},
        {"SELECT [M担当者].[氏名] FROM [M担当者] WHERE [コード] = '00002'", "氏名", "鈴木"},
        {"SELECT DISTINCT M担当者.氏名 FROM M担当者 WHERE コード = '00002' ORDER BY M担当者.氏名", "氏名", "鈴木"},
        {"SELECT TOP 1 M担当者.*, M担当者.氏名 as 担当者名 FROM M担当者 ORDER BY コード DESC", "担当者名", "髙橋①"},
        {"SELECT COUNT(*) AS 件数 FROM M担当者 WHERE コード <> '00001'", "件数", "2"},
        {"SELECT M担当者.コード, M部門.コード, M部門.名称 AS 部門名 FROM M部門 RIGHT JOIN M担当者 "
         "ON M部門.コード = M担当者.部門コード WHERE M担当者.コード = '00002'",
         "コード", "00002"},
        {"SELECT M担当者.*, M部門.名称 AS 部門名 FROM M部門, M担当者 "
         "WHERE M部門.コード(+) = M担当者.部門コード AND M担当者.コード = '00002'",
         "部門名", "営業部"},
        {"SELECT x.氏名 FROM (SELECT M担当者.氏名 FROM M担当者 WHERE コード = '00002') x", "氏名", "鈴木"},
    };
    for (const auto& [sql, column, value] : cases) {
        Fault fault;
        const auto rows = (*store_)->Query(sql, fault);
        ASSERT_TRUE(rows) << sql.toStdString() << fault.description.toStdString();
        EXPECT_EQ(rows->Value(column), value) << sql.toStdString();
    }
}

TEST_P(Storage, ComparesTextsAsTheyAre) {
    EXPECT_EQ(store_->Rows("SELECT コード FROM M担当者 WHERE コード >= '00002' ORDER BY コード"), "00002;00003");
    EXPECT_EQ(store_->Rows("SELECT コード FROM M担当者 WHERE コード = '2'"), "") << "texts, not numbers";
    store_->Do("INSERT INTO M部門 VALUES ('a', 'x')");
    EXPECT_EQ(store_->Rows("SELECT 名称 FROM M部門 WHERE コード = 'A'"), "");
}

TEST_P(Storage, KeepsEveryCharacterOfAText) {
    const QString text = QString::fromUtf8("O'Neil \"[TOP 1]\" (+) ? :a 𠮷〜 %_\r\n end  ");
    QString quoted = text;
    quoted.replace("'", "''");
    store_->Do("INSERT INTO M部門 VALUES ('777', '" + quoted + "')");
    Fault fault;
    const auto rows = (*store_)->Query("SELECT TOP 1 名称 FROM [M部門] WHERE 名称 = '" + quoted + "'", fault);
    ASSERT_TRUE(rows && !rows->Eof()) << fault.description.toStdString();
    EXPECT_EQ(rows->Value("名称"), text);
}

// A driver has buffers, and ideas of its own about what is long, empty or a number.
TEST_P(Storage, GivesValuesBackWholeAndAsTexts) {
    const QString memo = QString("一行目は長い髙①∥纊\r\n").repeated(6000);
    store_->Do("CREATE TABLE V (コード TEXT, 摘要 TEXT, 番号 INTEGER, 名 VARCHAR(255))");
    store_->Do("INSERT INTO V VALUES ('1', '" + memo + "', 0, '" + QString(255, u'名') + "')");
    store_->Do("INSERT INTO V VALUES ('', '', -2147483648, ' '), (NULL, NULL, NULL, NULL)");
    struct Case {
        QString sql, column;
        std::optional<QString> value;
    };
    const std::vector<Case> cases = {{"SELECT * FROM V WHERE コード = '1'", "摘要", memo},
                                     {"SELECT 摘要 || '終' AS 文 FROM V WHERE コード = '1'", "文", memo + "終"},
                                     {"SELECT 名 FROM V WHERE コード = '1'", "名", QString(255, u'名')},
                                     {"SELECT 番号 FROM V WHERE コード = '1'", "番号", "0"},
                                     {"SELECT SUM(番号) AS 計 FROM V WHERE コード = '1'", "計", "0"},
                                     {"SELECT 摘要 FROM V WHERE コード = ''", "摘要", ""},
                                     {"SELECT 名 FROM V WHERE コード = ''", "名", " "},
                                     {"SELECT 番号 FROM V WHERE コード = ''", "番号", "-2147483648"},
                                     {"SELECT 摘要 FROM V WHERE コード IS NULL", "摘要", std::nullopt},
                                     {"SELECT 番号 FROM V WHERE コード IS NULL", "番号", std::nullopt},
                                     {"SELECT MAX(コード) AS 最大 FROM V WHERE コード = '無い'", "最大", std::nullopt},
                                     {"SELECT '20260401' AS 日付, '' AS 空", "日付", "20260401"},
                                     {"SELECT '20260401' AS 日付, '' AS 空", "空", ""}};
    for (const auto& [sql, column, value] : cases) {
        Fault fault;
        const auto rows = (*store_)->Query(sql, fault);
        ASSERT_TRUE(rows && !rows->Eof()) << sql.toStdString() << fault.description.toStdString();
        EXPECT_TRUE(rows->Value(column) == value)
            << sql.toStdString() << ": " << rows->Value(column).value_or("Null").left(80).toStdString();
    }
    Fault fault;
    const auto none = (*store_)->Query("SELECT * FROM V WHERE コード = '無い'", fault);
    ASSERT_TRUE(none) << fault.description.toStdString();
    EXPECT_TRUE(none->Eof());
    EXPECT_EQ(none->Columns().size(), 4);
}

TEST_P(Storage, FaultsAreToldAndChangeNothing) {
    const QStringList faulty = {
        "SELECT * FROM 無い表",
        "SELECT [無い列] FROM M担当者",
        "UPDATE M担当者 SET 氏名 = 'O'Neil'",
        "UPDATE M担当者 SET 氏名 = 'x",
        "DELETE FROM M担当者; DELETE FROM M部門",
        QString("DELETE FROM M担当者") + QChar(u'\0') + " WHERE コード = 'x'",
        "UPDATE M担当者 SET 氏名 = ?",
        "SELECT TOP 1 * FROM M担当者 WHERE",
        "INSERT INTO M担当者 (コード) VALUES ('1', '2')",
        "",
    };
    const QString before = store_->Rows("SELECT * FROM M担当者 ORDER BY コード");
    for (const QString& sql : faulty) {
        Fault fault;
        EXPECT_FALSE((*store_)->Execute(sql, fault)) << sql.toStdString();
        EXPECT_NE(fault.description, "") << sql.toStdString();
        fault = {};
        EXPECT_FALSE((*store_)->Query(sql, fault)) << sql.toStdString();
        EXPECT_NE(fault.description, "") << sql.toStdString();
    }
    EXPECT_EQ(store_->Rows("SELECT * FROM M担当者 ORDER BY コード"), before);
    Fault fault;
    EXPECT_TRUE((*store_)->Execute("DELETE FROM M担当者 WHERE コード = 'x'", fault)) << "no row changed is no fault";
}

TEST_P(Storage, FaultsSayWhatTheyAreAbout) {
    store_->Do("CREATE TABLE T (k TEXT PRIMARY KEY, n INTEGER CHECK (n < 9))");
    store_->Do("INSERT INTO T VALUES ('1', 1)");
    const auto kindOf = [](Connection& connection, const QString& sql) {
        Fault fault;
        EXPECT_FALSE(connection.Execute(sql, fault)) << sql.toStdString();
        return fault.kind;
    };
    EXPECT_EQ(kindOf(**store_, "INSERT INTO T VALUES ('1', 2)"), FaultKind::KeyTaken);
    EXPECT_EQ(kindOf(**store_, "INSERT INTO T VALUES ('2', 9)"), FaultKind::RuleBroken);
    EXPECT_EQ(kindOf(**store_, "INSERT INTO 無い表 VALUES ('1')"), FaultKind::Other);
    EXPECT_EQ(kindOf(**store_, "INSERT INTO T VALUES ('1'2', 2)"), FaultKind::Other);
    const auto other = store_->Another();
    Fault fault;
    ASSERT_TRUE(other->Execute(GetParam().begin, fault));
    ASSERT_TRUE(other->Execute("UPDATE T SET n = 2", fault));
    EXPECT_EQ(kindOf(*store_->Another(300), "UPDATE T SET n = 3"), FaultKind::Locked);
    EXPECT_TRUE(other->Execute("COMMIT", fault));
}

TEST_P(Storage, AClosedConnectionOnlyFaults) {
    (*store_)->Close();
    (*store_)->Close();
    Fault fault;
    EXPECT_FALSE((*store_)->Query("SELECT * FROM M担当者", fault));
    EXPECT_NE(fault.description, "");
    EXPECT_FALSE((*store_)->Execute("DELETE FROM M担当者", fault));
    EXPECT_TRUE(QSqlDatabase::connectionNames().isEmpty()) << "nothing is left behind";
}

TEST_P(Storage, AReadResultHoldsNoLock) {
    Fault fault;
    const auto rows = (*store_)->Query("SELECT * FROM M担当者", fault);
    ASSERT_TRUE(rows && !rows->Eof());
    const auto other = store_->Another();
    EXPECT_TRUE(other->Execute("UPDATE M担当者 SET 氏名 = '新'", fault)) << fault.description.toStdString();
    EXPECT_EQ(rows->Value("氏名"), "鈴木");
    // Nor one that was read in part.
    const auto some = (*store_)->Query("SELECT コード FROM M担当者 ORDER BY コード", fault, 2);
    ASSERT_TRUE(some && !some->Eof());
    some->MoveNext();
    EXPECT_EQ(some->Value("コード"), "00002");
    some->MoveNext();
    EXPECT_TRUE(some->Eof());
    EXPECT_TRUE(other->Execute("UPDATE M担当者 SET 氏名 = '新'", fault)) << fault.description.toStdString();
    EXPECT_EQ(store_->Rows("SELECT DISTINCT 氏名 FROM M担当者"), "新") << "another's write is seen at once";
}

// What is asked for is what a list shows; a driver would read the whole result first.
TEST_P(Storage, TheEngineStopsBehindTheRowsThatAreAskedFor) {
    store_->Do("CREATE TABLE Z (a INTEGER, b INTEGER)");
    store_->Do("INSERT INTO Z VALUES (1, 1), (2, 1), (3, 0)");
    // The third row would hold a number that is too big.
    const QString sql = "SELECT CASE WHEN b = 0 THEN abs(-9223372036854775807 - 1 / (1 - b)) ELSE a END AS c FROM Z";
    Fault fault;
    ASSERT_FALSE((*store_)->Query(sql, fault, 3)) << "this engine finds nothing wrong";
    const auto some = (*store_)->Query(sql, fault, 2);
    ASSERT_TRUE(some) << fault.description.toStdString();
    EXPECT_EQ(some->Value("c"), "1");
}

TEST_P(Storage, AnothersLockIsWaitedFor) {
    const auto other = store_->Another();
    Fault fault;
    ASSERT_TRUE(other->Execute(GetParam().begin, fault));
    ASSERT_TRUE(other->Execute("UPDATE M部門 SET 名称 = '先'", fault));
    bool written = false;
    Fault waited;
    // A connection belongs to its thread, so the waiting one is opened there.
    std::thread thread([&] {
        const auto late = store_->Another();
        written = late->Execute("UPDATE M部門 SET 名称 = 名称 || '後'", waited);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    EXPECT_TRUE(other->Execute("COMMIT", fault)) << fault.description.toStdString();
    thread.join();
    EXPECT_TRUE(written) << waited.description.toStdString();
    EXPECT_EQ(store_->Rows("SELECT 名称 FROM M部門"), "先後");
}

INSTANTIATE_TEST_SUITE_P(Engines, Storage, testing::Values(kSqlite, kPostgres, kSqliteOverOdbc, kPostgresOverOdbc),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace store
