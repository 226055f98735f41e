#pragma once

#include <QString>

#include "screen/form.h"

// What a user's hands do to a form. Each call is carried out as on a real screen: the focus moves first where the
// control takes it, limits of the control itself are kept, and the handlers run. The headless host and the drawn view
// both act through here, so that they can't differ. Keys stand in screen/user_keys.h.
namespace screen {

/// A mouse click into the control, to give it the focus. Returns false when it can't have it.
bool UserFocus(Control& control);

/// What the control makes of a text typed into it: full-width digits folded in code items, line ends of a memo as CR
/// LF, cut at a limit that the control itself enforces.
QString AcceptedText(const Control& control, const QString& typed);

/// Typing that leaves `text` as the whole text of the control.
void UserType(Control& control, const QString& text);

/// A mouse click on a button, panel, caption, option or check box. On one that takes no input it only runs onRefused.
void UserClick(Control& control);
void UserDoubleClick(Control& control);

/// Chooses an entry of a drop-down list or a page of a tab strip, from 0.
void UserChoose(Control& control, int entry);

/// Sets the value of an EntryNumber; beyond its range the nearest one.
void UserSetValue(Control& control, int value);

/// Selects a row of a list, from 0.
void UserSelectRow(Control& control, int row);
void UserClickHeader(Control& control, int column);

/// Drops or pastes files or folders onto a control that takes them.
void UserGivePaths(Control& control, const QStringList& paths);

}  // namespace screen
