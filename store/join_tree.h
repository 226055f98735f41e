#pragma once

#include <memory>
#include <optional>

#include "store/sql_tokens.h"

namespace store {

/// One node of a FROM clause: a table (or a subquery under a name), or the join of two nodes.
struct JoinNode {
    enum class Kind { Table, Comma, Inner, Left, Right };
    Kind kind = Kind::Table;

    // A table.
    TokenRange text;      ///< the table as the clause writes it, with its alias
    QString name;         ///< what a column names it by, as names are compared; empty for a subquery without an alias
    TokenRange nameText;  ///< the same as the clause writes it

    // A join.
    std::unique_ptr<JoinNode> left;
    std::unique_ptr<JoinNode> right;
    TokenRange on;  ///< the condition; empty for none
};

/// Reads a FROM clause (without the word). Nothing for what has no place in such a tree: FULL and NATURAL joins, USING,
/// a bracketed join with an alias, an outer join without ON, brackets hundreds deep, and faulty clauses.
std::unique_ptr<JoinNode> ReadJoinTree(const TokenizedSql& sql, TokenRange from);

/// True when a RIGHT JOIN stands in the range at any depth.
bool HasRightJoin(const TokenizedSql& sql, TokenRange range);

}  // namespace store
