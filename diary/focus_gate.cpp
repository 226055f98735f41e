#include "diary/focus_gate.h"

#include "diary/commands.h"
#include "screen/focus_walk.h"

namespace diary {

namespace {

constexpr int kBehindKeys = kLastKeyOrder + 1;

const std::array<const char*, 10> kKeyItems{"営業活動日付年", "営業活動日付月",  "営業活動日付日", "開始時刻時",
                                            "開始時刻分",     "終了時刻時",      "終了時刻分",     "担当者コード",
                                            "部門コード",     "セクションコード"};

/// Name items never keep the focus: they hand it to the code behind them when it came from the code in front, and give
/// it back to that code otherwise.
QString NextAfterNameItem(const DiaryContext& diary, const QString& name) {
    struct Handover {
        const char* nameItem;
        const char* code;
        const char* next;
    };
    static const Handover handovers[] = {{"担当者名", "担当者コード", "部門コード"},
                                         {"部門名", "部門コード", "セクションコード"},
                                         {"セクション名", "セクションコード", "ヘッド終了"}};
    for (const Handover& handover : handovers) {
        if (name != QString::fromUtf8(handover.nameItem)) continue;
        const screen::Control* left = diary.state.LastLeftControl;
        const bool fromCode = left && left->Name() == QString::fromUtf8(handover.code);
        return QString::fromUtf8(fromCode ? handover.next : handover.code);
    }
    return {};
}

}  // namespace

const QStringList& GatedItems() {
    static const QStringList items{"営業活動日付年",   "営業活動日付月",     "営業活動日付日",
                                   "営業活動曜日",     "開始時刻時",         "開始時刻分",
                                   "終了時刻時",       "終了時刻分",         "担当者コード",
                                   "担当者名",         "部門コード",         "部門名",
                                   "セクションコード", "セクション名",       "出金No",
                                   "案件No",           "相手先コード",       "相手先略称",
                                   "相手先郵便番号",   "相手先住所A",        "相手先住所B",
                                   "相手先住所C",      "相手先名称A",        "相手先名称B",
                                   "相手先電話",       "相手先FAX",          "相手先御担当者コード",
                                   "相手先御担当者名", "相手先御担当者電話", "営業引合No",
                                   "営業見積No",       "顧客注文No",         "営業受注No",
                                   "営業活動摘要"};
    return items;
}

int GateOrder(const QString& name) {
    static const QHash<QString, int> orders{
        {"営業活動日付年", 1}, {"営業活動日付月", 2}, {"営業活動日付日", 3},   {"営業活動曜日", 3}, {"開始時刻時", 4},
        {"開始時刻分", 5},     {"終了時刻時", 6},     {"終了時刻分", 7},       {"担当者コード", 8}, {"担当者名", 9},
        {"部門コード", 9},     {"部門名", 10},        {"セクションコード", 10}};
    return orders.value(name, kBehindKeys);
}

int FirstMissingKeyItem(const DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    const QString* const fields[] = {
        &key.SlotYear, &key.SlotMonth, &key.SlotDay,   &key.StartHour,         &key.StartMinute,
        &key.EndHour,  &key.EndMinute, &key.StaffCode, &diary.slot.部門コード, &diary.slot.セクションコード};
    int number = 0;
    for (const QString* field : fields) {
        ++number;
        if (field->isEmpty()) return number;
    }
    return 0;
}

void FocusControl(DiaryContext& diary, screen::Control& item) {
    screen::MoveFocusTo(diary.form, item, diary.pick.PendingFocusControl);
}

void FocusControl(DiaryContext& diary, const char* item) {
    FocusControl(diary, diary.Item(item));
}

void FocusMissingItem(DiaryContext& diary, int number) {
    if (number >= 1 && number <= static_cast<int>(kKeyItems.size()))
        FocusControl(diary, kKeyItems[static_cast<std::size_t>(number - 1)]);
}

void FocusByItemName(DiaryContext& diary, const QString& name) {
    if (name.isEmpty()) return;
    if (diary.pick.ActiveEntryControl && diary.pick.ActiveEntryControl->Name() == name) return;
    if (GatedItems().contains(name) || name == QStringLiteral("ヘッド終了")) FocusControl(diary, diary.Item(name));
}

bool FocusGate(DiaryContext& diary, int level, const QString& name, int order) {
    int missing = 0;
    // A level of 3 is kept for a second group of required items; as long as there is none it acts as level 1.
    if (level == 1 || level == 3) {
        missing = FirstMissingKeyItem(diary);
        if (missing == 0 || missing >= order)
            FocusByItemName(diary, NextAfterNameItem(diary, name));
        else
            FocusMissingItem(diary, missing);
    }
    RefreshCommands(diary);
    return missing > 0;
}

}  // namespace diary
