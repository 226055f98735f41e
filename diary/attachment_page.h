#pragma once

#include "diary/diary_context.h"

// The page of the main screen with the documents attached to its slot.
namespace diary {

/// Fills the list with the attachments of the slot that is stored at the key on the screen, none of them selected, and
/// sets the page's commands: they are for stored slots only. Whether the screen takes the slot for a new one, as it
/// does between two look-ups, doesn't count.
void ShowAttachments(DiaryContext& diary);
/// The same, unless the list shows those of this slot already.
void FollowSlot(DiaryContext& diary);

/// The page's commands. What can't be done is told in the notice line.
void AddFile(DiaryContext& diary);
void AddFolder(DiaryContext& diary);
void RemoveSelected(DiaryContext& diary);
/// What the desktop would run isn't opened; the result line tells where it lies.
void OpenSelected(DiaryContext& diary);
/// Files and folders that were dropped or pasted onto the list, as paths.
void AddGiven(DiaryContext& diary, const QStringList& paths);

}  // namespace diary
