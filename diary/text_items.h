#pragma once

#include "diary/diary_context.h"
#include "session/insert_builder.h"

namespace diary {

/// The seven free texts of counterparty and contact, whose limits are watched while typing and kept when they are left.
extern const std::array<SlotText, 7> kLimitedTexts;

/// True for the three telephone numbers and the postcode, which hold no single quote wherever they come from.
bool IsNumberText(const QString& item);

/// Takes the column of that name into the slot's text, unless it is Null.
void TakeText(const store::Recordset& row, const SlotText& text, ActivitySlot& slot);

/// Adds a text of a slot to a statement by the rule of its column: free texts with their quotes doubled, numbers
/// without quotes, codes as they stand, so that a quote in one makes the statement fail.
void AddText(session::InsertBuilder& insert, const QString& column, const QString& text);

/// Shows on the notice line how far the text of an item runs over its limit, or clears the line.
void CheckItemLength(DiaryContext& diary, const screen::Control& item);

/// Takes a free text that is left into its field, cut to the item's limit.
void LimitedTextLeft(DiaryContext& diary, const SlotText& text);

/// Takes a telephone or fax number that is left into its field; another spelling of the same digits is no change.
void PhoneLeft(DiaryContext& diary, const SlotText& text);

/// Takes the memo while it is typed.
void MemoChanged(DiaryContext& diary);

}  // namespace diary
