#pragma once

#include "session/run/outside.h"

namespace session {

/// A whole run of the client: puts it together, opens the session, asks for the right to run, reads the slot key, shows
/// the main screen and stays until the program ends. Each refusal is told to the user here and ends the run.
void Main(const Outside& outside);

}  // namespace session
