#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Puts the items of the main screen on its form, in tab order: the focus catcher at the head, what a reporter fills
/// from top to bottom, the memo, the catcher at the tail. Buttons stand outside the tab order.
void BuildScreenItems(screen::Form& form);

/// The option groups hold this many buttons at most.
inline constexpr int k発信区分Options = 3;
inline constexpr int k応対方法Options = 6;
inline constexpr int k要件分類Options = 9;

/// Fills the captions of the classification groups and the lists of 対応分類 from their tables.
void FillClassificationGroups(DiaryContext& diary);

}  // namespace diary
