#include "store/either_list.h"

#include <map>
#include <vector>

#include "store/select_shape.h"
#include "store/sql_condition.h"

namespace store {

using Kind = SqlToken::Kind;

std::optional<EitherOf> ReadEither(const TokenizedSql& sql, TokenRange range) {
    const std::size_t i = range.begin;
    // The words and signs between the names; the names are T, c, T, k, T, k.
    static constexpr const char* kForm[] = {"(", "",   ".",   "",     "LIKE", "", "OR", "(", "",   ".",
                                            "",  "IS", "NOT", "NULL", "AND",  "", ".",  "",  "IN", "("};
    constexpr std::size_t kLength = std::size(kForm);
    if (range.Size() < kLength) return std::nullopt;
    for (std::size_t at = 0; at < kLength; ++at) {
        const QLatin1String part(kForm[at]);
        if (!part.isEmpty() && !sql.IsWord(i + at, part) && !sql.IsSymbol(i + at, part)) return std::nullopt;
        if (part.isEmpty() && at != 5 && !sql.IsName(i + at)) return std::nullopt;
    }
    const std::size_t close = sql.Closing(i + kLength - 1);
    const bool same = sql.Name(i + 1) == sql.Name(i + 8) && sql.Name(i + 8) == sql.Name(i + 15) &&
                      sql.Name(i + 10) == sql.Name(i + 17) && sql.At(i + 5).kind == Kind::Text;
    if (!same || close + 3 != range.end || sql.Closing(i) != close + 2) return std::nullopt;
    return EitherOf{range, {i + 1, i + 2}, {i + 3, i + 6}, {i + 17, close + 1}};
}

bool HasTable(const TokenizedSql& sql, TokenRange from, const QString& name) {
    for (std::size_t i = from.begin; i < from.end; ++i) {
        if (!sql.IsName(i) || sql.Name(i) != name || (i > from.begin && sql.IsSymbol(i - 1, QLatin1String("."))))
            continue;
        bool clause = i + 1 == from.end || !sql.IsName(i + 1);
        for (const char* word : {"ON", "INNER", "LEFT", "RIGHT", "CROSS", "JOIN"})
            clause = clause || sql.IsWord(i + 1, QLatin1String(word));
        if (clause && !sql.IsSymbol(i + 1, QLatin1String("."))) return true;
    }
    return false;
}

QString ReplaceEithers(const TokenizedSql& sql, const std::function<QString(const EitherOf&)>& written) {
    std::map<std::size_t, EitherOf> found;
    for (std::size_t i = 0; i < sql.Size(); ++i) {
        if (!sql.IsWord(i, QLatin1String("SELECT"))) continue;
        const SelectShape shape = ShapeOf(sql, i);
        const auto conjuncts = shape.where.Empty() ? std::nullopt : SplitConjuncts(sql, shape.where);
        for (const TokenRange& conjunct : conjuncts.value_or(std::vector<TokenRange>()))
            if (const auto either = ReadEither(sql, conjunct))
                if (HasTable(sql, shape.from, sql.Name(either->table.begin))) found.emplace(conjunct.begin, *either);
    }
    QString text;
    qsizetype at = 0;
    for (const auto& [begin, either] : found) {
        const QString other = written(either);
        if (other.isEmpty()) continue;
        text += sql.Text().mid(at, sql.At(begin).start - at) + other;
        at = sql.At(either.all.end - 1).End();
    }
    return text + sql.Text().mid(at);
}

// An index serves either side of such an OR, but not both beside a list: without this the engine would look at every
// row. So the rows of both sides are listed first. It is false here where it was Null.
QString ListEitherFirst(const TokenizedSql& sql) {
    return ReplaceEithers(sql, [&sql](const EitherOf& either) {
        return QStringLiteral(
                   "%1.ctid = ANY (ARRAY (SELECT s.ctid FROM %1 s WHERE s.%2 UNION ALL SELECT s.ctid FROM "
                   "%1 s WHERE s.%3))")
            .arg(sql.Slice(either.table), sql.Slice(either.like), sql.Slice(either.list));
    });
}

}  // namespace store
