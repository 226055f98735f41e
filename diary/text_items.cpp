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

namespace {

bool IsFreeText(const QString& item) {
    return item == QStringLiteral("営業活動摘要") ||
           std::any_of(kLimitedTexts.begin(), kLimitedTexts.end(),
                       [&item](const SlotText& limited) { return item == QString::fromUtf8(limited.name); });
}

}  // namespace

bool IsNumberText(const QString& item) {
    static const QStringList items{"相手先郵便番号", "相手先電話", "相手先FAX", "相手先御担当者電話"};
    return items.contains(item);
}

void TakeText(const store::Recordset& row, const SlotText& text, ActivitySlot& slot) {
    const QString column = QString::fromUtf8(text.name);
    const auto value = row.Value(column);
    if (value) slot.*text.field = IsNumberText(column) ? items::WithoutQuotes(*value) : *value;
}

void AddText(session::InsertBuilder& insert, const QString& column, const QString& text) {
    if (IsFreeText(column))
        insert.Escaped(column, text);
    else if (IsNumberText(column))
        insert.Number(column, text);
    else
        insert.Quoted(column, text);
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
    const QString typed = items::WithoutQuotes(diary.Item(text.name).Text());
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
