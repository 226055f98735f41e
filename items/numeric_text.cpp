#include "items/numeric_text.h"

namespace items {

namespace {

bool IsDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

void AddOne(QString& digits) {
    for (qsizetype i = digits.size() - 1; i >= 0; --i) {
        if (digits[i] != u'9') {
            digits[i] = QChar(digits[i].unicode() + 1);
            return;
        }
        digits[i] = u'0';
    }
    digits.prepend(u'1');
}

}  // namespace

std::optional<WholeNumber> RoundedNumber(const QString& text) {
    const QString number = text.trimmed();
    qsizetype at = 0;
    WholeNumber result;
    if (at < number.size() && (number[at] == u'-' || number[at] == u'+')) {
        result.negative = number[at++] == u'-';
    }
    for (; at < number.size() && (IsDigit(number[at]) || (number[at] == u',' && !result.digits.isEmpty())); ++at) {
        if (number[at] != u',') {
            result.digits += number[at];
        }
    }
    QString fraction;
    if (at < number.size() && number[at] == u'.') {
        for (++at; at < number.size() && IsDigit(number[at]); ++at) {
            fraction += number[at];
        }
    }
    if (at < number.size() || (result.digits.isEmpty() && fraction.isEmpty())) {
        return std::nullopt;
    }
    if (!fraction.isEmpty() && fraction[0] >= u'5') {
        AddOne(result.digits);
    }
    while (result.digits.startsWith(u'0')) {
        result.digits.remove(0, 1);
    }
    if (result.digits.isEmpty()) {
        return WholeNumber{false, QStringLiteral("0")};
    }
    return result;
}

}  // namespace items
