#pragma once

#include "diary/diary_context.h"

// What the writing commands do around their statements: nothing that they take off the table or the screen is lost, and
// the user learns what became of it.
namespace diary {

/// What became of a writing command.
struct ToldWrite {
    bool done = false;  ///< the row is stored, or the deletion ran, also when it took no row
    bool safe = false;  ///< row or 控え has the content, so that the screen may be cleared
};

/// Stores the slot on the screen, and tells. What it takes the place of goes on the list of 控え; so does the slot
/// itself when it couldn't be stored.
ToldWrite SaveAndTell(DiaryContext& diary);

/// Deletes the slot on the screen, and tells. Its row goes on the list of 控え, with what was typed since it was
/// loaded.
ToldWrite DeleteAndTell(DiaryContext& diary);

}  // namespace diary
