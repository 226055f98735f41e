#include "drive/driver_process.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <csignal>

namespace drive {

namespace {

constexpr int kAnswerMilliseconds = 120'000;

}  // namespace

DriverProcess::~DriverProcess() {
    if (Running()) EndInput();
}

bool DriverProcess::Start(const QStringList& arguments) {
    process_.setProgram(QCoreApplication::applicationDirPath() + "/katsudo-drive");
    process_.setArguments(arguments);
    // What a killed client leaves, and where its user begins to look for documents, stays with its tree.
    const QString root = arguments.value(arguments.indexOf("--root") + 1);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_STATE_HOME", root + "/state");
    environment.insert("USERPROFILE", root + "/机");
    process_.setProcessEnvironment(environment);
    process_.start();
    return process_.waitForStarted();
}

QJsonObject DriverProcess::Play(const QJsonObject& command, const QString& root) {
    process_.write(QJsonDocument(command).toJson(QJsonDocument::Compact).replace("ROOT", root.toUtf8()) + '\n');
    while (!process_.canReadLine())
        if (!process_.waitForReadyRead(kAnswerMilliseconds)) return {};
    return QJsonDocument::fromJson(process_.readLine().replace(root.toUtf8(), "ROOT")).object();
}

void DriverProcess::EndInput() {
    process_.closeWriteChannel();
    if (!process_.waitForFinished(kAnswerMilliseconds)) process_.kill();
}

void DriverProcess::Send(const QJsonObject& command) {
    process_.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
    process_.waitForBytesWritten();
}

QJsonObject DriverProcess::EndBy(int signal) {
    ::kill(static_cast<pid_t>(process_.processId()), signal);
    if (!process_.waitForFinished(kAnswerMilliseconds) || process_.exitStatus() != QProcess::NormalExit) return {};
    return QJsonDocument::fromJson(process_.readLine()).object();
}

void DriverProcess::Kill() {
    process_.kill();
    process_.waitForFinished(kAnswerMilliseconds);
}

}  // namespace drive
