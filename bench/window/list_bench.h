#pragma once

#include "bench/results.h"
#include "bench/stopwatch.h"
#include "setup/tree.h"

namespace bench {

/// Times the searches of the party lists, and of the lists that are neither of parties nor of documents, up to the
/// filled window; then tells the memory that the party lists take.
Results RunListBench(const setup::Tree& tree, const Effort& effort);

}  // namespace bench
