#pragma once

#include "desktop/layouts.h"

namespace desktop {

/// True for a window in which a row is searched and picked.
bool IsListWindow(const screen::Form& form);

/// A list window: its title, the search items with their buttons, the list with all the room that is left, and below it
/// how many rows were found.
void LayOutList(WidgetShelf& shelf, QWidget& content);

}  // namespace desktop
