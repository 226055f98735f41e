#include "items/text_rules.h"

#include <QStringEncoder>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "items/numeric_text.h"

namespace items {

namespace {

/// Byte widths in code page 932. The encoder is made at the first character beyond ASCII only: most texts are codes.
class ByteWidths {
  public:
    /// Bytes of the character that starts at a position of the text, and how many UTF-16 units it takes there.
    struct Width {
        int bytes = 1;
        int units = 1;
    };

    Width At(const QString& text, qsizetype position) {
        const QChar character = text[position];
        if (character.unicode() < 0x80) {
            return {};
        }
        if (character.isSurrogate()) {
            // The code page has nothing beyond the first plane: both halves of a pair become a "?" each.
            const bool pair =
                character.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate();
            return pair ? Width{2, 2} : Width{};
        }
        if (!encoder_) {
            encoder_.emplace("windows-31j");
        }
        const QByteArray bytes = encoder_->encode(QStringView(&text.constData()[position], 1));
        if (encoder_->hasError()) {
            encoder_.reset();
            return {};
        }
        return {static_cast<int>(bytes.size()), 1};
    }

  private:
    // Made in place and thrown away after an error: a moved encoder reports none, and a reset doesn't clear the report.
    std::optional<QStringEncoder> encoder_;
};

/// How many UTF-16 units of the text fit the limit, a character of two units counting as one piece.
qsizetype FittingUnits(const QString& text, int limit) {
    ByteWidths widths;
    int length = 0;
    qsizetype position = 0;
    while (position < text.size()) {
        const ByteWidths::Width width = widths.At(text, position);
        length += width.bytes;
        if (length > limit) {
            return position;
        }
        position += width.units;
    }
    return position;
}

qsizetype LengthWithoutBlanks(const QString& text) {
    qsizetype length = text.size();
    while (length > 0 && text[length - 1] == u' ') {
        --length;
    }
    return length;
}

}  // namespace

int AnsiLength(const QString& text) {
    ByteWidths widths;
    int length = 0;
    for (qsizetype position = 0; position < text.size();) {
        const ByteWidths::Width width = widths.At(text, position);
        length += width.bytes;
        position += width.units;
    }
    return length;
}

int OverrunCharacters(const QString& text, int limit) {
    return static_cast<int>(text.size() - FittingUnits(text, limit));
}

QString ByteLengthNotice(const QString& text, int limit) {
    const int overrun = OverrunCharacters(text, limit);
    return overrun == 0 ? QString() : QStringLiteral("文字オーバーです。") + QString::number(overrun);
}

QString TruncateToBytes(const QString& text, int limit) {
    return text.left(FittingUnits(text, limit));
}

QString Piece(const QString& text, qsizetype place, qsizetype width) {
    QString piece = text.mid(place, width);
    if (!piece.isEmpty() && piece.back().isHighSurrogate()) piece.chop(1);
    if (!piece.isEmpty() && piece.front().isLowSurrogate()) piece.remove(0, 1);
    return piece;
}

QString WithoutBlanks(const QString& text) {
    const QString headless =
        text.mid(std::find_if(text.begin(), text.end(), [](QChar c) { return c != u' '; }) - text.begin());
    return headless.left(LengthWithoutBlanks(headless));
}

QString EscapeSqlText(const QString& text) {
    QString escaped = text;
    escaped.replace(u'\'', QStringLiteral("''"));
    escaped.truncate(LengthWithoutBlanks(escaped));
    return escaped;
}

QString WithoutQuotes(const QString& text) {
    return QString(text).remove(u'\'');
}

QString FormatToMask(const QString& value, const QString& mask) {
    if (mask.isEmpty()) {
        return value;
    }
    const std::optional<WholeNumber> number = RoundedNumber(value);
    if (!number) {
        return Piece(value, 0, mask.size());
    }
    const QString digits = number->digits.rightJustified(mask.size(), u'0');
    return (number->negative ? u'-' + digits : digits).left(mask.size());
}

QString ZeroMask(int width) {
    return QString(std::max(width, 0), u'0');
}

QString DigitsOnly(const QString& text) {
    QString digits;
    for (const QChar character : text) {
        if (character >= u'0' && character <= u'9') {
            digits += character;
        }
    }
    return digits;
}

double Val(const QString& text) {
    QString number;
    bool fraction = false;
    for (const QChar character : text) {
        if (character == u' ' || character == u'\t' || character == u'\n') {
            continue;
        }
        const bool sign = number.isEmpty() && (character == u'-' || character == u'+');
        const bool point = character == u'.' && !fraction;
        if (!sign && !point && (character < u'0' || character > u'9')) {
            break;
        }
        fraction = fraction || point;
        number += character;
    }
    return number.toDouble();
}

int Val16(const QString& text) {
    constexpr double kLowest = std::numeric_limits<qint16>::min();
    constexpr double kHighest = std::numeric_limits<qint16>::max();
    return static_cast<int>(std::clamp(std::trunc(Val(text)), kLowest, kHighest));
}

QString FoldFullWidthDigits(const QString& text) {
    QString folded = text;
    for (QChar& character : folded) {
        if (character >= u'０' && character <= u'９') {
            character = QChar(u'0' + (character.unicode() - u'０'));
        }
    }
    return folded;
}

}  // namespace items
