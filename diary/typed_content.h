#pragma once

#include "diary/diary_context.h"

// What the user typed and hasn't saved, kept in a file of this run so that it outlives a killed process and a power
// cut. The next start offers it.
namespace diary {

/// True while something stands on the screen that was typed or chosen and isn't stored, the item that is being typed
/// into included.
bool InputUnderWay(const DiaryContext& diary);

/// Writes down what stands on the screen when it differs from what was written last, the item that is being typed into
/// with it, and the rows that a save under way replaces; takes it away when there is nothing unsaved. False when it
/// couldn't be written, which the run history is told once.
bool KeepTyped(DiaryContext& diary);

/// Offers what a run that ended unexpectedly left, the newest; of several the others go on the list of what is kept.
/// What has been stored is dropped unasked. A run with a slot key is offered only what belongs to its slot. A change
/// that was broken off with its old row gone is offered so too; declined, the old row is put back where its key has
/// none.
void OfferTyped(DiaryContext& diary);

}  // namespace diary
