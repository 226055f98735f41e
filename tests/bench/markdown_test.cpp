// How figures become a page: what is compared with what, and what a limit says.
#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <cmath>

#include "bench/limits.h"
#include "bench/markdown.h"
#include "bench/page/page_writer.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace bench {
namespace {

const double kNothing = std::nan("");

Table Searches(std::vector<Row> rows) {
    return {table::kParties, {"List", "Search"}, {kCharacters, kRows, kEngine, kProgram}, std::move(rows)};
}

TEST(Markdown, FiguresAreAsExactAsTheyAreWorth) {
    EXPECT_EQ(MeasureText(0.004), "0.00");
    EXPECT_EQ(MeasureText(0.994), "0.99");
    EXPECT_EQ(MeasureText(0.996), "1.0");
    EXPECT_EQ(MeasureText(99.94), "99.9");
    EXPECT_EQ(MeasureText(99.96), "100");
    EXPECT_EQ(MeasureText(12345.6), "12,346");
    EXPECT_EQ(MeasureText(kNothing), kUnmeasured);
    EXPECT_EQ(TimesText(3, 2), "1.50");
    EXPECT_EQ(TimesText(9.996, 1), "10.0");
    EXPECT_EQ(TimesText(250, 1), "250");
    EXPECT_EQ(TimesText(1, 0.004), kUnmeasured) << "a cost shown as 0.00";
    EXPECT_EQ(TimesText(kNothing, 1), kUnmeasured);
}

TEST(Markdown, CompaniesStandSideBySideByTheBiggest) {
    const Table small = Searches({{{"一覧", "検索"}, {0, 10, 1, 2}}, {{"一覧", "gone"}, {0, 1, 1, 1}}});
    const Table big = Searches({{{"一覧", "検索"}, {0, 1000, 2, 5}}, {{"一覧", "a|b"}, {2, 0, kNothing, 7}}});
    EXPECT_EQ(SideBySide({"10", "100", "1,000"}, {&small, nullptr, &big}),
              "| List | Search | Rows | 10 | 100 | 1,000 | Growth | × engine |\n"
              "| --- | --- | ---: | ---: | ---: | ---: | ---: | ---: |\n"
              "| 一覧 | 検索 | 1,000 | 2.0 (1.0) | – | 5.0 (2.0) | 2.50 | 2.50 |\n"
              "|  | a\\|b | 0 | – | – | 7 | – | – |\n");
    // The biggest isn't measured: what grew can't be told, and mustn't be told of another.
    EXPECT_THAT(SideBySide({"10", "100"}, {&small, nullptr}).toStdString(),
                testing::HasSubstr("| 一覧 | 検索 | 10 | 2.0 (1.0) | – | – | 2.00 |"));
}

TEST(Limits, HoldForWhatTheyAreAbout) {
    Results results;
    results.Add(
        Searches({{{"A", "two"}, {2, 5, 1, 251}}, {{"A", "three"}, {3, 5, 100, 21}}, {{"A", "one"}, {1, 5, 1, 41}}}));
    results.Add({table::kNames,
                 {"List", "Search"},
                 {kCharacters, kRows, kEngine, kProgram},
                 {{{"N", "full"}, {0, 1000, 900, 701}}, {{"N", "rest"}, {0, 999, 900, 701}}}});
    results.Add({table::kClient,
                 {"What"},
                 {"Statements", kEngine, kProgram},
                 {{{kWaitShare}, {1, 9, 3.1}}, {{"start"}, {1, 9, 80}}}});
    results.Add({table::kTyped, {"Item"}, {"Statements", kEngine, kProgram}, {{{"出金No"}, {1, 10, 15.1}}}});
    const auto passed = [&results](bool onServer) {
        QStringList whats;
        for (const Limit& limit : Limits())
            for (const Judged& judged : Judge(limit, results, onServer))
                if (judged.Passes()) whats << judged.what;
        return whats;
    };
    EXPECT_EQ(passed(false), (QStringList{"出金No", "N, full", "A, two", kWaitShare}));
    EXPECT_EQ(passed(true), (QStringList{"出金No", "N, full", "A, two", "A, three", "A, two", kWaitShare}));
    EXPECT_EQ(Passed(results, true).size(), 6);
}

TEST(Results, ComeBackFromTheirFileAsTheyWere) {
    const QTemporaryDir folder;
    const QString file = folder.path() + "/a.json";
    Results results;
    NoteMachine(results, "エンジン", 1.5);
    results.Add(Searches({{{"一覧", "検索"}, {0, 10, kNothing, 2.5}}}));
    results.faults << "何か";
    EXPECT_FALSE(ReadResults(file));
    ASSERT_TRUE(WriteResults(results, file));
    const auto back = ReadResults(file);
    ASSERT_TRUE(back);
    EXPECT_EQ(AsMarkdown(*back), AsMarkdown(results));
    EXPECT_EQ(back->machine, results.machine);
    EXPECT_EQ(back->load, 1.5);
    EXPECT_EQ(back->when.toString(Qt::ISODate), results.when.toString(Qt::ISODate));
    const Table* table = back->Find(table::kParties);
    ASSERT_TRUE(table);
    EXPECT_TRUE(std::isnan(table->At(table->rows.at(0), kEngine)));
    EXPECT_EQ(table->At(table->rows.at(0), kProgram), 2.5);
}

TEST(Page, TellsWhatItsTextAsksForInVain) {
    QString fault;
    const PageMatter matter;
    EXPECT_EQ(WritePage("# A\n\n{{party searches}}\n", matter, fault), "# A\n\nNot measured.\n");
    EXPECT_EQ(fault, "");
    WritePage("{{party serches}}", matter, fault);
    EXPECT_THAT(fault.toStdString(), testing::HasSubstr("party serches"));
}

}  // namespace
}  // namespace bench
