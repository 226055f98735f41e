#pragma once

#include "bench/bare_engine.h"
#include "bench/results.h"
#include "bench/stopwatch.h"
#include "bench/window/window_fill.h"

namespace bench {

/// Times searches in the real list windows, each in turns with the bare engine that gets the very statements which the
/// window gave to its own. What finds different rows is told in `results.faults`.
Table TimeSearches(const QString& name, const std::vector<ListCase>& cases, BareEngine& engine, WindowFill& windows,
                   const Effort& effort, Results& results);

/// The same for the opening of number lists.
Table TimeOpenings(const std::vector<Opening>& openings, BareEngine& engine, WindowFill& windows, const Effort& effort,
                   Results& results);

}  // namespace bench
