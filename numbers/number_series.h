#pragma once

#include <QString>
#include <optional>

#include "numbers/period_dates.h"
#include "platform/clock.h"
#include "screen/screen_host.h"
#include "session/data_access.h"

namespace numbers {

/// What an issue gives when no number could be drawn.
inline const QString kNoNumber = QStringLiteral("00000000");

/// When the company's accounts close, as the session holds it.
Closing CompanyClosing(const session::SessionContext& context);

/// The number series of the suite. A series counts for ever, by fiscal year, by closing month or by day; for the whole
/// company or for each site. Two clients may draw the same number: whoever uses one checks it before use.
class NumberSeries {
  public:
    NumberSeries(session::SessionContext& context, session::DataAccess& data, screen::ScreenHost& host,
                 const platform::Clock& clock)
        : context_(context), data_(data), host_(host), clock_(clock) {}

    /// The period date under which a number of the series stands on a date ("yyyymmdd"; "99999999" means today).
    /// Empty for an unknown series, "88888888" for an unknown kind. Changes nothing.
    QString ResolveNumberDate(const QString& seriesId, const QString& date);

    /// Draws the next number: eight digits (more behind 99999999). "00000000", told in a message twice, when the series
    /// is unknown; empty when its kind has no rule or its count can't be found. `site` counts only where numbers are by
    /// site.
    QString IssueNumber(const QString& seriesId, const QString& periodDate, const QString& site);

  private:
    /// One table of counts: its name, and the key of the row that an issue draws from.
    struct CountRow {
        QString table;
        QString seriesId;
        std::optional<QString> site;        ///< where numbers are by site
        std::optional<QString> periodDate;  ///< where they are by period
        QString Condition() const;
        QString InsertStatement() const;
    };

    QString IssueSerial(const QString& seriesId, const QString& periodDate, const QString& site, bool bySite);
    void EnsureRow(const CountRow& row);
    QString DrawFrom(const CountRow& row);
    bool ReadMaster(std::unique_ptr<store::Recordset>& master, const QString& condition);
    void TellFailure();

    session::SessionContext& context_;
    session::DataAccess& data_;
    screen::ScreenHost& host_;
    const platform::Clock& clock_;
};

}  // namespace numbers
