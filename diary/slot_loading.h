#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Looks the slot up by staff, date, start and end. A row fills the record, is noted in the viewing log and makes the
/// slot an existing one; no row makes it a new one and leaves the content as it is. Paints nothing.
void LoadSlotExact(DiaryContext& diary);

/// The same by staff, date and start, for the steps. The deal and the end time stay as the screen holds them.
void LoadSlotByStart(DiaryContext& diary);

}  // namespace diary
