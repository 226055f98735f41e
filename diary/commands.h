#pragma once

#include "diary/diary_context.h"

// Which command is on when, and what the commands do.
namespace diary {

/// True when the slot has its four classifications and all key items.
bool SlotRegistrable(const DiaryContext& diary);

/// Turns the commands on and off, and finds out anew by staff, date and start whether the slot is on file. A pass that
/// flips that finding leaves 登録 off until the next one.
void RefreshCommands(DiaryContext& diary);

/// True when all key items are filled; otherwise says so on the notice line and sends the focus to the first empty one.
bool CheckRequiredItems(DiaryContext& diary);

/// The whole flow of 登録: a look at what is on file at that start, right, period, required items, confirmation, write,
/// next slot or end.
void RegisterSlot(DiaryContext& diary);

/// The whole flow of 削除.
void DeleteSlot(DiaryContext& diary);

/// The flow of 移動/追加: the move screen, and the slot that it made, if it did. The focus returns to where it was.
void OpenMoveScreen(DiaryContext& diary);

/// The user wants to leave. Ends the session and the process, unless a stored slot that was changed lacks a key item or
/// the user keeps what was typed: then returns false.
bool QuitScreen(DiaryContext& diary);

/// The catchers at the two ends of the tab order.
void HeadReached(DiaryContext& diary);
void TailReached(DiaryContext& diary);

}  // namespace diary
