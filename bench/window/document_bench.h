#pragma once

#include <QTextStream>

#include "setup/tree.h"

namespace bench {

/// Times what has to do with sales documents on an installation: a typed number up to the painted slot, the opening of
/// each number list, the searches of these and of the lists of used names, and what the indexes cost. Every time stands
/// beside the bare engine's for the same statements. Prints tables to `out`; false with words there when the store
/// can't be used, two ways found different rows, or a time is over its limit.
bool RunDocumentBench(const setup::Tree& tree, QTextStream& out);

}  // namespace bench
