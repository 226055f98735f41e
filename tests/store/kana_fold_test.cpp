#include "store/kana_fold.h"

#include <random>

#include "tests/store/store_fixture.h"

namespace store {
namespace {

struct Pair {
    const char* typed;
    const char* stored;
    bool same;
};

// Whether a search for the first text finds the second one.
constexpr Pair kPairs[] = {
    // Width.
    {"ABC", "ＡＢＣ", true},
    {"ＡＢＣ", "ABC", true},
    {"０１２９", "0129", true},
    {"!\"#$&'()", "！＂＃＄＆＇（）", true},
    {"[]{}|~\\^`", "［］｛｝｜～＼＾｀", true},
    {"(株)", "（株）", true},
    {"a b", "ａ　ｂ", true},
    {"ｱｲｳｴｵ", "アイウエオ", true},
    {"ﾜｦﾝ", "ワヲン", true},
    {"｡｢｣､･", "。「」、・", true},
    {"¢£¬¥", "￠￡￢￥", true},
    {"1", "①", false},
    {"株", "㈱", false},
    {"３丁目−２", "3丁目－2", true},
    {"10〜20", "10～20", true},
    // What a keyboard or a mapping writes for the apostrophe, the yen and the hyphen. A long vowel is none of these.
    {"O'Neil", "Ｏ’Ｎｅｉｌ", true},
    {"’", "＇", true},
    {"\\", "￥", true},
    {"¥", "＼", true},
    {"￥100\\", "\\１００¥", true},
    {"\\", "/", false},
    {"--------", "‐‑‒–—―−－", true},
    {"—カ－", "-ｶ―", true},
    {"ー", "—", false},
    {"–", "ｰ", false},
    // Hiragana and katakana, and their widths.
    {"かぶ", "カブ", true},
    {"かぶ", "ｶﾌﾞ", true},
    {"ｶﾌﾞ", "カブ", true},
    {"カブ", "かぶ", true},
    {"ｱｲﾁ", "あいち", true},
    {"ぁぃぅぇぉ", "ァィゥェォ", true},
    {"ﾔﾕﾖ", "やゆよ", true},
    {"ゐゑを", "ヰヱヲ", true},
    {"ゔ", "ヴ", true},
    {"ゔ", "ｳﾞ", true},
    {"ゝゞ", "ヽヾ", true},
    {"ゕゖ", "ヵヶ", true},
    {"い", "ヰ", false},
    {"お", "を", false},
    // Case of Latin letters only.
    {"abc", "ABC", true},
    {"ａｂｃ", "ABC", true},
    {"abc", "ＡＢＣ", true},
    {"Ｚ", "z", true},
    {"[", "{", false},
    {"@", "`", false},
    {"é", "É", false},
    // Voiced marks tell words apart, and belong to their kana however they are written.
    {"は", "ハ", true},
    {"は", "ﾊ", true},
    {"は", "ば", false},
    {"は", "ﾊﾞ", false},
    {"ﾊ", "ﾊﾞ", false},
    {"ば", "ﾊﾞ", true},
    {"ぱ", "ﾊﾟ", true},
    {"ば", "ぱ", false},
    {"ｶﾞｷﾞｸﾞｹﾞｺﾞ", "がぎぐげご", true},
    {"ｻﾞｼﾞｽﾞｾﾞｿﾞ", "ザジズゼゾ", true},
    {"ﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞ", "だぢづでど", true},
    {"ﾊﾞﾋﾞﾌﾞﾍﾞﾎﾞ", "バビブベボ", true},
    {"ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ", "ぱぴぷぺぽ", true},
    {"ﾜﾞｦﾞ", "ヷヺ", true},
    {"カﾞ", "ガ", true},
    {"か\u3099", "が", true},
    {"ハ\u309A", "パ", true},
    {"は゛", "ば", true},
    {"じ", "ぢ", false},
    {"ﾅﾞ", "な", false},
    {"ﾅﾞ", "ナ゛", true},
    {"カﾟ", "ガ", false},
    {"ﾞ", "゛", true},
    {"ﾞ", "ﾟ", false},
    {"ﾞ", "ｶﾞ", false},
    {"ｶ", "ガ", false},
    // Small kana.
    {"ｯ", "っ", true},
    {"ｬｭｮ", "ゃゅょ", true},
    {"つ", "っ", false},
    {"ﾔ", "ｬ", false},
    {"ア", "ァ", false},
    {"ケ", "ヶ", false},
    {"キヤノン", "キャノン", false},
    // Long vowels.
    {"ｰ", "ー", true},
    {"らーめん", "ﾗｰﾒﾝ", true},
    {"ー", "-", false},
    {"ー", "－", false},
    {"ラーメン", "ラアメン", false},
    {"サーバー", "サーバ", false},
    // Kanji, and what lies beyond.
    {"髙", "高", false},
    {"齋藤", "斎藤", false},
    {"𠮷野", "𠮷野", true},
    {"𠮷", "吉", false},
    {"々", "〻", false},
    // The full-width characters are no wildcards.
    {"１００％", "100%", true},
    {"Ａ％Ｃ", "ABC", false},
    {"Ａ＿Ｃ", "a_c", true},
    {"Ａ＿Ｃ", "ABC", false},
    // Wildcards.
    {"A%C", "ａ市場ｃ", true},
    {"A_C", "ABC", true},
    {"A_C", "AC", false},
    {"_", "か", true},
    {"か_", "ｶｶﾞ", true},
    {"か_", "ｶﾞ", false},
    {"ｶ%ﾞ", "ガ", false},
    {"_ﾞ", "ガ", false},
    {"", "", true},
};

QString Literal(const char* text) {
    return "'" + QString::fromUtf8(text).replace("'", "''") + "'";
}

class KanaLikeOnEngine : public OnEngine {};

TEST_P(KanaLikeOnEngine, FindsATextHoweverItIsWritten) {
    OpenStore db(GetParam());
    db.Do("CREATE TABLE t (stored TEXT, inside TEXT)");
    for (const auto& [typed, stored, same] : kPairs) {
        db.Do("DELETE FROM t");
        db.Do(QString("INSERT INTO t VALUES (%1, '東京' || %1 || '本店')").arg(Literal(stored)));
        const QString whole = "SELECT COUNT(*) AS n FROM t WHERE stored %1 " + Literal(typed);
        EXPECT_EQ(db.Rows(whole.arg("LIKE")), same ? "1" : "0") << typed << " for " << stored;
        EXPECT_EQ(db.Rows(whole.arg("NOT LIKE")), same ? "0" : "1") << typed << " for " << stored;
        if (!same) continue;
        // As a literal, and put together.
        const QString pieces = "'%' || " + Literal(typed) + " || '%'";
        for (const QString& pattern : {QString("'%") + Literal(typed).mid(1).chopped(1) + "%'", pieces})
            EXPECT_EQ(db.Rows("SELECT COUNT(*) AS n FROM t WHERE inside LIKE " + pattern), "1")
                << typed << " inside " << stored;
    }
}

TEST_P(KanaLikeOnEngine, TakesSignsNullsAndEscapesAsTheyAre) {
    OpenStore db(GetParam());
    db.Do("CREATE TABLE t (a TEXT)");
    db.Do("INSERT INTO t VALUES ('100%\\x'), ('5_0'), ('50'), (NULL)");
    const std::vector<std::pair<QString, QString>> cases = {
        {"a LIKE '%\\%'", "100%\\x"},        {"a LIKE '5_0'", "5_0"},       {"a LIKE '5％'", ""},
        {"a LIKE '5!_0' ESCAPE '!'", "5_0"}, {"a LIKE '5%'", "50;5_0"},     {"a NOT LIKE '5%'", "100%\\x"},
        {"a LIKE '1%' || 'x'", "100%\\x"},   {"a LIKE '5!' ESCAPE '!'", ""}};
    for (const auto& [condition, rows] : cases)
        EXPECT_EQ(db.Rows("SELECT a FROM t WHERE " + condition + " ORDER BY a"), rows) << condition.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Engines, KanaLikeOnEngine, testing::Values(kSqlite, kPostgres),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(KanaLike, ActsAsTheEnginesOwnOnNullsNumbersAndEscapes) {
    OpenStore db;
    const std::vector<std::pair<QString, QString>> cases = {
        {"NULL LIKE '%'", "-"},
        {"'a' NOT LIKE NULL", "-"},
        {"'a' LIKE 'a' ESCAPE NULL", "-"},
        {"10 LIKE '1%'", "1"},
        {"x'41' LIKE 'a'", "1"},
        {"'5%' LIKE '5!%' ESCAPE '!'", "1"},
        {"'50' LIKE '5!%' ESCAPE '!'", "0"},
        {"'a_b' LIKE 'Ａ％＿Ｂ' ESCAPE '％'", "1"},
        {"'a%' LIKE 'a!' ESCAPE '!'", "0"},
        {"'a' LIKE 'a' ESCAPE '!!'", "fault: ESCAPE expression must be a single character"},
    };
    for (const auto& [expression, result] : cases)
        EXPECT_EQ(db.Rows("SELECT " + expression).left(result.size()), result) << expression.toStdString();
}

TEST(KanaLike, AFoldedPatternIsKeptForItsOwnPlaceOnly) {
    OpenStore db;
    db.Do("CREATE TABLE t (name TEXT, pattern TEXT, mark TEXT)");
    db.Do("INSERT INTO t VALUES ('かぶ', 'ｶ%', '!'), ('さけ', 'ｻ%', '!'), ('5%', '5!%', '!'), ('5!x', '5!%', '#')");
    EXPECT_EQ(db.Rows("SELECT name FROM t WHERE name LIKE 'カ%' OR name LIKE 'サ%' ORDER BY rowid"), "かぶ;さけ");
    EXPECT_EQ(db.Rows("SELECT name FROM t WHERE name LIKE pattern ORDER BY rowid"), "かぶ;さけ;5!x");
    EXPECT_EQ(db.Rows("SELECT name FROM t WHERE name LIKE '5!%' ESCAPE mark ORDER BY rowid"), "5%;5!x");
}

TEST(KanaLike, ManyWildcardsEndInTime) {
    OpenStore db;
    const QString sql = "SELECT '" + QString(5000, u'a') + "' LIKE '" + QString("%a").repeated(500) + "%b'";
    EXPECT_EQ(db.Rows(sql), "0");
}

// The reference: every way to spread the pattern over the text, tried out.
bool MatchesSlowly(std::string_view pattern, std::string_view text) {
    if (pattern.empty()) return text.empty();
    if (pattern[0] == '%')
        return MatchesSlowly(pattern.substr(1), text) || (!text.empty() && MatchesSlowly(pattern, text.substr(1)));
    return !text.empty() && (pattern[0] == '_' || pattern[0] == text[0]) &&
           MatchesSlowly(pattern.substr(1), text.substr(1));
}

TEST(KanaLike, MatchesAsTheRulesOfWildcardsSay) {
    std::mt19937 dice(1);
    const auto make = [&dice](const char* letters, std::size_t kinds, std::size_t most) {
        std::string text(dice() % (most + 1), ' ');
        for (char& c : text)
            c = letters[dice() % kinds];
        return text;
    };
    for (int i = 0; i < 50000; ++i) {
        const std::string pattern = make("ab%_", 4, 7), text = make("ab", 2, 9);
        ASSERT_EQ(LikePattern(pattern).Matches(text), MatchesSlowly(pattern, text)) << pattern << " / " << text;
    }
}

// Whoever matches holds all pieces, and the fewest leave out no letter.
TEST(KanaLike, ItsPiecesAreThoseThatAMatchMustHold) {
    using Pieces = std::vector<std::string>;
    const std::vector<std::tuple<const char*, Pieces, Pieces>> cases = {
        {"%", {}, {}},
        {"_a_%ｶﾞ%", {"a", "ガ"}, {"a", "ガ"}},
        {"%ab%", {"ab"}, {"ab"}},
        {"%abc%", {"ab", "bc"}, {"ab", "bc"}},
        {"abcd_e", {"ab", "bc", "cd", "e"}, {"ab", "cd", "e"}},
        {"%abcde%fg", {"ab", "bc", "cd", "de", "fg"}, {"ab", "cd", "de", "fg"}}};
    for (const auto& [pattern, all, fewest] : cases) {
        EXPECT_EQ(LikePattern(pattern).Pieces(), all) << pattern;
        EXPECT_EQ(LikePattern(pattern).FewestPieces(), fewest) << pattern;
    }
}

// Broken bytes stand for themselves: nothing is read past the end, and no two of them are alike by accident.
TEST(KanaLike, TakesBrokenTexts) {
    using namespace std::string_view_literals;
    const std::string_view broken[] = {"\xE3"sv,         "\xE3\x82"sv,     "\x82"sv,         "\xC0\xA5"sv,
                                       "\xED\x80"sv,     "\xF0\xA0\xAE"sv, "\xFF\xFE"sv,     "\xE0\x80\xA5"sv,
                                       "\xF8\x88\x80"sv, "\xC3"sv,         "\xF4\x90\x80"sv, "カ\xEF\xBE"sv};
    for (const std::string_view pattern : broken)
        for (const std::string_view text : broken)
            EXPECT_EQ(LikePattern(pattern).Matches(text), pattern == text);
    EXPECT_FALSE(LikePattern("a\xC0\xA5"sv).Matches("ab"));
    EXPECT_TRUE(LikePattern("%\xE3%"sv).Matches("ab\xE3"sv));
    EXPECT_TRUE(LikePattern("a\0b"sv).Matches("A\0B"sv));
    EXPECT_FALSE(LikePattern("a"sv).Matches("A\0B"sv));

    std::mt19937 dice(2);
    for (int i = 0; i < 20000; ++i) {
        // On the heap at its exact size, so that the sanitizer sees one byte too far.
        std::vector<char> bytes(dice() % 12);
        for (char& byte : bytes)
            byte = "\xE3\x82\xAB\xEF\xBE\x9E\xF0\xC3\x80%_a"[dice() % 12];
        const std::string_view text(bytes.data(), bytes.size());
        std::vector<Letter> letters;
        FoldLetters(text, letters);
        EXPECT_LE(letters.size(), text.size());
        EXPECT_TRUE(LikePattern("%").Matches(text));
        if (text.find_first_of("%_") == std::string_view::npos) {
            EXPECT_TRUE(LikePattern(text).Matches(text));
        }
    }
}

// A store may hold what no program of this kind wrote.
TEST(KanaLike, TakesABrokenTextFromAStore) {
    OpenStore db;
    db.Do("CREATE TABLE t (name TEXT)");
    db.Do("INSERT INTO t VALUES (CAST(x'E382ABE3' AS TEXT)), (CAST(x'E382' AS TEXT)), ('カキ')");
    EXPECT_EQ(db.Rows("SELECT rowid FROM t WHERE name LIKE '%か%' ORDER BY rowid"), "1;3");
    EXPECT_EQ(db.Rows("SELECT rowid FROM t WHERE name NOT LIKE '%か%' ORDER BY rowid"), "2");
}

}  // namespace
}  // namespace store
