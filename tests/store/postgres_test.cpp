#include <QRandomGenerator>

#include "store/connection_string.h"
#include "store/kana_fold.h"
#include "store/postgres_search.h"
#include "tests/store/store_fixture.h"

namespace store {
namespace {

TEST(PostgresDialect, WritesWhatTheEngineReadsOtherwise) {
    const std::vector<std::pair<QString, QString>> cases = {
        // Names keep their capitals; keywords, functions and aliases are told from them.
        {"SELECT TOP 3 住所A, M.[SEQNo], COUNT(*) AS n FROM `M` x WHERE x.ID = 'a[b]'",
         "SELECT \"住所A\", \"M\".\"SEQNo\", COUNT(*) AS \"n\" FROM \"M\" \"x\" WHERE \"x\".\"ID\" = 'a[b]' LIMIT 3"},
        {"INSERT INTO T (電話,ID) VALUES ('1', 2)", "INSERT INTO \"T\" (\"電話\",\"ID\") VALUES ('1', 2)"},
        {"UPDATE T SET a=a+1 WHERE [b]=5 AND 3<c AND d>e-1 AND e - 1<f",
         "UPDATE \"T\" SET \"a\"=\"a\"+1 WHERE \"b\"='5' AND '3'<\"c\" AND \"d\">\"e\"-1 AND \"e\" - 1<\"f\""},
        // Nulls come first, and last backwards.
        {"SELECT a FROM (SELECT a FROM T ORDER BY b DESC, f(c, d)) x ORDER BY a LIMIT 1",
         "SELECT \"a\" FROM (SELECT \"a\" FROM \"T\" ORDER BY \"b\" DESC NULLS LAST, f(\"c\", \"d\") NULLS FIRST) "
         "\"x\" "
         "ORDER BY \"a\" NULLS FIRST LIMIT 1"},
        // A table joined behind a comma must see the tables before it.
        {"SELECT * FROM A, B LEFT JOIN C ON C.k = A.k",
         "SELECT * FROM \"A\" CROSS JOIN \"B\" LEFT JOIN \"C\" ON "
         "\"C\".\"k\" = \"A\".\"k\""},
        {"SELECT a FROM T WHERE a LIKE '%ｶﾞA％_%' OR NOT b NOT LIKE '_x'",
         "SELECT \"a\" FROM \"T\" WHERE (katsudo_matches((\"a\")::text, '%ガa\\%_%') AND "
         "katsudo_pieces((\"a\")::text) @> ARRAY['ガa','a%']) OR NOT (NOT katsudo_fold((\"b\")::text) LIKE '_x')"},
        // A short text is found by its piece alone, and then sorted.
        {"SELECT a FROM T WHERE a LIKE '%Ａ％%' ORDER BY T.b, c DESC, f(d)",
         "SELECT \"a\" FROM \"T\" WHERE (katsudo_pieces((\"a\")::text) @> ARRAY['a%']) ORDER BY "
         "GREATEST(\"T\".\"b\") NULLS FIRST, GREATEST(\"c\") DESC NULLS LAST, f(\"d\") NULLS FIRST"},
        {"SELECT DISTINCT a FROM T WHERE a LIKE 'A' ORDER BY a",
         "SELECT DISTINCT \"a\" FROM \"T\" WHERE (katsudo_matches((\"a\")::text, 'a') AND "
         "katsudo_pieces((\"a\")::text) @> ARRAY['a']) ORDER BY \"a\" NULLS FIRST"},
        // The rows of both sides are listed first, where the condition has to hold.
        {"SELECT a FROM T WHERE (T.p LIKE '_' OR EXISTS (SELECT * FROM U WHERE x = T.k AND p LIKE '_')) AND a > '1'",
         "SELECT \"a\" FROM \"T\" WHERE \"T\".\"ctid\" = ANY (ARRAY (SELECT \"s\".\"ctid\" FROM \"T\" \"s\" WHERE "
         "(katsudo_fold((\"s\".\"p\")::text) LIKE '_') UNION ALL SELECT \"s\".\"ctid\" FROM \"T\" \"s\" WHERE "
         "\"s\".\"k\" IN (SELECT \"x\" FROM \"U\" WHERE \"x\" IS NOT NULL AND (katsudo_fold((\"p\")::text) LIKE "
         "'_')))) "
         "AND \"a\" > '1'"},
        // Faults of syntax are the engine's to tell.
        {"SELECT a LIKE", "SELECT \"a\" LIKE"},
    };
    for (const auto& [from, to] : cases) {
        Fault fault;
        EXPECT_EQ(ToPostgres(from, fault).value_or("refused: " + fault.description).simplified(), to)
            << from.toStdString();
    }
    // What no engine takes comes to an end all the same.
    Fault unused;
    EXPECT_TRUE(ToPostgres("SELECT a FROM t WHERE b LIKE '%1%' LIKE '1%2' AND c = 1", unused));
    for (const QString refused : {"SELECT 'open", "DELETE FROM a; DELETE FROM b", "SELECT a LIKE b ESCAPE '!'",
                                  "SELECT a FROM t WHERE a LIKE '%1%' ESCAPE b", "SELECT TOP 5 PERCENT k FROM A"}) {
        Fault fault;
        EXPECT_FALSE(ToPostgres(refused, fault)) << refused.toStdString();
        EXPECT_NE(fault.description, "");
    }
}

SearchTables Parties() {
    SearchTable party;
    party.key = "コード";
    party.rows = 500'000;
    party.folded = {"名称a", "略称", "電話番号"};
    party.walks = {{{"名称a", "コード", "katsudo_名称a", "katsudo_略称", "区分"}, "名称a", 0.25},
                   {{"電話", "katsudo_電話番号"}, "電話"}};
    SearchTable contact;
    contact.folded = {"電話番号"};
    return {{"p", party}, {"c", contact}};
}

TEST(PostgresSearch, IsWrittenInTheWaysThatGiveItsRows) {
    const auto ways = WaysOf(
        "SELECT TOP 5 P.コード, S.氏名 AS 名 FROM S INNER JOIN P ON P.担当 = S.コード WHERE (P.名称A LIKE '%ｶﾞA㈱%' OR "
        "P.略称 LIKE '%ｶﾞ%') AND P.区分 = '1' AND S.区分 <> '0' ORDER BY P.名称A",
        Parties());
    ASSERT_TRUE(ways);
    const QString head =
        "SELECT \"P\".\"コード\", \"S\".\"氏名\" AS \"名\" FROM \"S\" INNER JOIN \"P\" ON \"P\".\"担当\" = "
        "\"S\".\"コード\" ";
    EXPECT_EQ(ways->lookUp.simplified(),
              head +
                  "WHERE ((katsudo_pieces((\"P\".\"名称A\")::text) @> ARRAY['ガa','a㈱']) OR "
                  "(katsudo_pieces((\"P\".\"略称\")::text) @> ARRAY['ガ'])) AND (CASE WHEN \"P\".\"katsudo_名称A\" "
                  "LIKE '%ガa㈱%' "
                  "THEN true END OR CASE WHEN \"P\".\"katsudo_略称\" LIKE '%ガ%' THEN true END) AND \"P\".\"区分\" = "
                  "'1' AND \"S\".\"区分\" <> '0' ORDER BY "
                  "GREATEST(\"P\".\"名称A\") NULLS FIRST LIMIT 5");
    EXPECT_TRUE(ways->covered);
    EXPECT_EQ(ways->together, 0.25);
    EXPECT_EQ(QString(ways->walk).remove(u' '),
              QString(head +
                      "INNER JOIN \"P\" \"katsudo_walk\" ON \"katsudo_walk\".\"コード\" = \"P\".\"コード\" WHERE "
                      "((\"katsudo_walk\".\"katsudo_名称A\" LIKE '%ガa㈱%') OR (\"katsudo_walk\".\"katsudo_略称\" LIKE "
                      "'%ガ%')) AND \"katsudo_walk\".\"区分\" = '1' AND \"S\".\"区分\" <> '0' ORDER BY "
                      "\"katsudo_walk\".\"名称A\" NULLS FIRST LIMIT 5")
                  .remove(u' '));
    EXPECT_TRUE(ways->passing.simplified().endsWith("\"区分\" = '1'")) << ways->passing.toStdString();
}

// Whose list's texts the row itself has in one column, a line each, needs no list.
TEST(PostgresSearch, AsksARowForWhatItHasGathered) {
    const QString like = "EXISTS (SELECT * FROM C WHERE Pコード = P.コード AND 電話番号 LIKE '%1')";
    const QString form = "SELECT TOP 5 P.a FROM P WHERE (P.電話番号 LIKE '%07%' OR " + like + ") ORDER BY P.電話";
    SearchTables tables = Parties();
    EXPECT_FALSE(WaysOf(form.arg("%07%"), tables)) << "it has gathered nothing";
    tables["p"].folded.insert({"katsudo_c_電話番号", "katsudo_c_電話番号_short"});
    tables["p"].walks[1].columns.insert({"コード", "katsudo_katsudo_c_電話番号_short"});
    const auto ways = WaysOf(form.arg("%07%"), tables);
    ASSERT_TRUE(ways);
    EXPECT_EQ(
        QString(ways->having).remove(u' '),
        QString("SELECT 1 FROM \"P\" \"katsudo_walk\" WHERE ((\"katsudo_walk\".\"katsudo_電話番号\" LIKE '%07%') OR "
                "(\"katsudo_walk\".\"katsudo_katsudo_C_電話番号\" LIKE '%07%'))")
            .remove(u' '));
    EXPECT_TRUE(ways->covered);
    EXPECT_EQ(QString(ways->walk).section("WHERE", 1).section("ORDER", 0, 0).remove(u' '),
              QString("((\"katsudo_walk\".\"katsudo_電話番号\" LIKE '%07%') OR ((\"katsudo_walk\"."
                      "\"katsudo_katsudo_C_電話番号_short\" LIKE '%07%') OR \"katsudo_walk\"."
                      "\"katsudo_katsudo_C_電話番号_short\" = '*')) AND CASE WHEN ((\"P\".\"katsudo_電話番号\" LIKE "
                      "'%07%') OR (\"P\".\"katsudo_katsudo_C_電話番号\" LIKE '%07%')) THEN true END")
                  .remove(u' '));
    Fault fault;
    for (const QString pattern : {"07%", "%07", "%0%7%", "%0_7%", "%0\n7%"}) {
        EXPECT_FALSE(WaysOf(form.arg(pattern), tables)) << pattern.toStdString() << " may be in two lines";
        const auto written = ToPostgres(form.arg(pattern), tables, fault);
        EXPECT_TRUE(written && !written->contains("katsudo_C")) << pattern.toStdString();
    }
}

// What can't be proven to give the same rows is written in one way alone.
TEST(PostgresSearch, OfAnotherFormIsLeftAlone) {
    const QString form = "SELECT %1 FROM P WHERE %2 ORDER BY %3";
    const QString good = "P.略称 LIKE '%a%'";
    EXPECT_TRUE(WaysOf(form.arg("TOP 5 P.a", good, "P.名称A"), Parties()));
    const std::vector<std::tuple<QString, QString, QString>> others = {
        {"P.a", good, "P.名称A"},
        {"DISTINCT TOP 5 P.a", good, "P.名称A"},
        {"TOP 5 *", good, "P.名称A"},
        {"TOP 5 a", good, "P.名称A"},
        {"TOP 5 P.a", good, "P.名称A DESC"},
        {"TOP 5 P.a", good, "P.略称"},
        {"TOP 5 P.a", good, "P.名称A, P.コード"},
        {"TOP 5 P.a", good + " OR P.a = '1'", "P.名称A"},
        {"TOP 5 P.a", good + " AND a = '1'", "P.名称A"},
        {"TOP 5 P.a", good + " AND P.a IN (SELECT a FROM P)", "P.名称A"},
        {"TOP 5 P.a", "P.略称 LIKE '%__%'", "P.名称A"},
        {"TOP 5 P.a", "P.略称 NOT LIKE '%a%'", "P.名称A"},
        {"TOP 5 P.a", "P.略称 LIKE P.a", "P.名称A"},
        {"TOP 5 P.a", "P.略称 LIKE 'a' || P.a", "P.名称A"},
        {"TOP 5 P.a", "P.略称 LIKE 'a!%' ESCAPE '!'", "P.名称A"},
        {"TOP 5 P.a", "NOT P.略称 LIKE '%a%'", "P.名称A"},
        {"TOP 5 P.a", "P.担当 LIKE '%a%'", "P.名称A"},
        {"TOP 5 P.a", "P.略称 || P.略称 LIKE '%a%'", "P.名称A"},
        {"TOP 5 P.a", "(S.a = '1' OR " + good + ")", "P.名称A"}};
    for (const auto& [columns, where, order] : others)
        EXPECT_FALSE(WaysOf(form.arg(columns, where, order), Parties()))
            << form.arg(columns, where, order).toStdString();
    EXPECT_FALSE(WaysOf(form.arg("TOP 5 P.a", good, "P.名称A").replace(" P ", " P x "), Parties()));
    EXPECT_FALSE(WaysOf(form.arg("TOP 5 P.a", good, "P.名称A"), {}));
}

TEST(PostgresSearch, TakesTheWayThatHasTheLeastToLookAt) {
    SearchWays ways;
    ways.lookUp = "look up", ways.walk = "walk";
    ways.having = "having", ways.passing = "passing";
    ways.rows = 500'000, ways.limit = 1000, ways.covered = true;
    const auto choose = [&ways](double having, double passing) {
        const std::map<QString, double> guesses = {{"having", having}, {"passing", passing}};
        return Quickest(ways, [&](const QString& select) { return guesses.at(select); });
    };
    EXPECT_EQ(choose(20, 400'000), "look up");
    EXPECT_EQ(choose(150'000, 400'000), "walk") << "whoever passes by has it";
    EXPECT_EQ(choose(3'000, 2'000), "look up") << "the walk would go on to the end";
    EXPECT_EQ(choose(12'000, 400'000), "walk");
    ways.together = 1;
    EXPECT_EQ(choose(12'000, 400'000), "look up") << "they are on a few pages";
    ways.together = 0, ways.beginning = "beginning";
    std::map<QString, double> guesses = {{"having", 12'000}, {"passing", 500'000}, {"beginning", 11'900}};
    const auto guess = [&guesses](const QString& select) { return guesses.at(select); };
    ways.before = "before", guesses["before"] = 20'000;
    EXPECT_EQ(Quickest(ways, guess), "walk");
    guesses["before"] = 450'000;
    EXPECT_EQ(Quickest(ways, guess), "look up") << "all of them lie at the far end";
    guesses["beginning"] = 0;
    EXPECT_EQ(Quickest(ways, guess), "walk") << "they lie anywhere";
    EXPECT_FALSE(Quickest(ways, [](const QString&) { return std::nullopt; }));
}

TEST(PostgresLogin, IsReadFromTheConnectionString) {
    struct Case {
        QString server, host;
        int port;
    };
    for (const auto& [server, host, port] : std::vector<Case>{{"db.example", "db.example", 0},
                                                              {"db.example:6432", "db.example", 6432},
                                                              {"/run/x y:5433", "/run/x y", 5433},
                                                              {"fe80::1", "fe80::1", 0},
                                                              {"[fe80::1]:5433", "fe80::1", 5433},
                                                              {"[fe80::1]", "fe80::1", 0},
                                                              {"db:x", "db:x", 0}}) {
        const PostgresLogin login =
            LoginOf(ConnectionString("Data Source=" + server + ";Initial Catalog=d;User ID=u;"));
        EXPECT_EQ(login.host, host);
        EXPECT_EQ(login.port, port) << server.toStdString();
        EXPECT_EQ(login.database + login.user, "du");
    }
}

class OnServer : public OnEngine {};

// The two folds are two programs of one table.
TEST_P(OnServer, FoldsAsFilesDo) {
    OpenStore db(GetParam());
    const QString letters = QString::fromUtf8(
        "aZé1 ~^\\Ａｚ～￣￥　｡､ｦｶﾊﾜｳﾞﾟｰｯ゛゜\u3099\u309Aかがはばぱゔゝゞカヴヽヾーッヶ・①㈱髙𠮷−〜々〻～亜¥’‘‐―—–");
    const std::u32string pool = letters.toStdU32String();
    QRandomGenerator random(5);
    for (int round = 0; round < 40; ++round) {
        QStringList texts, columns;
        for (int i = 0; i < 50; ++i) {
            std::u32string text;
            for (int length = 1 + random.bounded(6); length > 0; --length)
                text += pool[std::size_t(random.bounded(int(pool.size())))];
            texts << QString::fromStdU32String(text);
            columns << QString("katsudo_fold('%1') AS c%2").arg(texts.last()).arg(i);
        }
        Fault fault;
        const auto row = db->Query("SELECT " + columns.join(", "), fault);
        ASSERT_TRUE(row && !row->Eof()) << fault.description.toStdString();
        for (int i = 0; i < texts.size(); ++i) {
            QString folded = QString::fromStdString(*LikePattern(texts[i].toStdString()).Folded());
            EXPECT_EQ(row->Value(QString("c%1").arg(i)), folded.replace("\\\\", "\\")) << texts[i].toStdString();
        }
    }
}

TEST_P(OnServer, ABrokenLinkCostsOneStatement) {
    OpenStore db(GetParam());
    db.Do("CREATE TABLE t (a TEXT)");
    const auto other = db.Another();
    Fault fault;
    const auto process = db->Query("SELECT pg_backend_pid() AS id", fault);
    const QString end = "SELECT pg_terminate_backend(" + process->Value("id").value() + ", 5000)";
    ASSERT_TRUE(other->Execute(end, fault)) << fault.description.toStdString();
    EXPECT_FALSE(db->Execute("INSERT INTO t VALUES ('lost')", fault));
    EXPECT_NE(fault.description, "");
    EXPECT_TRUE(db->Execute("INSERT INTO t VALUES ('kept')", fault)) << fault.description.toStdString();
    EXPECT_EQ(db.Rows("SELECT a FROM t"), "kept");
}

TEST_P(OnServer, ALockIsNotWaitedForTwiceAsLong) {
    OpenStore db(GetParam());
    db.Do("CREATE TABLE t (a TEXT)");
    db.Do("BEGIN");
    db.Do("LOCK TABLE t IN ACCESS EXCLUSIVE MODE");
    const auto late = db.Another(2500);
    const auto wait = [&] {
        Fault fault;
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(late->Query("SELECT * FROM t", fault));
        return timer.elapsed();
    };
    EXPECT_GE(wait(), 2400);
    EXPECT_LT(wait(), 2000);
    db.Do("ROLLBACK");
    Fault fault;
    EXPECT_TRUE(late->Query("SELECT * FROM t", fault)) << fault.description.toStdString();
}

// As the lists ask for no more rows than they show.
TEST_P(OnServer, TheEngineStopsBehindTheRowsThatAreAskedFor) {
    OpenStore db(GetParam());
    db.Do("CREATE TABLE t (a TEXT)");
    db.Do("INSERT INTO t SELECT i FROM generate_series(1, 50) AS i");
    Fault fault;
    // One row more would divide by zero.
    const auto some = db->Query("SELECT 1 / (8 - CAST(a AS INTEGER)) AS b FROM t", fault, 7);
    ASSERT_TRUE(some) << fault.description.toStdString();
    EXPECT_FALSE(db->Query("SELECT 1 / (8 - CAST(a AS INTEGER)) AS b FROM t", fault, 8));
    for (const QString sql : {"SELECT a FROM t UNION ALL SELECT a FROM t", "SELECT TOP 9 a FROM t ORDER BY a"}) {
        const auto rows = db->Query(sql, fault, 7);
        int count = 0;
        for (; rows && !rows->Eof(); rows->MoveNext())
            ++count;
        EXPECT_EQ(count, 7) << fault.description.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, OnServer, testing::Values(kPostgres, kPostgresOverOdbc),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace store
