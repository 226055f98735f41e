#pragma once

#include "move/move_context.h"

namespace move {

/// The screen `sbf営業日程移動`: puts the items on the form and ties their events to the routines of this folder. It
/// decides nothing itself.
class MoveScreen {
  public:
    /// `move` must outlive the screen.
    explicit MoveScreen(MoveContext& move);

    /// Shows the screen for the slot on the main screen and returns when it is closed. Behind a move or an add the pick
    /// state's condition holds the key of the result, otherwise it is left alone.
    void Show();

  private:
    void Load();
    void WireTyped();
    void WireShown();
    void WireSteps();
    void WireCommands();
    void WireLists();
    void Step(const char* button, void (*shift)(TargetSlot&));
    void PassOn(const char* item, const char* to);
    screen::Control& Item(const char* name) { return move_.Item(name); }

    MoveContext& move_;
};

}  // namespace move
