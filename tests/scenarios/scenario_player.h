#pragma once

#include <QJsonArray>
#include <QString>
#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "drive/driver_process.h"

namespace scenario {

/// Plays one scenario file on a tree of its own. A file is a list of lines, one JSON object each ("#" begins a remark):
///
///   {"only":"sqlite"|"server","because":…}     as the first line: has a meaning only where the main store is a file,
///                                              or on a server
///   {"server":"away"|"back"}                   the server drops this tree's clients and turns them away, or takes them
///   {"execute":SQL,"store":"data"|"conf"}      a row set up beforehand, or what another program does meanwhile
///   {"lock":"data"|"conf","milliseconds":N}    another program holds the store that long; the next line runs meanwhile
///   {"setup":["pin",…]}                        runs katsudo-setup on the tree; it must do its work
///   {"file":PATH,"text":…}                     writes a file of the tree, or takes it away with "text":null
///   {"absent":[PATH,…]}                        files that must not be there
///   {"present":{PATH:TEXT,…}}                  files that must be there, with that content
///   {"start":{"now":…,"login":…,"tail":…}}     starts the client; the one before must have ended
///   {"do":…}                                   a command of the driver
///   {"enter":[[ITEM,VALUE],…]}                 gestures in a row: a text is typed into the item, a number set in it,
///                                              null clicks it, [ITEM] alone gives it the focus; ITEM:INDEX is a
///                                              member of an array
///   {"expect":{…}}                             what the last answer must hold, at least
///   {"select":SQL,"store":…,"rows":[[…]]}      what must be stored
///   {"until":{…}}                              "state" is asked until its answer holds this, for half a minute
///   {"kill":true}                              the client is killed
///   {"signal":"TERM"|"HUP"|"INT"}              the machine ends the client; its last words are the answer
///
/// A command must be carried out ("ok":true), unless the next line expects its refusal. "as":NAME beside start, do,
/// enter, until, expect, kill and signal names a further client on the same tree. A value of an expect or a row that is
/// the text "~" stands for any value, "~TEXT" for a text that holds TEXT.
class ScenarioPlayer {
  public:
    /// `engine` is "sqlite", "server", or "odbc" for the server through its ODBC driver.
    ScenarioPlayer(QString root, bool window, QString engine)
        : root_(std::move(root)), window_(window), engine_(std::move(engine)) {}

    /// Plays the lines; every expectation that isn't met fails the running test with the file's line.
    void Play(const QString& file);

    /// All answers of the driver, in order.
    const std::vector<QJsonObject>& Answers() const { return answers_; }

  private:
    void PlayLine(const QJsonObject& line);
    void Start(const QString& client, const QJsonObject& with);
    void Command(const QString& client, const QJsonObject& command);
    void AskUntil(const QString& client, const QJsonValue& wanted);
    void EndBySignal(const QString& client, const QString& signal);
    void Enter(const QString& client, const QJsonArray& gestures);
    void Lock(const QString& store, int milliseconds);
    void RunSetup(const QJsonArray& words) const;
    void WriteFile(const QString& path, const QJsonValue& text) const;
    void CheckAbsent(const QJsonArray& paths) const;
    void CheckPresent(const QJsonObject& files) const;
    void CheckStored(const QJsonObject& line) const;
    /// Fails the test when the last command was refused and `line` doesn't expect it.
    void CheckCarriedOut(const QJsonObject& line);

    QString root_;
    bool window_;
    QString engine_;  ///< of the main store
    std::map<QString, std::unique_ptr<drive::DriverProcess>> drivers_;
    std::vector<std::jthread> lockers_;
    std::vector<QJsonObject> answers_;
    bool unchecked_ = false;  ///< the last answer hasn't been looked at
};

/// Where `actual` lacks something that `expected` asks for, as a path and both values; empty when it holds all.
QString Difference(const QJsonValue& expected, const QJsonValue& actual, const QString& path = QString());

}  // namespace scenario
