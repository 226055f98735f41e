#pragma once

#include <optional>
#include <set>
#include <vector>

#include "store/sql_tokens.h"

namespace store {

/// The conjuncts of a condition, cut at its top-level ANDs (the AND of a BETWEEN and those inside brackets or a CASE
/// are no cuts). Nothing when an OR stands at the top level, or a conjunct is missing.
std::optional<std::vector<TokenRange>> SplitConjuncts(const TokenizedSql& sql, TokenRange condition);

/// The range without round brackets that enclose the whole of it.
TokenRange StripBrackets(const TokenizedSql& sql, TokenRange range);

/// One side of a comparison: a "table.column", perhaps with "(+)" behind it, or a literal.
struct ComparisonSide {
    QString table;  ///< as names are compared; empty for a literal
    TokenRange text;
    bool marked = false;
};

struct Comparison {
    ComparisonSide left;
    ComparisonSide right;
    TokenRange between;  ///< the operator
};

/// Reads "side operator side", where the operator is never true for a Null side: = <> < > <= >= LIKE. Nothing for any
/// other form.
std::optional<Comparison> ReadComparison(const TokenizedSql& sql, TokenRange conjunct);

/// Which tables a join condition speaks of; names as they are compared.
struct ConditionScope {
    std::set<QString> tables;
    bool unclear = false;       ///< a column without its table, or a subquery: it may speak of any table
    std::set<QString> nonNull;  ///< the condition isn't true when all columns of one of these are Null
};

ConditionScope ScopeOf(const TokenizedSql& sql, TokenRange condition);

}  // namespace store
