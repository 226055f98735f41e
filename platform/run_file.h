#pragma once

#include <QByteArray>
#include <QString>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "platform/instance_guard.h"

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
    QString path_;
    bool ends_ = false;
    std::thread thread_;
};

/// A small file of this run that outlives it when it ends unexpectedly, in a folder of the user's own. What a run left
/// is a leftover once the run lives no more; a leftover is given to one run only.
class RunFile {
  public:
    /// `folder` is made when something is first written.
    RunFile(QString folder, const InstanceGuard& runs) : folder_(std::move(folder)), runs_(runs) {}

    /// Puts `content` in place of what stands there; whole or not at all, and safe from the end of this process when it
    /// returns. It reaches the disk soon after. False when it couldn't be written.
    bool Write(const QByteArray& content);
    /// Takes the file away.
    void Remove();
    /// Leaves what stands there as a leftover for a later run, and begins with nothing.
    void SetAside();

    /// The folder of this user's unfinished work; it is made when something is first written.
    const QString& Folder() const { return folder_; }
    /// Tells whose work is unfinished.
    const InstanceGuard& Runs() const { return runs_; }

    struct Leftover {
        QString path;
        QByteArray content;
    };
    /// The oldest leftover of a run that has ended whose content is `wanted`; it belongs to this run from now on.
    std::optional<Leftover> TakeLeftover(const std::function<bool(const QByteArray&)>& wanted);
    void Drop(const Leftover& leftover);

  private:
    QString Path(const QString& part = QString()) const;

    QString folder_;
    const InstanceGuard& runs_;
    int parts_ = 0;
    bool written_ = false;
    DiskFlusher flusher_;
};

/// The folder for what a program keeps of its user's unfinished work on this machine.
QString UserStateFolder();

}  // namespace platform
