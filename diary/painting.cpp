#include "diary/painting.h"

#include "diary/attachment_page.h"
#include "diary/date_time_entry.h"
#include "diary/screen_items.h"

namespace diary {

namespace {

using ItemText = std::pair<QString, QString>;

/// What the items of the key and the staff group show, in the order in which they are written.
std::vector<ItemText> KeyTexts(const DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    std::vector<ItemText> texts{{"営業活動日付年", key.SlotYear}, {"営業活動日付月", key.SlotMonth},
                                {"営業活動日付日", key.SlotDay},  {"営業活動曜日", diary.slot.営業活動曜日},
                                {"開始時刻時", key.StartHour},    {"開始時刻分", key.StartMinute},
                                {"終了時刻時", key.EndHour},      {"終了時刻分", key.EndMinute},
                                {"担当者コード", key.StaffCode}};
    for (const SlotText& text : kStaffTexts)
        texts.emplace_back(QString::fromUtf8(text.name), diary.slot.*text.field);
    return texts;
}

/// The same of counterparty, contact, documents and memo.
std::vector<ItemText> ContentTexts(const DiaryContext& diary) {
    std::vector<ItemText> texts;
    for (const SlotText& text : kPartyTexts)
        texts.emplace_back(QString::fromUtf8(text.name), diary.slot.*text.field);
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind)
        texts.emplace_back(session::DocumentKinds()[kind] + "No", diary.slot.documents[kind].No);
    texts.emplace_back("営業活動摘要", diary.slot.営業活動摘要);
    return texts;
}

void Write(DiaryContext& diary, const std::vector<ItemText>& texts) {
    for (const auto& [item, text] : texts)
        diary.Item(item).SetText(text);
}

/// The one-time pass over the option groups. Later paints leave the buttons pressed, so that a cleared slot still shows
/// what was pressed last.
void PrepareGroups(DiaryContext& diary) {
    const ScreenState& state = diary.state;
    for (int index = 0; index < k発信区分Options; ++index) {
        diary.Item("opb_発信区分", index).SetVisible(index <= state.発信区分Count);
        diary.Item("opb_発信区分", index).SetValue(0);
    }
    for (int index = 0; index < k応対方法Options; ++index) {
        diary.Item("opb_応対方法", index).SetVisible(index <= state.応対方法Count);
        // The sixth button is neither filled nor released: no more than five rows are ever read.
        if (index < k応対方法Options - 1) diary.Item("opb_応対方法", index).SetValue(0);
    }
    for (int index = 0; index < k要件分類Options; ++index) {
        const bool used = index <= state.要件分類Count;
        for (const char* item : {"opb_要件分類", "対応分類", "対応分類名称"})
            diary.Item(item, index).SetVisible(used);
        if (used) diary.Item("opb_要件分類", index).SetValue(0);
    }
}

void PressOptions(DiaryContext& diary) {
    const ActivitySlot& slot = diary.slot;
    if (slot.発信区分 >= 1 && slot.発信区分 <= 3) diary.Item("opb_発信区分", slot.発信区分 - 1).SetValue(1);
    if (slot.応対方法 >= 1 && slot.応対方法 <= 5) diary.Item("opb_応対方法", slot.応対方法 - 1).SetValue(1);
    const int matters = diary.state.要件分類Count + 1;
    for (int index = 0; index < matters; ++index) {
        diary.Item("対応分類", index).SetEnabled(false);
        diary.Item("対応分類", index).SetValue(0);
        diary.Item("対応分類名称", index).SetEnabled(false);
        diary.Item("対応分類名称", index).SetListIndex(0);
    }
    if (slot.要件分類 < 1 || slot.要件分類 > matters) return;
    // Only the pair beside the chosen matter is live.
    const int live = slot.要件分類 - 1;
    diary.Item("opb_要件分類", live).SetValue(1);
    diary.Item("対応分類", live).SetEnabled(true);
    diary.Item("対応分類名称", live).SetEnabled(true);
    diary.Item("対応分類", live).SetValue(slot.対応分類);
    diary.Item("対応分類名称", live).SetListIndex(slot.対応分類);
}

/// A button that is only left pressed from the slot before is not chosen.
void MarkChosen(DiaryContext& diary) {
    const ActivitySlot& slot = diary.slot;
    const auto mark = [&diary](const char* group, int count, int place) {
        for (int index = 0; index < count; ++index)
            diary.Item(group, index).SetChosen(index + 1 == place);
    };
    mark("opb_発信区分", k発信区分Options, slot.発信区分);
    mark("opb_応対方法", k応対方法Options, slot.応対方法);
    mark("opb_要件分類", k要件分類Options, slot.要件分類);
}

void SetPartyTabStops(DiaryContext& diary) {
    const bool typed = diary.slot.相手先名称入力区分 != 0;
    for (const char* item : {"相手先略称", "相手先郵便番号", "相手先住所A", "相手先住所B", "相手先住所C", "相手先名称A",
                             "相手先名称B", "相手先電話", "相手先FAX"})
        diary.Item(item).SetTabStop(typed);
}

void PaintItems(DiaryContext& diary) {
    const FillingScope filling(diary.state);
    Write(diary, KeyTexts(diary));
    if (!diary.state.SlotGroupsPrepared) {
        PrepareGroups(diary);
        diary.state.SlotGroupsPrepared = true;
    }
    PressOptions(diary);
    MarkChosen(diary);
    diary.Item("相手先区分").SetValue(diary.slot.相手先区分);
    Write(diary, ContentTexts(diary));
    SetPartyTabStops(diary);
}

}  // namespace

void PaintScreen(DiaryContext& diary) {
    PaintItems(diary);
    FollowSlot(diary);
}

std::optional<QString> PaintedText(const DiaryContext& diary, const QString& item) {
    for (const auto& texts : {KeyTexts(diary), ContentTexts(diary)})
        for (const auto& [name, text] : texts)
            if (name == item) return text;
    return std::nullopt;
}

void RefreshScreen(DiaryContext& diary) {
    PaintItems(diary);
    ShowAttachments(diary);
}

void ClearSlot(DiaryContext& diary) {
    diary.state.InputHappened = false;
    DefaultTimes(diary);
    const QString weekday = diary.slot.営業活動曜日;
    diary.slot = ActivitySlot();
    diary.slot.営業活動曜日 = weekday;
    diary.slot.相手先名称入力区分 = 1;
    diary.state.CameAs = diary.slot;
    diary.state.TypedTexts.clear();
    diary.state.PickedKept.clear();
    diary.state.LoadedSlotDate.clear();
    diary.state.Loaded = LoadedRow();
    diary.session.StaffCode.clear();
    diary.session.NewSlotMode = true;
}

}  // namespace diary
