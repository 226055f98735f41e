#pragma once

#include "bench/results.h"
#include "bench/stopwatch.h"

namespace bench {

/// What the indexes of a file cost: the size of the customers, the slots and each kind of document with and without
/// them, on copies of some 100,000 rows, and the time to save one row; the sizes of the indexes in the store itself;
/// and what the program's LIKE costs beside the engine's.
Results RunIndexBench(const QString& mainStore, const Effort& effort);

}  // namespace bench
