#include "platform/instance_guard.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace platform {

namespace {

/// True for a folder, no link to one, that belongs to this user.
bool IsOwnFolder(const QString& path, struct stat& found) {
    return lstat(QFile::encodeName(path).constData(), &found) == 0 && S_ISDIR(found.st_mode) &&
           found.st_uid == geteuid();
}

/// Makes a folder that is for this user alone. False when something else lies there.
bool MakePrivateFolder(const QString& path) {
    struct stat found {};
    mkdir(QFile::encodeName(path).constData(), S_IRWXU);
    return IsOwnFolder(path, found) && (found.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)) == S_IRWXU;
}

/// The folder for the locks of that name; made when it is missing. Among the temporary files anybody may have laid
/// something under its name, so there is another one to go to; all runs of the user try them in the same order. Empty
/// when there is no place.
QString LockFolder(const QString& name) {
    constexpr int kMostNames = 100;
    struct stat found {};
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime) && IsOwnFolder(runtime, found) && MakePrivateFolder(runtime + "/" + name))
        return runtime + "/" + name;
    const QString own = QDir::tempPath() + "/" + name + "-" + QString::number(geteuid());
    for (int further = 0; further < kMostNames; ++further) {
        const QString path = further == 0 ? own : own + "-" + QString::number(further);
        if (MakePrivateFolder(path)) return path;
    }
    return {};
}

}  // namespace

bool LockIsHeld(const QString& lockFile) {
    if (!QFileInfo::exists(lockFile)) return false;
    QLockFile probe(lockFile);
    probe.setStaleLockTime(0);
    return !probe.tryLock(0) && probe.error() == QLockFile::LockFailedError;
}

QString PlaceName(const QString& programFolder, const QString& login, const QString& computer) {
    const QString tree = QFileInfo(programFolder).canonicalFilePath();
    const QByteArray who =
        (tree.isEmpty() ? programFolder : tree).toUtf8() + '\n' + login.toUtf8() + '\n' + computer.toUtf8();
    return QString::fromLatin1(QCryptographicHash::hash(who, QCryptographicHash::Sha256).toHex().left(32));
}

InstanceGuard::InstanceGuard(const QString& programFolder, const QString& login, const QString& computer) {
    const QString name = "katsudo-techo-" + PlaceName(programFolder, login, computer);
    // A run that ends takes the empty folder away, perhaps just before this one lays its lock there.
    constexpr int kMostTries = 10;
    for (int tries = 0; tries < kMostTries && !own_; ++tries) {
        folder_ = LockFolder(name);
        if (folder_.isEmpty()) return;
        Register();
    }
}

InstanceGuard::~InstanceGuard() {
    if (!own_) return;
    own_.reset();
    // Does nothing as long as another run's lock lies there.
    rmdir(QFile::encodeName(folder_).constData());
}

void InstanceGuard::Register() {
    // Registering is one step for all runs, so that each sees all that came before it.
    QLockFile gate(folder_ + "/gate");
    if (!gate.tryLock(5000) && gate.error() != QLockFile::LockFailedError) return;
    for (const QString& name : QDir(folder_).entryList({QStringLiteral("*.run")}, QDir::Files)) {
        const QString path = folder_ + "/" + name;
        if (LockIsHeld(path)) earlier_.append(path);
    }
    own_ = std::make_unique<QLockFile>(folder_ + "/" + QUuid::createUuid().toString(QUuid::WithoutBraces) + ".run");
    own_->setStaleLockTime(0);
    own_->tryLock(0);
}

bool InstanceGuard::AnotherRuns() const {
    for (const QString& path : earlier_)
        if (LockIsHeld(path)) return true;
    return false;
}

}  // namespace platform
