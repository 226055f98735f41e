#pragma once

#include "tests/rewriter/random_data.h"

namespace plain {

/// A SELECT on the tables of MadeUpTables(): joins of every kind in brackets, comma lists with and without (+), row
/// limits, subqueries, and conditions of every form that the program's statements know. Also such that mean nothing or
/// can't be proven, which a rewriter has to refuse.
QString RandomStatement(Dice& dice);

}  // namespace plain
