#pragma once

#include "diary/diary_context.h"

// What the writing commands do around their statements: nothing that they take off the table or the screen is lost, and
// the user learns what became of it.
namespace diary {

/// Stores the slot on the screen, and tells. What it takes the place of goes on the list of 控え; so does the slot
/// itself when it couldn't be stored. `stored`: the row is there. `safe`: row or 控え has the content, so that the
/// screen may be cleared.
struct ToldSave {
    bool stored = false, safe = false;
};
ToldSave SaveAndTell(DiaryContext& diary);

/// Deletes the slot on the screen, and tells. Its row goes on the list of 控え, with what was typed since it was
/// loaded. `stored`: the statement ran, also when it took no row.
ToldSave DeleteAndTell(DiaryContext& diary);

}  // namespace diary
