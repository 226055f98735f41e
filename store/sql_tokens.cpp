#include "store/sql_tokens.h"

#include <array>

namespace store {
namespace {

bool IsWordCharacter(QChar c) {
    return c.unicode() >= 0x80 || c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'@' || c == u'#';
}

bool IsAsciiDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool IsBlank(QChar c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// Reads tokens one after the other; an unclosed quote or comment ends the reading for good.
class Scanner {
  public:
    explicit Scanner(const QString& text) : text_(text) {}

    std::optional<SqlToken> Next() {
        if (!SkipBlanks() || at_ >= text_.size()) {
            return std::nullopt;
        }
        SqlToken token{SqlToken::Kind::Symbol, at_, 0};
        token.kind = TakeOne();
        token.length = at_ - token.start;
        return broken_ ? std::nullopt : std::optional(token);
    }

    bool Broken() const { return broken_; }

  private:
    bool SkipBlanks() {
        while (at_ < text_.size()) {
            if (IsBlank(text_[at_])) {
                ++at_;
            } else if (Here(QLatin1String("--"))) {
                const auto end = text_.indexOf(u'\n', at_);
                at_ = end < 0 ? text_.size() : end + 1;
            } else if (Here(QLatin1String("/*"))) {
                const auto end = text_.indexOf(QLatin1String("*/"), at_ + 2);
                broken_ = end < 0;
                at_ = broken_ ? text_.size() : end + 2;
            } else {
                return true;
            }
        }
        return !broken_;
    }

    SqlToken::Kind TakeOne() {
        const QChar c = text_[at_];
        if (c == u'\'') {
            TakeQuoted(c);
            return SqlToken::Kind::Text;
        }
        if (c == u'"' || c == u'`') {
            TakeQuoted(c);
            return SqlToken::Kind::Quoted;
        }
        if (c == u'[') {
            const auto end = text_.indexOf(u']', at_);
            broken_ = end < 0;
            at_ = broken_ ? text_.size() : end + 1;
            return SqlToken::Kind::Quoted;
        }
        if (IsWordCharacter(c)) {
            const bool number = IsAsciiDigit(c);
            while (at_ < text_.size() && (IsWordCharacter(text_[at_]) || (number && text_[at_] == u'.'))) {
                ++at_;
            }
            return number ? SqlToken::Kind::Number : SqlToken::Kind::Word;
        }
        TakeSymbol();
        return SqlToken::Kind::Symbol;
    }

    // A doubled quote stands for itself, in literals as in names.
    void TakeQuoted(QChar quote) {
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] != quote) {
                continue;
            }
            ++at_;
            if (at_ >= text_.size() || text_[at_] != quote) {
                return;
            }
        }
        broken_ = true;
    }

    void TakeSymbol() {
        static constexpr std::array kLong = {QLatin1String("<="), QLatin1String(">="), QLatin1String("<>"),
                                             QLatin1String("!="), QLatin1String("=="), QLatin1String("||")};
        for (const auto& symbol : kLong) {
            if (Here(symbol)) {
                at_ += symbol.size();
                return;
            }
        }
        ++at_;
    }

    // Two signs that stand here.
    bool Here(QLatin1String symbol) const {
        return text_[at_] == symbol[0] && at_ + 1 < text_.size() && text_[at_ + 1] == symbol[1];
    }

    const QString& text_;
    qsizetype at_ = 0;
    bool broken_ = false;
};

}  // namespace

std::optional<TokenizedSql> TokenizedSql::Read(const QString& sql) {
    TokenizedSql result;
    result.text_ = sql;
    Scanner scanner(result.text_);
    while (const auto token = scanner.Next()) {
        result.tokens_.push_back(*token);
    }
    return scanner.Broken() || !result.PairBrackets() ? std::nullopt : std::optional(std::move(result));
}

bool TokenizedSql::PairBrackets() {
    partner_.assign(tokens_.size(), 0);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < tokens_.size(); ++i) {
        if (IsSymbol(i, QLatin1String("("))) {
            open.push_back(i);
        } else if (IsSymbol(i, QLatin1String(")"))) {
            if (open.empty()) {
                return false;
            }
            partner_[open.back()] = i;
            partner_[i] = open.back();
            open.pop_back();
        }
    }
    return open.empty();
}

QString TokenizedSql::Slice(TokenRange range) const {
    if (range.Empty()) {
        return {};
    }
    const auto start = tokens_[range.begin].start;
    return text_.mid(start, tokens_[range.end - 1].End() - start);
}

bool TokenizedSql::IsWord(std::size_t index, QLatin1String word) const {
    return IsAnyWord(index, {std::string_view(word.data(), std::size_t(word.size()))});
}

bool TokenizedSql::IsAnyWord(std::size_t index, std::initializer_list<std::string_view> words) const {
    if (index >= tokens_.size() || tokens_[index].kind != SqlToken::Kind::Word) {
        return false;
    }
    const QStringView text = QStringView(text_).mid(tokens_[index].start, tokens_[index].length);
    constexpr char16_t kSmall = 0x20;
    for (const std::string_view word : words) {
        // Nearly every question is answered by the length and the first letter.
        const QLatin1String latin(word.data(), qsizetype(word.size()));
        if (text.size() == latin.size() && (text[0].unicode() | kSmall) == (latin[0].unicode() | kSmall) &&
            text.compare(latin, Qt::CaseInsensitive) == 0) {
            return index == 0 || !IsSymbol(index - 1, QLatin1String("."));
        }
    }
    return false;
}

bool TokenizedSql::IsSymbol(std::size_t index, QLatin1String symbol) const {
    if (index >= tokens_.size() || tokens_[index].length != symbol.size() ||
        tokens_[index].kind != SqlToken::Kind::Symbol) {
        return false;
    }
    const auto start = tokens_[index].start;
    return text_[start] == symbol[0] && (symbol.size() == 1 || text_[start + 1] == symbol[1]);
}

bool TokenizedSql::IsName(std::size_t index) const {
    return index < tokens_.size() &&
           (tokens_[index].kind == SqlToken::Kind::Word || tokens_[index].kind == SqlToken::Kind::Quoted);
}

QString TokenizedSql::SpelledName(std::size_t index) const {
    const auto& token = tokens_[index];
    QString name = text_.mid(token.start, token.length);
    if (token.kind == SqlToken::Kind::Quoted) {
        const QChar quote = name[0];
        name = name.mid(1, name.size() - 2);
        if (quote != u'[') {
            name.replace(QString(2, quote), QString(quote));
        }
    }
    return name;
}

QString TokenizedSql::Name(std::size_t index) const {
    QString name = SpelledName(index);
    // Only ASCII letters are equal in both cases to the engine.
    for (QChar& c : name) {
        if (c >= u'A' && c <= u'Z') {
            c = QChar(c.unicode() + 0x20);
        }
    }
    return name;
}

bool TokenizedSql::IsOuterMark(std::size_t index) const {
    return IsSymbol(index, QLatin1String("(")) && IsSymbol(index + 1, QLatin1String("+")) &&
           IsSymbol(index + 2, QLatin1String(")"));
}

}  // namespace store
