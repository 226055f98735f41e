#pragma once

#include <QLockFile>
#include <QString>
#include <QStringList>
#include <memory>

namespace platform {

/// A name, fit for a folder, for what belongs to one user of one install tree on one computer.
QString PlaceName(const QString& programFolder, const QString& login, const QString& computer);

/// True while a living process holds the lock of that file. It falls with its process, however that ends; its age says
/// nothing. A look takes a fallen one away.
bool LockIsHeld(const QString& lockFile);

/// Tells whether another run of the same program lives: the same install tree, computer and login. A run is known by a
/// lock of its own, which falls with its process, however that ends. The locks lie where no other user can reach them:
/// in $XDG_RUNTIME_DIR, or in a folder of the user's own among the machine's temporary files.
class InstanceGuard {
  public:
    /// Registers this run, and remembers the runs that were there before it. Where no folder can be had the run counts
    /// as the only one.
    InstanceGuard(const QString& programFolder, const QString& login, const QString& computer);
    /// Takes the lock away, and the folder with the last one.
    ~InstanceGuard();
    InstanceGuard(const InstanceGuard&) = delete;
    InstanceGuard& operator=(const InstanceGuard&) = delete;

    /// True while one of the runs that started before this one still lives. Of two runs that start together one is
    /// therefore always the first.
    bool AnotherRuns() const;

  private:
    void Register();

    QString folder_;
    QStringList earlier_;
    std::unique_ptr<QLockFile> own_;
};

}  // namespace platform
