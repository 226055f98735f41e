#include "tests/scenarios/scenario_player.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QThread>
#include <csignal>
#include <future>

#include "setup/command_line.h"
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
        if (document["only"].toString(engine_) != engine_) return;
        CheckCarriedOut(document.object());
        PlayLine(document.object());
    }
    CheckCarriedOut({});
}

void ScenarioPlayer::CheckCarriedOut(const QJsonObject& line) {
    if (!unchecked_) return;
    unchecked_ = false;
    const bool refusalExpected = line["expect"].toObject().value("ok") == QJsonValue(false);
    if (!refusalExpected && !answers_.back()["ok"].toBool())
        ADD_FAILURE() << "the command before was refused: " << answers_.back()["error"].toString().toStdString();
}

void ScenarioPlayer::Start(const QString& client, const QJsonObject& with) {
    auto driver = std::make_unique<drive::DriverProcess>();
    QStringList arguments{"--root", root_};
    for (auto option = with.begin(); option != with.end(); ++option)
        arguments << "--" + option.key() << option.value().toString();
    if (window_) arguments << "--window";
    ASSERT_TRUE(driver->Start(arguments));
    drivers_[client] = std::move(driver);
}

void ScenarioPlayer::Command(const QString& client, const QJsonObject& command) {
    const auto driver = drivers_.find(client);
    ASSERT_NE(driver, drivers_.end()) << "no client was started";
    answers_.push_back(driver->second->Play(command, root_));
    unchecked_ = true;
    ASSERT_FALSE(answers_.back().isEmpty())
        << "no answer; error output: " << driver->second->ErrorOutput().toStdString();
}

void ScenarioPlayer::AskUntil(const QString& client, const QJsonValue& wanted) {
    // The two hosts need not ask the same number of times; their answers are compared.
    const std::size_t before = answers_.size();
    QElapsedTimer timer;
    QString missing;
    timer.start();
    do {
        answers_.resize(before);
        Command(client, {{"do", "state"}});
        missing = Difference(wanted, answers_.back());
        QThread::msleep(20);
    } while (!missing.isEmpty() && !timer.hasExpired(30'000));
    EXPECT_EQ(missing.toStdString(), "");
}

void ScenarioPlayer::EndBySignal(const QString& client, const QString& signal) {
    static const QHash<QString, int> kSignals{{"TERM", SIGTERM}, {"HUP", SIGHUP}, {"INT", SIGINT}};
    ASSERT_TRUE(kSignals.contains(signal));
    answers_.push_back(drivers_.at(client)->EndBy(kSignals[signal]));
    ASSERT_FALSE(answers_.back().isEmpty()) << "it didn't end in order";
}

void ScenarioPlayer::Enter(const QString& client, const QJsonArray& gestures) {
    for (const QJsonValue& gesture : gestures) {
        const QStringList item = gesture[0].toString().split(u':');
        const QJsonValue value = gesture.toArray().size() > 1 ? gesture[1] : QJsonValue(QJsonValue::Undefined);
        QJsonObject command{{"item", item[0]}, {"do", value.isNull() ? "click" : value.isDouble() ? "set" : "focus"}};
        if (item.size() > 1) command["index"] = item[1].toInt();
        if (value.isDouble()) command["value"] = value;
        Command(client, command);
        if (value.isString()) {
            ASSERT_EQ(answers_.back()["focus"].toString().toStdString(), item[0].toStdString())
                << Text(answers_.back());
            Command(client, {{"do", "type"}, {"text", value}});
        }
        ASSERT_TRUE(answers_.back()["ok"].toBool()) << item[0].toStdString() << ": " << Text(answers_.back());
    }
}

void ScenarioPlayer::Lock(const QString& store, int milliseconds) {
    std::promise<QString> held;
    auto problem = held.get_future();
    lockers_.emplace_back([root = root_, store, milliseconds, &held] {
        HoldStore(root, store, milliseconds, [&held](const QString& words) { held.set_value(words); });
    });
    EXPECT_EQ(problem.get().toStdString(), "");
}

void ScenarioPlayer::RunSetup(const QJsonArray& words) const {
    QStringList arguments;
    for (const QJsonValue& word : words)
        arguments << word.toString();
    arguments << "--root" << root_;
    if (engine_ != "sqlite" && arguments[0] == "pin")
        arguments << "--admin-user"
                  << "katsudo_admin";
    EXPECT_EQ(setup::RunSetup(arguments, QCoreApplication::applicationDirPath()), 0);
}

void ScenarioPlayer::WriteFile(const QString& path, const QJsonValue& text) const {
    QFile file(root_ + "/" + path);
    if (text.isNull()) {
        EXPECT_TRUE(file.remove());
        return;
    }
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.fileName());
    file.write(text.toString().toUtf8());
}

void ScenarioPlayer::CheckAbsent(const QJsonArray& paths) const {
    for (const QJsonValue& path : paths)
        EXPECT_FALSE(QFile::exists(root_ + "/" + path.toString())) << path.toString().toStdString();
}

void ScenarioPlayer::CheckPresent(const QJsonObject& files) const {
    for (auto wanted = files.begin(); wanted != files.end(); ++wanted) {
        QFile file(root_ + "/" + wanted.key());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
        EXPECT_EQ(file.readAll().toStdString(), wanted.value().toString().toStdString()) << qPrintable(wanted.key());
    }
}

void ScenarioPlayer::CheckStored(const QJsonObject& line) const {
    QString problem;
    const QJsonArray rows = Select(root_, line["store"].toString(), line["select"].toString(), problem);
    EXPECT_EQ(problem, QString());
    EXPECT_EQ(Difference(line["rows"], rows, "rows").toStdString(), "") << Text(rows);
}

void ScenarioPlayer::PlayLine(const QJsonObject& line) {
    const QString client = line["as"].toString();
    if (line.contains("only")) return;
    if (line.contains("start")) {
        Start(client, line["start"].toObject());
    } else if (line.contains("kill")) {
        drivers_.erase(client);
    } else if (line.contains("until")) {
        AskUntil(client, line["until"]);
    } else if (line.contains("signal")) {
        EndBySignal(client, line["signal"].toString());
    } else if (line.contains("lock")) {
        Lock(line["lock"].toString(), line["milliseconds"].toInt());
    } else if (line.contains("server")) {
        EXPECT_EQ(LetIn(root_, line["server"].toString() == "back").toStdString(), "");
    } else if (line.contains("setup")) {
        RunSetup(line["setup"].toArray());
    } else if (line.contains("file")) {
        WriteFile(line["file"].toString(), line["text"]);
    } else if (line.contains("absent")) {
        CheckAbsent(line["absent"].toArray());
    } else if (line.contains("present")) {
        CheckPresent(line["present"].toObject());
    } else if (line.contains("execute")) {
        EXPECT_EQ(Execute(root_, line["store"].toString(), line["execute"].toString()).toStdString(), "");
    } else if (line.contains("select")) {
        CheckStored(line);
    } else if (line.contains("expect")) {
        ASSERT_FALSE(answers_.empty());
        EXPECT_EQ(Difference(line["expect"], answers_.back()).toStdString(), "");
    } else if (line.contains("enter")) {
        Enter(client, line["enter"].toArray());
    } else {
        QJsonObject command = line;
        command.remove("as");
        Command(client, command);
    }
}

}  // namespace scenario
