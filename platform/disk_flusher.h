#pragma once

#include <QString>
#include <QStringList>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace platform {

/// Brings files to the disk without making anybody wait for it.
class DiskFlusher {
  public:
    ~DiskFlusher();
    /// Has the file, and its name in its folder, on the disk soon.
    void Flush(const QString& path);

  private:
    void Run();

    std::mutex mutex_;
    std::condition_variable wake_;
    QStringList paths_;
    bool ends_ = false;
    std::thread thread_;
};

}  // namespace platform
