#include "diary/slot_window.h"

#include "items/calendar.h"

namespace diary {

using numbers::FiscalYearEnd;
using numbers::FiscalYearStart;

SlotWindow SlotWindowOn(const QString& today, numbers::Closing closing) {
    const QString start = FiscalYearStart(closing, today);
    const items::Ymd startDate = items::ReadDate(start);
    const QString settled = items::DateText(items::PackDate(startDate.year, startDate.month + 2, startDate.day));
    SlotWindow window;
    QString end;
    if (today >= settled) {
        window.first = start;
        end = FiscalYearEnd(closing, today);
    } else {
        window.first = items::DateText(items::PackDate(startDate.year - 1, startDate.month, startDate.day));
        end = FiscalYearEnd(closing, start);
    }
    const items::Ymd endDate = items::ReadDate(end);
    const QString lastMonth = items::DateText(items::PackDate(endDate.year + 2, endDate.month, 1));
    window.last = numbers::MonthClosingDate(closing, lastMonth);
    return window;
}

bool SlotDateEditable(const SlotDates& dates, const SlotWindow& window, int accessLevel) {
    const bool slotInside = window.Holds(dates.slotDate);
    if (slotInside && dates.isNew) return true;
    const bool loadedInside = dates.loadedDate.isEmpty() || window.Holds(dates.loadedDate);
    if (!slotInside || dates.isNew || !loadedInside) return accessLevel == kAnyDateLevel;
    return true;
}

}  // namespace diary
