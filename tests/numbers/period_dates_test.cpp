#include "numbers/period_dates.h"

#include <gmock/gmock.h>

namespace numbers {
namespace {

constexpr Closing kMarchEnd{3, 31};
constexpr Closing kMarch20{3, 20};
constexpr Closing kDecemberEnd{12, 31};
constexpr Closing kFebruary28{2, 28};
constexpr Closing kFebruary29{2, 29};

TEST(PeriodDates, MonthEndPairsAreTold) {
    const Closing atEnd[] = {{1, 31}, {2, 28}, {2, 29}, {4, 30}, {6, 30}, {8, 31}, {9, 30}, {11, 30}, {12, 31}};
    for (const Closing& closing : atEnd) {
        EXPECT_TRUE(ClosesAtMonthEnd(closing)) << closing.month << '/' << closing.day;
    }
    const Closing fixed[] = {{1, 30}, {2, 30}, {2, 27}, {3, 20}, {4, 31}, {12, 30}, {0, 31}, {13, 31}};
    for (const Closing& closing : fixed) {
        EXPECT_FALSE(ClosesAtMonthEnd(closing)) << closing.month << '/' << closing.day;
    }
}

struct DateCase {
    Closing closing;
    const char* date;
    const char* expected;
};

TEST(PeriodDates, MonthClosing) {
    const DateCase cases[] = {
        {kMarchEnd, "20240210", "20240229"},   {kMarchEnd, "20260430", "20260430"}, {kMarchEnd, "20261215", "20261231"},
        {kMarch20, "20260520", "20260520"},    {kMarch20, "20260521", "20260620"},  {kMarch20, "20261221", "20270120"},
        {{3, 30}, "20260415", "20260430"},     {{2, 30}, "20260210", "20260302"},   {{2, 30}, "20240210", "20240301"},
        {kFebruary28, "20260715", "20260731"}, {{4, 31}, "20260415", "20260501"},
    };
    for (const DateCase& c : cases) {
        EXPECT_EQ(MonthClosingDate(c.closing, c.date), c.expected)
            << c.closing.month << '/' << c.closing.day << ' ' << c.date;
    }
}

struct YearCase {
    Closing closing;
    const char* date;
    const char* start;
    const char* end;
};

TEST(PeriodDates, FiscalYear) {
    const YearCase cases[] = {
        {kMarchEnd, "20260331", "20250401", "20260331"},
        {kMarchEnd, "20260401", "20260401", "20270331"},
        {kMarch20, "20260320", "20250321", "20260320"},
        {kMarch20, "20260321", "20260321", "20270320"},
        {kDecemberEnd, "20260101", "20260101", "20261231"},
        {kDecemberEnd, "20261231", "20260101", "20261231"},
        {{6, 30}, "20260701", "20260701", "20270630"},
        // A year is added by month and day, so that the end of February stays on the 28th, and the 29th falls back to
        // it.
        {kFebruary28, "20270301", "20270301", "20280228"},
        {kFebruary28, "20280228", "20270301", "20280229"},
        {kFebruary28, "20280301", "20280301", "20290228"},
        {{2, 30}, "20260301", "20250303", "20260302"},
    };
    for (const YearCase& c : cases) {
        SCOPED_TRACE(std::to_string(c.closing.month) + '/' + std::to_string(c.closing.day) + ' ' + c.date);
        EXPECT_EQ(FiscalYearStart(c.closing, c.date), c.start);
        EXPECT_EQ(FiscalYearEnd(c.closing, c.date), c.end);
    }
}

TEST(PeriodDates, EitherEndOfFebruaryMeansTheSame) {
    for (const QString date : {"20270228", "20270301", "20280228", "20280229", "20280301"}) {
        EXPECT_EQ(MonthClosingDate(kFebruary28, date), MonthClosingDate(kFebruary29, date));
        EXPECT_EQ(FiscalYearStart(kFebruary28, date), FiscalYearStart(kFebruary29, date));
        EXPECT_EQ(FiscalYearEnd(kFebruary28, date), FiscalYearEnd(kFebruary29, date));
    }
}

TEST(PeriodDates, OddDateTextsGiveADate) {
    for (const QString date : {"", "00000000", "99999999", "abcdefgh", "2026"}) {
        for (const Closing& closing : {kMarchEnd, kMarch20, kDecemberEnd, Closing{0, 0}}) {
            for (const QString& result :
                 {MonthClosingDate(closing, date), FiscalYearStart(closing, date), FiscalYearEnd(closing, date)}) {
                EXPECT_THAT(result.toStdString(), testing::MatchesRegex("[0-9]{8}")) << date.toStdString();
            }
        }
    }
}

}  // namespace
}  // namespace numbers
