#pragma once

#include <QJsonArray>
#include <QString>
#include <memory>
#include <vector>

#include "tests/scenarios/driver_process.h"

namespace scenario {

/// Plays one scenario file on a tree of its own. A file is a list of lines, one JSON object each ("#" begins a remark):
///
///   {"execute":SQL,"store":"data"|"conf"}      a row set up beforehand, or what another program does meanwhile
///   {"start":{"now":…,"login":…,"tail":…}}     starts the client; the one before must have ended
///   {"do":…}                                   a command of the driver
///   {"expect":{…}}                             what the last answer must hold, at least
///   {"select":SQL,"store":…,"rows":[[…]]}      what must be stored
///   {"kill":true}                              the client is killed
///
/// A value of an expect or a row that is the text "~" stands for any value, "~TEXT" for a text that holds TEXT.
class ScenarioPlayer {
  public:
    ScenarioPlayer(QString root, bool window) : root_(std::move(root)), window_(window) {}

    /// Plays the lines; every expectation that isn't met fails the running test with the file's line.
    void Play(const QString& file);

    /// All answers of the driver, in order.
    const std::vector<QJsonObject>& Answers() const { return answers_; }

  private:
    void PlayLine(const QJsonObject& line);
    void Start(const QJsonObject& with);

    QString root_;
    bool window_;
    std::unique_ptr<DriverProcess> driver_;
    std::vector<QJsonObject> answers_;
};

/// Where `actual` lacks something that `expected` asks for, as a path and both values; empty when it holds all.
QString Difference(const QJsonValue& expected, const QJsonValue& actual, const QString& path = QString());

}  // namespace scenario
