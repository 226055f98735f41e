#pragma once

#include "diary/diary_context.h"

// What the user typed and hasn't saved, kept in a file of this run so that it outlives a killed process, a power cut
// and a save that failed. The next start offers it.
namespace diary {

/// True while something stands on the screen that was typed or chosen and isn't stored, the item that is being typed
/// into included.
bool InputUnderWay(const DiaryContext& diary);

/// Writes down what stands on the screen when it differs from what was written last, the item that is being typed into
/// with it; takes the file away when there is nothing unsaved. A fault goes to the run history, once.
void KeepTyped(DiaryContext& diary);

/// Takes the file away: the content is saved, or the user gave it up.
void ForgetTyped(DiaryContext& diary);

/// Leaves the file for the next start, though the screen goes on with something else: the content couldn't be saved.
void SetTypedAside(DiaryContext& diary);

/// Offers what runs that ended unexpectedly left, the oldest first, until the user takes one. A run with a slot key is
/// offered only what belongs to its slot.
void OfferTyped(DiaryContext& diary);

}  // namespace diary
