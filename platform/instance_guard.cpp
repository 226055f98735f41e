#include "platform/instance_guard.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QUuid>

namespace platform {

namespace {

/// A lock counts for as long as its process lives; the age of its file says nothing.
bool Lives(const QString& lockFile) {
    QLockFile probe(lockFile);
    probe.setStaleLockTime(0);
    return !probe.tryLock(0) && probe.error() == QLockFile::LockFailedError;
}

QString FolderFor(const QString& programFolder, const QString& login, const QString& computer) {
    const QString tree = QFileInfo(programFolder).canonicalFilePath();
    const QByteArray who =
        (tree.isEmpty() ? programFolder : tree).toUtf8() + '\n' + login.toUtf8() + '\n' + computer.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(who, QCryptographicHash::Sha256).toHex().left(32);
    return QDir::tempPath() + QStringLiteral("/katsudo-techo-") + QString::fromLatin1(hash);
}

}  // namespace

InstanceGuard::InstanceGuard(const QString& programFolder, const QString& login, const QString& computer) {
    const QDir folder(FolderFor(programFolder, login, computer));
    if (!QDir().mkpath(folder.path())) return;
    // Registering is one step for all runs, so that each sees all that came before it.
    QLockFile gate(folder.filePath(QStringLiteral("gate")));
    gate.tryLock(5000);
    for (const QString& name : folder.entryList({QStringLiteral("*.run")}, QDir::Files)) {
        const QString path = folder.filePath(name);
        if (Lives(path)) earlier_.append(path);
    }
    own_ = std::make_unique<QLockFile>(
        folder.filePath(QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".run")));
    own_->setStaleLockTime(0);
    own_->tryLock(0);
}

bool InstanceGuard::AnotherRuns() const {
    for (const QString& path : earlier_)
        if (QFileInfo::exists(path) && Lives(path)) return true;
    return false;
}

}  // namespace platform
