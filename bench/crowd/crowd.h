#pragma once

#include <QString>

#include "bench/results.h"

namespace bench {

/// Many clients at once on one installation.
struct CrowdOrder {
    QString root;      ///< an install tree that has a staff member for each client
    int clients = 50;  ///< each of another login, for a staff member of its own
    int seconds = 60;
    bool ownStores = false;  ///< gives each user an environment store of its own, for as long as it takes
};

/// Starts that many clients (katsudo-drive beside this program); each reports slots and searches customers until the
/// time is over. Tells how many, how long they took, the slowest hundredth, how many slots are stored, and what the run
/// history tells of faults. A refused command and a slot that isn't stored are faults of the results.
Results RunCrowd(const CrowdOrder& order);

}  // namespace bench
