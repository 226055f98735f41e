#include "store/sql_condition.h"

#include <algorithm>
#include <array>

namespace store {
namespace {

using Kind = SqlToken::Kind;

// Words of a condition that name no column.
bool IsConditionWord(const TokenizedSql& sql, std::size_t index) {
    return sql.IsAnyWord(index, {"AND", "OR", "NOT", "IS", "NULL", "LIKE", "IN", "BETWEEN", "ESCAPE"});
}

std::optional<ComparisonSide> ReadSide(const TokenizedSql& sql, std::size_t& at, std::size_t end) {
    ComparisonSide side;
    side.text.begin = at;
    if (at < end && (sql.At(at).kind == Kind::Text || sql.At(at).kind == Kind::Number)) {
        side.text.end = ++at;
        return side;
    }
    // The table is the name before the last one: "table.column" or "schema.table.column".
    std::size_t names = 0;
    while (at < end && sql.IsName(at)) {
        ++names;
        ++at;
        if (at >= end || !sql.IsSymbol(at, QLatin1String("."))) {
            break;
        }
        ++at;
    }
    if (names < 2 || !sql.IsName(at - 1)) {
        return std::nullopt;
    }
    side.table = sql.Name(at - 3);
    side.text.end = at;
    if (at + 2 < end && sql.IsOuterMark(at)) {
        side.marked = true;
        at += 3;
    }
    return side;
}

bool IsStrictOperator(const TokenizedSql& sql, std::size_t index) {
    static constexpr std::array kSymbols = {QLatin1String("="),  QLatin1String("=="), QLatin1String("<>"),
                                            QLatin1String("!="), QLatin1String("<"),  QLatin1String(">"),
                                            QLatin1String("<="), QLatin1String(">=")};
    return sql.IsWord(index, QLatin1String("LIKE")) ||
           std::any_of(kSymbols.begin(), kSymbols.end(), [&](auto symbol) { return sql.IsSymbol(index, symbol); });
}

// Adds the table of the column name at `at`, or marks the scope unclear. Returns the next position.
std::size_t ReadColumn(const TokenizedSql& sql, std::size_t at, std::size_t end, ConditionScope& scope) {
    std::size_t last = at;
    while (last + 2 < end && sql.IsSymbol(last + 1, QLatin1String(".")) && sql.IsName(last + 2)) {
        last += 2;
    }
    if (last > at) {
        scope.tables.insert(sql.Name(last - 2));
    } else if (sql.IsWord(at, QLatin1String("SELECT"))) {
        scope.unclear = true;
    } else if (!IsConditionWord(sql, at) && !sql.IsSymbol(at + 1, QLatin1String("("))) {
        scope.unclear = true;
    }
    return last + 1;
}

void AddNonNull(const TokenizedSql& sql, TokenRange condition, ConditionScope& scope) {
    const auto conjuncts = SplitConjuncts(sql, StripBrackets(sql, condition));
    if (!conjuncts) {
        return;
    }
    for (const TokenRange& conjunct : *conjuncts) {
        if (const auto comparison = ReadComparison(sql, StripBrackets(sql, conjunct))) {
            scope.nonNull.insert(comparison->left.table);
            scope.nonNull.insert(comparison->right.table);
        }
    }
    scope.nonNull.erase(QString());
}

}  // namespace

TokenRange StripBrackets(const TokenizedSql& sql, TokenRange range) {
    while (range.Size() > 2 && sql.IsSymbol(range.begin, QLatin1String("(")) &&
           sql.Closing(range.begin) == range.end - 1) {
        ++range.begin;
        --range.end;
    }
    return range;
}

std::optional<std::vector<TokenRange>> SplitConjuncts(const TokenizedSql& sql, TokenRange condition) {
    std::vector<TokenRange> conjuncts;
    std::size_t start = condition.begin;
    int cases = 0;
    bool between = false;
    for (std::size_t i = condition.begin; i < condition.end; ++i) {
        if (sql.IsSymbol(i, QLatin1String("("))) {
            i = sql.Closing(i);
        } else if (sql.IsWord(i, QLatin1String("CASE"))) {
            ++cases;
        } else if (sql.IsWord(i, QLatin1String("END"))) {
            --cases;
        } else if (cases > 0) {
            continue;
        } else if (sql.IsWord(i, QLatin1String("OR"))) {
            return std::nullopt;
        } else if (sql.IsWord(i, QLatin1String("BETWEEN"))) {
            between = true;
        } else if (sql.IsWord(i, QLatin1String("AND"))) {
            if (!between) {
                conjuncts.push_back({start, i});
                start = i + 1;
            }
            between = false;
        }
    }
    conjuncts.push_back({start, condition.end});
    const bool missing = std::any_of(conjuncts.begin(), conjuncts.end(), [](auto range) { return range.Empty(); });
    return missing ? std::nullopt : std::optional(std::move(conjuncts));
}

std::optional<Comparison> ReadComparison(const TokenizedSql& sql, TokenRange conjunct) {
    std::size_t at = conjunct.begin;
    const auto left = ReadSide(sql, at, conjunct.end);
    if (!left || at >= conjunct.end || !IsStrictOperator(sql, at)) {
        return std::nullopt;
    }
    const TokenRange between{at, at + 1};
    ++at;
    const auto right = ReadSide(sql, at, conjunct.end);
    if (!right || at != conjunct.end) {
        return std::nullopt;
    }
    return Comparison{*left, *right, between};
}

ConditionScope ScopeOf(const TokenizedSql& sql, TokenRange condition) {
    ConditionScope scope;
    std::size_t at = condition.begin;
    while (at < condition.end) {
        at = sql.IsName(at) ? ReadColumn(sql, at, condition.end, scope) : at + 1;
    }
    AddNonNull(sql, condition, scope);
    return scope;
}

}  // namespace store
