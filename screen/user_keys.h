#pragma once

#include <optional>

#include "screen/screen_host.h"

// What a key does to a form. Both hosts ask here, so that a key means the same whether a window is drawn or not.
namespace screen {

/// How far Page Up and Page Down go in a list: the same number of rows on every display.
inline constexpr int kPageStep = 10;

/// The button whose shortcut the key is, reachable or not; of several the one that can be seen. Null when there is
/// none: a letter or a digit that is being typed into an item is no shortcut.
Control* ShortcutButton(const Form& form, const KeyPress& press);

/// True when the key does nothing to the form: the item in focus edits its own text by it, or the window scrolls.
bool LeftToItem(const Form& form, const KeyPress& press);

/// True for the keys by which the cursor moves within the text of that item.
bool MovesCursor(const Control& entry, Key key);

/// Carries out what the key does to the form. False when it is left to the item; the form then notes only what becomes
/// of the selection of the item's text.
bool UserFormKey(Form& form, const KeyPress& press);

/// The whole effect of a key, for a host in which no widget edits the texts. A place within a text isn't known here:
/// what is typed goes behind it, or over it while it stands selected as a whole. Of the keys with Ctrl a text item
/// takes only Ctrl+A.
void UserKey(Form& form, const KeyPress& press);

/// The button that answers a message box by that key: Enter the default one, Escape the one that does least, Y and N
/// those of these names. Nothing for other keys and for an answer that the box doesn't offer.
std::optional<Button> ButtonMeant(const MessageBox& box, const KeyPress& press);

}  // namespace screen
