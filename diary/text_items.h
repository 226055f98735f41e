#pragma once

#include "diary/diary_context.h"

namespace diary {

/// The seven free texts of counterparty and contact, whose limits are watched while typing and kept when they are left.
extern const std::array<SlotText, 7> kLimitedTexts;

/// True for the items whose text goes into a statement with its quotes doubled: those seven and the memo.
bool IsFreeText(const QString& item);

/// Shows on the notice line how far the text of an item runs over its limit, or clears the line.
void CheckItemLength(DiaryContext& diary, const screen::Control& item);

/// Takes a free text that is left into its field, cut to the item's limit.
void LimitedTextLeft(DiaryContext& diary, const SlotText& text);

/// Takes a telephone or fax number that is left into its field; another spelling of the same digits is no change.
void PhoneLeft(DiaryContext& diary, const SlotText& text);

/// Takes the memo while it is typed.
void MemoChanged(DiaryContext& diary);

}  // namespace diary
