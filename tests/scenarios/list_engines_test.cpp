// Every statement of every list window gives the same rows on a server as in a file, with the rights that the clients'
// login has there.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QRegularExpression>
#include <QSqlRecord>
#include <QTemporaryDir>
#include <thread>

#include "lists/list_families.h"
#include "session/schema.h"
#include "session/server_schema.h"
#include "setup/check_tree.h"
#include "setup/create_tree.h"
#include "setup/tree.h"
#include "store/postgres_dialect.h"
#include "store/postgres_search.h"
#include "tests/lists/every_search.h"
#include "tests/scenarios/office.h"

namespace {

/// Something to search an item for that some rows of the demo company have and some lack.
QString ValueFor(const QString& item) {
    const std::vector<std::pair<QString, QString>> values = {
        {"カナ", "ヤマ"},     {"住所", "東"},       {"郵便", "1"},      {"電話", "３"},     {"日付", "20260901"},
        {"納期", "20260901"}, {"コード", "000020"}, {"No", "00000050"}, {"担当者名", "田"}, {"タイトル", "の"}};
    for (const auto& [part, value] : values)
        if (item.contains(part)) return item.contains("担当者コード") ? QString("00007") : value;
    return "工";
}

/// Texts of one letter, two and more, that many parties have, few and none; with voiced marks of their own, and with
/// wildcards between common and rare parts.
const QStringList kTexts = {"山",   "%",        "社",  "ｶﾞ",   "工業",  "株式",  "えい",    "06", "-0",       "株式会",
                            "ﾃﾞﾝｷ", "サービス", "075", "京都", "株%山", "会_山", "０１%３", "'%", "該当なし", "1_3%5"};

/// Of a telephone number only the digits are looked for.
const QStringList kNumbers = {"06", "-0", "075", "０１３", "1_3%5", "3", "12", "0312", "4-1", "90", "75", "64"};

struct Result {
    QStringList rows;     ///< sorted: rows that are equal in the order's columns come as they like
    QStringList ordered;  ///< values of the first column of the order, as they came
    QString fault;
};

QString OrderOf(const QString& sql) {
    return sql.section(" ORDER BY ", 1).section(QRegularExpression("[ ,]"), 0, 0).section('.', -1);
}

Result Fetch(store::Connection& store, const QString& sql) {
    Result result;
    store::Fault fault;
    const auto rows = store.Query(sql, fault);
    if (!rows) return {{}, {}, fault.description};
    const QString order = OrderOf(sql);
    for (; !rows->Eof(); rows->MoveNext()) {
        QStringList values;
        for (const QString& column : rows->Columns())
            values << rows->Value(column).value_or("Null");
        result.rows << values.join(u'|');
        result.ordered << rows->Value(order).value_or("Null");
    }
    result.rows.sort();
    return result;
}

/// A statement of the server's own SQL.
Result Fetch(const store::PostgresLink& link, const QString& sql, const QString& order) {
    Result result;
    store::Fault fault;
    QSqlQuery query = link.NewQuery();
    if (!store::PostgresLink::Start(query, sql, fault)) return {{}, {}, fault.description};
    while (query.next()) {
        QStringList values;
        for (int i = 0; i < query.record().count(); ++i)
            values << (query.isNull(i) ? QString("Null") : query.value(i).toString());
        result.rows << values.join(u'|');
        result.ordered << (query.isNull(order) ? QString("Null") : query.value(order).toString());
    }
    result.rows.sort();
    return result;
}

class TwoEngines : public testing::Test {
  protected:
    void SetUp() override {
        if (scenario::TestServer().isEmpty()) GTEST_SKIP() << "no test server was started";
        const QString id = QString::number(QCoreApplication::applicationPid());
        server_ = setup::ServerOrder{
            scenario::TestServer(), "lists_" + id, "katsudo_admin", {}, "lists_client_" + id, "secret", true};
        setup::CreateOrder order;
        order.demo = setup::DemoSizes{40, 900, 200, 120, 1, QDate(2026, 11, 20)};
        for (const bool onServer : {false, true}) {
            order.tree.root = place_.path() + (onServer ? "/server" : "/file");
            order.server = onServer ? std::optional(server_) : std::nullopt;
            ASSERT_EQ(setup::CreateTree(order).toStdString(), "");
        }
        // The clients' login on the server, so that its rights are tried as well.
        file_ = setup::OpenStores({place_.path() + "/file"});
        served_ = setup::OpenStores({place_.path() + "/server"});
        ASSERT_TRUE(file_.main && served_.main) << served_.problem.toStdString();
        auto admin = setup::OpenStores({place_.path() + "/server"}, setup::ServerAdmin{"katsudo_admin", {}});
        for (store::Connection* store : {file_.main.get(), admin.main.get()})
            MakeRichInNulls(*store);
    }

    static void MakeRichInNulls(store::Connection& store) {
        store::Fault fault;
        for (const session::Table& table : session::MainTables()) {
            if (table.key.isEmpty() || table.name.startsWith("A") || table.name.startsWith("T営業活動")) continue;
            int number = 0;
            for (const QString& column : table.ColumnNames()) {
                const QString rows = QString(" WHERE %1 LIKE '%%2'").arg(table.key.last()).arg(number++ % 10);
                if (table.key.contains(column)) continue;
                EXPECT_TRUE(store.Execute("UPDATE " + table.name + " SET " + column + " = NULL" + rows, fault))
                    << fault.description.toStdString();
            }
        }
    }

    void Compare(const QString& window, const QString& sql) {
        const Result file = Fetch(*file_.main, sql);
        const Result served = Fetch(*served_.main, sql);
        const std::string words = window.toStdString() + ": " + sql.toStdString();
        EXPECT_EQ(served.fault.isEmpty(), file.fault.isEmpty()) << words << "\n" << served.fault.toStdString();
        EXPECT_EQ(served.rows.join('\n').toStdString(), file.rows.join('\n').toStdString()) << words;
        EXPECT_EQ(served.ordered.join('|').toStdString(), file.ordered.join('|').toStdString()) << words;
        ++statements_;
        filled_ += file.rows.isEmpty() ? 0 : 1;
    }

    QTemporaryDir place_;
    setup::ServerOrder server_;
    setup::OpenTree file_, served_;
    int statements_ = 0;
    int filled_ = 0;
};

TEST_F(TwoEngines, GiveTheSameRowsForEveryListStatement) {
    for (const QString kind : {"S", "O"})
        for (const auto& [window, sql] : lists::EverySearch(kind, ValueFor))
            Compare(window, sql);
    EXPECT_GT(statements_, 300);
    EXPECT_GT(filled_, statements_ / 2) << "too few of them found a row to tell";
    RecordProperty("statements", statements_);
    RecordProperty("filled", filled_);
}

class TwoEnginesOnParties : public TwoEngines {
  protected:
    void SetUp() override {
        TwoEngines::SetUp();
        if (IsSkipped()) return;
        store::Fault fault;
        admin_ = store::PostgresLink::Open(setup::AdminLogin(server_, server_.database), {}, fault);
        ASSERT_TRUE(admin_ && admin_->Run("SET enable_seqscan = off", fault)) << fault.description.toStdString();
        QSqlQuery query = admin_->NewQuery();
        ASSERT_TRUE(store::PostgresLink::Start(query, store::AskForSearchTables(), fault));
        tables_ = store::TakeSearchTables(query);
    }

    /// Each party list's search for each text; some also of one staff member, and among all items.
    void ForEachSearch(const std::function<void(const QString& window, const QString& sql)>& look) {
        auto all = lists::PartyLists();
        all.push_back(lists::CombinedPartyList());
        for (const lists::ListDescription& list : all)
            for (const QString item : {"カナ", "名称", "住所", "郵便番号", "電話"})
                for (const lists::SearchMode& mode : list.modes)
                    if (mode.items.contains(item) && mode.number >= 0) ForEachText(list, item, mode.number, look);
    }

    void ForEachText(const lists::ListDescription& list, const QString& item, int mode,
                     const std::function<void(const QString& window, const QString& sql)>& look) {
        const QStringList& texts = item == "電話" ? kNumbers : kTexts;
        for (qsizetype i = 0; i < texts.size(); i += mode == 0 ? 4 : 1) {
            lists::SearchValues values = lists::AllFilled(list, "S", false, ValueFor);
            values.items = {{item, texts[i]}, {"担当者コード", i % 3 == 0 ? "00003" : ""}};
            for (const lists::ListStatement& statement : list.statements)
                look(list.name, lists::BuildSearchSql(list, statement, mode, values));
        }
    }

    void CompareWay(const QString& way, const QString& sql, const Result& file, const Result& first) {
        const Result all = Fetch(*admin_, way, OrderOf(sql));
        EXPECT_EQ(all.fault, "") << way.toStdString();
        EXPECT_EQ(all.rows.join('\n').toStdString(), file.rows.join('\n').toStdString()) << way.toStdString();
        EXPECT_EQ(all.ordered.join('|').toStdString(), file.ordered.join('|').toStdString()) << way.toStdString();
        // The first ones are the first ones; which of those that are equal in the order's column is nobody's choice.
        const Result few = Fetch(*admin_, QString(way).replace(" LIMIT 1000", " LIMIT 7"), OrderOf(sql));
        EXPECT_EQ(few.ordered.join('|').toStdString(), first.ordered.join('|').toStdString()) << way.toStdString();
    }

    std::unique_ptr<store::PostgresLink> admin_;
    store::SearchTables tables_;
};

TEST_F(TwoEnginesOnParties, FindTheSameInWhicheverWayTheServerIsAsked) {
    int searches = 0, covered = 0, gathered = 0, found = 0;
    ForEachSearch([&](const QString& window, const QString& sql) {
        const auto ways = store::WaysOf(sql, tables_);
        if (!ways) {
            EXPECT_TRUE(sql.contains("LIKE '%%") || !sql.contains("LIKE")) << window.toStdString() << sql.toStdString();
            return;
        }
        const Result file = Fetch(*file_.main, sql);
        const Result first = Fetch(*file_.main, QString(sql).replace("TOP 1000", "TOP 7"));
        for (const QString& way : {ways->lookUp, ways->walk})
            CompareWay(way, sql, file, first);
        ++searches;
        covered += ways->covered ? 1 : 0;
        gathered += ways->walk.contains("御担当者") && !file.rows.isEmpty() ? 1 : 0;
        found += file.rows.isEmpty() ? 0 : 1;
    });
    EXPECT_GT(searches, 500);
    EXPECT_GT(covered, searches / 3) << "an index lacks what a search looks at";
    EXPECT_GT(gathered, 75);
    EXPECT_GT(found, searches / 4) << "too few of them found a row to tell";
}

// A company's database from before there were folded columns.
TEST_F(TwoEnginesOnParties, FindTheSameWithoutWhatHastensASearch) {
    store::Fault fault;
    for (const session::Table& table : session::MainTables())
        for (const QString& column : session::FoldedColumns(table))
            ASSERT_TRUE(admin_->Run(
                QString("ALTER TABLE \"%1\" DROP COLUMN \"%2\" CASCADE").arg(table.name, store::FoldedColumn(column)),
                fault))
                << fault.description.toStdString();
    int searches = 0;
    ForEachSearch([&](const QString& window, const QString& sql) {
        if (++searches % 3 == 0) Compare(window, sql);
    });
    EXPECT_GT(filled_, 50);
}

// What a party has gathered of its contacts' numbers is what they have, however the masters are written.
TEST_F(TwoEnginesOnParties, AContactsNumberBelongsToItsParty) {
    store::Fault fault;
    const auto run = [&fault](store::PostgresLink& link, const QString& sql) {
        EXPECT_TRUE(link.Run(sql, fault)) << sql.toStdString() << "\n" << fault.description.toStdString();
    };
    const auto numbers = [this](const QString& code) {
        return Fetch(*admin_,
                     "SELECT \"katsudo_M得意先御担当者_電話番号\" AS n FROM \"M得意先\" WHERE \"コード\" = '" + code +
                         "'",
                     "n")
            .ordered.join(u';');
    };
    // Another program's login, which may write contacts and nothing else.
    const QString sibling = "sibling_" + server_.database;
    run(*admin_, "DROP ROLE IF EXISTS " + sibling + "; CREATE ROLE " + sibling +
                     " LOGIN PASSWORD 'x'; GRANT CONNECT ON "
                     "DATABASE " +
                     server_.database + " TO " + sibling + "; GRANT USAGE ON SCHEMA public TO " + sibling +
                     "; GRANT SELECT, INSERT, UPDATE, DELETE ON \"M得意先御担当者\" TO " + sibling);
    const auto one = store::PostgresLink::Open({server_.server, 0, server_.database, sibling, "x"}, {}, fault);
    const auto other = store::PostgresLink::Open({server_.server, 0, server_.database, sibling, "x"}, {}, fault);
    ASSERT_TRUE(one && other) << fault.description.toStdString();
    const QString insert =
        "INSERT INTO \"M得意先御担当者\" (\"得意先コード\", \"御担当者コード\", \"電話番号\") VALUES ";

    run(*one, insert + "('new', '1', '0312345678'), ('new', '2', NULL), ('other', '1', '0611')");
    run(*admin_, "INSERT INTO \"M得意先\" (\"コード\") VALUES ('new'), ('other')");
    EXPECT_EQ(numbers("new"), "0312345678") << "the contacts were there first";
    run(*one, insert + "('new', '3', '090')");
    run(*one,
        "UPDATE \"M得意先御担当者\" SET \"電話番号\" = '0752' WHERE \"得意先コード\" = 'new' AND \"御担当者コード\" = "
        "'2'");
    EXPECT_EQ(numbers("new"), "0312345678\n0752\n090");
    run(*one,
        "UPDATE \"M得意先御担当者\" SET \"得意先コード\" = 'other' , \"御担当者コード\" = '2' WHERE \"電話番号\" = "
        "'0752'");
    run(*one, "DELETE FROM \"M得意先御担当者\" WHERE \"電話番号\" = '090'");
    EXPECT_EQ(numbers("new"), "0312345678");
    EXPECT_EQ(numbers("other"), "0611\n0752");
    run(*admin_,
        "DELETE FROM \"M得意先\" WHERE \"コード\" = 'new'; UPDATE \"M得意先\" SET \"コード\" = 'new' WHERE \"コード\" "
        "= 'other'");
    EXPECT_EQ(numbers("new"), "0312345678") << "they are found by the code that a party has";

    // Two of one party at once: the second one waits, and then has both.
    run(*one, "BEGIN; " + insert + "('new', '7', '1111')");
    std::thread second([&] {
        store::Fault late;
        EXPECT_TRUE(other->Run(insert + "('new', '8', '2222')", late)) << late.description.toStdString();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    run(*one, "COMMIT");
    second.join();
    EXPECT_EQ(numbers("new"), "0312345678\n1111\n2222");

    // An index has no room for all the numbers of a big one.
    run(*one,
        "INSERT INTO \"M得意先御担当者\" (\"得意先コード\", \"御担当者コード\", \"電話番号\") SELECT 'new', '2' || i, "
        "'0' || "
        "hashtext(i::text)::bigint + 9000000000 FROM generate_series(1000, 3000) AS i");
    run(*admin_, "UPDATE \"M得意先\" SET \"担当者コード\" = '00001', \"取引状況区分\" = '1' WHERE \"コード\" = 'new'");
    const auto ways = store::WaysOf(
        "SELECT TOP 1000 M得意先.コード, M得意先.電話 FROM M得意先 WHERE (M得意先.電話番号 LIKE '%2222%' OR EXISTS "
        "(SELECT * FROM M得意先御担当者 WHERE 得意先コード = M得意先.コード AND 電話番号 LIKE '%2222%')) "
        "ORDER BY M得意先.電話",
        tables_);
    ASSERT_TRUE(ways && ways->covered);
    for (const QString& way : {ways->lookUp, ways->walk}) {
        EXPECT_TRUE(Fetch(*admin_, way, "電話").rows.join(u';').contains("new|")) << way.toStdString();
        EXPECT_FALSE(Fetch(*admin_, QString(way).replace("2222", "27182818"), "電話").rows.join(u';').contains("new|"))
            << way.toStdString();
    }

    run(*admin_, "DELETE FROM \"M得意先御担当者\"");
    const auto left =
        Fetch(*admin_, "SELECT 1 AS n FROM \"M得意先\" WHERE \"katsudo_M得意先御担当者_電話番号\" <> ''", "n");
    EXPECT_EQ(left.rows.size() + left.fault.size(), 0);
    run(*admin_, "DROP OWNED BY " + sibling + "; DROP ROLE " + sibling);
}

TEST_F(TwoEngines, TheClientsLoginMayDoNoMoreThanTheClientDoes) {
    const QStringList refused = {
        "UPDATE M担当者 SET 暗証番号 = ''",
        "DELETE FROM M得意先",
        "INSERT INTO T案件 (事業所コード, 番号基準日付, 案件No) VALUES ('000', '20260401', '99999999')",
        "DELETE FROM T閲覧",
        "UPDATE T営業活動 SET 承認区分 = '1'",
        "DROP TABLE T閲覧",
        "CREATE TABLE t (a TEXT)",
        "SELECT * FROM pg_authid",
        "CREATE DATABASE d"};
    for (const QString& sql : refused) {
        store::Fault fault;
        EXPECT_FALSE(served_.main->Execute(sql, fault)) << sql.toStdString();
        EXPECT_TRUE(fault.description.contains("permission denied") || fault.description.contains("must be owner"))
            << fault.description.toStdString();
    }
    // Nor may another login of the same server look into the company's database.
    store::Fault fault;
    const auto admin = store::PostgresLink::Open(setup::AdminLogin(server_, "postgres"), {}, fault);
    const QString stranger = "stranger_" + server_.database;
    ASSERT_TRUE(admin && admin->Run("CREATE ROLE " + stranger + " LOGIN PASSWORD 'x'", fault));
    EXPECT_FALSE(store::PostgresLink::Open({server_.server, 0, server_.database, stranger, "x"}, {}, fault));
    EXPECT_TRUE(fault.description.contains("permission denied")) << fault.description.toStdString();
}

TEST_F(TwoEngines, ACheckTellsWhatAServersDatabaseLacks) {
    const setup::Tree tree{place_.path() + "/server"};
    EXPECT_EQ(setup::CheckTree(tree).wrong.join('\n').toStdString(), "");
    store::Fault fault;
    const auto admin = store::PostgresLink::Open(setup::AdminLogin(server_, server_.database), {}, fault);
    ASSERT_TRUE(admin && admin->Run("DROP FUNCTION katsudo_pieces CASCADE; DROP TABLE \"M郵便番号\"; "
                                    "ALTER TABLE \"M部門\" DROP COLUMN \"名称\"",
                                    fault))
        << fault.description.toStdString();
    const QString wrong = setup::CheckTree(tree).wrong.join('\n');
    for (const QString words :
         {"Texts can't be searched: ", "The table M郵便番号 can't be read: ", "The table M部門 has no column 名称."})
        EXPECT_TRUE(wrong.contains(words)) << wrong.toStdString();
}

// An administrator's mistake must not cost the company its database, nor the tree its stores.
TEST_F(TwoEngines, AnOrderThatFailsLeavesWhatWasThere) {
    setup::CreateOrder order;
    order.tree.root = place_.path() + "/server";
    order.force = true;
    order.server = server_;
    order.server->force = false;
    EXPECT_TRUE(setup::CreateTree(order).contains("--force")) << "the database is there";
    order.server->adminUser = server_.user;
    order.server->adminPassword = server_.password;
    order.server->force = true;
    EXPECT_TRUE(setup::CreateTree(order).contains("permission denied"));
    EXPECT_GT(Fetch(*served_.main, "SELECT コード FROM M得意先").rows.size(), 100);
    EXPECT_EQ(setup::OpenStores({place_.path() + "/server"}).problem, "");
}

}  // namespace
