#pragma once

#include "store/recordset.h"
#include "tests/rewriter/plain_evaluator.h"

namespace plain {

/// The columns that a reader gets: it asks for them by name, and of several that share one the first answers.
Result AsRead(Result result);

/// An engine's rows with the columns of AsRead(plain), from the current one to the end.
std::vector<Row> RowsOf(store::Recordset& recordset, const Result& plain);

/// What differs between an engine's rows and the result, in words; empty for nothing.
QString Difference(const Result& expected, const std::vector<Row>& rows);

}  // namespace plain
