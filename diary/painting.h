#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Writes the slot onto the items: the one place where the program fills the screen.
void PaintScreen(DiaryContext& diary);

/// PaintScreen, and what hangs on the slot beside its own values: its attachments.
void RefreshScreen(DiaryContext& diary);

/// Empties the record for the next slot: same day, times from the clock, everything else unset. Paints nothing.
void ClearSlot(DiaryContext& diary);

}  // namespace diary
