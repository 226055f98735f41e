#include "platform/program_starter.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#ifdef Q_OS_LINUX
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace platform {

namespace {

#ifdef Q_OS_LINUX
/// Watches a process that is nobody's child here: whoever adopted it takes its end, and its number may be given anew,
/// but a handle always means the one process.
class WatchedProcess : public StartedProgram {
  public:
    explicit WatchedProcess(qint64 id)
        : handle_(static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(id), 0))), gone_(errno == ESRCH) {}
    ~WatchedProcess() override {
        if (handle_ >= 0) close(handle_);
    }
    WatchedProcess(const WatchedProcess&) = delete;
    WatchedProcess& operator=(const WatchedProcess&) = delete;

    bool Lives() const override {
        if (handle_ < 0) return !gone_;
        pollfd end{handle_, POLLIN, 0};
        return poll(&end, 1, 0) <= 0;
    }

  private:
    int handle_;
    bool gone_;  ///< it had ended before it could be watched; counts without a handle only
};
#else
class WatchedProcess : public StartedProgram {
  public:
    explicit WatchedProcess(qint64) {}
    bool Lives() const override { return true; }
};
#endif

}  // namespace

std::unique_ptr<StartedProgram> ProcessStarter::Start(const QString& file, const QString& argument) {
    const QFileInfo program(file);
    if (!program.isFile() || !program.isExecutable()) return nullptr;
    QProcess process;
    process.setProgram(program.absoluteFilePath());
    process.setArguments({argument});
    process.setWorkingDirectory(program.absolutePath());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto entry = environment_.begin(); entry != environment_.end(); ++entry)
        environment.insert(entry.key(), entry.value());
    process.setProcessEnvironment(environment);
    qint64 id = 0;
    return process.startDetached(&id) ? std::make_unique<WatchedProcess>(id) : nullptr;
}

QString ProgramFile(const QString& folder, const QString& program) {
#ifdef Q_OS_WIN
    const QString extension = QStringLiteral(".exe");
#else
    const QString extension;
#endif
    return folder + QDir::separator() + program + extension;
}

}  // namespace platform
