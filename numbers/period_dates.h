#pragma once

#include <QString>

// The period dates that follow from the day on which the company's accounts close.
namespace numbers {

/// When the accounts close: month 1 to 12 (`決算月`) and day (`決算日`), as the company record holds them.
struct Closing {
    int month = 0;
    int day = 0;
};

/// True when the pair names the end of its month (28 or 29 for February), whatever length that month has in a year.
bool ClosesAtMonthEnd(Closing closing);

/// Closing date of the month of a date; dates are texts "yyyymmdd". A date behind a fixed closing day belongs to the
/// next month's closing.
QString MonthClosingDate(Closing closing, const QString& date);

/// First day of the fiscal year that holds the date.
QString FiscalYearStart(Closing closing, const QString& date);

/// Last day of the fiscal year that holds the date. One year is added to the end by month and day: an accounts year
/// that ends on 28 February ends there in a leap year too when the date lies behind it.
QString FiscalYearEnd(Closing closing, const QString& date);

}  // namespace numbers
