#pragma once

#include <QString>
#include <QTextStream>

namespace bench {

/// Many clients at once on one installation.
struct CrowdOrder {
    QString root;      ///< an install tree that has a staff member for each client
    int clients = 50;  ///< each of another login, for a staff member of its own
    int seconds = 60;
};

/// Starts that many clients (katsudo-drive beside this program); each reports slots and searches customers until the
/// time is over. Prints how many, how long they took, the slowest hundredth, and what the run history tells of faults.
/// False when a command was refused, a statement failed or a slot isn't stored; the words stand in the output.
bool RunCrowd(const CrowdOrder& order, QTextStream& out);

}  // namespace bench
