#pragma once

#include <map>
#include <set>

#include "tests/rewriter/plain_statement.h"
#include "tests/rewriter/plain_values.h"

namespace plain {

using Row = std::vector<Cell>;

struct Table {
    QStringList columns;         ///< in small letters
    std::set<QString> integers;  ///< those of them that hold numbers
    std::vector<Row> rows;
};

/// The tables by their names in small letters.
using Data = std::map<QString, Table>;

/// What a statement gives. Rows of one group have the same values in the columns of the order, and may come in any
/// order among themselves; without an ORDER BY there is one group.
struct Result {
    QStringList columns;
    std::set<QString> integers;
    std::vector<std::vector<Row>> groups;
    std::optional<int> limit;

    std::size_t RowCount() const;
};

/// Runs the statement by nested loops over all rows. Nothing for a statement without a meaning: marks of (+) beside an
/// OR, in a circle, on both sides of a comparison, or on nothing to join to.
std::optional<Result> Evaluate(const Select& select, const Data& data);

}  // namespace plain
