#include "numbers/period_dates.h"

#include "items/calendar.h"

namespace numbers {

using items::AddYears;
using items::DateText;
using items::PackDate;
using items::ReadDate;
using items::Ymd;

bool ClosesAtMonthEnd(Closing closing) {
    switch (closing.month) {
        case 1:
        case 3:
        case 5:
        case 7:
        case 8:
        case 10:
        case 12:
            return closing.day == 31;
        case 4:
        case 6:
        case 9:
        case 11:
            return closing.day == 30;
        case 2:
            return closing.day == 28 || closing.day == 29;
        default:
            return false;
    }
}

QString MonthClosingDate(Closing closing, const QString& date) {
    const Ymd day = ReadDate(date);
    if (ClosesAtMonthEnd(closing)) {
        return DateText(PackDate(day.year, day.month + 1, 0));
    }
    const bool behindClosing = closing.day < day.day;
    return DateText(PackDate(day.year, behindClosing ? day.month + 1 : day.month, closing.day));
}

QString FiscalYearStart(Closing closing, const QString& date) {
    const int year = ReadDate(date).year;
    const Ymd start = ClosesAtMonthEnd(closing) ? PackDate(year, closing.month + 1, 1)
                                                : PackDate(year, closing.month, closing.day + 1);
    return DateText(DateText(start) > date ? AddYears(start, -1) : start);
}

QString FiscalYearEnd(Closing closing, const QString& date) {
    const int year = ReadDate(date).year;
    const Ymd end =
        ClosesAtMonthEnd(closing) ? PackDate(year, closing.month + 1, 0) : PackDate(year, closing.month, closing.day);
    // By month and day: an end on 28 February stays there in a leap year.
    return DateText(DateText(end) < date ? AddYears(end, 1) : end);
}

}  // namespace numbers
