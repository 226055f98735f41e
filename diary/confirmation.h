#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Highest answer of AskRegister that means to go on.
inline constexpr int kConfirmed = 1;

/// Asks whether to register the slot, or in red whether to change it, in the dialog `msg登録確認`. `inputMessage` is
/// shown below the question, and below that `content`, what the user should know of it (WordsBeforeSave). Returns 1 for
/// yes, 2 for no; closing the dialog by its frame is a no.
int AskRegister(DiaryContext& diary, const QString& programId, const QString& inputMessage,
                const QString& content = {});

}  // namespace diary
