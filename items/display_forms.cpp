#include "items/display_forms.h"

#include "items/numeric_text.h"
#include "items/text_rules.h"

namespace items {

namespace {

constexpr int kAmountWidth = 13;
constexpr int kPostcodeHead = 3;
constexpr int kPostcodeTail = 4;

QString WithoutTrailingBlanks(const QString& text) {
    qsizetype length = text.size();
    while (length > 0 && text[length - 1] == u' ') {
        --length;
    }
    return text.left(length);
}

QString Grouped(const QString& digits) {
    QString grouped = digits;
    for (qsizetype at = grouped.size() - 3; at > 0; at -= 3) {
        grouped.insert(at, u',');
    }
    return grouped;
}

}  // namespace

QString DateText(const QDateTime& moment) {
    return moment.toString(QStringLiteral("yyyyMMdd"));
}

QString TimeText(const QDateTime& moment) {
    return moment.toString(QStringLiteral("HH:mm"));
}

QString StampText(const QDateTime& moment) {
    return moment.toString(QStringLiteral("yyyyMMdd HHmmss"));
}

QString ViewingTimeText(const QDateTime& moment) {
    return moment.toString(QStringLiteral("HH:mm:ss"));
}

QString NormalizePostcodeText(const QString& text) {
    const QString typed = WithoutTrailingBlanks(text);
    if (typed == QStringLiteral("   -")) {
        return {};
    }
    QString postcode;
    bool gapMarked = false;
    for (qsizetype position = 0; position < typed.size(); ++position) {
        const QChar character = typed[position];
        if (character >= u'0' && character <= u'9') {
            postcode += character;
        } else if (position > 0 && !gapMarked) {
            postcode += u'-';
            gapMarked = true;
        }
    }
    return postcode;
}

QString PostcodeEntryText(const QString& text) {
    const QString digits = DigitsOnly(FoldFullWidthDigits(text));
    return digits.left(kPostcodeHead).leftJustified(kPostcodeHead, u' ') + u'-' +
           digits.mid(kPostcodeHead, kPostcodeTail);
}

QString AmountColumnText(const QString& amount) {
    const std::optional<WholeNumber> number = RoundedNumber(amount);
    QString text = amount.trimmed();
    if (number) {
        text = (number->negative ? QStringLiteral("-") : QString()) + Grouped(number->digits);
    }
    return text.rightJustified(kAmountWidth, u' ');
}

QString FileSizeText(qint64 bytes) {
    constexpr qint64 kKilobyte = 1024;
    return Grouped(QString::number((bytes + kKilobyte / 2) / kKilobyte)) + QStringLiteral("KB");
}

}  // namespace items
