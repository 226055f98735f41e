#include "items/display_forms.h"

#include <gmock/gmock.h>

#include <QLocale>

namespace items {
namespace {

TEST(DisplayForms, MomentsHaveOneFormWhateverTheLocale) {
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    const QDateTime afternoon(QDate(2026, 4, 5), QTime(15, 7, 9));
    EXPECT_EQ(DateText(afternoon), "20260405");
    EXPECT_EQ(TimeText(afternoon), "15:07");
    EXPECT_EQ(StampText(afternoon), "20260405 150709");
    EXPECT_EQ(ViewingTimeText(afternoon), "15:07:09");
    EXPECT_EQ(TimeText(QDateTime(QDate(2026, 4, 5), QTime(0, 0))), "00:00");
    QLocale::setDefault(QLocale::c());
}

struct TextCase {
    const char* text;
    const char* expected;
};

TEST(DisplayForms, PostcodeKeepsTheFirstGapOnly) {
    const TextCase cases[] = {
        {"", ""},
        {"   ", ""},
        {"   -", ""},
        {"   -  ", ""},
        {"100-0001", "100-0001"},
        {"100 0001", "100-0001"},
        {"1000001", "1000001"},
        {"100-", "100-"},
        {"100   ", "100"},
        {"-1000001", "1000001"},
        {"  1000001", "-1000001"},
        {"1-2-3", "1-23"},
        {"100--0001", "100-0001"},
        {"100０001", "100-001"},
    };
    for (const TextCase& c : cases) {
        EXPECT_EQ(NormalizePostcodeText(QString::fromUtf8(c.text)), c.expected) << c.text;
    }
}

TEST(DisplayForms, PostcodeEntryKeepsItsHyphenInPlace) {
    const TextCase cases[] = {
        {"1000001", "100-0001"}, {"100-0001", "100-0001"},  {"100", "100-"},
        {"10", "10 -"},          {"1000", "100-0"},         {"", "   -"},
        {"   -", "   -"},        {"123456789", "123-4567"}, {"１００-０００１", "100-0001"},
        {"abc", "   -"},
    };
    for (const TextCase& c : cases) {
        EXPECT_EQ(PostcodeEntryText(QString::fromUtf8(c.text)), c.expected) << c.text;
    }
}

TEST(DisplayForms, AmountsStandRightAlignedInThirteen) {
    const TextCase cases[] = {
        {"0", "            0"},          {"999", "          999"},          {"1234567", "    1,234,567"},
        {"1,234,567", "    1,234,567"},  {"-1234.5", "       -1,235"},      {"-123456", "     -123,456"},
        {"9999999999", "9,999,999,999"}, {"99999999999", "99,999,999,999"}, {"", "             "},
        {" 未定 ", "           未定"},
    };
    for (const TextCase& c : cases) {
        EXPECT_EQ(AmountColumnText(QString::fromUtf8(c.text)), QString::fromUtf8(c.expected)) << c.text;
    }
}

TEST(FileSizeText, RoundsToKilobytesInGroups) {
    const std::pair<qint64, const char*> cases[] = {
        {0, "0KB"},    {511, "0KB"},  {512, "1KB"},         {1023, "1KB"},
        {1535, "1KB"}, {1536, "2KB"}, {1023999, "1,000KB"}, {5'000'000'000, "4,882,813KB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(FileSizeText(bytes), text) << bytes;
}

}  // namespace
}  // namespace items
