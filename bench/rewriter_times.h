#pragma once

#include "bench/results.h"
#include "bench/stopwatch.h"

namespace bench {

/// How long the statements of the list windows are on their way through the dialects: for each engine the middle one
/// and the slowest; in microseconds.
Table TimeRewriters(const Effort& effort);

}  // namespace bench
