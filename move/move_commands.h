#pragma once

#include "diary/slot_window.h"
#include "move/move_context.h"

// The two commands of the move screen: the row changes its key, or a copy of it is put beside it.
namespace move {

/// First and last date that the source and the target may have today: from the start of the fiscal year, the year
/// before staying open for two months into it, to the day before the same day two years on.
diary::SlotWindow MoveWindowOn(const QString& today, numbers::Closing closing);

/// True when staff, date or start differ from the source's and no slot has them yet, whatever its end.
bool TargetSlotFree(MoveContext& move);

/// The flows of 移動 and 追加: right, period and free target, the items that have to be filled, confirmation, write.
/// What was asked for and couldn't be begun is told, and the screen stays: so a slot whose papers can't come along,
/// since their folder is away. Otherwise the screen closes and leaves the target's key in the pick state, also when the
/// write failed: a failed statement stands in the run history.
void MoveSource(MoveContext& move);
void AddCopy(MoveContext& move);

}  // namespace move
