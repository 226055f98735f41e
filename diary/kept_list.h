#pragma once

#include "diary/diary_context.h"

// The list of what was kept, and its way back onto the screen.
namespace diary {

/// Opens `wnd控え一覧`. A pick brings its slot onto the screen as input, and what stood there goes on the list. The
/// picked one stays on it until it is stored.
void OpenKeptList(DiaryContext& diary);

/// Brings a kept slot onto the screen as input that isn't stored, with its key; the focus goes where it was typed.
void PutInputOnScreen(DiaryContext& diary, const QJsonObject& input);

}  // namespace diary
