#include "move/target_slot.h"

#include "items/calendar.h"
#include "items/display_forms.h"
#include "items/text_rules.h"

namespace move {

using items::Padded;
using items::Val16;

namespace {

constexpr int kHour = 60;
constexpr int kDay = 24 * kHour;

bool DateComplete(const TargetSlot& target) {
    return !target.移動日付年.isEmpty() && !target.移動日付月.isEmpty() && !target.移動日付日.isEmpty();
}

bool TimesComplete(const TargetSlot& target) {
    return !target.移動開始時刻時.isEmpty() && !target.移動開始時刻分.isEmpty() && !target.移動終了時刻時.isEmpty() &&
           !target.移動終了時刻分.isEmpty();
}

items::Ymd DateOf(const TargetSlot& target) {
    return items::PackDate(Val16(target.移動日付年), Val16(target.移動日付月), Val16(target.移動日付日));
}

/// Minutes from midnight.
void PutTimes(TargetSlot& target, int start, int end) {
    target.移動開始時刻時 = Padded(start / kHour, 2);
    target.移動開始時刻分 = Padded(start % kHour, 2);
    target.移動終了時刻時 = Padded(end / kHour, 2);
    target.移動終了時刻分 = Padded(end % kHour, 2);
}

}  // namespace

SlotKey TargetSlot::Key() const {
    return {移動担当者コード, 移動日付年 + 移動日付月 + 移動日付日, 移動開始時刻時 + ":" + 移動開始時刻分,
            移動終了時刻時 + ":" + 移動終了時刻分};
}

int CheckTargetFilled(const TargetSlot& target) {
    int number = 0;
    for (const TargetText& text : kTypedTexts) {
        ++number;
        if ((target.*text.field).isEmpty()) return number;
    }
    return 0;
}

bool Fits(const TargetText& item, const QString& text) {
    return items::DigitsOnly(text) == text && (item.most < 0 || Val16(text) <= item.most);
}

void TakeDate(TargetSlot& target, const QString& date) {
    target.移動日付年 = date.mid(0, 4);
    target.移動日付月 = date.mid(4, 2);
    target.移動日付日 = date.mid(6, 2);
    RepairDate(target);
}

void TakeTimes(TargetSlot& target, const QString& start, const QString& end) {
    target.移動開始時刻時 = start.mid(0, 2);
    target.移動開始時刻分 = start.mid(3, 2);
    target.移動終了時刻時 = end.mid(0, 2);
    target.移動終了時刻分 = end.mid(3, 2);
}

void RepairDate(TargetSlot& target) {
    target.移動曜日.clear();
    if (!DateComplete(target)) return;
    target.移動日付年 = Padded(Val16(target.移動日付年), 4);
    target.移動日付月 = Padded(Val16(target.移動日付月), 2);
    target.移動日付日 = Padded(Val16(target.移動日付日), 2);
    items::NormalizeYmdParts(target.移動日付年, target.移動日付月, target.移動日付日);
    target.移動曜日 = items::WeekdayName(DateOf(target));
}

void StepDate(TargetSlot& target, int days) {
    if (DateComplete(target)) TakeDate(target, items::DateText(items::AddDays(DateOf(target), days)));
}

void StepTimes(TargetSlot& target, int minutes) {
    if (!DateComplete(target) || !TimesComplete(target)) return;
    int start = Val16(target.移動開始時刻時) * kHour + Val16(target.移動開始時刻分) + minutes;
    int end = Val16(target.移動終了時刻時) * kHour + Val16(target.移動終了時刻分) + minutes;
    const int days = start < 0 ? -1 : start >= kDay ? 1 : 0;
    if (days != 0) StepDate(target, days);
    start -= days * kDay;
    end -= days * kDay;
    // An end that was typed below its start means the next day, and goes round on its own.
    if (end < 0) end += kDay;
    if (end >= 100 * kHour) end -= kDay;
    PutTimes(target, start, end);
}

void SetToNow(TargetSlot& target, const QDateTime& now) {
    TakeDate(target, items::DateText(now));
    const int start = now.time().hour() * kHour + now.time().minute() / 10 * 10;
    PutTimes(target, start, start + 30);
}

}  // namespace move
