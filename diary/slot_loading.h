#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Looks the slot up by staff, date, start and end. A row fills the record, is noted in the viewing log and makes the
/// slot an existing one; no row makes it a new one and leaves the content as it is. Paints nothing.
void LoadSlotExact(DiaryContext& diary);

/// The same by staff, date and start, for the steps. The deal and the end time stay as the screen holds them.
void LoadSlotByStart(DiaryContext& diary);

/// Brings a slot onto the screen by its key as one text: date 8, start 5, end 5, staff 5 characters, by position. An
/// end below the start is pulled up to it, as everywhere on this screen.
void ReopenFromMoveResult(DiaryContext& diary, const QString& key);

}  // namespace diary
