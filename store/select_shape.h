#pragma once

#include <optional>

#include "store/sql_tokens.h"

namespace store {

/// Where the parts of one SELECT stand (each without its keyword; empty when it isn't there). Subqueries lie inside.
struct SelectShape {
    TokenRange all;                    ///< from SELECT to the end of this SELECT
    TokenRange top;                    ///< TOP with its number
    std::optional<std::size_t> limit;  ///< the token of the number behind TOP
    TokenRange columns;                ///< the list behind DISTINCT, ALL and TOP
    TokenRange from;
    TokenRange where;
    TokenRange tail;          ///< from GROUP, HAVING, WINDOW, ORDER or LIMIT on
    bool compound = false;    ///< part of a UNION, EXCEPT or INTERSECT
    bool unusualTop = false;  ///< TOP with PERCENT or WITH TIES
};

/// The shape of the SELECT whose keyword stands at `select`.
SelectShape ShapeOf(const TokenizedSql& sql, std::size_t select);

}  // namespace store
