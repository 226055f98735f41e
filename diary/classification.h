#pragma once

#include "diary/diary_context.h"

// How the classifications of a slot change. A place in a group is what is stored, from 1; 0 is unset.
namespace diary {

/// A click on option `index` (from 0) of one of the three groups. Another matter takes its handling back to unset.
void OptionClicked(DiaryContext& diary, int ActivitySlot::*field, int index);

/// The number beside a matter changed; its list follows.
void HandlingChanged(DiaryContext& diary, int index);

/// A name was chosen in the list beside a matter; its number follows.
void HandlingChosen(DiaryContext& diary, int index);

/// The kind of counterparty was changed by hand.
void CounterpartyKindChanged(DiaryContext& diary);

}  // namespace diary
