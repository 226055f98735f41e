#pragma once

#include "bench/list_cases.h"
#include "bench/results.h"
#include "bench/stopwatch.h"

namespace bench {

/// How long the statements of some searches are on their way through the dialects: for each engine the middle one of
/// the statements, and the slowest; in microseconds.
Table TimeRewriters(const std::vector<ListCase>& cases, const Effort& effort);

}  // namespace bench
