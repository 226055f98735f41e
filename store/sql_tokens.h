#pragma once

#include <QString>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

namespace store {

/// One token of a statement: where it stands in the text. Blanks and comments are no tokens.
struct SqlToken {
    enum class Kind {
        Word,    ///< a name or keyword without quotes
        Quoted,  ///< a name in [brackets], "double quotes" or `backquotes`
        Text,    ///< a 'literal'
        Number,
        Symbol,  ///< one operator or punctuation mark, such as "(" or "<="
    };
    Kind kind;
    qsizetype start;
    qsizetype length;

    qsizetype End() const { return start + length; }
};

/// Tokens [begin, end) of a statement.
struct TokenRange {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool Empty() const { return begin >= end; }
    std::size_t Size() const { return Empty() ? 0 : end - begin; }
};

/// A statement cut into tokens, with the questions that a rewriter asks of them. A position past the last token is
/// allowed everywhere and matches nothing.
class TokenizedSql {
  public:
    /// Cuts the text. Nothing when a literal, a quoted name or a comment isn't closed, or the round brackets don't
    /// pair.
    static std::optional<TokenizedSql> Read(const QString& sql);

    const QString& Text() const { return text_; }
    std::size_t Size() const { return tokens_.size(); }
    const SqlToken& At(std::size_t index) const { return tokens_[index]; }
    TokenRange All() const { return {0, tokens_.size()}; }

    /// The statement's text from the first to the last token of the range, with what stands between them.
    QString Slice(TokenRange range) const;

    /// True for a word without quotes that is this one in any case and not the column of a "table.column".
    bool IsWord(std::size_t index, QLatin1String word) const;
    /// The same for any of these.
    bool IsAnyWord(std::size_t index, std::initializer_list<std::string_view> words) const;
    bool IsSymbol(std::size_t index, QLatin1String symbol) const;

    /// True for a word or a quoted name.
    bool IsName(std::size_t index) const;

    /// A name without its quotes, as it is spelled.
    QString SpelledName(std::size_t index) const;

    /// A name as names are compared: without its quotes, ASCII letters folded.
    QString Name(std::size_t index) const;

    /// The ")" that belongs to the "(" at `open`.
    std::size_t Closing(std::size_t open) const { return partner_[open]; }

    /// True when "(", "+", ")" stand at `index`: the mark of an optional table.
    bool IsOuterMark(std::size_t index) const;

  private:
    bool PairBrackets();

    QString text_;
    std::vector<SqlToken> tokens_;
    std::vector<std::size_t> partner_;
};

}  // namespace store
