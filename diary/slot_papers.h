#pragma once

#include "diary/diary_context.h"

// The papers of a slot go by the key of its stored row. What gives the row another key takes them along, and what was
// broken off between the two is finished by the next start.
namespace diary {

/// Identity (attachments::SlotIdentity) of the papers of the slot that is stored at the staff, date and start on the
/// screen: of two with different ends the one of the end on the screen, otherwise the first. Nothing when none is.
std::optional<QString> PaperIdentity(DiaryContext& diary);

/// Runs `write`, the statement that gives the slot of one identity another one, or copies it there; it tells whether it
/// ran. The papers follow when the slot stands there; a message tells what couldn't be done with them. Gives the words
/// of why nothing was begun: a slot with papers stays where it is while they can't come along. Empty otherwise.
QString WriteWithPapers(DiaryContext& diary, attachments::Carry::Kind kind, const QString& from, const QString& to,
                        const std::function<bool()>& write);

/// A save replaces what is stored at its start, whatever the end: run before its statements, this notes whose papers
/// are to come along, and PapersFollow brings them when the row of the save stands. What can't be done is told in the
/// result line.
std::vector<attachments::Carry> NotePapersOfReplaced(DiaryContext& diary);
void PapersFollow(DiaryContext& diary, std::vector<attachments::Carry>& carries);

/// Finishes what runs that have ended left undone; what still can't be done is told in the result line. Papers whose
/// slot stayed where it was stay there.
void FinishPapers(DiaryContext& diary);

}  // namespace diary
