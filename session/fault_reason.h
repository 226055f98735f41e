#pragma once

#include "store/connection.h"

namespace session {

/// Why a statement failed, in plain Japanese without a full stop: for the line that tells the user what became of a
/// command. What an engine doesn't class is told in its own words.
QString FaultReason(const store::Fault& fault);

}  // namespace session
