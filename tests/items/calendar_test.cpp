#include "items/calendar.h"

#include <gmock/gmock.h>

#include <QStringList>
#include <climits>

namespace items {

void PrintTo(const Ymd& date, std::ostream* out) {
    *out << date.year << '-' << date.month << '-' << date.day;
}

namespace {

struct PackCase {
    Ymd parts;
    Ymd date;
};

TEST(Calendar, PartsOutOfRangeCarry) {
    const PackCase cases[] = {
        {{2026, 2, 28}, {2026, 2, 28}},
        {{2026, 13, 5}, {2027, 1, 5}},
        {{2026, 14, 1}, {2027, 2, 1}},
        {{2026, 1, 32}, {2026, 2, 1}},
        {{2026, 3, 0}, {2026, 2, 28}},
        {{2024, 3, 0}, {2024, 2, 29}},
        {{2026, 0, 15}, {2025, 12, 15}},
        {{2026, -11, 1}, {2025, 1, 1}},
        {{2026, -12, 1}, {2024, 12, 1}},
        {{1900, 2, 29}, {1900, 3, 1}},
        {{2000, 2, 29}, {2000, 2, 29}},
        {{2026, 1, -30}, {2025, 12, 1}},
        {{0, 0, 0}, {0, 1, 1}},
        {{0, 2, 29}, {0, 2, 29}},
        {{9999, 99, 99}, {9999, 12, 31}},
        {{9999, 12, 32}, {9999, 12, 31}},
        {{-5, 6, 7}, {0, 1, 1}},
        {{INT_MAX, INT_MAX, INT_MAX}, {9999, 12, 31}},
        {{INT_MIN, INT_MIN, INT_MIN}, {0, 1, 1}},
    };
    for (const PackCase& c : cases) {
        EXPECT_EQ(PackDate(c.parts.year, c.parts.month, c.parts.day), c.date) << testing::PrintToString(c.parts);
    }
}

TEST(Calendar, StepsByDaysAndYears) {
    EXPECT_EQ(AddDays({2024, 2, 28}, 1), (Ymd{2024, 2, 29}));
    EXPECT_EQ(AddDays({2026, 1, 3}, -7), (Ymd{2025, 12, 27}));
    EXPECT_EQ(AddDays({9999, 12, 31}, 7), (Ymd{9999, 12, 31}));
    EXPECT_EQ(AddDays({0, 1, 1}, -1), (Ymd{0, 1, 1}));
    EXPECT_EQ(AddDays({2026, 1, 1}, INT_MAX), (Ymd{9999, 12, 31}));
    EXPECT_EQ(AddYears({2024, 2, 29}, 1), (Ymd{2025, 2, 28}));
    EXPECT_EQ(AddYears({2024, 2, 29}, 4), (Ymd{2028, 2, 29}));
    EXPECT_EQ(AddYears({2024, 2, 29}, -1), (Ymd{2023, 2, 28}));
    EXPECT_EQ(AddYears({2027, 2, 28}, 1), (Ymd{2028, 2, 28}));
    EXPECT_EQ(AddYears({2024, 3, 1}, 1), (Ymd{2025, 3, 1}));
    EXPECT_EQ(AddYears({9999, 3, 1}, 1), (Ymd{9999, 12, 31}));
    EXPECT_EQ(AddYears({0, 3, 1}, -1), (Ymd{0, 1, 1}));
}

TEST(Calendar, WeekdaysStartOnSunday) {
    EXPECT_EQ(Weekday({2026, 7, 26}), 1);
    EXPECT_EQ(Weekday({2026, 8, 1}), 7);
    EXPECT_EQ(WeekdayName({2026, 7, 26}), "日曜日");
    EXPECT_EQ(WeekdayName({2026, 7, 29}), "水曜日");
    EXPECT_EQ(WeekdayName({2000, 1, 1}), "土曜日");
    EXPECT_EQ(WeekdayName({0, 0, 0}), "土曜日");  // 1 January of the year 0, the first day there is
}

struct ReadCase {
    const char* text;
    Ymd parts;
};

TEST(Calendar, DateTextsAreReadByPosition) {
    const ReadCase cases[] = {
        {"20260405", {2026, 4, 5}}, {"00000000", {0, 0, 0}},  {"99999999", {9999, 99, 99}}, {"", {0, 0, 0}},
        {"2026", {2026, 0, 0}},     {"202604", {2026, 4, 0}}, {"abcdefgh", {0, 0, 0}},      {"2026xx05", {2026, 0, 5}},
    };
    for (const ReadCase& c : cases) {
        EXPECT_EQ(ReadDate(c.text), c.parts) << c.text;
    }
    EXPECT_EQ(DateText({2026, 4, 5}), "20260405");
    EXPECT_EQ(DateText({7, 12, 31}), "00071231");
    EXPECT_EQ(Padded(123, 2), "123");
    EXPECT_EQ(Padded(-5, 2), "-05");
}

struct RepairCase {
    QStringList typed;
    QStringList repaired;
};

TEST(Calendar, DatesAreReadAsTheyAreTyped) {
    for (const QString typed : {"2026/3/5", "3/5", "20260305", "2026-03-05", "2026.3.5", "２０２６／３／５",
                                "2026年3月5日", " 2026 / 3 / 5 ", "2026ー3ー5"})
        EXPECT_EQ(TypedDate(typed, 2026), "20260305") << typed.toStdString();
    EXPECT_EQ(TypedDate("2/29", 2028), "20280229");
    for (const QString typed : {"2/29", "2026/13/5", "2026/0/5", "20260230", "26/3/5", "2026/3", "2026/3/5/1", "202603",
                                "", "3/5x", "-3/5", "202603051"})
        EXPECT_EQ(TypedDate(typed, 2026), std::nullopt) << typed.toStdString();
}

TEST(Calendar, RepairsDatePartsOnlyWhereNeeded) {
    const RepairCase cases[] = {
        {{"2026", "02", "31"}, {"2026", "02", "28"}},   {{"2024", "02", "30"}, {"2024", "02", "29"}},
        {{"2026", "04", "31"}, {"2026", "04", "30"}},   {{"2026", "13", "05"}, {"2027", "01", "05"}},
        {{"2026", "13", "27"}, {"2027", "01", "27"}},   {{"2026", "14", "28"}, {"2027", "02", "28"}},
        {{"2026", "14", "31"}, {"2027", "02", "28"}},  // not a day of March
        {{"2026", "14", "27"}, {"2027", "02", "27"}},   {{"2026", "1", "99"}, {"2026", "01", "31"}},
        {{"2026", "0", "28"}, {"2025", "12", "31"}},  // every repaired day above 27 becomes its month's last
        {{"2026", "0", "27"}, {"2025", "12", "27"}},    {{"2026", "5", "0"}, {"2026", "04", "30"}},
        {{"2026", "4", "5"}, {"2026", "4", "5"}},       {{"", "", ""}, {"", "", ""}},
        {{"0000", "00", "00"}, {"0000", "00", "00"}},   {{" ", "x", "0"}, {" ", "x", "0"}},
        {{"0000", "00", "05"}, {"0000", "01", "01"}},   {{"9999", "99", "99"}, {"9999", "12", "31"}},
        {{"99999999", "1", "1"}, {"9999", "12", "31"}},
    };
    for (const RepairCase& c : cases) {
        QStringList parts = c.typed;
        NormalizeYmdParts(parts[0], parts[1], parts[2]);
        EXPECT_EQ(parts, c.repaired) << c.typed.join('/').toStdString();
    }
}

}  // namespace
}  // namespace items
