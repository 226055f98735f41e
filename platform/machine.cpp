#include "platform/machine.h"

#include <QDir>
#include <QSysInfo>

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif

namespace platform {

MachineNames ReadMachineNames() {
    MachineNames names;
#ifdef Q_OS_UNIX
    if (const passwd* user = getpwuid(geteuid())) names.login = QString::fromLocal8Bit(user->pw_name);
#else
    names.login = qEnvironmentVariable("USERNAME");
#endif
    names.login.truncate(255);
    names.computer = QSysInfo::machineHostName().left(255);
    return names;
}

QString UserProfileFolder() {
    const QString folder = qEnvironmentVariable("USERPROFILE");
    return QDir::toNativeSeparators(folder.isEmpty() ? QDir::homePath() : folder);
}

}  // namespace platform
