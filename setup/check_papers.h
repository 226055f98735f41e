#pragma once

#include <QStringList>

#include "setup/tree.h"

namespace setup {

/// Tells of the documents attached to slots what belongs to nothing any more, a sentence each: rows whose slot isn't in
/// the main store, and copies in the document folder that no row names. A slot that is deleted leaves both.
QStringList StrandedPapers(const Tree& tree, store::Connection& main);

}  // namespace setup
