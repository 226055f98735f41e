#include "diary/date_time_entry.h"

#include "items/calendar.h"
#include "items/display_forms.h"
#include "items/text_rules.h"

namespace diary {

using items::Padded;
using items::Val16;
using session::SessionContext;

namespace {

bool DateComplete(const SessionContext& key) {
    return !key.SlotYear.isEmpty() && !key.SlotMonth.isEmpty() && !key.SlotDay.isEmpty();
}

bool TimesComplete(const SessionContext& key) {
    return !key.StartHour.isEmpty() && !key.StartMinute.isEmpty() && !key.EndHour.isEmpty() && !key.EndMinute.isEmpty();
}

void JoinTimes(SessionContext& key) {
    key.StartTime = key.StartHour + ":" + key.StartMinute;
    key.EndTime = key.EndHour + ":" + key.EndMinute;
}

void EndNotBeforeStart(SessionContext& key) {
    if (!TimesComplete(key) || key.EndTime >= key.StartTime) return;
    key.EndTime = key.StartTime;
    key.EndHour = key.EndTime.mid(0, 2);
    key.EndMinute = key.EndTime.mid(3, 2);
}

void TakeDate(DiaryContext& diary, items::Ymd date) {
    SessionContext& key = diary.session;
    key.SlotYear = Padded(date.year, 4);
    key.SlotMonth = Padded(date.month, 2);
    key.SlotDay = Padded(date.day, 2);
    NormalizeSlotDate(diary);
}

QString Shifted(const QString& part, int by) {
    return Padded(Val16(part) + by, 2);
}

/// The four time parts while they are stepped; they go back to the session as one.
struct TimeParts {
    QString startHour, startMinute, endHour, endMinute;
};

/// Back by an hour or part of one. `minutes` 60 leaves the minutes alone.
void StepBack(DiaryContext& diary, TimeParts& time, int minutes) {
    const QString step = QString::number(minutes);
    const bool wholeHour = minutes == 60;
    if (!wholeHour && time.startMinute >= step) {
        time.startMinute = Shifted(time.startMinute, -minutes);
    } else {
        if (time.startHour != QLatin1String("00")) {
            time.startHour = Shifted(time.startHour, -1);
        } else {
            // The start crosses midnight; the end keeps its distance as an hour from 24 up.
            StepDate(diary, DateUnit::Day, -1);
            time.startHour = QStringLiteral("23");
            time.endHour = Shifted(diary.session.EndHour, 24);
        }
        if (!wholeHour) time.startMinute = Shifted(time.startMinute, 60 - minutes);
    }
    if (!wholeHour && time.endMinute >= step) {
        time.endMinute = Shifted(time.endMinute, -minutes);
    } else {
        // An hour of 0 here is that of the day after: an end of the same day lies behind its start.
        time.endHour = Shifted(time.endHour, Val16(time.endHour) < 1 ? 23 : -1);
        if (!wholeHour) time.endMinute = Shifted(time.endMinute, 60 - minutes);
    }
}

void StepForward(DiaryContext& diary, TimeParts& time, int minutes) {
    const QString limit = QString::number(60 - minutes);
    const bool wholeHour = minutes == 60;
    if (!wholeHour && time.startMinute < limit) {
        time.startMinute = Shifted(time.startMinute, minutes);
    } else {
        if (time.startHour != QLatin1String("23")) {
            time.startHour = Shifted(time.startHour, 1);
        } else {
            StepDate(diary, DateUnit::Day, 1);
            time.startHour = QStringLiteral("00");
            const QString& end = diary.session.EndHour;
            time.endHour = end > QLatin1String("23") ? Shifted(end, -24) : QStringLiteral("00");
        }
        if (!wholeHour) time.startMinute = Shifted(time.startMinute, minutes - 60);
    }
    if (!wholeHour && time.endMinute < limit) {
        time.endMinute = Shifted(time.endMinute, minutes);
    } else {
        time.endHour = Shifted(time.endHour, 1);
        if (!wholeHour) time.endMinute = Shifted(time.endMinute, minutes - 60);
    }
}

}  // namespace

QString TypedPart(const QString& text, const QString& mask) {
    return items::DigitsOnly(text).isEmpty() ? QString() : items::FormatToMask(text, mask);
}

void NormalizeSlotDate(DiaryContext& diary) {
    SessionContext& key = diary.session;
    if (!DateComplete(key)) {
        key.SlotDate = key.SlotYear + key.SlotMonth + key.SlotDay;
        diary.slot.営業活動曜日.clear();
        return;
    }
    key.SlotYear = Padded(Val16(key.SlotYear), 4);
    key.SlotMonth = Padded(Val16(key.SlotMonth), 2);
    key.SlotDay = Padded(Val16(key.SlotDay), 2);
    items::NormalizeYmdParts(key.SlotYear, key.SlotMonth, key.SlotDay);
    key.SlotDate = key.SlotYear + key.SlotMonth + key.SlotDay;
    diary.slot.営業活動曜日 =
        items::WeekdayName(items::PackDate(Val16(key.SlotYear), Val16(key.SlotMonth), Val16(key.SlotDay)));
}

void NormalizeStartTime(DiaryContext& diary) {
    diary.session.StartTime = diary.session.StartHour + ":" + diary.session.StartMinute;
    EndNotBeforeStart(diary.session);
}

void NormalizeEndTime(DiaryContext& diary) {
    diary.session.EndTime = diary.session.EndHour + ":" + diary.session.EndMinute;
    EndNotBeforeStart(diary.session);
}

void DefaultTimes(DiaryContext& diary) {
    SessionContext& key = diary.session;
    const QString now = items::TimeText(diary.clock.Now());
    key.StartHour = now.mid(0, 2);
    const QString minute = now.mid(3, 2);
    const int hour = Val16(key.StartHour);
    int tens = 0;
    while (tens < 5 && minute >= Padded((tens + 1) * 10, 2))
        ++tens;
    key.StartMinute = Padded(tens * 10, 2);
    key.EndHour = Padded(tens < 3 ? hour : hour + 1, 2);
    key.EndMinute = Padded((tens * 10 + 30) % 60, 2);
    JoinTimes(key);
}

void SetTimesToNow(DiaryContext& diary) {
    TakeDate(diary, items::ReadDate(items::DateText(diary.clock.Now())));
    DefaultTimes(diary);
}

void StepDate(DiaryContext& diary, DateUnit unit, int amount) {
    const SessionContext& key = diary.session;
    if (!DateComplete(key)) return;
    const items::Ymd date = items::PackDate(Val16(key.SlotYear), Val16(key.SlotMonth), Val16(key.SlotDay));
    TakeDate(diary, items::AddDays(date, unit == DateUnit::Week ? amount * 7 : amount));
}

void StepTimes(DiaryContext& diary, int minutes, int direction) {
    SessionContext& key = diary.session;
    if (!TimesComplete(key) || !DateComplete(key)) return;
    TimeParts time{key.StartHour, key.StartMinute, key.EndHour, key.EndMinute};
    if (direction < 0)
        StepBack(diary, time, minutes);
    else
        StepForward(diary, time, minutes);
    key.StartHour = time.startHour;
    key.StartMinute = time.startMinute;
    key.EndHour = time.endHour;
    key.EndMinute = time.endMinute;
    JoinTimes(key);
}

int ActivityMinutes(const QString& start, const QString& end) {
    int endHour = Val16(end.mid(0, 2));
    if (end < start) endHour += 24;
    return endHour * 60 + Val16(end.mid(3, 2)) - Val16(start.mid(0, 2)) * 60 - Val16(start.mid(3, 2));
}

}  // namespace diary
