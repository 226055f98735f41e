#pragma once

#include <QString>

#include "numbers/period_dates.h"

namespace diary {

/// First and last date ("yyyymmdd") that a slot may have to be written today.
struct SlotWindow {
    QString first, last;
    bool Holds(const QString& date) const { return date >= first && date <= last; }
};

/// The window on a day: from the start of the fiscal year, the year before staying open for two months into it, to the
/// closing of the month two years past the year's end.
SlotWindow SlotWindowOn(const QString& today, numbers::Closing closing);

/// The access level whose bearer no window holds.
constexpr int kAnyDateLevel = 6;

/// What decides whether a slot may be written.
struct SlotDates {
    QString slotDate;
    QString loadedDate;  ///< empty when no row was loaded; that counts as inside
    bool isNew = true;
};

/// True when this user may write the slot: inside the window, or with kAnyDateLevel anywhere.
bool SlotDateEditable(const SlotDates& dates, const SlotWindow& window, int accessLevel);

}  // namespace diary
