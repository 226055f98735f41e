#pragma once

#include "session/session_context.h"

namespace session {

/// Reads the slot key from the command-line tail (blanks at its ends removed): site 3, date 8, start 5, end 5, staff 5
/// characters, by position. A tail without a whole key sets the site and is otherwise a start for today.
void ReadCommandLine(SessionContext& context, const QString& tail);

}  // namespace session
