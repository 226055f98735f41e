#include "platform/run_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <chrono>
#include <filesystem>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kBreath{300};
const QString kSuffix = QStringLiteral(".typed");

void SyncToDisk(const QString& path) {
    const int handle = open(QFile::encodeName(path).constData(), O_RDONLY);
    if (handle < 0) return;
    fsync(handle);
    close(handle);
}

bool Rename(const QString& from, const QString& to) {
    std::error_code fault;
    std::filesystem::rename(from.toStdString(), to.toStdString(), fault);
    return !fault;
}

bool MakePrivateFolder(const QString& folder) {
    if (QFileInfo(folder).isDir()) return true;
    const QFile::Permissions owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    return QDir().mkpath(folder) && QFile::setPermissions(folder, owner);
}

}  // namespace

DiskFlusher::~DiskFlusher() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        ends_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void DiskFlusher::Flush(const QString& path) {
    {
        const std::lock_guard lock(mutex_);
        path_ = path;
    }
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    wake_.notify_one();
}

void DiskFlusher::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ends_ || !path_.isEmpty(); });
        if (path_.isEmpty()) return;
        const QString path = std::exchange(path_, QString());
        lock.unlock();
        SyncToDisk(path);
        SyncToDisk(QFileInfo(path).absolutePath());
        lock.lock();
        // What is typed in one breath goes to the disk once.
        wake_.wait_for(lock, kBreath, [this] { return ends_; });
    }
}

QString RunFile::Path(const QString& part) const {
    return folder_ + "/" + runs_.RunId() + part + kSuffix;
}

bool RunFile::Write(const QByteArray& content) {
    if (!MakePrivateFolder(folder_)) return false;
    const QString beside = Path() + ".new";
    {
        QFile file(beside);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate, QFile::ReadOwner | QFile::WriteOwner)) return false;
        if (file.write(content) != content.size() || !file.flush()) return false;
    }
    if (!Rename(beside, Path())) return false;
    written_ = true;
    flusher_.Flush(Path());
    return true;
}

void RunFile::Remove() {
    if (!written_) return;
    QFile::remove(Path());
    written_ = false;
}

void RunFile::SetAside() {
    if (!written_) return;
    Rename(Path(), Path(QStringLiteral("-%1").arg(++parts_)));
    written_ = false;
}

std::optional<RunFile::Leftover> RunFile::TakeLeftover(const std::function<bool(const QByteArray&)>& wanted) {
    const int idLength = static_cast<int>(runs_.RunId().size());
    const QFileInfoList files = QDir(folder_).entryInfoList({"*" + kSuffix}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& info : files) {
        const QString owner = info.fileName().left(idLength);
        if (owner == runs_.RunId() || runs_.Lives(owner)) continue;
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QByteArray content = file.readAll();
        if (!wanted(content)) continue;
        // Of two runs that want it the one whose renaming works has it.
        const Leftover leftover{Path(QStringLiteral("-%1").arg(++parts_)), content};
        if (Rename(info.filePath(), leftover.path)) return leftover;
    }
    return std::nullopt;
}

void RunFile::Drop(const Leftover& leftover) {
    QFile::remove(leftover.path);
}

QString UserStateFolder() {
    const QString told = qEnvironmentVariable("XDG_STATE_HOME");
    if (QDir::isAbsolutePath(told)) return told + "/katsudo-techo";
#ifdef Q_OS_UNIX
    return QDir::homePath() + "/.local/state/katsudo-techo";
#else
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/katsudo-techo";
#endif
}

}  // namespace platform
