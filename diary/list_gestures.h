#pragma once

#include "diary/diary_context.h"

// The gestures that look a code up in a list: the button beside the item, Ctrl pressed alone in it, a double click on
// it.
namespace diary {

enum class Gesture { Button, Ctrl, DoubleClick };

void OpenStaffList(DiaryContext& diary, Gesture gesture);
void OpenDepartmentList(DiaryContext& diary, Gesture gesture);
void OpenSectionList(DiaryContext& diary, Gesture gesture);
void OpenCounterpartyList(DiaryContext& diary, Gesture gesture);
void OpenPostcodeList(DiaryContext& diary, Gesture gesture);
/// The contacts of the slot's counterparty; without a kind there is no list. The button opens it on an empty code too.
void OpenContactList(DiaryContext& diary, Gesture gesture);

}  // namespace diary
