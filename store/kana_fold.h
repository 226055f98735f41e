#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Texts as people search for them: however a name was typed, in half or full width, in hiragana or katakana, in
// capitals or small letters, it is found; so are signs that one key gives now in this form, now in that: the
// apostrophe, the yen that stands where others have a backslash, and every dash. What tells words apart stays: a voiced
// mark (は, ば), a small kana (つ, っ), a long vowel, which is no dash, and everything about kanji.
namespace store {

/// One letter after the fold: a code point, or kBrokenByte plus the byte for what isn't UTF-8.
using Letter = std::uint32_t;
inline constexpr Letter kBrokenByte = 0x110000;

/// Appends the folded letters of a UTF-8 text. A kana and the voiced mark behind it, in whatever width, are one letter.
void FoldLetters(std::string_view text, std::vector<Letter>& letters);

/// The pattern of a LIKE: "%" stands for any letters, "_" for one (a kana with its voiced mark is one); full-width ％
/// and ＿ stand for themselves. The whole text has to match.
class LikePattern {
  public:
    /// Reads the pattern once, for many texts. Behind `escape` (a code point) a character stands for itself; with none
    /// behind it the pattern matches nothing.
    explicit LikePattern(std::string_view pattern, std::optional<Letter> escape = {});

    /// Takes time for the length of the text times that of the pattern at worst. Not for two threads at a time.
    bool Matches(std::string_view text);

    /// The pattern for an engine that compares folded texts by itself, as UTF-8: its wildcards, the folded letters, and
    /// a backslash before each letter that would be a wildcard there. Nothing when it matches nothing.
    std::optional<std::string> Folded() const;

    /// What the folded text must hold for the pattern to match, as UTF-8: each two letters that stand side by side in
    /// it, and each letter alone that has a wildcard on both sides. Empty for wildcards alone.
    std::vector<std::string> Pieces() const;

    /// The fewest of Pieces() that hold each of its letters: what is looked up is less, what is found hardly more.
    std::vector<std::string> FewestPieces() const;

  private:
    bool MatchesLetters() const;
    bool IsPlain(std::size_t i) const;
    std::string PieceAt(std::size_t i, std::size_t length) const;

    bool dangling_ = false;  // ends in the escape character
    std::vector<Letter> pattern_;
    std::vector<Letter> text_;  // kept, so that not every text needs memory of its own
};

/// The code point of a text of exactly one character, such as that behind ESCAPE; nothing for any other text.
std::optional<Letter> OnlyCharacter(std::string_view text);

/// The characters that fold to one other, and what each becomes, for an engine that is told the fold as two texts of
/// the same number of characters. What a voiced mark makes of the kana before it comes on top: see VoicedPairs().
struct FoldTexts {
    std::string from;
    std::string to;
};
/// Those of the code points from `first` up to `end`. Beside the capitals these are U+00A5, U+2010 to U+2015, U+2019,
/// U+2212, and some of U+3000 to U+30FF and of U+FF00 to U+FFEF.
FoldTexts FoldedBetween(Letter first, Letter end);

/// Each folded kana with a mark behind it, and the one letter that both are.
std::vector<std::pair<std::string, std::string>> VoicedPairs();

}  // namespace store
