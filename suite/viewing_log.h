#pragma once

#include <QString>

#include "numbers/number_series.h"
#include "platform/clock.h"
#include "session/data_access.h"

namespace suite {

/// What was looked at, for a row of the viewing log. Documents are told by site (3), base date ("yyyymmdd") and number
/// (8); a slot by its key item instead.
struct Viewed {
    QString information;
    QString documentSite, documentBaseDate, documentNumber;
    QString keyItem;
};

/// `T閲覧`: who looked at which record, and when. A failed write never keeps the user from seeing the record.
class ViewingLog {
  public:
    ViewingLog(session::SessionContext& context, session::DataAccess& data, numbers::NumberSeries& series,
               const platform::Clock& clock)
        : context_(context), data_(data), series_(series), clock_(clock) {}

    /// Writes one row under the next free number of its series.
    void RecordViewing(const Viewed& viewed);

  private:
    bool IsTaken(const QString& baseDate, const QString& number);
    /// A number, and whether nobody had taken it when it was tested: a series that stands still gives a taken one.
    struct Drawn {
        QString number;
        bool free;
    };
    Drawn DrawNumber(const QString& baseDate);
    QString RowStatement(const Viewed& viewed, const QString& baseDate, const QString& number) const;

    session::SessionContext& context_;
    session::DataAccess& data_;
    numbers::NumberSeries& series_;
    const platform::Clock& clock_;
};

}  // namespace suite
