#include "store/connection_string.h"

namespace store {
namespace {

QString TakeQuoted(const QString& text, qsizetype& at) {
    const QChar quote = text[at++];
    QString value;
    while (at < text.size()) {
        if (text[at] != quote) {
            value += text[at++];
        } else if (at + 1 < text.size() && text[at + 1] == quote) {
            value += quote;
            at += 2;
        } else {
            break;
        }
    }
    const auto end = text.indexOf(u';', at);
    at = end < 0 ? text.size() : end;
    return value;
}

QString TakeValue(const QString& text, qsizetype& at) {
    while (at < text.size() && text[at].isSpace()) {
        ++at;
    }
    if (at < text.size() && (text[at] == u'"' || text[at] == u'\'')) {
        return TakeQuoted(text, at);
    }
    const auto end = text.indexOf(u';', at);
    const auto start = at;
    at = end < 0 ? text.size() : end;
    return text.mid(start, at - start).trimmed();
}

}  // namespace

ConnectionString::ConnectionString(const QString& text) {
    qsizetype at = 0;
    while (at < text.size()) {
        const auto equals = text.indexOf(u'=', at);
        const auto end = text.indexOf(u';', at);
        if (equals < 0) {
            return;
        }
        if (end >= 0 && end < equals) {
            at = end + 1;
            continue;
        }
        const QString key = text.mid(at, equals - at).trimmed().toLower();
        at = equals + 1;
        values_.insert(key, TakeValue(text, at));
        ++at;
    }
}

QString ConnectionString::Value(const QString& key) const {
    return values_.value(key.toLower());
}

}  // namespace store
