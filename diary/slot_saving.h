#pragma once

#include "diary/diary_context.h"

namespace diary {

/// Stores the slot: of an existing one the row of the same start is deleted first, of a new one the day's header row is
/// made sure of; then the row is inserted and the phone directory follows. There is no transaction: each statement
/// stands alone, and a failed one stands in the run history. The papers of what is replaced come along. True when the
/// row was inserted.
bool WriteSlot(DiaryContext& diary);

/// Deletes the slot's row by its whole key. The header row of the day stays. True when the statement ran, also when
/// there was no such row.
bool DeleteDetailExact(DiaryContext& diary);

/// The INSERT of the slot's row with all 58 columns. `slot.登録日付` holds the stamp of this save.
QString DetailInsertStatement(const session::SessionContext& session, const ActivitySlot& slot);

}  // namespace diary
