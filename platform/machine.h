#pragma once

#include <QString>

namespace platform {

/// Names under which this process runs: the operating system's user and the computer. Each is cut at the first NUL and
/// at 255 characters.
struct MachineNames {
    QString login;
    QString computer;
};

/// Asks the operating system; what it doesn't tell stays empty.
MachineNames ReadMachineNames();

/// The user's own folder, in the platform's form.
QString UserProfileFolder();

}  // namespace platform
