#pragma once

#include <QTextStream>

namespace bench {

/// Prints what the indexes of the party masters cost: the size of the customers with and without them, and the time to
/// save one. False on a fault.
bool PrintPartyIndexCost(const QString& mainStore, QTextStream& out);

/// The same for a slot and for each kind of document, on copies of some 100,000 rows; then the sizes of the indexes
/// in the store itself. False on a fault.
bool PrintDocumentIndexCost(const QString& mainStore, QTextStream& out);

}  // namespace bench
