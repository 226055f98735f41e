#pragma once

#include <optional>

#include "diary/diary_context.h"

namespace diary {

/// What became of a save.
struct SaveOutcome {
    bool done = false;       ///< the row is stored
    store::Fault fault;      ///< when it isn't: of the first statement that failed
    bool oldIsGone = false;  ///< when it isn't: what stood at that start was deleted all the same
};

/// Stores the slot: of an existing one the row of the same start is deleted first, of a new one the day's header row is
/// made sure of; then the row is inserted and the phone directory follows. There is no transaction: each statement
/// stands alone, and a failed one stands in the run history. The papers of what is replaced come along.
SaveOutcome WriteSlot(DiaryContext& diary);

/// What became of a delete.
struct DeleteOutcome {
    bool done = false;        ///< the statement ran, whether it found a row or not
    store::Fault fault;       ///< when it didn't
    std::optional<int> rows;  ///< that it took; nothing when they couldn't be counted beforehand
};

/// Deletes the slot's row by its whole key. The header row of the day stays.
DeleteOutcome DeleteDetailExact(DiaryContext& diary);

/// The INSERT of the slot's row with all 58 columns. `slot.登録日付` holds the stamp of this save.
QString DetailInsertStatement(const session::SessionContext& session, const ActivitySlot& slot);

}  // namespace diary
