#pragma once

#include "screen/form.h"

namespace move {

/// Puts the items of the move screen on its form, in tab order: the catcher at the head, the target from top to bottom,
/// the commands, the catcher at the tail. What shows the source, and the buttons that shift the target, stand outside
/// the tab order.
void BuildScreenItems(screen::Form& form);

}  // namespace move
