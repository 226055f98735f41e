#pragma once

#include <QString>

namespace items {

/// The text with its half-width characters made full-width: ASCII digits, letters and signs, and half-width katakana,
/// a letter and its voiced or semi-voiced mark becoming one. The blank, the signs `"`, `^` and `` ` ``, the half-width
/// punctuation and a mark that belongs to no letter stay as they are, and so does everything else. A text of more than
/// 32,767 characters isn't converted: the result is then a null text.
QString ToFullWidth(const QString& text);

}  // namespace items
