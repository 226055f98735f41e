#pragma once

#include "diary/diary_context.h"

// How the focus walks the screen: no item can be entered while a key item in front of it is empty.
namespace diary {

/// Number 1 to 10 of the first empty key item (year, month, day, start hour and minute, end hour and minute, staff,
/// department, section); 0 when all are filled.
int FirstMissingKeyItem(const DiaryContext& diary);

/// Aims the focus at an item, or at the next one that can take it; what can't be focused is left alone.
void FocusControl(DiaryContext& diary, screen::Control& item);
void FocusControl(DiaryContext& diary, const char* item);

/// Sends the focus to a key item by its number.
void FocusMissingItem(DiaryContext& diary, int number);

/// Sends the focus to one of the entry items, unless it is the one that has it.
void FocusByItemName(DiaryContext& diary, const QString& name);

/// The test of a got focus at level 1: passes the focus on from a name item, or sends it back to the first empty key
/// item in front of the place `order`; then refreshes the commands. Level 2 only refreshes them. Returns `blocked`:
/// true at level 1 while any key item is empty.
bool FocusGate(DiaryContext& diary, int level, const QString& name, int order);

/// The place of an item for FocusGate: 1 to kLastKeyOrder, and one more for all behind the key items.
inline constexpr int kLastKeyOrder = 10;
int GateOrder(const QString& name);

/// The entry items that run the gate when they get the focus, in screen order.
const QStringList& GatedItems();

}  // namespace diary
