#include "sibling/told_answer.h"

#include <QFile>
#include <QStringList>

#include "items/text_rules.h"

namespace sibling {

namespace {

void TakeLine(const QString& line, const QString& tail, ToldAnswer& told) {
    const QString name = line.section(u'=', 0, 0);
    const QString value = line.section(u'=', 1);
    if (name == "answer") told.text = value;
    if (name == "echo")
        told.text = items::Piece(tail, value.section(u',', 0, 0).toInt(), value.section(u',', 1).toInt());
    if (name == "delay") told.delay = value.toInt();
    if (name == "times") told.times = value.toInt();
}

}  // namespace

std::optional<ToldAnswer> ReadToldAnswer(const QString& programFile, const QString& tail) {
    QFile file(programFile + ".answer");
    if (file.open(QIODevice::ReadOnly)) {
        ToldAnswer told;
        for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n'))
            TakeLine(line, tail, told);
        return told;
    }
    if (!qEnvironmentVariableIsSet("KATSUDO_SIBLING_ANSWER")) return std::nullopt;
    ToldAnswer told;
    told.text = qEnvironmentVariable("KATSUDO_SIBLING_ANSWER");
    return told;
}

}  // namespace sibling
