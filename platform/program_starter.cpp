#include "platform/program_starter.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

namespace platform {

bool ProcessStarter::Start(const QString& file, const QString& argument) {
    const QFileInfo program(file);
    if (!program.isFile() || !program.isExecutable()) return false;
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
    return process.startDetached();
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
