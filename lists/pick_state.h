#pragma once

#include <QString>

#include "screen/form.h"

namespace lists {

class ListWindow;

/// What carries a pick between a caller and a list window. At most one pick runs at a time, or one nested in another.
struct PickState {
    /// On opening the caller's fixed condition, a WHERE body without the word, or empty; while the window is open what
    /// is left of it; after a pick from some lists the picked row's key.
    QString ListCondition;
    screen::Control* ReturnFocusControl = nullptr;   ///< receives the picked text
    screen::Control* PendingFocusControl = nullptr;  ///< takes the focus after that
    screen::Control* ActiveEntryControl = nullptr;   ///< entry item that last gained the focus
    int NestedListOpen = 0;                          ///< 1 while a list window has opened another
    ListWindow* OuterListWindow = nullptr;           ///< the one that opened it
};

}  // namespace lists
