#pragma once

#include <QLockFile>
#include <QString>
#include <QStringList>
#include <memory>

namespace platform {

/// A name, fit for a folder, for what belongs to one user of one install tree on one computer.
QString PlaceName(const QString& programFolder, const QString& login, const QString& computer);

/// Tells whether another run of the same program lives: the same install tree, computer and login. A run is known by a
/// lock of its own in the machine's folder for temporary files, which falls with its process, however that ends.
class InstanceGuard {
  public:
    /// Registers this run, and remembers the runs that were there before it.
    InstanceGuard(const QString& programFolder, const QString& login, const QString& computer);

    /// A name for this run that no other run has.
    const QString& RunId() const { return runId_; }
    /// True while the run of that name lives.
    bool Lives(const QString& runId) const;

    /// True while one of the runs that started before this one still lives. Of two runs that start together one is
    /// therefore always the first.
    bool AnotherRuns() const;

  private:
    QString LockFile(const QString& runId) const;

    QString folder_, runId_;
    QStringList earlier_;
    std::unique_ptr<QLockFile> own_;
};

}  // namespace platform
