#pragma once

#include "diary/diary_context.h"

// Starts the suite's other programs for what the slot holds, waits for their answers and takes them over. Each routine
// returns when the program has answered; one that can't be started is told to the user.
namespace diary {

/// The card of the counterparty. A new party that comes back counts as an other party, whatever kind stood there.
void LaunchPartyCard(DiaryContext& diary);
/// The card of the contact; does nothing without a counterparty.
void LaunchContactCard(DiaryContext& diary);
/// The company calendar at the month of the slot.
void LaunchCalendar(DiaryContext& diary);
/// The editor of a document; `kind` is a place in the document kinds.
void LaunchDocument(DiaryContext& diary, std::size_t kind);

}  // namespace diary
