#pragma once

#include <QDateTime>
#include <QString>

// The one text form that each kind of value has, on screens, in SQL and in columns.
namespace items {

/// "yyyymmdd".
QString DateText(const QDateTime& moment);
/// "hh:nn".
QString TimeText(const QDateTime& moment);
/// "yyyymmdd hhnnss": the stamp of rows and link messages.
QString StampText(const QDateTime& moment);
/// "hh:mm:ss": the viewing log's time of day.
QString ViewingTimeText(const QDateTime& moment);

/// Canonical text of a postcode as it was typed: digits, with one "-" where the first gap stood (not at the front).
/// Trailing blanks don't count; an empty item ("   -") gives the empty text.
QString NormalizePostcodeText(const QString& text);

/// What a postcode entry reads as for the digits typed into it: three digits, a hyphen, four digits; short input keeps
/// the hyphen in its place ("100-"); nothing typed reads as three blanks and a hyphen.
QString PostcodeEntryText(const QString& text);

/// An amount right-aligned in 13 characters by blanks in front: "    1,234,567". A wider amount gets none.
QString AmountColumnText(const QString& amount);

/// A number of bytes in kilobytes, rounded to the nearest, in groups of three: "1,234KB".
QString FileSizeText(qint64 bytes);

}  // namespace items
