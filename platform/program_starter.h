#pragma once

#include <QHash>
#include <QString>
#include <memory>

namespace platform {

/// A program that was started, for as long as somebody wants to know of it. Letting go of this leaves the program
/// alone.
class StartedProgram {
  public:
    virtual ~StartedProgram() = default;
    /// False once its process has ended; another one that it handed over to doesn't count. True where the machine can't
    /// tell.
    virtual bool Lives() const = 0;
};

/// Starts other programs.
class ProgramStarter {
  public:
    virtual ~ProgramStarter() = default;
    /// Starts the program file with one argument, in a window of its own, and doesn't wait for it. Null when there is
    /// no such file or it can't be run.
    virtual std::unique_ptr<StartedProgram> Start(const QString& file, const QString& argument) = 0;
};

/// Starts them as processes of the machine that outlive this one. They get none of its input and output.
class ProcessStarter : public ProgramStarter {
  public:
    /// `environment`: what the started programs find in their environment beside what this process has.
    explicit ProcessStarter(QHash<QString, QString> environment = {}) : environment_(std::move(environment)) {}
    std::unique_ptr<StartedProgram> Start(const QString& file, const QString& argument) override;

  private:
    QHash<QString, QString> environment_;
};

/// The file of a program in a folder, as the platform names program files.
QString ProgramFile(const QString& folder, const QString& program);

}  // namespace platform
