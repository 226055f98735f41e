#pragma once

#include <QString>
#include <optional>

// Dates as year, month and day numbers that may be out of range, and their text forms. Proleptic Gregorian calendar.
namespace items {

struct Ymd {
    int year = 0;
    int month = 0;
    int day = 0;
    bool operator==(const Ymd&) const = default;
};

/// The date of three numbers by the calendar's carry rule: month 13 is January of the next year, day 32 of January is
/// 1 February, day 0 the last day of the month before. The result is kept within the years 0 to 9999, the first and the
/// last day of that range standing for what lies beyond.
Ymd PackDate(int year, int month, int day);

/// The date that many days later (earlier when negative), within the same range.
Ymd AddDays(Ymd date, int days);

/// The same month and day that many years later; 29 February becomes 28 February where there is none.
Ymd AddYears(Ymd date, int years);

/// 1 for Sunday to 7 for Saturday.
int Weekday(Ymd date);

/// "日曜日" to "土曜日".
QString WeekdayName(Ymd date);

/// "yyyymmdd".
QString DateText(Ymd date);

/// The parts of a text "yyyymmdd", read by position; what isn't a number reads as 0.
Ymd ReadDate(const QString& text);

/// A date as people write it, as "yyyymmdd": "2026/3/5", "3/5" in the year `year`, "20260305", with "/", "-" or "." or
/// as 2026年3月5日, in either width and with blanks around. The year has four digits. Nothing for what is no date of
/// the calendar.
std::optional<QString> TypedDate(const QString& text, int year);

/// A whole number, zero-padded to `width`: "0000", "00". Wider numbers stay whole.
QString Padded(int number, int width);

/// Repairs date parts in place. Three zeros (or blanks) stay as they are, and so does a valid date, in whatever form it
/// was typed. A day above 27 in a month that lacks it becomes that month's last day; a month out of range carries into
/// the year. Repaired parts come as "0000", "00", "00".
void NormalizeYmdParts(QString& year, QString& month, QString& day);

}  // namespace items
