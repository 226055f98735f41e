#pragma once

#include <QString>

#include "store/connection.h"

namespace session {

/// Why a statement failed, in a user's words where the store tells what the fault is about, and in the engine's
/// otherwise. Without a full stop, to stand inside a sentence; empty when nothing is known.
QString FaultReason(const store::Fault& fault);

}  // namespace session
