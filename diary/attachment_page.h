#pragma once

#include "diary/diary_context.h"

// The page of the main screen with the documents attached to its slot.
namespace diary {

/// Fills the list with the attachments of the slot on the screen, none of them selected, and sets the page's commands:
/// they are for stored slots only.
void ShowAttachments(DiaryContext& diary);
/// The same, unless the list shows those of this slot already.
void FollowSlot(DiaryContext& diary);

/// The page's commands. What can't be done is told in the notice line.
void AddFile(DiaryContext& diary);
void AddFolder(DiaryContext& diary);
void RemoveSelected(DiaryContext& diary);
void OpenSelected(DiaryContext& diary);
/// Files and folders that were dropped or pasted onto the list, as paths.
void AddGiven(DiaryContext& diary, const QStringList& paths);

/// What a move or an added copy of a slot does with its attachments. The identities are those of
/// attachments::SlotIdentity. A message tells what couldn't be done.
void MoveAttachments(DiaryContext& diary, const QString& oldIdentity, const QString& newIdentity);
void CopyAttachments(DiaryContext& diary, const QString& oldIdentity, const QString& newIdentity);

}  // namespace diary
