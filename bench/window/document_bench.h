#pragma once

#include "bench/results.h"
#include "bench/stopwatch.h"
#include "setup/tree.h"

namespace bench {

/// Times what has to do with sales documents on an installation: a typed number up to the painted slot, the opening of
/// each number list, the searches of these and of the lists of used names. `admin` of a server may take back what was
/// written, so that the engine can write it anew.
Results RunDocumentBench(const setup::Tree& tree, const std::optional<setup::ServerAdmin>& admin, const Effort& effort);

}  // namespace bench
