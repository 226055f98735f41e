#include "lists/condition_value.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <random>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lists {

namespace {

struct Case {
    const char* what;
    QString condition, value, rest;
};

/// What becomes of each condition when the value of K is taken.
void ExpectTaken(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        QString condition = c.condition;
        EXPECT_EQ(TakeConditionValue("K", condition), c.value);
        EXPECT_EQ(condition, c.rest);
    }
}

TEST(ConditionValue, ComparisonsAreTriedInTheirOrder) {
    ExpectTaken({{"from", "K >= '1'", "1", ""},
                 {"to", "K <= '2'", "2", ""},
                 {"equal", "K = '3'", "3", ""},
                 {"above", "K > '4'", "4", ""},
                 {"below", "K < '5'", "5", ""},
                 {"pattern", "K LIKE '%あ%'", "%あ%", ""},
                 {"a range gives its start", "K <= '5' AND K >= '1'", "1", "K <= '5'"},
                 {"equality before a pattern that stands first", "K LIKE 'a' AND K = 'b'", "b", "K LIKE 'a'"},
                 {"in any case", "l = '2' and k like 'x'", "x", "l = '2'"},
                 {"an inequality stays", "K <> '1'", "", "K <> '1'"},
                 {"no blank", "K='1'", "", "K='1'"},
                 {"a longer name", "KB = '1'", "", "KB = '1'"},
                 {"not compared", "L = '1'", "", "L = '1'"},
                 {"nothing at all", "", "", ""}});
}

TEST(ConditionValue, TheConnectorGoesWithTheComparison) {
    ExpectTaken(
        {{"first of two", "K = '1' AND L = '2'", "1", "L = '2'"},
         {"last of two", "L = '2' AND K = '1'", "1", "L = '2'"},
         {"between two", "L = '2' AND K = '1' AND M = '3'", "1", "L = '2' AND M = '3'"},
         {"first of two by OR", "K = '1' OR L = '2'", "1", "L = '2'"},
         {"last of two by OR", "L = '2' OR K = '1'", "1", "L = '2'"},
         {"behind OR, in front of AND", "L = '2' OR K = '1' AND M = '3'", "1", "L = '2' OR K = '1' AND M = '3'"},
         {"behind WHERE", "SELECT x WHERE K = '1'", "1", "SELECT x WHERE "},
         {"behind WHERE, in front of AND", "SELECT x WHERE K = '1' AND L = '2'", "1", "SELECT x WHERE L = '2'"},
         {"behind WHERE, in front of OR", "SELECT x WHERE K = '1' OR L = '2'", "1", "SELECT x WHERE L = '2'"},
         {"a WHERE further on counts too", "L = '2' AND K = '1' AND EXISTS (SELECT * FROM X WHERE Y = '3')", "1",
          "L = '2' AND EXISTS (SELECT * FROM X WHERE Y = '3')"}});
}

// What stands in front decides by its length alone how far a connector is looked for.
TEST(ConditionValue, NearTheStart) {
    ExpectTaken({{"second place", "(K = '1') AND L = '2'", "1", ") AND L = '2'"},
                 {"fourth place", "xxxK = '1' AND L = '2'", "1", " AND L = '2'"},
                 {"fourth place looks for no OR", "xxxK = '1' OR L = '2'", "1", " OR L = '2'"},
                 {"fifth place behind OR", " OR K = '1'", "1", ""},
                 {"fifth place in front of OR", "xxxxK = '1' OR L = '2'", "1", "xxxxK = '1' OR L = '2'"},
                 {"fifth place looks for no AND", "xxxxK = '1' AND L = '2'", "1", " AND L = '2'"},
                 {"sixth place behind AND", " AND K = '1'", "1", ""},
                 {"sixth place behind OR", "x OR K = '1'", "1", "x"},
                 {"sixth place in front of AND", "xxxxxK = '1' AND L = '2'", "1", "xxxxxK = '1' AND L = '2'"},
                 {"sixth place, nothing to join", "xxxxxK = '1' ORDER BY L", "1", " ORDER BY L"},
                 {"seventh place behind AND", "x AND K = '1' AND L = '2'", "1", "x AND L = '2'"},
                 {"seventh place sees no WHERE", "xxxxxxK = '1', X WHERE Y", "1", ", X WHERE Y"},
                 {"eighth place sees it", " WHERE K = '1'", "1", " WHERE "}});
}

TEST(ConditionValue, BracketGroups) {
    ExpectTaken({{"first in a group behind AND: shown, and still in force", "N = '9' AND (K = '1' OR L = '1')", "1",
                  "N = '9' AND (K = '1' OR L = '1')"},
                 {"last in a group", "N = '9' AND (L = '1' OR K = '1')", "1", "N = '9' AND (L = '1')"},
                 {"alone in a group", "N = '9' AND (K = '1')", "1", ")"},
                 {"alone in a group, more behind", "N = '9' AND (K = '1') AND L = '2'", "1",
                  "N = '9' AND (K = '1')) AND L = '2'"},
                 {"a bracket in the value, a group behind", "N = '9' AND K = 'a(b' AND (L = '2') AND M = '3'", "a(b",
                  "N = '9' AND M = '3'"},
                 {"a bracket in the value, none behind", "N = '9' AND K = 'a(b)' AND L = '2'", "a(b)", "N = '9'"},
                 {"a bracket behind the value", "N = '9' AND K = '1' AND (L = '2')", "1", "N = '9' AND (L = '2')"}});
}

TEST(ConditionValue, Quotes) {
    ExpectTaken({{"empty value", "L = '2' AND K = ''", "", "L = '2'"},
                 {"not closed", "K = '12", "12", ""},
                 {"not closed behind another", "L = '2' AND K = '12 AND M", "12 AND M", "L = '2'"},
                 {"nothing behind the opening quote", "L = '2' AND K = '", "", "L = '2'"},
                 {"a doubled quote ends the value", "K = 'a''b'", "a", "'b'"},
                 {"a connector right behind the quote isn't one", "K = '1'AND L = '2'", "1", "AND L = '2'"}});
}

TEST(ConditionValue, QualifiedNamesOfAList) {
    QString condition = "M納品先.得意先コード = '000123' AND M納品先.コード >= '000200'";
    EXPECT_EQ(TakeConditionValue("M納品先.コード", condition), "000200");
    EXPECT_EQ(condition, "M納品先.得意先コード = '000123'");
}

/// True when `rest` is a head of the whole and a tail of the whole put together.
bool IsHeadAndTail(const QString& rest, const QString& whole) {
    for (qsizetype head = 0; head <= rest.size(); ++head)
        if (whole.startsWith(QStringView(rest).left(head)) && whole.endsWith(QStringView(rest).mid(head))) return true;
    return false;
}

TEST(ConditionValue, AnyTextIsSurvived) {
    const QStringList pieces = {"K",       " = '", " >= '",   " LIKE '", "'", " AND ", " OR ", "(", ")",
                                " WHERE ", "L",    " <> '1'", "あ",      " ", "",      "''",   "%", "k = '7'"};
    const QStringList comparisons = {" >= '", " <= '", " = '", " > '", " < '", " LIKE '"};
    std::mt19937 random(20261123);
    int taken = 0;
    for (int round = 0; round < 200000; ++round) {
        QString whole;
        for (auto count = random() % 14; count > 0; --count)
            whole += pieces[static_cast<qsizetype>(random() % static_cast<unsigned>(pieces.size()))];
        QString rest = whole;
        const QString value = TakeConditionValue("K", rest);
        bool compared = false;
        for (const QString& comparison : comparisons)
            compared = compared || whole.contains("K" + comparison, Qt::CaseInsensitive);
        taken += compared ? 1 : 0;
        const bool sound = compared ? whole.contains(value) && !value.contains('\'') && IsHeadAndTail(rest, whole)
                                    : value.isEmpty() && rest == whole;
        ASSERT_TRUE(sound) << whole.toStdString() << " -> " << value.toStdString() << " | " << rest.toStdString();
    }
    EXPECT_GT(taken, 10000);
}

}  // namespace

}  // namespace lists
