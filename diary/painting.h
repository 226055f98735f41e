#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Writes the slot onto the items: the one place where the program fills the screen.
void PaintScreen(DiaryContext& diary);

/// The text that a paint writes onto an item of that name; nothing for items that hold no text of the slot.
std::optional<QString> PaintedText(const DiaryContext& diary, const QString& item);

/// PaintScreen, and what hangs on the slot beside its own values: its attachments.
void RefreshScreen(DiaryContext& diary);

/// Empties the record for the next slot: same day, times from the clock, everything else unset. Paints nothing.
void ClearSlot(DiaryContext& diary);

}  // namespace diary
