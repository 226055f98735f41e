#include "diary/text_items.h"

#include <algorithm>

#include "diary/commands.h"
#include "diary/painting.h"
#include "items/text_rules.h"

namespace diary {

const std::array<SlotText, 7> kLimitedTexts{{{"相手先略称", &ActivitySlot::相手先略称},
                                             {"相手先住所A", &ActivitySlot::相手先住所A},
                                             {"相手先住所B", &ActivitySlot::相手先住所B},
                                             {"相手先住所C", &ActivitySlot::相手先住所C},
                                             {"相手先名称A", &ActivitySlot::相手先名称A},
                                             {"相手先名称B", &ActivitySlot::相手先名称B},
                                             {"相手先御担当者名", &ActivitySlot::相手先御担当者名}}};

bool IsFreeText(const QString& item) {
    return item == QStringLiteral("営業活動摘要") ||
           std::any_of(kLimitedTexts.begin(), kLimitedTexts.end(),
                       [&item](const SlotText& limited) { return item == QString::fromUtf8(limited.name); });
}

void CheckItemLength(DiaryContext& diary, const screen::Control& item) {
    diary.ShowNotice(items::ByteLengthNotice(item.Text(), item.maxLength));
}

void LimitedTextLeft(DiaryContext& diary, const SlotText& text) {
    const screen::Control& item = diary.Item(text.name);
    QString& field = diary.slot.*text.field;
    if (item.Text() == field) return;
    diary.state.InputHappened = true;
    diary.state.TypedTexts.insert(item.Name());
    field = items::TruncateToBytes(item.Text(), item.maxLength);
    if (text.field == &ActivitySlot::相手先略称 && diary.slot.相手先名称A.isEmpty()) diary.slot.相手先名称A = field;
    PaintScreen(diary);
}

void PhoneLeft(DiaryContext& diary, const SlotText& text) {
    const QString typed = diary.Item(text.name).Text();
    QString& field = diary.slot.*text.field;
    const QString digits = items::DigitsOnly(typed);
    if (digits == items::DigitsOnly(field)) return;
    diary.state.InputHappened = true;
    diary.state.TypedTexts.insert(QString::fromUtf8(text.name));
    field = digits.isEmpty() ? QString() : typed;
    PaintScreen(diary);
}

void MemoChanged(DiaryContext& diary) {
    const QString text = diary.Item("営業活動摘要").Text();
    if (text == diary.slot.営業活動摘要) return;
    diary.slot.営業活動摘要 = text;
    diary.state.InputHappened = true;
    RefreshCommands(diary);
}

}  // namespace diary
