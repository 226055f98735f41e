#include "store/exists_list.h"

#include "store/select_shape.h"
#include "store/sql_condition.h"

namespace store {
namespace {

// The parts of one EXISTS that can be written as a list.
struct KeyedExists {
    TokenRange all;     // from EXISTS to its closing bracket
    TokenRange table;   // inside
    TokenRange key;     // column of that table
    TokenRange column;  // "outer.column"
    TokenRange rest;    // the further conditions
};

bool HasWord(const TokenizedSql& sql, TokenRange range, QLatin1String word) {
    for (std::size_t i = range.begin; i < range.end; ++i)
        if (sql.IsWord(i, word)) return true;
    return false;
}

// Offsets from EXISTS: ( SELECT * FROM table WHERE key = outer . column AND rest )
std::optional<KeyedExists> ReadExists(const TokenizedSql& sql, std::size_t at) {
    if (!sql.IsWord(at, QLatin1String("EXISTS")) || !sql.IsSymbol(at + 1, QLatin1String("(")) ||
        !sql.IsWord(at + 2, QLatin1String("SELECT")))
        return std::nullopt;
    const std::size_t end = sql.Closing(at + 1);
    const SelectShape shape = ShapeOf(sql, at + 2);
    const bool plain = sql.IsSymbol(at + 3, QLatin1String("*")) && sql.IsWord(at + 4, QLatin1String("FROM")) &&
                       sql.IsName(at + 5) && sql.IsWord(at + 6, QLatin1String("WHERE")) && shape.tail.Empty() &&
                       !shape.compound && shape.where.begin == at + 7 && shape.where.end == end;
    const bool keyed = plain && sql.IsName(at + 7) && sql.IsSymbol(at + 8, QLatin1String("=")) && sql.IsName(at + 9) &&
                       sql.IsSymbol(at + 10, QLatin1String(".")) && sql.IsName(at + 11) &&
                       sql.IsWord(at + 12, QLatin1String("AND")) && sql.Name(at + 9) != sql.Name(at + 5);
    // A top-level OR would hold without the key.
    if (!keyed || !SplitConjuncts(sql, shape.where)) return std::nullopt;
    const KeyedExists parts{{at, end + 1}, {at + 5, at + 6}, {at + 7, at + 8}, {at + 9, at + 12}, {at + 13, end}};
    return HasWord(sql, parts.rest, QLatin1String("LIKE")) ? std::optional(parts) : std::nullopt;
}

QString Listed(const TokenizedSql& sql, const KeyedExists& parts) {
    return QStringLiteral("(%1 IS NOT NULL AND %1 IN (SELECT %2 FROM %3 WHERE %2 IS NOT NULL AND ")
               .arg(sql.Slice(parts.column), sql.Slice(parts.key), sql.Slice(parts.table)) +
           sql.Slice(parts.rest) + QStringLiteral("))");
}

}  // namespace

QString ListKeysOnce(const TokenizedSql& sql) {
    QString written;
    qsizetype at = 0;
    for (std::size_t i = 0; i < sql.Size(); ++i) {
        const auto parts = ReadExists(sql, i);
        if (!parts) continue;
        written += sql.Text().mid(at, sql.At(i).start - at) + Listed(sql, *parts);
        at = sql.At(parts->all.end - 1).End();
        i = parts->all.end - 1;
    }
    return written + sql.Text().mid(at);
}

}  // namespace store
