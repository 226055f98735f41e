#include "items/full_width.h"

#include <limits>

namespace items {

namespace {

constexpr char16_t kVoicedMark = u'ﾞ';
constexpr char16_t kSemiVoicedMark = u'ﾟ';

/// Half-width katakana U+FF66 to U+FF9D in their order: alone, voiced, semi-voiced; a blank where there is no such
/// form.
constexpr QStringView kPlain =
    u"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン";
constexpr QStringView kVoiced = u"             ヴ  ガギグゲゴザジズゼゾダヂヅデド     バビブベボ               ";
constexpr QStringView kSemiVoiced = u"                                    パピプペポ               ";
constexpr char16_t kFirstKana = u'ｦ';
static_assert(kPlain.size() == u'ﾝ' - kFirstKana + 1);
static_assert(kVoiced.size() == kPlain.size() && kSemiVoiced.size() == kPlain.size());

/// A full-width sign stands so far behind its half-width one.
constexpr char16_t kDistance = u'！' - u'!';

bool IsKana(QChar character) {
    return character >= kFirstKana && character <= u'ﾝ';
}

QChar KanaForm(QStringView forms, QChar kana) {
    return forms[kana.unicode() - kFirstKana];
}

/// The letter and the mark behind it as one letter; a blank when there is no such letter.
QChar Marked(QChar kana, QChar mark) {
    if (!IsKana(kana)) return u' ';
    if (mark == kVoicedMark) return KanaForm(kVoiced, kana);
    return mark == kSemiVoicedMark ? KanaForm(kSemiVoiced, kana) : QChar(u' ');
}

QChar Single(QChar character) {
    if (IsKana(character)) return KanaForm(kPlain, character);
    if (character < u'!' || character > u'~') return character;
    switch (character.unicode()) {
        case u'"':
        case u'^':
        case u'`':
            return character;
        // The code page has these two full-width forms, not those that the distance gives.
        case u'\'':
            return u'’';
        case u'\\':
            return u'￥';
        default:
            return QChar(character.unicode() + kDistance);
    }
}

}  // namespace

QString ToFullWidth(const QString& text) {
    if (text.size() > std::numeric_limits<qint16>::max()) return QString();
    QString wide(QLatin1String(""));
    wide.reserve(text.size());
    for (qsizetype position = 0; position < text.size(); ++position) {
        const QChar next = position + 1 < text.size() ? text[position + 1] : QChar();
        const QChar marked = Marked(text[position], next);
        if (marked != u' ') {
            wide += marked;
            ++position;
        } else {
            wide += Single(text[position]);
        }
    }
    return wide;
}

}  // namespace items
