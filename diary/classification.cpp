#include "diary/classification.h"

#include "diary/commands.h"
#include "diary/painting.h"

namespace diary {

namespace {

void Store(DiaryContext& diary, int& field, int value) {
    diary.state.InputHappened = true;
    field = value;
}

void Show(DiaryContext& diary) {
    PaintScreen(diary);
    RefreshCommands(diary);
}

}  // namespace

void OptionClicked(DiaryContext& diary, int ActivitySlot::*field, int index) {
    if (diary.slot.*field == index + 1) return;
    Store(diary, diary.slot.*field, index + 1);
    if (field == &ActivitySlot::要件分類) diary.slot.対応分類 = 0;
    Show(diary);
}

void HandlingChanged(DiaryContext& diary, int index) {
    const int value = diary.Item("対応分類", index).Value();
    diary.Item("対応分類名称", index).SetListIndex(value);
    if (diary.slot.対応分類 == value) return;
    Store(diary, diary.slot.対応分類, value);
    Show(diary);
}

void HandlingChosen(DiaryContext& diary, int index) {
    diary.Item("対応分類", index).SetValue(diary.Item("対応分類名称", index).ListIndex());
}

void CounterpartyKindChanged(DiaryContext& diary) {
    const int value = diary.Item("相手先区分").Value();
    if (diary.slot.相手先区分 == value) return;
    Store(diary, diary.slot.相手先区分, value);
    Show(diary);
}

}  // namespace diary
