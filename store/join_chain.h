#pragma once

#include "store/join_tree.h"

namespace store {

/// What keeps a clause from being rewritten, for people; empty when nothing does.
using Refusal = QString;

/// Writes the tree as one chain of INNER and LEFT JOINs without brackets, in which every row of the tree's result
/// stands just as often; the order of tables (so of the columns of "*") may differ. Only the steps that are proven to
/// keep the result are taken:
///   a RIGHT JOIN b                      = b LEFT JOIN a
///   a LEFT JOIN (b LEFT JOIN c ON q) ON p  = a LEFT JOIN b ON p LEFT JOIN c ON q, where p doesn't speak of c, and q is
///                                         not true for a b of Nulls
///   a INNER JOIN (b … c ON q) ON p         = a INNER JOIN b … c, with p at an inner step where its columns are there
/// Returns nothing and fills `refusal` for anything else.
std::optional<QString> FlattenJoins(const TokenizedSql& sql, const JoinNode& tree, Refusal& refusal);

/// The tables of a tree from left to right.
std::vector<const JoinNode*> TablesOf(const JoinNode& tree);

}  // namespace store
