#include "items/calendar.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <chrono>

#include "items/text_rules.h"

namespace items {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr sys_days kFirst{std::chrono::year{0} / 1 / 1};
constexpr sys_days kLast{std::chrono::year{9999} / 12 / 31};

Ymd FromDays(sys_days day) {
    const year_month_day date{std::clamp(day, kFirst, kLast)};
    return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))};
}

sys_days ToDays(qint64 year, qint64 month, qint64 day) {
    const qint64 months = year * 12 + month - 1;
    // Kept within the calendar's own years before the days are added; every sum of entered parts lies far inside.
    const qint64 first = std::clamp(months, qint64(-30000 * 12), qint64(30000 * 12));
    const qint64 floored = first >= 0 ? first / 12 : -((-first + 11) / 12);
    const year_month_day begin{std::chrono::year{int(floored)}, std::chrono::month{unsigned(first - floored * 12 + 1)},
                               std::chrono::day{1}};
    return sys_days{begin} + std::chrono::days{day - 1};
}

}  // namespace

Ymd PackDate(int year, int month, int day) {
    return FromDays(ToDays(year, month, day));
}

Ymd AddDays(Ymd date, int days) {
    return FromDays(ToDays(date.year, date.month, qint64(date.day) + days));
}

Ymd AddYears(Ymd date, int years) {
    const Ymd from = PackDate(date.year, date.month, date.day);
    const Ymd moved = FromDays(ToDays(qint64(from.year) + years, from.month, from.day));
    const bool leapDayLost = from.month == 2 && from.day == 29 && moved.month == 3;
    return leapDayLost ? AddDays(moved, -1) : moved;
}

int Weekday(Ymd date) {
    const Ymd packed = PackDate(date.year, date.month, date.day);
    return int(std::chrono::weekday{ToDays(packed.year, packed.month, packed.day)}.c_encoding()) + 1;
}

QString WeekdayName(Ymd date) {
    static const std::array<QString, 7> kNames = {
        QStringLiteral("日曜日"), QStringLiteral("月曜日"), QStringLiteral("火曜日"), QStringLiteral("水曜日"),
        QStringLiteral("木曜日"), QStringLiteral("金曜日"), QStringLiteral("土曜日")};
    return kNames[size_t(Weekday(date) - 1)];
}

QString DateText(Ymd date) {
    return Padded(date.year, 4) + Padded(date.month, 2) + Padded(date.day, 2);
}

Ymd ReadDate(const QString& text) {
    return {Val16(text.mid(0, 4)), Val16(text.mid(4, 2)), Val16(text.mid(6, 2))};
}

std::optional<QString> TypedDate(const QString& text, int year) {
    // ー comes from the key of the hyphen while kana are typed.
    static const QRegularExpression kEightDigits(QStringLiteral("^(\\d{4})(\\d{2})(\\d{2})$"));
    static const QRegularExpression kParts(
        QStringLiteral("^(?:(\\d{4})\\s*[-/.－／．−‐ー年]\\s*)?(\\d{1,2})\\s*[-/.－／．−‐ー月]\\s*(\\d{1,2})\\s*日?$"));
    const QString typed = FoldFullWidthDigits(text).trimmed();
    QRegularExpressionMatch parts = kEightDigits.match(typed);
    if (!parts.hasMatch()) parts = kParts.match(typed);
    if (!parts.hasMatch()) return std::nullopt;
    const bool hasYear = !parts.capturedView(1).isEmpty();
    const Ymd date{hasYear ? parts.capturedView(1).toInt() : year, parts.capturedView(2).toInt(),
                   parts.capturedView(3).toInt()};
    return PackDate(date.year, date.month, date.day) == date ? std::optional(DateText(date)) : std::nullopt;
}

QString Padded(int number, int width) {
    const QString digits = QString::number(std::abs(qint64(number))).rightJustified(width, u'0');
    return number < 0 ? u'-' + digits : digits;
}

void NormalizeYmdParts(QString& year, QString& month, QString& day) {
    const Ymd given{Val16(year), Val16(month), Val16(day)};
    if (given == Ymd{}) {
        return;
    }
    Ymd date = PackDate(given.year, given.month, given.day);
    if (date == given) {
        return;
    }
    if (given.day > 27) {
        date = PackDate(given.year, given.month + 1, 0);
    }
    year = Padded(date.year, 4);
    month = Padded(date.month, 2);
    day = Padded(date.day, 2);
}

}  // namespace items
