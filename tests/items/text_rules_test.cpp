#include "items/text_rules.h"

#include <gmock/gmock.h>

namespace items {
namespace {

struct LimitCase {
    const char* text;
    int limit;
    int length;
    int overrun;
    const char* head;
};

TEST(TextRules, LengthNoticeAndCutAgreeOnBytes) {
    const LimitCase cases[] = {
        {"", 0, 0, 0, ""},
        {"abc", 3, 3, 0, "abc"},
        {"abcd", 3, 4, 1, "abc"},
        {"ああああああああああ", 15, 20, 3, "あああああああ"},  // the eighth crosses the limit
        {"ああああああああああ", 20, 20, 0, "ああああああああああ"},
        {"ｶﾌﾞｼｷ", 5, 5, 0, "ｶﾌﾞｼｷ"},
        {"ｶﾌﾞあ", 4, 5, 1, "ｶﾌﾞ"},
        {"髙①～", 6, 6, 0, "髙①～"},  // the vendor's own rows of the code page
        {"〜あ", 2, 3, 1, "〜"},      // a wave dash isn't in it: one byte, and the next character is whole again
        {"é€あ", 4, 4, 0, "é€あ"},
        {"𠮷野", 1, 4, 3, ""},  // two units of one byte each, never cut between them
        {"𠮷野", 2, 4, 1, "𠮷"},
        {"あ", 0, 2, 1, ""},
        {"あ", -1, 2, 1, ""},
    };
    for (const LimitCase& c : cases) {
        const QString text = QString::fromUtf8(c.text);
        SCOPED_TRACE(QStringLiteral("%1 / %2").arg(text).arg(c.limit).toStdString());
        EXPECT_EQ(AnsiLength(text), c.length);
        EXPECT_EQ(OverrunCharacters(text, c.limit), c.overrun);
        EXPECT_EQ(TruncateToBytes(text, c.limit), QString::fromUtf8(c.head));
    }
    EXPECT_EQ(ByteLengthNotice("ああああああああああ", 15), "文字オーバーです。3");
    EXPECT_EQ(ByteLengthNotice("あああ", 6), "");
}

TEST(TextRules, HalfASurrogatePairCountsOneByte) {
    const QString torn = QString(QChar(0xD842)) + QStringLiteral("あ");
    EXPECT_EQ(AnsiLength(torn), 3);
    EXPECT_EQ(AnsiLength(torn.left(1)), 1);
}

struct TextCase {
    const char* text;
    const char* expected;
};

TEST(TextRules, SqlTextDoublesQuotesAndLosesTrailingBlanks) {
    const TextCase cases[] = {
        {"", ""},       {"   ", ""},        {" O'Neil's  ", " O''Neil''s"},
        {"'", "''"},    {"a' ", "a''"},     {"社　", "社　"},
        {"a\t", "a\t"}, {"a\r\n", "a\r\n"},
    };
    for (const TextCase& c : cases) {
        EXPECT_EQ(EscapeSqlText(QString::fromUtf8(c.text)), QString::fromUtf8(c.expected)) << c.text;
    }
}

struct MaskCase {
    const char* value;
    const char* mask;
    const char* expected;
};

TEST(TextRules, MaskPadsNumbersAndCutsEverything) {
    const MaskCase cases[] = {
        {"12", "000000", "000012"},
        {"1234567", "000000", "123456"},
        {"00012", "000", "012"},  // leading zeros are no part of the number that is cut
        {"12345678901234567890123", "00000000", "12345678"},
        {" 7 ", "000", "007"},
        {"1,234", "000000", "001234"},
        {"2.5", "000", "003"},
        {"2.49", "000", "002"},
        {"99.5", "000", "100"},
        {".5", "00", "01"},
        {"0", "000", "000"},
        {"-5", "000", "-00"},
        {"-2.5", "0000", "-000"},
        {"-0", "000", "000"},
        {"+5", "000", "005"},
        {"A1", "000", "A1"},
        {"ABCD", "000", "ABC"},
        {"A𠮷", "00", "A"},
        {"1-2", "0000", "1-2"},
        {"1e3", "00000", "1e3"},
        {".", "00", "."},
        {"-", "00", "-"},
        {"", "000", ""},
        {"  ", "000", "  "},
        {"abc 12 ", "", "abc 12 "},
    };
    for (const MaskCase& c : cases) {
        EXPECT_EQ(FormatToMask(c.value, c.mask), c.expected) << c.value << " / " << c.mask;
    }
    EXPECT_EQ(ZeroMask(5), "00000");
    EXPECT_EQ(ZeroMask(0), "");
    EXPECT_EQ(ZeroMask(-1), "");
}

TEST(TextRules, OnlyHalfWidthDigitsAreDigits) {
    EXPECT_EQ(DigitsOnly("03-1234 (内線5)"), "0312345");
    EXPECT_EQ(DigitsOnly("０１"), "");
    EXPECT_EQ(FoldFullWidthDigits("０５９－a９"), "059－a9");
}

struct ValCase {
    const char* text;
    double value;
    int whole;
};

TEST(TextRules, ValReadsALeadingNumber) {
    const ValCase cases[] = {
        {"", 0, 0},
        {"abc", 0, 0},
        {"12abc", 12, 12},
        {" 1 2 .5x", 12.5, 12},
        {"-3.9", -3.9, -3},
        {"1.5.2", 1.5, 1},
        {"-", 0, 0},
        {"5-3", 5, 5},
        {".", 0, 0},
        {"99999", 99999, 32767},
        {"-99999", -99999, -32768},
        {"１２", 0, 0},
    };
    for (const ValCase& c : cases) {
        EXPECT_DOUBLE_EQ(Val(QString::fromUtf8(c.text)), c.value) << c.text;
        EXPECT_EQ(Val16(QString::fromUtf8(c.text)), c.whole) << c.text;
    }
    EXPECT_EQ(Val16(QString(400, u'9')), 32767);
}

}  // namespace
}  // namespace items
