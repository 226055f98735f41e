#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace drive {

/// A running katsudo-drive: one command in, one answer out.
class DriverProcess {
  public:
    ~DriverProcess();

    /// Starts the driver that lies beside the test program. False when it doesn't come up.
    bool Start(const QStringList& arguments);

    /// Sends a command and waits for its answer; an empty object when none comes. Both may name files: the tree's
    /// root stands as ROOT in the command and in the answer, so that the answers of two trees can be compared.
    QJsonObject Play(const QJsonObject& command, const QString& root = "/nowhere");

    /// Sends a command without waiting for its answer.
    void Send(const QJsonObject& command);
    /// Sends a signal that asks for the end, and waits for it: the driver's last words, an empty object when it didn't
    /// end in order.
    QJsonObject EndBy(int signal);
    /// Kills the driver on the spot and waits for its end.
    void Kill();

    /// Ends the input, as a killed program sees it, and waits for the end.
    void EndInput();

    bool Running() const { return process_.state() == QProcess::Running; }
    QString ErrorOutput() { return QString::fromUtf8(process_.readAllStandardError()); }

  private:
    QProcess process_;
};

}  // namespace drive
