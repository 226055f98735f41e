#include "platform/disk_flusher.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <chrono>
#include <utility>

namespace platform {

namespace {

constexpr std::chrono::milliseconds kBreath{300};

void SyncToDisk(const QString& path) {
    const int handle = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) return;
    fsync(handle);
    close(handle);
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
        if (!paths_.contains(path)) paths_.append(path);
    }
    if (!thread_.joinable()) thread_ = std::thread([this] { Run(); });
    wake_.notify_one();
}

void DiskFlusher::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_.wait(lock, [this] { return ends_ || !paths_.isEmpty(); });
        if (paths_.isEmpty()) return;
        const QStringList paths = std::exchange(paths_, {});
        lock.unlock();
        for (const QString& path : paths)
            SyncToDisk(path);
        SyncToDisk(QFileInfo(paths.front()).absolutePath());
        lock.lock();
        // What is typed in one breath goes to the disk once.
        wake_.wait_for(lock, kBreath, [this] { return ends_; });
    }
}

}  // namespace platform
