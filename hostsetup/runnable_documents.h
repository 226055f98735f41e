#pragma once

#include <QString>

namespace hostsetup {

/// True for a file that a desktop would run rather than show: a program, a script, a starter. Its type tells; where
/// that is none of the known ones, its first bytes and its execute bit do, which alone says nothing: some shares have
/// it on everything. False for a folder, and for what isn't there.
bool DesktopRuns(const QString& path);

}  // namespace hostsetup
