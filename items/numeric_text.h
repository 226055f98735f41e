#pragma once

#include <QString>
#include <optional>

// Texts that stand for a number, kept as decimal digits, so that a code of any length loses none of them.
namespace items {

/// A whole number: its digits without leading zeros ("0" for zero), and whether it lies below zero.
struct WholeNumber {
    bool negative = false;
    QString digits;
};

/// The number of a text, rounded to a whole one, halves away from zero. Blanks around it, a sign in front, group commas
/// and a fraction are allowed; nothing for any other text, the empty one included.
std::optional<WholeNumber> RoundedNumber(const QString& text);

}  // namespace items
