#pragma once

#include <QTextStream>

#include "setup/tree.h"

namespace bench {

/// How many clients work at once, and how long.
struct CrowdOrder {
    setup::Tree tree;  ///< an installation with as many staff members who have a login
    int clients = 50;
    int seconds = 60;
    QString driver;  ///< the program katsudo-drive
};

/// Lets that many clients, each a process with a login and a configuration store of its own, register a slot on the
/// next day and search the parties, turn by turn, as fast as they can. Prints how long a save and a search took, from
/// the click to the answer. False with words there when a client met a fault, or a slot isn't stored. The slots stay in
/// the installation, and it has a folder for each user from then on.
bool RunCrowd(const CrowdOrder& order, QTextStream& out);

}  // namespace bench
