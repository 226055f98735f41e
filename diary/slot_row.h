#pragma once

#include "diary/activity_slot.h"
#include "store/recordset.h"

// A stored row of `T営業活動明細`, as the record takes it.
namespace diary {

/// What a load leaves as the screen holds it.
struct Skipped {
    bool deal = false, payment = true;
};

/// Takes the content of a row into the record; a Null never clears what it held before.
void TakeRow(const store::Recordset& row, ActivitySlot& slot, Skipped skipped);

/// The whole content of a row, as a new record has it.
ActivitySlot SlotOfRow(const store::Recordset& row);

}  // namespace diary
