#pragma once

#include "store/join_chain.h"

namespace store {

/// A FROM and a WHERE written anew, each without its word.
struct RewrittenJoins {
    QString from;
    QString where;  ///< empty for no condition
};

/// True when a "(+)" stands in the range, outside of literals.
bool HasOuterMark(const TokenizedSql& sql, TokenRange range);

/// Writes a comma list of tables, whose WHERE marks optional sides with "(+)", as LEFT JOINs. A marked conjunct must be
/// a comparison between columns that name their tables, or of such a column with a literal; the conjuncts without a
/// mark stay behind WHERE as they are. Returns nothing and fills `refusal` for an OR beside a mark, a mark in any other
/// expression, tables that are optional to each other in a circle, and a mark with JOINs in the clause.
std::optional<RewrittenJoins> JoinByMarks(const TokenizedSql& sql, const JoinNode& tree, TokenRange where,
                                          Refusal& refusal);

}  // namespace store
