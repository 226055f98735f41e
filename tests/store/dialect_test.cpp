#include <QRandomGenerator>
#include <algorithm>

#include "store/sqlite_dialect.h"
#include "tests/store/store_fixture.h"

namespace store {
namespace {

QString Rewritten(const QString& sql) {
    Fault fault;
    return ToSqlite(sql, fault).value_or("refused: " + fault.description).simplified();
}

TEST(Dialect, MovesTheRowLimitToTheEndOfItsSelect) {
    const std::vector<std::pair<QString, QString>> cases = {
        {"SELECT TOP 3 * FROM K WHERE 区分 > '0' ORDER BY 区分",
         "SELECT * FROM K WHERE 区分 > '0' ORDER BY 区分 LIMIT 3"},
        {"select distinct top (10) a from t;", "select distinct a from t LIMIT 10;"},
        {"SELECT TOP 1 a FROM t -- the first", "SELECT a FROM t LIMIT 1 -- the first"},
        {"SELECT a FROM (SELECT TOP 2 a FROM t ORDER BY a) AS x WHERE EXISTS (SELECT TOP 1 * FROM u WHERE u.a = x.a)",
         "SELECT a FROM (SELECT a FROM t ORDER BY a LIMIT 2) AS x "
         "WHERE EXISTS (SELECT * FROM u WHERE u.a = x.a LIMIT 1)"},
        {"SELECT TOP 5 a FROM t WHERE b IN (SELECT TOP 6 b FROM u)",
         "SELECT a FROM t WHERE b IN (SELECT b FROM u LIMIT 6) LIMIT 5"},
        {"INSERT INTO [t] ([a]) SELECT TOP 1 [a] FROM [u]", "INSERT INTO [t] ([a]) SELECT [a] FROM [u] LIMIT 1"},
    };
    for (const auto& [from, to] : cases) {
        EXPECT_EQ(Rewritten(from), to);
    }
}

TEST(Dialect, LeavesEverythingElseAsItIs) {
    const QStringList same = {
        "SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'",
        "INSERT INTO [T] ([a]) VALUES ('SELECT TOP 1 [x] FROM a RIGHT JOIN b ON (+)')",
        "SELECT [TOP 1], \"RIGHT JOIN\" FROM t WHERE a = 'it''s TOP 1 (+)' /* RIGHT JOIN */",
        "SELECT RIGHT(a, 2), top, t.TOP FROM t WHERE a + 1 > LEFT(b, 1)",
        "SELECT a FROM A LEFT JOIN (B INNER JOIN C ON B.x = C.x) ON A.x = B.x WHERE A.top = '+'",
        // Faults of syntax are the engine's to tell.
        "SELECT TOP x FROM t",
    };
    for (const QString& sql : same) {
        Fault fault;
        EXPECT_EQ(ToSqlite(sql, fault), sql);
    }
}

TEST(Dialect, RefusesWhatItCannotProve) {
    const QStringList refused = {
        // A table of the inner join would come back without its partner.
        "SELECT * FROM (B INNER JOIN C ON B.c = C.k) RIGHT JOIN A ON A.b = B.k",
        // The bracket's condition holds for an A that is Null.
        "SELECT * FROM (B LEFT JOIN C ON B.c IS NULL) RIGHT JOIN A ON A.b = B.k",
        "SELECT * FROM (B LEFT JOIN C ON B.c = C.k OR C.k = '1') RIGHT JOIN A ON A.b = B.k",
        // The outer condition looks at the table that would be joined later.
        "SELECT * FROM (B LEFT JOIN C ON B.c = C.k) RIGHT JOIN A ON A.b = B.k AND C.k = A.b",
        "SELECT * FROM (B LEFT JOIN C ON B.c = C.k) RIGHT JOIN A ON A.b = x",
        "SELECT * FROM A FULL JOIN B ON A.b = B.k RIGHT JOIN C ON B.c = C.k",
        "SELECT * FROM A NATURAL RIGHT JOIN B",
        "SELECT * FROM A RIGHT JOIN B USING (k)",
        "SELECT * FROM A RIGHT JOIN B",
        "SELECT * FROM A RIGHT JOIN A ON A.k = A.k",
        "SELECT * FROM (SELECT * FROM A) RIGHT JOIN B ON B.k = B.c",
        "SELECT * FROM A, B WHERE A.k(+) = B.k OR B.k = '1'",
        "SELECT * FROM A, B WHERE (A.k(+) = B.k OR B.k = '1')",
        "SELECT * FROM A, B WHERE A.k(+) IN (B.k, '1')",
        "SELECT * FROM A, B WHERE A.k(+) = (SELECT MAX(k) FROM C)",
        "SELECT * FROM A, B WHERE A.k(+) = B.k(+)",
        "SELECT * FROM A, B WHERE A.k(+) = B.k AND B.c(+) = A.b",
        "SELECT * FROM A, B WHERE A.k(+) = '1'",
        "SELECT * FROM A, B WHERE k(+) = B.k",
        "SELECT * FROM A, B WHERE Z.k(+) = B.k",
        "SELECT * FROM A, B WHERE NOT A.k(+) = B.k",
        "SELECT * FROM A, B WHERE A.k(+) IS NULL",
        "SELECT * FROM A INNER JOIN B ON A.k(+) = B.k",
        "SELECT * FROM A LEFT JOIN C ON A.k = C.k, B WHERE A.k(+) = B.k",
        "SELECT A.k(+) FROM A, B WHERE A.k(+) = B.k",
        "SELECT TOP 5 PERCENT k FROM A",
        "SELECT TOP 5 WITH TIES k FROM A ORDER BY k",
        "SELECT TOP 5 k FROM A UNION SELECT k FROM B",
        "SELECT k FROM A UNION ALL SELECT TOP 5 k FROM B",
        // Nobody can tell where their texts end.
        "SELECT * FROM t WHERE a = 'open",
        "INSERT INTO t VALUES ('1'2', '')",
        "SELECT [a FROM t",
        "SELECT a FROM t WHERE (a = '1'",
        "SELECT TOP 1 a) FROM t",
        "SELECT a /* open",
    };
    for (const QString& sql : refused) {
        Fault fault;
        EXPECT_EQ(ToSqlite(sql, fault).value_or("refused"), "refused") << sql.toStdString();
        EXPECT_NE(fault.description, "") << sql.toStdString();
    }
}

// Four small tables with Nulls, partners that are missing on either side, and doubles.
class Joins : public testing::Test {
  protected:
    void SetUp() override {
        for (const QString table : {"A", "B", "C", "D"}) {
            db_.Do("CREATE TABLE " + table + " (k TEXT, b TEXT, c TEXT, d TEXT)");
        }
        QRandomGenerator random(7);
        db_.Do("BEGIN");
        for (const QString table : {"A", "B", "C", "D"}) {
            for (int i = 0; i < 12; ++i) {
                QStringList values;
                for (int column = 0; column < 4; ++column) {
                    const int value = random.bounded(6);
                    values.append(value == 0 ? QString("NULL") : QString("'%1'").arg(value));
                }
                db_.Do("INSERT INTO " + table + " VALUES (" + values.join(',') + ")");
            }
        }
        db_.Do("COMMIT");
    }

    static QString Head(const QString& names) {
        QStringList columns;
        for (const QChar table : names) {
            for (const QString column : {"k", "b", "c", "d"}) {
                columns.append(QString("%1.%2 AS %1%2").arg(table).arg(column));
            }
        }
        return "SELECT " + columns.join(", ") + " FROM ";
    }

    QStringList Sorted(const QString& sql) {
        QStringList rows = db_.Rows(sql).split(';');
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    OpenStore db_;
};

TEST_F(Joins, FlippedJoinsGiveTheRowsOfHandWrittenOnes) {
    struct Case {
        QString tables;
        QString from;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"AB", "A RIGHT JOIN B ON A.k = B.b", "B LEFT JOIN A ON A.k = B.b"},
        {"AB", "A right outer join B on (A.k = B.b and A.c > '2')", "B LEFT JOIN A ON (A.k = B.b AND A.c > '2')"},
        {"ABCD", "A RIGHT JOIN (B RIGHT JOIN (C RIGHT JOIN D ON C.k = D.d) ON B.k = D.c) ON A.k = D.b",
         "D LEFT JOIN C ON C.k = D.d LEFT JOIN B ON B.k = D.c LEFT JOIN A ON A.k = D.b"},
        {"ABC", "A RIGHT JOIN (B RIGHT JOIN C ON B.k = C.c) ON A.k = B.b",
         "C LEFT JOIN B ON B.k = C.c LEFT JOIN A ON A.k = B.b"},
        {"ABC", "A RIGHT JOIN B ON A.k = B.b RIGHT JOIN C ON B.k = C.c",
         "C LEFT JOIN (B LEFT JOIN A ON A.k = B.b) ON B.k = C.c"},
        {"ABC", "A RIGHT JOIN (B INNER JOIN C ON B.k = C.c) ON A.k = C.b",
         "(B INNER JOIN C ON B.k = C.c) LEFT JOIN A ON A.k = C.b"},
        {"ABC", "A INNER JOIN (B RIGHT JOIN C ON B.k = C.c) ON A.k = C.b",
         "A INNER JOIN (C LEFT JOIN B ON B.k = C.c) ON A.k = C.b"},
        {"ABC", "A INNER JOIN (B RIGHT JOIN C ON B.k = C.c) ON A.k = B.b",
         "A INNER JOIN (C LEFT JOIN B ON B.k = C.c) ON A.k = B.b"},
        {"ABCD", "(A RIGHT JOIN B ON A.k = B.b) INNER JOIN (C RIGHT JOIN D ON C.k = D.c) ON A.d = D.d",
         "(B LEFT JOIN A ON A.k = B.b) INNER JOIN (D LEFT JOIN C ON C.k = D.c) ON A.d = D.d"},
        {"ABCD", "A RIGHT JOIN B ON A.k = B.b LEFT JOIN (C INNER JOIN D ON C.k = D.c) ON D.d = B.d", ""},
        {"ABC", "A RIGHT JOIN B ON A.k = B.b, C", "B LEFT JOIN A ON A.k = B.b, C"},
        {"ABCD", "(A RIGHT JOIN B ON A.k = B.b) RIGHT JOIN (C INNER JOIN D ON C.k = D.c) ON B.d = D.d",
         "(C INNER JOIN D ON C.k = D.c) LEFT JOIN (B LEFT JOIN A ON A.k = B.b) ON B.d = D.d"},
        {"ABC", "A CROSS JOIN B RIGHT JOIN C ON C.c = B.k AND A.k IS NULL", ""},
        {
            "xyz",
            "A AS x RIGHT JOIN ([B] y RIGHT JOIN C [z] ON x.k = z.c) ON x.k = z.b",
            "",
        },
        {"xyz", "A AS x RIGHT JOIN ([B] y RIGHT JOIN C [z] ON y.k = z.c) ON x.k = z.b",
         "C z LEFT JOIN B y ON y.k = z.c LEFT JOIN A x ON x.k = z.b"},
    };
    for (const auto& [tables, from, expected] : cases) {
        const QString written = Rewritten(Head(tables) + from);
        if (expected.isEmpty()) {
            EXPECT_TRUE(written.startsWith("refused") || db_.Rows(Head(tables) + from).startsWith("fault"))
                << written.toStdString();
            continue;
        }
        EXPECT_FALSE(written.contains("RIGHT", Qt::CaseInsensitive) || written.contains("JOIN ("))
            << written.toStdString();
        for (const QString where : {"", " WHERE 1 = 1 AND (%1.d >= '2' OR %1.d IS NULL)"}) {
            const QString filter = QString(where).replace("%1", tables.left(1));
            const QStringList rows = Sorted(Head(tables) + from + filter);
            EXPECT_GT(rows.size(), 3) << "too few rows to tell: " << from.toStdString();
            EXPECT_EQ(rows, Sorted(Head(tables) + expected + filter)) << from.toStdString();
        }
    }
}

TEST_F(Joins, MarkedCommaJoinsGiveTheRowsOfHandWrittenOnes) {
    struct Case {
        QString tables;
        QString from;
        QString expected;
    };
    const std::vector<Case> cases = {
        {"ABCD", "A,B,C,D WHERE A.k(+) = D.b AND B.k(+) = D.c AND C.k(+) = D.d",
         "D LEFT JOIN A ON A.k = D.b LEFT JOIN B ON B.k = D.c LEFT JOIN C ON C.k = D.d"},
        {"AB", "A, B where b.k = a.b ( + ) and a.c(+) >= '3'", "B LEFT JOIN A ON A.b = B.k AND A.c >= '3'"},
        {"AB", "A, B WHERE (A.k(+) = B.b) AND (B.c = '1' OR B.c IN ('2', '3')) AND B.d BETWEEN '1' AND '4'",
         "B LEFT JOIN A ON A.k = B.b WHERE (B.c = '1' OR B.c IN ('2', '3')) AND B.d BETWEEN '1' AND '4'"},
        {"AB", "A, B WHERE A.k(+) = B.b AND A.c IS NULL", "B LEFT JOIN A ON A.k = B.b WHERE A.c IS NULL"},
        {"ABC", "A, B, C WHERE A.k(+) = B.b AND B.k(+) = C.c", "C LEFT JOIN B ON B.k = C.c LEFT JOIN A ON A.k = B.b"},
        {"ABC", "A, B, C WHERE A.k(+) = B.b AND B.k = C.c AND EXISTS (SELECT * FROM D WHERE D.k = A.k OR D.k = B.d)",
         "B INNER JOIN C ON B.k = C.c LEFT JOIN A ON A.k = B.b "
         "WHERE EXISTS (SELECT * FROM D WHERE D.k = A.k OR D.k = B.d)"},
        {"ABC", "A, B, C WHERE A.k(+) = B.b AND A.c(+) = C.c", "B CROSS JOIN C LEFT JOIN A ON A.k = B.b AND A.c = C.c"},
        {"xy", "A x, [B] y WHERE [x].[k](+)=y.b AND CASE WHEN y.c = '1' OR y.c = '2' THEN 1 ELSE 0 END = 1",
         "B y LEFT JOIN A x ON x.k = y.b WHERE y.c IN ('1', '2')"},
    };
    for (const auto& [tables, from, expected] : cases) {
        const QStringList rows = Sorted(Head(tables) + from);
        EXPECT_GT(rows.size(), 1) << "too few rows to tell: " << from.toStdString();
        EXPECT_EQ(rows, Sorted(Head(tables) + expected)) << from.toStdString();
    }
}

TEST_F(Joins, TheFirstOfTwoColumnsOfOneNameStaysTheFirst) {
    db_.Do("DELETE FROM A");
    db_.Do("DELETE FROM B");
    db_.Do("INSERT INTO A VALUES ('1', 'of a', '', '')");
    db_.Do("INSERT INTO B VALUES ('1', 'of b', '', '')");
    for (const QString sql :
         {"SELECT*FROM A RIGHT JOIN B ON A.k = B.k", "SELECT * FROM(A RIGHT JOIN B ON A.k = B.k)WHERE A.k = '1'",
          "SELECT TOP 1 '' AS e, * FROM A, B WHERE A.k(+) = B.k", "SELECT *,1 FROM A, B WHERE(A.k(+)=B.k)ORDER BY 1"}) {
        Fault fault;
        const auto rows = db_->Query(sql, fault);
        ASSERT_TRUE(rows && !rows->Eof()) << sql.toStdString() << fault.description.toStdString();
        EXPECT_EQ(rows->Value("b"), "of a") << sql.toStdString();
    }
}

// Keys are Null on both sides here. "SELECT 1" is a form that the dialect leaves alone.
TEST_F(Joins, AListOfKeysGivesTheRowsOfExists) {
    EXPECT_EQ(Rewritten("SELECT TOP 2 A.k FROM A WHERE (A.b = '1' OR NOT EXISTS (SELECT * FROM [B] WHERE b=A.k AND c "
                        "LIKE '%1%')) ORDER BY A.k"),
              "SELECT A.k FROM A WHERE (A.b = '1' OR NOT (A.k IS NOT NULL AND A.k IN (SELECT b FROM [B] WHERE b IS NOT "
              "NULL AND c LIKE '%1%'))) ORDER BY A.k LIMIT 2");
    const QStringList insides = {"b = A.k AND c LIKE '%1%'", "b = A.k AND c LIKE '%'", "b = A.k AND c NOT LIKE '%2%'",
                                 "b = A.k AND c LIKE '%9%'", "d = A.c AND b LIKE A.b AND c > '1'",
                                 // Left alone: the key isn't asked for, or the column is the inner table's own.
                                 "b = A.k AND c LIKE '%1%' OR d = '2'", "b = B.k AND c LIKE '%1%'",
                                 "b > A.k AND c LIKE '%1%'"};
    for (const QString& inside : insides)
        for (const QString condition : {"%1", "NOT %1", "%1 IS NULL", "A.b = '1' OR %1", "(%1) = 0"}) {
            const QString sql = "SELECT A.rowid FROM A WHERE " + condition + " ORDER BY A.rowid";
            const QString plain = db_.Rows(sql.arg("EXISTS (SELECT 1 FROM B WHERE " + inside + ")"));
            EXPECT_EQ(db_.Rows(sql.arg("EXISTS (SELECT * FROM B WHERE " + inside + ")")), plain)
                << condition.toStdString() << " with " << inside.toStdString();
        }
    for (const QString same :
         {"SELECT 1 FROM A WHERE EXISTS (SELECT * FROM B WHERE b = A.k AND c = '1')",
          "SELECT 1 FROM A WHERE EXISTS (SELECT * FROM B WHERE b = A.k AND c LIKE '1' ORDER BY b)",
          "SELECT 1 FROM A WHERE EXISTS (SELECT * FROM B WHERE b = A.k AND c LIKE '1' UNION SELECT * FROM C)",
          "SELECT 1 FROM A WHERE EXISTS (SELECT COUNT(*) FROM B WHERE b = A.k AND c LIKE '1')"})
        EXPECT_EQ(Rewritten(same), same);
}

// Random statements of likely pieces: the dialect must end, and must never make a fault of syntax of a statement that
// the bare engine takes.
TEST_F(Joins, RandomTextIsHarmless) {
    const QStringList pieces = {"SELECT ",     "TOP 1 ",      "* ",
                                "A.k ",        "FROM ",       "A ",
                                "B ",          "RIGHT JOIN ", "LEFT JOIN ",
                                "ON ",         "(",           ")",
                                "(+)",         "A.k = B.b ",  "WHERE ",
                                "AND ",        "OR ",         ", ",
                                "'",           "''",          "[",
                                "]",           "\"",          "--",
                                "/*",          "*/",          "\n",
                                ";",           "UNION ",      "BETWEEN ",
                                "CASE ",       "END ",        ".",
                                "AS x ",       "ORDER BY 1 ", "漢",
                                "INNER JOIN ", "+",           "EXISTS (SELECT * FROM B WHERE b = A.k AND c LIKE '1') ",
                                "EXISTS",      "= ",          "LIKE "};
    QRandomGenerator random(20240401);
    int ran = 0;
    for (int i = 0; i < 30000; ++i) {
        QString sql = i % 2 == 0 ? "SELECT TOP 1 * FROM A " : "";
        for (int length = random.bounded(14); length > 0; --length) {
            sql += pieces[random.bounded(pieces.size())];
        }
        Fault fault;
        const auto written = ToSqlite(sql, fault);
        EXPECT_NE(written.has_value(), !fault.description.isEmpty()) << sql.toStdString();
        ran += written && i % 10 == 0 && db_->Query(sql, fault) ? 1 : 0;
    }
    EXPECT_GT(ran, 20) << "hardly any statement was one";
    Fault fault;
    const QString deep = "SELECT * FROM " + QString(5000, '(') + "A RIGHT JOIN B ON A.k = B.b" + QString(5000, ')');
    EXPECT_FALSE(ToSqlite(deep, fault));
    QString wide = "SELECT * FROM A";
    for (int i = 0; i < 5000; ++i) {
        wide += " RIGHT JOIN B ON A.k = B.b";
    }
    EXPECT_FALSE(ToSqlite(wide, fault));
    EXPECT_TRUE(ToSqlite(QString("SELECT TOP 1 (").repeated(2000) + QString(2000, ')'), fault));
}

}  // namespace
}  // namespace store
