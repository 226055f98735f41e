#pragma once

#include "screen/form.h"

namespace screen {

/// The control that takes the focus when `pending` is wanted: the one of lowest tab index, not below that of `pending`,
/// among the buttons and entries of the form that are visible, enabled and tab stops; of equal ones the later in the
/// form's order. `pending` itself when there is none. It gives the focus to nothing.
Control* AdvanceFocusTarget(const Form& form, Control* pending);

/// Gives the focus to the control or to the next one that can take it; to none when that isn't enabled or no tab stop.
/// Returns the control that was aimed at.
Control* MoveFocusTo(Form& form, Control& control);

}  // namespace screen
