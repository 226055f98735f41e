#pragma once

#include <QString>
#include <optional>

namespace plain {

/// A value of a row; none for Null.
using Cell = std::optional<QString>;

struct Value {
    Cell cell;
    bool integer = false;  ///< of a column of numbers
};

/// True, false or, with Null in play, unknown.
using Truth = std::optional<bool>;

Truth Not(Truth truth);
Truth And(Truth a, Truth b);
Truth Or(Truth a, Truth b);

/// Below, at or above 0 as the left one stands before, with or behind the right one: numbers by their size as soon as
/// one of the two is one, texts byte by byte. Neither is Null.
int Ranked(const Value& left, const Value& right);

/// "left sign right"; the signs are = <> < <= > >=.
Truth Compare(const QString& sign, const Value& left, const Value& right);

/// Whether a text is like a pattern, in whatever width, kana and case both are written. `escape` is null for none.
bool IsLike(const QString& text, const QString& pattern, QChar escape);

}  // namespace plain
