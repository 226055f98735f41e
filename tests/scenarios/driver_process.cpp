#include "tests/scenarios/driver_process.h"

#include <QCoreApplication>
#include <QJsonDocument>

namespace scenario {

namespace {

constexpr int kAnswerMilliseconds = 120'000;

}  // namespace

DriverProcess::~DriverProcess() {
    if (Running()) EndInput();
}

bool DriverProcess::Start(const QStringList& arguments) {
    process_.setProgram(QCoreApplication::applicationDirPath() + "/katsudo-drive");
    process_.setArguments(arguments);
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

}  // namespace scenario
