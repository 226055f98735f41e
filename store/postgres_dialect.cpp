#include "store/postgres_dialect.h"

#include <map>
#include <set>

#include "store/either_list.h"
#include "store/kana_fold.h"
#include "store/select_shape.h"
#include "store/sql_condition.h"
#include "store/sqlite_dialect.h"

namespace store {
namespace {

using Kind = SqlToken::Kind;

// Words that are no names. Whatever else stands without quotes is one, unless a bracket makes it a function.
struct InAnyCase {
    using is_transparent = void;
    bool operator()(QStringView a, QStringView b) const { return a.compare(b, Qt::CaseInsensitive) < 0; }
};

const std::set<QString, InAnyCase>& Keywords() {
    static const QStringList words =
        QStringLiteral(
            "ACCESS ADD ALL ALTER ANALYZE AND AS ASC BEGIN BETWEEN BIGINT BY CASCADE CASE CAST CHECK COLUMN "
            "COMMIT CONSTRAINT CREATE CROSS DATABASE DATE DEFAULT DELETE DESC DISTINCT DROP ELSE END ESCAPE "
            "EXCEPT EXCLUSIVE EXISTS EXPLAIN FALSE FIRST FOR FORCE FROM FULL FUNCTION GRANT GROUP HAVING IF IN "
            "INDEX INNER INSERT INTEGER INTERSECT INTO IS ISNULL JOIN KEY LAST LEFT LIKE LIMIT LOCK MODE NATURAL "
            "NOT NOTNULL NULL NULLS OF OFFSET ON ONLY OR ORDER OUTER OVER PRIMARY RECURSIVE RENAME REPLACE "
            "RETURNING REVOKE RIGHT ROLLBACK SCHEMA SELECT SET SHARE SHOW TABLE TEMPLATE TEXT THEN TO TRANSACTION "
            "TRUE TRUNCATE UNION UNIQUE UPDATE USING VALUES VARCHAR VIEW WHEN WHERE WITH")
            .split(u' ');
    static const std::set<QString, InAnyCase> set(words.begin(), words.end());
    return set;
}

QString Quote(QString text, QChar mark) {
    if (text.contains(mark)) text.replace(mark, QString(2, mark));
    QString quoted;
    quoted.reserve(text.size() + 2);
    return quoted.append(mark).append(text).append(mark);
}

// Of so many, each spares more rows than it costs to look it up; a longer text is rare by half of its pieces.
constexpr std::size_t kPiecesOfShortText = 4;

class Writer {
  public:
    Writer(const TokenizedSql& sql, const LikeForm& form) : sql_(sql), form_(form) {}

    std::optional<QString> Write(Fault& fault) {
        for (std::size_t i = 0; i < sql_.Size() && problem_.isEmpty(); ++i)
            Look(i);
        if (!problem_.isEmpty()) {
            fault = {0, QStringLiteral("SQL 文を変換できません。") + problem_};
            return std::nullopt;
        }
        for (const auto& [select, shape] : selects_) {
            if (!sql_.IsAnyWord(select + 1, {"DISTINCT"}) && FindsByPieces(shape.where)) SortWhatIsFound(shape.tail);
            NoteAlternatives(shape.where);
        }
        return sql_.Size() == 0 ? sql_.Text() : Written(sql_.All());
    }

  private:
    // Of a LIKE: the look into the index, the comparison, or what says it all.
    enum class Part { All, Found, Compared };

    struct Like {
        TokenRange left, right;
        bool negated = false;
        std::optional<std::size_t> escape;
        // Of a pattern that is a literal.
        std::optional<LikePattern> pattern;
        std::optional<std::string> folded;
        std::vector<std::string> pieces;
        bool onePiece = false;  // it may stand anywhere, and says it all
    };

    // Notes what has to change about the clause that begins here.
    void Look(std::size_t i) {
        if (sql_.IsSymbol(i, QLatin1String(";")) && i + 1 < sql_.Size())
            problem_ = QStringLiteral("一度に実行できるのは一文だけです。");
        else if (sql_.IsWord(i, QLatin1String("LIKE")))
            NoteLike(i);
        else if (sql_.IsWord(i, QLatin1String("ORDER")) && sql_.IsWord(i + 1, QLatin1String("BY")))
            NoteOrder(i + 2);
        else if (sql_.IsWord(i, QLatin1String("SELECT")))
            NoteCommas(selects_.emplace(i, ShapeOf(sql_, i)).first->second.from);
    }

    bool FindsByPieces(TokenRange where) const {
        return std::any_of(likes_.begin(), likes_.end(), [&](const auto& like) {
            return like.first >= where.begin && like.first < where.end && IsFound(like.second.first);
        });
    }

    bool IsFound(const Like& like) const {
        if (form_.pieces == Pieces::Throughout) return LooksUp(like) && !like.pieces.empty();
        return form_.pieces == Pieces::Asked && like.onePiece;
    }

    // Nearly all rows are unlike a text, so no index helps to find them.
    bool LooksUp(const Like& like) const {
        return form_.pieces != Pieces::Nowhere && !like.negated && IsLiteral(like.right);
    }

    // Where one of several texts shall be there, the engine would look into the pieces of each row that it has found
    // anew, to know by which of them. So the rows are found by one condition and compared by another. Whoever fits one
    // that has no NOT fits one with less asked.
    void NoteAlternatives(TokenRange where) {
        const auto conjuncts = where.Empty() ? std::nullopt : SplitConjuncts(sql_, where);
        for (const TokenRange& conjunct : conjuncts.value_or(std::vector<TokenRange>())) {
            int alternatives = 0;
            bool simple = conjunct.end < sql_.Size(), compared = false;
            for (std::size_t i = conjunct.begin; i < conjunct.end; ++i) {
                simple = simple && !sql_.IsAnyWord(i, {"NOT", "SELECT", "CASE"});
                const auto like = likes_.find(i);
                if (like == likes_.end()) continue;
                simple = simple && LooksUp(like->second.first) && !like->second.first.pieces.empty();
                compared = compared || !like->second.first.onePiece;
                ++alternatives;
            }
            const int least = form_.pieces == Pieces::Throughout ? 1 : 2;
            if (simple && compared && alternatives >= least) twice_[conjunct.begin] = conjunct.end;
        }
    }

    // The engine would rather walk along an index of the order until it has met as many rows as are asked for, and cut
    // every text it meets into pieces. This order is the same, and no index's.
    void SortWhatIsFound(TokenRange tail) {
        for (const TokenRange& item : orders_) {
            if (item.begin < tail.begin || item.begin >= tail.end) continue;
            std::size_t end = item.begin + 1;
            while (sql_.IsSymbol(end, QLatin1String(".")) && sql_.IsName(end + 1))
                end += 2;
            const bool plain = sql_.IsName(item.begin) && (end == item.end || sql_.IsAnyWord(end, {"ASC", "DESC"}));
            if (!plain) continue;
            before_[item.begin] = QStringLiteral("GREATEST(");
            behind_[end - 1].prepend(u')');
        }
    }

    // A comma binds looser than a JOIN here, so the tables before it would be out of the condition's sight.
    void NoteCommas(TokenRange from) {
        bool joins = false;
        std::vector<std::size_t> commas;
        for (std::size_t i = from.begin; i < from.end; ++i) {
            joins = joins || sql_.IsWord(i, QLatin1String("JOIN"));
            if (sql_.IsSymbol(i, QLatin1String(","))) commas.push_back(i);
            if (sql_.IsSymbol(i, QLatin1String("("))) i = sql_.Closing(i);
        }
        for (const std::size_t comma : commas)
            if (joins) instead_[comma] = QStringLiteral(" CROSS JOIN ");
    }

    void NoteOrder(std::size_t i) {
        std::size_t begin = i;
        for (; i < sql_.Size(); ++i) {
            if (sql_.IsSymbol(i, QLatin1String("("))) i = sql_.Closing(i);
            const std::size_t next = i + 1;
            const bool end =
                next >= sql_.Size() || sql_.IsSymbol(next, QLatin1String(")")) ||
                sql_.IsSymbol(next, QLatin1String(";")) ||
                sql_.IsAnyWord(next, {"LIMIT", "OFFSET", "UNION", "EXCEPT", "INTERSECT", "FOR", "ROWS", "RANGE"});
            if (end || sql_.IsSymbol(next, QLatin1String(","))) {
                orders_.push_back({begin, next});
                begin = next + 1;
                behind_[i] = sql_.IsAnyWord(i, {"DESC"})            ? QStringLiteral(" NULLS LAST")
                             : sql_.IsAnyWord(i, {"FIRST", "LAST"}) ? QString()
                                                                    : QStringLiteral(" NULLS FIRST");
            }
            if (end) return;
        }
    }

    void NoteLike(std::size_t at) {
        Like like;
        like.negated = at > 0 && sql_.IsWord(at - 1, QLatin1String("NOT"));
        like.left = {0, like.negated ? at - 1 : at};
        like.left.begin = OperandBefore(like.left.end);
        like.right = {at + 1, OperandBehind(at + 1)};
        if (like.left.Empty() || like.right.Empty()) return;  // a fault of syntax
        std::size_t end = like.right.end;
        if (sql_.IsWord(end, QLatin1String("ESCAPE")) && end + 1 < sql_.Size()) {
            like.escape = end + 1;
            end += 2;
        }
        if (like.escape && (sql_.At(*like.escape).kind != Kind::Text || !IsLiteral(like.right)))
            problem_ = QStringLiteral("ESCAPE は文字列だけで使えます。");
        else if (IsLiteral(like.right))
            ReadPattern(like);
        const std::size_t begin = like.left.begin;
        likes_[begin] = {std::move(like), end};
    }

    void ReadPattern(Like& like) const {
        const auto escape = like.escape ? OnlyCharacter(Content(*like.escape)) : std::nullopt;
        like.pattern.emplace(Content(like.right.begin), escape);
        like.folded = like.pattern->Folded();
        like.pieces = like.pattern->Pieces();
        like.onePiece = !like.negated && like.pieces.size() == 1 && like.folded == Anywhere(like.pieces.front());
    }

    bool IsLiteral(TokenRange range) const { return range.Size() == 1 && sql_.At(range.begin).kind == Kind::Text; }

    // Where the operand that ends before `end` begins: pieces joined by "||", each a literal, a name or in brackets.
    std::size_t OperandBefore(std::size_t end) const {
        std::size_t at = end;
        while (at > 0) {
            std::size_t piece = at - 1;
            if (sql_.IsSymbol(piece, QLatin1String(")"))) {
                piece = sql_.Closing(piece);
                if (piece > 0 && sql_.IsName(piece - 1) && !IsKeyword(piece - 1)) --piece;
            } else if (!IsValue(piece)) {
                return end;
            }
            while (piece >= 2 && sql_.IsSymbol(piece - 1, QLatin1String(".")) && sql_.IsName(piece - 2))
                piece -= 2;
            at = piece;
            if (at == 0 || !sql_.IsSymbol(at - 1, QLatin1String("||"))) return at;
            --at;
        }
        return end;
    }

    std::size_t OperandBehind(std::size_t begin) const {
        std::size_t at = begin;
        while (at < sql_.Size()) {
            if (sql_.IsSymbol(at, QLatin1String("("))) {
                at = sql_.Closing(at) + 1;
            } else if (!IsValue(at)) {
                return begin;
            } else {
                while (sql_.IsSymbol(at + 1, QLatin1String(".")) && sql_.IsName(at + 2))
                    at += 2;
                at = sql_.IsSymbol(at + 1, QLatin1String("(")) ? sql_.Closing(at + 1) + 1 : at + 1;
            }
            if (!sql_.IsSymbol(at, QLatin1String("||"))) return at;
            ++at;
        }
        return begin;
    }

    bool IsValue(std::size_t i) const {
        if (i >= sql_.Size() || sql_.At(i).kind == Kind::Symbol) return false;
        return !IsKeyword(i) || sql_.IsWord(i, QLatin1String("NULL"));
    }

    bool IsKeyword(std::size_t i) const {
        const SqlToken& token = sql_.At(i);
        // Nearly all names begin with a letter that no keyword has.
        if (token.kind != Kind::Word || sql_.Text()[token.start].unicode() >= 0x80) return false;
        const bool column = i > 0 && sql_.IsSymbol(i - 1, QLatin1String("."));
        return !column && Keywords().contains(Token(i));
    }

    QStringView Token(std::size_t i) const { return QStringView(sql_.Text()).mid(sql_.At(i).start, sql_.At(i).length); }

    QString WrittenLike(const Like& like, Part part) const {
        const QString text = QStringLiteral("(%1)::text").arg(Written(like.left));
        const auto stored = StoredText(like.left);
        const QString folded = stored.value_or(QStringLiteral("katsudo_fold(%1)").arg(text));
        const QString negation = like.negated ? QStringLiteral("NOT ") : QString();
        if (!like.pattern)
            return QStringLiteral("(%1%2 LIKE katsudo_pattern((%3)::text))").arg(negation, folded, Written(like.right));
        if (!like.folded) return QStringLiteral("(%1%2 <> %2)").arg(negation, folded);
        const QString plain = QStringLiteral("%1 LIKE %2").arg(folded, LiteralForPostgres(*like.folded));
        const bool fewer = stored && like.pieces.size() > kPiecesOfShortText;
        const std::vector<std::string> pieces = fewer ? like.pattern->FewestPieces() : like.pieces;
        if (!LooksUp(like) || pieces.empty()) return u'(' + negation + plain + u')';
        QStringList literals;
        for (const std::string& piece : pieces)
            literals << LiteralForPostgres(piece);
        const QString found = QStringLiteral("katsudo_pieces(%1) @> ARRAY[%2]").arg(text, literals.join(u','));
        if (part == Part::Found || (part == Part::All && like.onePiece)) return u'(' + found + u')';
        const QString matches = QStringLiteral("katsudo_matches(%1, %2)").arg(text, LiteralForPostgres(*like.folded));
        const QString compared = stored ? plain : matches;
        if (part == Part::Compared && stored && form_.pieces == Pieces::Throughout) return Uncounted(compared);
        return part == Part::Compared ? compared : QStringLiteral("(%1 AND %2)").arg(compared, found);
    }

    // The innermost SELECT around a token.
    std::map<std::size_t, SelectShape>::const_iterator SelectAround(std::size_t at) const {
        auto around = selects_.end();
        for (auto select = selects_.begin(); select != selects_.end(); ++select)
            if (select->second.all.begin <= at && at < select->second.all.end) around = select;
        return around;
    }

    // The column beside a "column" or "table.column" that holds its texts folded.
    std::optional<QString> StoredText(TokenRange range) const {
        if (form_.folded.empty() || (range.Size() != 1 && range.Size() != 3) || !sql_.IsName(range.end - 1)) return {};
        const auto select = SelectAround(range.begin);
        const bool named = range.Size() == 3;
        if (select == selects_.end() || (named && !sql_.IsSymbol(range.begin + 1, QLatin1String(".")))) return {};
        const QString table =
            named ? TableCalled(select->second.from, sql_.Name(range.begin)) : OnlyTable(select->second.from);
        const auto known = form_.folded.find(table);
        if (known == form_.folded.end() || !known->second.contains(sql_.Name(range.end - 1))) return {};
        const QString column = QuotedForPostgres(FoldedColumn(sql_.SpelledName(range.end - 1)));
        return named ? Written({range.begin, range.begin + 1}) + u'.' + column : column;
    }

    // The table that has this name in the FROM, or this alias; names as they are compared.
    QString TableCalled(TokenRange from, const QString& name) const {
        for (std::size_t i = from.begin; i < from.end; ++i) {
            const bool column =
                sql_.IsSymbol(i + 1, QLatin1String(".")) || (i > 0 && sql_.IsSymbol(i - 1, QLatin1String(".")));
            if (column || !sql_.IsName(i) || IsKeyword(i) || sql_.Name(i) != name) continue;
            const std::size_t before = i > from.begin && sql_.IsAnyWord(i - 1, {"AS"}) ? i - 1 : i;
            return before > from.begin && sql_.IsName(before - 1) && !IsKeyword(before - 1) ? sql_.Name(before - 1)
                                                                                            : name;
        }
        return {};
    }

    QString OnlyTable(TokenRange from) const { return from.Size() == 1 ? sql_.Name(from.begin) : QString(); }

    // The pattern of the texts that hold a piece.
    static std::string Anywhere(const std::string& piece) {
        std::string pattern(1, '%');
        for (const char c : piece) {
            if (c == '%' || c == '_' || c == '\\') pattern += '\\';
            pattern += c;
        }
        return pattern += '%';
    }

    // A literal without its quotes.
    std::string Content(std::size_t i) const {
        return Token(i).mid(1).chopped(1).toString().replace(QLatin1String("''"), QLatin1String("'")).toStdString();
    }

    QString Written(TokenRange range, Part part = Part::All) const {
        QString written;
        written.reserve(4 * qsizetype(range.Size()));
        for (std::size_t i = range.begin; i < range.end;) {
            if (i > range.begin) {
                const auto before = sql_.At(i - 1).End();
                written += QStringView(sql_.Text()).mid(before, sql_.At(i).start - before);
            }
            if (before_.contains(i)) written += before_.value(i);
            const auto like = likes_.find(i);
            const auto twice = part == Part::All ? twice_.find(i) : twice_.end();
            if (twice != twice_.end() && twice->second <= range.end) {
                const TokenRange all{i, twice->second};
                written += Written(all, Part::Found) + QStringLiteral(" AND ") + Written(all, Part::Compared);
                i = twice->second;
            } else if (like != likes_.end() && like->second.second <= range.end) {
                written += WrittenLike(like->second.first, part);
                i = like->second.second;
            } else {
                WriteToken(i++, written);
            }
            if (behind_.contains(i - 1)) written += behind_.value(i - 1);
        }
        // What stands behind the last token: a comment.
        return range.end == sql_.Size() ? written + sql_.Text().mid(sql_.At(range.end - 1).End()) : written;
    }

    void WriteToken(std::size_t i, QString& written) const {
        if (instead_.contains(i)) {
            written += instead_.value(i);
            return;
        }
        const Kind kind = sql_.At(i).kind;
        if (kind == Kind::Quoted)
            written += Quote(sql_.SpelledName(i), u'"');
        else if (kind == Kind::Word && IsBareName(i))
            written.append(u'"').append(Token(i)).append(u'"');
        else if (kind == Kind::Number && IsCompared(i))
            written.append(u'\'').append(Token(i)).append(u'\'');
        else if (sql_.IsSymbol(i, QLatin1String("==")))
            written += u'=';
        else
            written += Token(i);
    }

    bool IsBareName(std::size_t i) const {
        if (IsKeyword(i)) return false;
        // A name with a bracket behind it is a function, or a table with its columns.
        if (!sql_.IsSymbol(i + 1, QLatin1String("("))) return true;
        return (i > 0 && sql_.IsAnyWord(i - 1, {"INTO", "TABLE", "ON", "EXISTS", "WITH"})) ||
               Token(i)[0].unicode() >= 0x80;
    }

    // A number that is the whole side of a comparison.
    bool IsCompared(std::size_t i) const {
        const auto comparison = [this](std::size_t at) {
            for (const std::string_view symbol : {"=", "==", "<>", "!=", "<", ">", "<=", ">="})
                if (sql_.IsSymbol(at, QLatin1String(symbol.data(), qsizetype(symbol.size())))) return true;
            return false;
        };
        const auto arithmetic = [this](std::size_t at) {
            for (const std::string_view symbol : {"+", "-", "*", "/", "%", "||"})
                if (sql_.IsSymbol(at, QLatin1String(symbol.data(), qsizetype(symbol.size())))) return true;
            return false;
        };
        if (i > 0 && comparison(i - 1)) return !arithmetic(i + 1);
        return comparison(i + 1) && (i == 0 || !arithmetic(i - 1));
    }

    const TokenizedSql& sql_;
    const LikeForm& form_;
    QString problem_;
    std::map<std::size_t, SelectShape> selects_;                 // by their first token
    std::vector<TokenRange> orders_;                             // the items of every ORDER BY
    QHash<std::size_t, QString> before_;                         // text to add before a token
    QHash<std::size_t, QString> behind_;                         // text to add behind a token
    QHash<std::size_t, QString> instead_;                        // text in place of one
    std::map<std::size_t, std::pair<Like, std::size_t>> likes_;  // by their first token, with their end
    std::map<std::size_t, std::size_t> twice_;                   // conditions to be written twice, likewise
};

}  // namespace

std::optional<QString> ToPostgres(const QString& sql, Fault& fault) {
    const auto shared = ToSqlite(sql, fault);
    if (!shared) return std::nullopt;
    auto tokens = ReadStatement(*shared, fault);
    if (tokens && shared->contains(QLatin1String(" IN (SELECT ")))
        tokens = ReadStatement(ListEitherFirst(*tokens), fault);
    return tokens ? WriteForPostgres(*tokens, {}, fault) : std::nullopt;
}

std::optional<QString> WriteForPostgres(const TokenizedSql& sql, const LikeForm& form, Fault& fault) {
    return Writer(sql, form).Write(fault);
}

bool IsKeywordOfPostgres(const QString& word) {
    return Keywords().contains(word);
}

QString LimitedTo(const QString& postgresSql, int mostRows) {
    if (mostRows == kAllRows) return postgresSql;
    const auto tokens = TokenizedSql::Read(postgresSql);
    if (!tokens || !tokens->IsWord(0, QLatin1String("SELECT"))) return postgresSql;
    const SelectShape shape = ShapeOf(*tokens, 0);
    bool limited = shape.compound || shape.all.end != tokens->Size();
    for (std::size_t i = shape.tail.begin; i < shape.tail.end; ++i)
        limited = limited || tokens->IsWord(i, QLatin1String("LIMIT"));
    return limited ? postgresSql : tokens->Slice(shape.all) + QStringLiteral(" LIMIT %1").arg(mostRows);
}

QString Uncounted(const QString& condition) {
    return QStringLiteral("CASE WHEN %1 THEN true END").arg(condition);
}

QString QuotedForPostgres(const QString& name) {
    return Quote(name, u'"');
}

QString LiteralForPostgres(const std::string& text) {
    return Quote(QString::fromUtf8(text.data(), qsizetype(text.size())), u'\'');
}

QString FoldedColumn(const QString& column) {
    return QStringLiteral("katsudo_") + column;
}

}  // namespace store
