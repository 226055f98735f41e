#pragma once

#include <QString>

// Text rules that every screen shares: byte limits, masks, quoting, digits. Pure functions; no one reports a failure.
namespace items {

/// Length of a text in bytes of the Japanese ANSI code page (932): half-width 1, full-width 2. A character that the
/// code page lacks counts as its replacement "?" does: one byte for each UTF-16 unit that can't be converted.
int AnsiLength(const QString& text);

/// How many characters (not bytes) of `text` lie past the limit of `limit` bytes; 0 when the text fits.
int OverrunCharacters(const QString& text, int limit);

/// The notice for a text against its limit: empty when it fits, otherwise "文字オーバーです。" and the overrun.
QString ByteLengthNotice(const QString& text, int limit);

/// The longest head of the text whose byte length is at most `limit`; a full-width character is never split.
QString TruncateToBytes(const QString& text, int limit);

/// `width` UTF-16 units of the text from a place on (from 0), fewer at its end. A character of two units that one of
/// the ends would cut in two is left out: half of it is no text, and no other program would read it as it was written.
QString Piece(const QString& text, qsizetype place, qsizetype width);

/// The text without the half-width blanks at its ends. Other white space, the full-width blank too, belongs to the
/// text: so the suite's programs read a command line.
QString WithoutBlanks(const QString& text);

/// The text ready to stand between single quotes in SQL: quotes doubled, trailing half-width blanks removed.
QString EscapeSqlText(const QString& text);

/// What a telephone number or a postcode keeps of a text: all but single quotes, which belong to no number and would
/// end the literal that it stands in.
QString WithoutQuotes(const QString& text);

/// The value formatted by a mask of zeros and cut to the mask's length: "12" under "000000" is "000012", "1234567" is
/// "123456". A text that isn't numeric is only cut (Piece); an empty value stays empty; an empty mask returns the
/// value.
QString FormatToMask(const QString& value, const QString& mask);

/// That many "0" characters; empty for a width of 0 or less.
QString ZeroMask(int width);

/// The half-width decimal digits of the text, in order.
QString DigitsOnly(const QString& text);

/// The leading number of a text, as the platform reads one: blanks skipped, an optional sign, digits and a fraction;
/// 0 when there is none.
double Val(const QString& text);

/// Val cut to a signed 16-bit whole number; what doesn't fit gives the nearest bound.
int Val16(const QString& text);

/// The text with its full-width digits ０ to ９ made half-width; everything else stays.
QString FoldFullWidthDigits(const QString& text);

}  // namespace items
