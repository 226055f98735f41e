#include "tests/scenarios/scenario_player.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>

#include "tests/scenarios/office.h"

namespace scenario {

namespace {

std::string Text(const QJsonValue& value) {
    const QJsonArray wrapped{value};
    const QByteArray text = QJsonDocument(wrapped).toJson(QJsonDocument::Compact);
    return text.mid(1, text.size() - 2).toStdString();
}

bool Matches(const QString& pattern, const QJsonValue& actual) {
    return pattern == "~" || actual.toString().contains(pattern.mid(1));
}

QString ArrayDifference(const QJsonArray& expected, const QJsonArray& actual, const QString& path) {
    if (expected.size() != actual.size())
        return QStringLiteral("%1 has %2 entries, not %3: %4")
            .arg(path)
            .arg(actual.size())
            .arg(expected.size())
            .arg(QString::fromStdString(Text(actual)));
    for (qsizetype index = 0; index < expected.size(); ++index) {
        const QString found = Difference(expected[index], actual[index], path + "/" + QString::number(index));
        if (!found.isEmpty()) return found;
    }
    return {};
}

}  // namespace

QString Difference(const QJsonValue& expected, const QJsonValue& actual, const QString& path) {
    if (expected.isObject() && actual.isObject()) {
        const QJsonObject fields = expected.toObject();
        for (auto field = fields.begin(); field != fields.end(); ++field) {
            const QString found =
                Difference(field.value(), actual.toObject().value(field.key()), path + "/" + field.key());
            if (!found.isEmpty()) return found;
        }
        return {};
    }
    if (expected.isArray() && actual.isArray()) return ArrayDifference(expected.toArray(), actual.toArray(), path);
    if (expected.isString() && expected.toString().startsWith(u'~') && Matches(expected.toString(), actual)) return {};
    if (expected == actual) return {};
    return QStringLiteral("%1 is %2, not %3")
        .arg(path, QString::fromStdString(Text(actual)), QString::fromStdString(Text(expected)));
}

void ScenarioPlayer::Play(const QString& file) {
    QFile lines(file);
    ASSERT_TRUE(lines.open(QIODevice::ReadOnly)) << qPrintable(file);
    for (int number = 1; !lines.atEnd() && !testing::Test::HasFatalFailure(); ++number) {
        const QByteArray line = lines.readLine().trimmed();
        if (line.isEmpty() || line.startsWith('#')) continue;
        SCOPED_TRACE(QStringLiteral("%1:%2 %3").arg(file).arg(number).arg(QString::fromUtf8(line)).toStdString());
        const QJsonDocument document = QJsonDocument::fromJson(line);
        ASSERT_TRUE(document.isObject()) << "not a JSON object";
        PlayLine(document.object());
    }
}

void ScenarioPlayer::Start(const QJsonObject& with) {
    driver_ = std::make_unique<DriverProcess>();
    QStringList arguments{"--root", root_};
    for (auto option = with.begin(); option != with.end(); ++option)
        arguments << "--" + option.key() << option.value().toString();
    if (window_) arguments << "--window";
    ASSERT_TRUE(driver_->Start(arguments));
}

void ScenarioPlayer::PlayLine(const QJsonObject& line) {
    if (line.contains("start")) {
        Start(line["start"].toObject());
    } else if (line.contains("kill")) {
        driver_->EndInput();
    } else if (line.contains("execute")) {
        EXPECT_EQ(Execute(root_, line["store"].toString(), line["execute"].toString()), QString());
    } else if (line.contains("select")) {
        QString problem;
        const QJsonArray rows = Select(root_, line["store"].toString(), line["select"].toString(), problem);
        EXPECT_EQ(problem, QString());
        EXPECT_EQ(Difference(line["rows"], rows, "rows").toStdString(), "") << Text(rows);
    } else if (line.contains("expect")) {
        ASSERT_FALSE(answers_.empty());
        EXPECT_EQ(Difference(line["expect"], answers_.back()).toStdString(), "");
    } else {
        ASSERT_TRUE(driver_) << "no client was started";
        answers_.push_back(driver_->Play(line));
        ASSERT_FALSE(answers_.back().isEmpty())
            << "no answer; error output: " << driver_->ErrorOutput().toStdString();
    }
}

}  // namespace scenario
