#pragma once

#include "desktop/form_view.h"

namespace drive {

/// The first difference between a form and its view, in words with the name of the item; empty when there is none.
QString FormDifference(const screen::Form& form, desktop::FormView& view);

}  // namespace drive
