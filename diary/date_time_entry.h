#pragma once

#include "diary/diary_context.h"

// The slot's day and time range: its eight items, the steps that move it, and what follows from them.
namespace diary {

enum class DateUnit { Day, Week };

/// What a date or time item holds when it is left: its text under the mask, or nothing when there is no digit in it, so
/// that the part counts as missing.
QString TypedPart(const QString& text, const QString& mask);

/// Repairs the date parts, rebuilds SlotDate and the weekday. While a part is empty nothing is repaired: SlotDate is
/// then what there is, and the weekday empty.
void NormalizeSlotDate(DiaryContext& diary);

/// Rebuild a time from its parts; an end before the start is moved to the start. Texts are compared as texts. While a
/// part is empty nothing is moved.
void NormalizeStartTime(DiaryContext& diary);
void NormalizeEndTime(DiaryContext& diary);

/// Start from the clock, rounded down to ten minutes, end 30 minutes later.
void DefaultTimes(DiaryContext& diary);

/// Today with the default times.
void SetTimesToNow(DiaryContext& diary);

/// Moves the date. Nothing happens while a date part is empty.
void StepDate(DiaryContext& diary, DateUnit unit, int amount);

/// Moves start and end by 15, 30 or 60 minutes, `direction` +1 or -1, with the date at midnight. An end below its start
/// lies on the next day when a step would take it below midnight. Nothing happens while a part is empty.
void StepTimes(DiaryContext& diary, int minutes, int direction);

/// Length of a slot in minutes; an end below the start (as text) lies on the next day.
int ActivityMinutes(const QString& start, const QString& end);

}  // namespace diary
