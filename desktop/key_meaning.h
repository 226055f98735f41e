#pragma once

#include <optional>

#include "screen/form.h"

class QKeyEvent;

namespace desktop {

/// What a key means to the form while `control` holds the focus (null: nothing does). Nothing for a key that its widget
/// handles itself, as an entry does with letters and a memo with Enter.
std::optional<screen::Key> KeyMeaning(const QKeyEvent& event, const screen::Control* control);

/// The row that Home, End, Page Up or Page Down goes to in a list that shows `page` rows at a time; -1 for other keys.
int RowMeaning(const QKeyEvent& event, const screen::Control& list, int page);

/// The page that Left or Right turns a tab strip to; -1 for other keys or past its ends.
int PageMeaning(const QKeyEvent& event, const screen::Control& strip);

/// True for keys by which the toolkit would move the focus on its own.
bool MeansNothing(const QKeyEvent& event, const screen::Control* control);

}  // namespace desktop
