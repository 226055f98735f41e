#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace setup {

/// The whole program: carries out the command of the arguments (without the program's name), writing to standard output
/// and error. Gives the exit code: 0 done and all well, 1 refused, failed or something wrong, 2 a command line that
/// can't be understood.
int RunSetup(const QStringList& arguments, const QString& programFolder);

}  // namespace setup
