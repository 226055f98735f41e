#include "tests/rewriter/plain_values.h"

namespace plain {
namespace {

// Texts as people search for them, by Unicode's own tables.
QString Folded(const QString& text) {
    QString folded = text.normalized(QString::NormalizationForm_KC).toLower();
    for (QChar& c : folded)
        if (c.unicode() >= 0x3041 && c.unicode() <= 0x3096) c = QChar(c.unicode() + 0x60);
    return folded;
}

bool Fits(const QString& text, const QString& pattern, QChar escape, qsizetype t = 0, qsizetype p = 0) {
    for (; p < pattern.size(); ++p, ++t) {
        if (pattern[p] == '%' && pattern[p] != escape) {
            for (qsizetype rest = t; rest <= text.size(); ++rest)
                if (Fits(text, pattern, escape, rest, p + 1)) return true;
            return false;
        }
        if (t >= text.size()) return false;
        if (!escape.isNull() && pattern[p] == escape) {
            if (++p >= pattern.size()) return false;
        } else if (pattern[p] == '_') {
            continue;
        }
        if (text[t] != pattern[p]) return false;
    }
    return t == text.size();
}

bool IsHeld(const QString& sign, int order) {
    if (sign == "=") return order == 0;
    if (sign == "<>") return order != 0;
    if (sign == "<") return order < 0;
    if (sign == "<=") return order <= 0;
    return sign == ">" ? order > 0 : order >= 0;
}

}  // namespace

Truth Not(Truth truth) {
    return truth ? Truth(!*truth) : truth;
}

Truth And(Truth a, Truth b) {
    if (a == false || b == false) return false;
    return a && b ? Truth(true) : Truth();
}

Truth Or(Truth a, Truth b) {
    return Not(And(Not(a), Not(b)));
}

int Ranked(const Value& left, const Value& right) {
    if (left.integer || right.integer) {
        const qint64 a = left.cell->toLongLong(), b = right.cell->toLongLong();
        return a < b ? -1 : a > b ? 1 : 0;
    }
    const QByteArray a = left.cell->toUtf8(), b = right.cell->toUtf8();
    return a < b ? -1 : b < a ? 1 : 0;
}

Truth Compare(const QString& sign, const Value& left, const Value& right) {
    return left.cell && right.cell ? Truth(IsHeld(sign, Ranked(left, right))) : Truth();
}

bool IsLike(const QString& text, const QString& pattern, QChar escape) {
    return Fits(Folded(text), Folded(pattern), escape);
}

}  // namespace plain
