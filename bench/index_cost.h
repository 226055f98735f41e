#pragma once

#include <QTextStream>

namespace bench {

/// Prints what the indexes of the party masters cost: the size of each customer index in the store, and the time to
/// save one customer in a copy of the masters with them and in one without. Slots have none of these indexes, so saving
/// a slot costs nothing more. False on a fault.
bool PrintIndexCost(const QString& mainStore, QTextStream& out);

}  // namespace bench
