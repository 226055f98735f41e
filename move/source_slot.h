#pragma once

#include "move/move_context.h"

namespace move {

/// Takes the slot on the main screen as the source: its key from the items there and, when it is on file, its content
/// from its row. Shows it, and lets the target start as its copy. What isn't found stays empty,
/// the site excepted.
void TakeSource(MoveContext& move);

/// "営業日程移動" with the site's name in brackets, or "(全社)" for the common site.
QString MoveTitle(MoveContext& move);

}  // namespace move
