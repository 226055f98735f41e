#pragma once

#include "diary/diary_context.h"

// The sentences of the line `結果` that tell of a slot.
namespace diary {

/// "2026/11/23" of a text that begins with "yyyymmdd"; a shorter one as it stands.
QString DateShown(const QString& date);

/// "2026/11/23 09:00～09:30 銀河電機": date, times and short name of a slot; `date` is "yyyymmdd".
QString SlotWords(const QString& date, const QString& start, const QString& end, const QString& party);
/// The same of the slot on the screen.
QString SlotWords(const DiaryContext& diary);

/// What keeps 登録 off: the first key item that is empty, what isn't chosen, or that nothing was typed. Empty when
/// nothing does.
QString MissingWords(const DiaryContext& diary);

/// "発信者、要件が選ばれていません。"; the handling counts only when a matter is chosen. Empty when all are.
QString NotChosenWords(const ActivitySlot& slot);

}  // namespace diary
