#include "lists/condition_value.h"

#include <QStringList>

namespace lists {

namespace {

/// Position from 1 of `part` at or behind `from`, in any case; 0 when it isn't there.
qsizetype Find(const QString& text, qsizetype from, const QString& part) {
    return text.indexOf(part, from - 1, Qt::CaseInsensitive) + 1;
}

bool StandsAt(const QString& text, qsizetype position, const QString& part) {
    return QStringView(text).mid(qMin(position - 1, text.size())).startsWith(part, Qt::CaseInsensitive);
}

/// The connector in front of the comparison at `p`, or the first one behind; 1 when there is none. It need not touch
/// the comparison: behind " AND (" the connector found is the next one, which keeps a bracket group whole.
qsizetype ConnectorNear(const QString& text, qsizetype p) {
    qsizetype found = p >= 6 ? Find(text, p - 5, " AND ") : 0;
    if (found == 0 && p >= 5) found = Find(text, p - 4, " OR ");
    return found == 0 ? 1 : found;
}

/// The closing quote at `q`, or the last blank of the connector that follows it.
qsizetype PastConnector(const QString& text, qsizetype q) {
    if (StandsAt(text, q + 1, " AND ")) return q + 5;
    return StandsAt(text, q + 1, " OR ") ? q + 4 : q;
}

/// The text without its part from `start` to `end`. A start behind the end repeats what lies between.
QString Without(const QString& text, qsizetype start, qsizetype end) {
    return text.left(start - 1) + text.mid(qMin(end, text.size()));
}

void CutOut(QString& condition, qsizetype p, qsizetype q) {
    qsizetype start = 0;
    if (p >= 8 && Find(condition, p - 7, " WHERE ") > 0) start = p;
    if (p == 1 || start == p) q = PastConnector(condition, q);
    if (start == 0) start = ConnectorNear(condition, p);
    const qsizetype bracket = start == 1 ? 0 : Find(condition, start, "(");
    if (bracket > start && bracket < q) {
        const qsizetype closing = Find(condition, q, ")");
        q = closing > 0 ? closing : condition.size();
    }
    condition = Without(condition, start, q);
}

}  // namespace

QString TakeConditionValue(const QString& column, QString& condition) {
    for (const QString comparison : {" >= '", " <= '", " = '", " > '", " < '", " LIKE '"}) {
        const qsizetype p = Find(condition, 1, column + comparison);
        if (p == 0) continue;
        const qsizetype v = p + column.size() + comparison.size();
        const qsizetype closing = Find(condition, v, "'");
        const qsizetype q = closing > 0 ? closing : condition.size() + 1;
        const QString value = condition.mid(v - 1, q - v);
        CutOut(condition, p, q);
        return value;
    }
    return {};
}

}  // namespace lists
