#include "store/kana_fold.h"

#include <algorithm>
#include <array>

namespace store {
namespace {

// Letters of a pattern that no text can hold.
constexpr Letter kAnyLetters = 0xFFFFFFFF;
constexpr Letter kOneLetter = 0xFFFFFFFE;

constexpr Letter kVoicedMark = 0x309B;
constexpr Letter kHalfVoicedMark = 0x309C;

// Two stretches of code points fold by table, all others stay: kana with their punctuation, and the two widths.
constexpr Letter kKanaFirst = 0x3000, kKanaEnd = 0x3100;
constexpr Letter kWidthFirst = 0xFF00, kWidthEnd = 0xFFF0;

// U+FF61 to U+FF9F.
constexpr std::u16string_view kHalfWidthKana =
    u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリ"
    u"ルレロワン"
    u"゛゜";
static_assert(kHalfWidthKana.size() == 0xFFA0 - 0xFF61);

constexpr std::u16string_view kPlain = u"カキクケコサシスセソタチツテトハヒフヘホウワヰヱヲヽ";
constexpr std::u16string_view kVoiced = u"ガギグゲゴザジズゼゾダヂヅデドバビブベボヴヷヸヹヺヾ";
static_assert(kPlain.size() == kVoiced.size());

constexpr Letter Lower(Letter letter) {
    return letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A') : letter;
}

// What stands below the kana. An input method writes ’ for the apostrophe and, as the character mappings do, any of
// these dashes for the hyphen; the key of the yen gives a backslash on some systems, and ¥ on others.
constexpr Letter Sign(Letter c) {
    if (c == 0xA5) return '\\';
    if (c == 0x2019) return '\'';
    return (c >= 0x2010 && c <= 0x2015) || c == 0x2212 ? '-' : c;
}

constexpr auto MakeAsciiTable() {
    std::array<std::uint8_t, 128> table{};
    for (Letter c = 0; c < table.size(); ++c)
        table[c] = static_cast<std::uint8_t>(Lower(c));
    return table;
}

constexpr auto MakeKanaTable() {
    std::array<std::uint16_t, kKanaEnd - kKanaFirst> table{};
    for (Letter c = kKanaFirst; c < kKanaEnd; ++c)
        table[c - kKanaFirst] = static_cast<std::uint16_t>(c);
    const auto fold = [&table](Letter from, Letter to) { table[from - kKanaFirst] = static_cast<std::uint16_t>(to); };
    for (Letter hiragana = 0x3041; hiragana <= 0x3096; ++hiragana)
        fold(hiragana, hiragana + 0x60);
    for (Letter repeat = 0x309D; repeat <= 0x309E; ++repeat)
        fold(repeat, repeat + 0x60);
    fold(0x3000, ' ');
    fold(0x301C, '~');  // other systems write the wave dash for what here is a full-width tilde
    fold(0x3099, kVoicedMark);
    fold(0x309A, kHalfVoicedMark);
    return table;
}

constexpr auto MakeWidthTable() {
    std::array<std::uint16_t, kWidthEnd - kWidthFirst> table{};
    for (Letter c = kWidthFirst; c < kWidthEnd; ++c)
        table[c - kWidthFirst] = static_cast<std::uint16_t>(c);
    for (Letter c = 0xFF01; c <= 0xFF5E; ++c)
        table[c - kWidthFirst] = static_cast<std::uint16_t>(Lower(c - 0xFF01 + '!'));
    for (std::size_t i = 0; i < kHalfWidthKana.size(); ++i)
        table[0xFF61 - kWidthFirst + i] = kHalfWidthKana[i];
    constexpr std::u16string_view signs = u"¢£¬¯¦¥";
    for (std::size_t i = 0; i < signs.size(); ++i)
        table[0xFFE0 - kWidthFirst + i] = static_cast<std::uint16_t>(Sign(signs[i]));
    return table;
}

// What a katakana becomes with a mark behind it; 0 for one that takes none.
constexpr auto MakeMarkTable(std::u16string_view plain, std::u16string_view marked) {
    std::array<std::uint16_t, kKanaEnd - kKanaFirst> table{};
    for (std::size_t i = 0; i < plain.size(); ++i)
        table[plain[i] - kKanaFirst] = marked[i];
    return table;
}

constexpr auto kAsciiTable = MakeAsciiTable();
constexpr auto kKanaTable = MakeKanaTable();
constexpr auto kWidthTable = MakeWidthTable();
constexpr auto kVoicedTable = MakeMarkTable(kPlain, kVoiced);
constexpr auto kHalfVoicedTable = MakeMarkTable(u"ハヒフヘホ", u"パピプペポ");

bool Continues(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<std::uint8_t>(text[at]) & 0xC0) == 0x80;
}

// The character at `at`, and `at` behind it. A byte that starts no whole character counts alone.
Letter Decode(std::string_view text, std::size_t& at) {
    const auto byte = [text](std::size_t index) { return Letter(static_cast<std::uint8_t>(text[index])); };
    const Letter lead = byte(at);
    const auto tail = [&](std::size_t index) { return byte(index) & 0x3F; };
    if (lead < 0x80) return text[at++];
    if (lead >= 0xE0 && lead < 0xF0 && Continues(text, at + 1) && Continues(text, at + 2)) {
        const Letter c = (lead & 0x0F) << 12 | tail(at + 1) << 6 | tail(at + 2);
        if (c >= 0x800) return at += 3, c;
    } else if (lead >= 0xC2 && lead < 0xE0 && Continues(text, at + 1)) {
        const Letter c = (lead & 0x1F) << 6 | tail(at + 1);
        return at += 2, c;
    } else if (lead >= 0xF0 && lead < 0xF5 && Continues(text, at + 1) && Continues(text, at + 2) &&
               Continues(text, at + 3)) {
        const Letter c = (lead & 0x07) << 18 | tail(at + 1) << 12 | tail(at + 2) << 6 | tail(at + 3);
        if (c >= 0x10000 && c < kBrokenByte) return at += 4, c;
    }
    ++at;
    return kBrokenByte + lead;
}

Letter Fold(Letter c) {
    if (c < kAsciiTable.size()) return kAsciiTable[c];
    if (c < kKanaFirst) return Sign(c);
    if (c < kKanaEnd) return kKanaTable[c - kKanaFirst];
    if (c >= kWidthFirst && c < kWidthEnd) return kWidthTable[c - kWidthFirst];
    return c;
}

// The letter that `letter` and the mark behind it make; 0 for none.
Letter Marked(Letter letter, Letter mark) {
    if (letter < kKanaFirst || letter >= kKanaEnd) return 0;
    return (mark == kVoicedMark ? kVoicedTable : kHalfVoicedTable)[letter - kKanaFirst];
}

void Append(Letter letter, std::vector<Letter>& letters) {
    if ((letter == kVoicedMark || letter == kHalfVoicedMark) && !letters.empty()) {
        if (const Letter marked = Marked(letters.back(), letter)) {
            letters.back() = marked;
            return;
        }
    }
    letters.push_back(letter);
}

void Encode(Letter c, std::string& text) {
    const auto tail = [&text](Letter bits) { text += static_cast<char>(0x80 | (bits & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6), tail(c);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12), tail(c >> 6), tail(c);
    } else if (c < kBrokenByte) {
        text += static_cast<char>(0xF0 | c >> 18), tail(c >> 12), tail(c >> 6), tail(c);
    } else {
        text += static_cast<char>(c - kBrokenByte);
    }
}

}  // namespace

void FoldLetters(std::string_view text, std::vector<Letter>& letters) {
    letters.reserve(letters.size() + text.size());
    for (std::size_t at = 0; at < text.size();)
        Append(Fold(Decode(text, at)), letters);
}

LikePattern::LikePattern(std::string_view pattern, std::optional<Letter> escape) {
    for (std::size_t at = 0; at < pattern.size();) {
        Letter c = Decode(pattern, at);
        if (c == escape) {
            dangling_ = at == pattern.size();
            if (!dangling_) Append(Fold(Decode(pattern, at)), pattern_);
        } else if (c == '%') {
            if (pattern_.empty() || pattern_.back() != kAnyLetters) pattern_.push_back(kAnyLetters);
        } else {
            Append(c == '_' ? kOneLetter : Fold(c), pattern_);
        }
    }
}

bool LikePattern::Matches(std::string_view text) {
    text_.clear();
    FoldLetters(text, text_);
    return !dangling_ && MatchesLetters();
}

// Only the last "%" that was passed ever has to give way: what stands before it has matched as early as it can.
bool LikePattern::MatchesLetters() const {
    const std::size_t none = pattern_.size();
    std::size_t p = 0, t = 0, retry = none, retryText = 0;
    while (t < text_.size() || p < pattern_.size()) {
        if (p < pattern_.size() && pattern_[p] == kAnyLetters) {
            retry = ++p;
            if (p == pattern_.size()) return true;
            retryText = t;
        } else if (p < pattern_.size() && t < text_.size() && (pattern_[p] == text_[t] || pattern_[p] == kOneLetter)) {
            ++p, ++t;
            continue;
        } else {
            if (retry == none || t >= text_.size()) return false;
            p = retry;
            ++retryText;
        }
        // From behind the "%" on: to the next place where its first letter stands.
        t = retryText;
        if (pattern_[p] != kOneLetter)
            t = std::size_t(std::find(text_.begin() + std::ptrdiff_t(t), text_.end(), pattern_[p]) - text_.begin());
        if (t >= text_.size()) return false;
        retryText = t;
    }
    return true;
}

std::optional<std::string> LikePattern::Folded() const {
    if (dangling_) return std::nullopt;
    std::string text;
    for (const Letter letter : pattern_) {
        if (letter == '%' || letter == '_' || letter == '\\') text += '\\';
        if (letter == kAnyLetters || letter == kOneLetter)
            text += letter == kAnyLetters ? '%' : '_';
        else
            Encode(letter, text);
    }
    return text;
}

bool LikePattern::IsPlain(std::size_t i) const {
    return i < pattern_.size() && pattern_[i] != kAnyLetters && pattern_[i] != kOneLetter;
}

std::string LikePattern::PieceAt(std::size_t i, std::size_t length) const {
    std::string piece;
    for (std::size_t end = i + length; i < end; ++i)
        Encode(pattern_[i], piece);
    return piece;
}

std::vector<std::string> LikePattern::Pieces() const {
    std::vector<std::string> pieces;
    for (std::size_t i = 0; i < pattern_.size(); ++i) {
        const bool lone = !IsPlain(i + 1) && (i == 0 || !IsPlain(i - 1));
        if (IsPlain(i) && (IsPlain(i + 1) || lone)) pieces.push_back(PieceAt(i, lone ? 1 : 2));
    }
    return pieces;
}

std::vector<std::string> LikePattern::FewestPieces() const {
    std::vector<std::string> pieces;
    for (std::size_t i = 0; i < pattern_.size(); ++i) {
        if (!IsPlain(i)) continue;
        std::size_t end = i;
        while (IsPlain(end))
            ++end;
        if (end - i == 1) pieces.push_back(PieceAt(i, 1));
        for (; end - i > 1; i += end - i == 3 ? 1 : 2)
            pieces.push_back(PieceAt(i, 2));
        i = end;
    }
    return pieces;
}

FoldTexts FoldedBetween(Letter first, Letter end) {
    FoldTexts texts;
    for (Letter c = first; c < end; ++c) {
        if (Fold(c) == c) continue;
        Encode(c, texts.from);
        Encode(Fold(c), texts.to);
    }
    return texts;
}

std::vector<std::pair<std::string, std::string>> VoicedPairs() {
    std::vector<std::pair<std::string, std::string>> pairs;
    for (Letter kana = kKanaFirst; kana < kKanaEnd; ++kana)
        for (const Letter mark : {kVoicedMark, kHalfVoicedMark})
            if (const Letter marked = Marked(kana, mark)) {
                auto& [two, one] = pairs.emplace_back();
                Encode(kana, two), Encode(mark, two), Encode(marked, one);
            }
    return pairs;
}

std::optional<Letter> OnlyCharacter(std::string_view text) {
    if (text.empty()) return std::nullopt;
    std::size_t at = 0;
    const Letter c = Decode(text, at);
    return at == text.size() ? std::optional(c) : std::nullopt;
}

}  // namespace store
