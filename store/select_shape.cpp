#include "store/select_shape.h"

namespace store {
namespace {

bool IsSetOperator(const TokenizedSql& sql, std::size_t index) {
    return sql.IsAnyWord(index, {"UNION", "EXCEPT", "INTERSECT"});
}

bool IsRowCount(const TokenizedSql& sql, std::size_t index) {
    if (index >= sql.Size() || sql.At(index).kind != SqlToken::Kind::Number) {
        return false;
    }
    for (const QChar c : sql.Slice({index, index + 1})) {
        if (c < u'0' || c > u'9') {
            return false;
        }
    }
    return true;
}

// "TOP n" or "TOP (n)" at `at`; moves past it.
void ReadTop(const TokenizedSql& sql, std::size_t& at, SelectShape& shape) {
    if (!sql.IsWord(at, QLatin1String("TOP"))) {
        return;
    }
    const bool bracket = sql.IsSymbol(at + 1, QLatin1String("(")) && sql.IsSymbol(at + 3, QLatin1String(")"));
    const std::size_t number = bracket ? at + 2 : at + 1;
    if (!IsRowCount(sql, number)) {
        return;
    }
    const std::size_t end = bracket ? number + 2 : number + 1;
    shape.top = {at, end};
    shape.limit = number;
    shape.unusualTop =
        sql.IsAnyWord(end, {"PERCENT"}) || (sql.IsAnyWord(end, {"WITH"}) && sql.IsAnyWord(end + 1, {"TIES"}));
    at = end;
}

// The next token of the same bracket level that `stop` accepts, or the end.
template <typename Stop>
std::size_t Find(const TokenizedSql& sql, std::size_t at, std::size_t end, Stop stop) {
    while (at < end && !stop(at)) {
        at = sql.IsSymbol(at, QLatin1String("(")) ? sql.Closing(at) + 1 : at + 1;
    }
    return at;
}

void ReadClauses(const TokenizedSql& sql, std::size_t at, SelectShape& shape) {
    const std::size_t end = shape.all.end;
    const auto isTail = [&](std::size_t i) {
        return sql.IsAnyWord(i, {"GROUP", "HAVING", "WINDOW", "ORDER", "LIMIT"});
    };
    const auto isFrom = [&](std::size_t i) {
        // "IS DISTINCT FROM" is an operator.
        return sql.IsWord(i, QLatin1String("FROM")) && !sql.IsAnyWord(i - 1, {"DISTINCT"});
    };
    const auto isClause = [&](std::size_t i) { return isTail(i) || sql.IsWord(i, QLatin1String("WHERE")); };
    const std::size_t from = Find(sql, at, end, [&](std::size_t i) { return isFrom(i) || isClause(i); });
    shape.columns = {at, from};
    std::size_t clause = from;
    if (from < end && isFrom(from)) {
        clause = Find(sql, from + 1, end, isClause);
        shape.from = {from + 1, clause};
    }
    if (clause < end && !isTail(clause)) {
        const std::size_t tail = Find(sql, clause + 1, end, isTail);
        shape.where = {clause + 1, tail};
        clause = tail;
    }
    shape.tail = {clause, end};
}

}  // namespace

SelectShape ShapeOf(const TokenizedSql& sql, std::size_t select) {
    SelectShape shape;
    const auto isEnd = [&](std::size_t i) {
        return sql.IsSymbol(i, QLatin1String(")")) || sql.IsSymbol(i, QLatin1String(";")) || IsSetOperator(sql, i);
    };
    shape.all = {select, Find(sql, select + 1, sql.Size(), isEnd)};
    shape.compound = IsSetOperator(sql, shape.all.end) ||
                     (select > 0 && (IsSetOperator(sql, select - 1) || (sql.IsAnyWord(select - 1, {"ALL"}) &&
                                                                        select > 1 && IsSetOperator(sql, select - 2))));
    std::size_t at = select + 1;
    at += sql.IsAnyWord(at, {"DISTINCT", "ALL"}) ? 1 : 0;
    ReadTop(sql, at, shape);
    ReadClauses(sql, at, shape);
    return shape;
}

}  // namespace store
