#pragma once

#include <QLockFile>
#include <QString>
#include <QStringList>
#include <memory>

namespace platform {

/// Tells whether another run of the same program lives: the same install tree, computer and login. A run is known by a
/// lock of its own in the machine's folder for temporary files, which falls with its process, however that ends.
class InstanceGuard {
  public:
    /// Registers this run, and remembers the runs that were there before it.
    InstanceGuard(const QString& programFolder, const QString& login, const QString& computer);

    /// True while one of the runs that started before this one still lives. Of two runs that start together one is
    /// therefore always the first.
    bool AnotherRuns() const;

  private:
    QStringList earlier_;
    std::unique_ptr<QLockFile> own_;
};

}  // namespace platform
