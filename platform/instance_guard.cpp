#include "platform/instance_guard.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QUuid>

namespace platform {

namespace {

/// A lock counts for as long as its process lives; the age of its file says nothing.
bool IsHeld(const QString& lockFile) {
    QLockFile probe(lockFile);
    probe.setStaleLockTime(0);
    return !probe.tryLock(0) && probe.error() == QLockFile::LockFailedError;
}

}  // namespace

QString PlaceName(const QString& programFolder, const QString& login, const QString& computer) {
    const QString tree = QFileInfo(programFolder).canonicalFilePath();
    const QByteArray who =
        (tree.isEmpty() ? programFolder : tree).toUtf8() + '\n' + login.toUtf8() + '\n' + computer.toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(who, QCryptographicHash::Sha256).toHex().left(32));
}

InstanceGuard::InstanceGuard(const QString& programFolder, const QString& login, const QString& computer)
    : folder_(QDir::tempPath() + "/katsudo-techo-" + PlaceName(programFolder, login, computer)),
      runId_(QUuid::createUuid().toString(QUuid::WithoutBraces)) {
    const QDir folder(folder_);
    if (!QDir().mkpath(folder_)) return;
    // Registering is one step for all runs, so that each sees all that came before it.
    QLockFile gate(folder.filePath(QStringLiteral("gate")));
    gate.tryLock(5000);
    for (const QString& name : folder.entryList({QStringLiteral("*.run")}, QDir::Files)) {
        const QString path = folder.filePath(name);
        if (IsHeld(path)) earlier_.append(path);
    }
    own_ = std::make_unique<QLockFile>(LockFile(runId_));
    own_->setStaleLockTime(0);
    own_->tryLock(0);
}

QString InstanceGuard::LockFile(const QString& runId) const {
    return folder_ + "/" + runId + ".run";
}

bool InstanceGuard::Lives(const QString& runId) const {
    const QString path = LockFile(runId);
    return QFileInfo::exists(path) && IsHeld(path);
}

bool InstanceGuard::AnotherRuns() const {
    for (const QString& path : earlier_)
        if (QFileInfo::exists(path) && IsHeld(path)) return true;
    return false;
}

}  // namespace platform
