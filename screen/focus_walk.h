#pragma once

#include "screen/form.h"

namespace screen {

/// The control that takes the focus when `pending` is wanted: the one of lowest tab index, not below that of `pending`,
/// among the buttons and entries of the form that are visible, enabled and tab stops; of equal ones the later in the
/// form's order. `pending` itself when there is none. It gives the focus to nothing.
Control* AdvanceFocusTarget(const Form& form, Control* pending);

/// Gives the focus to the control or to the next one that can take it; to none when that isn't enabled or no tab stop.
/// `pending` is what was aimed at: the control, then the one that AdvanceFocusTarget found. It is set before the focus
/// moves, since the handlers that then run may aim anew.
void MoveFocusTo(Form& form, Control& control, Control*& pending);

}  // namespace screen
