#pragma once

#include <functional>

#include "bench/results.h"

namespace bench {

/// What a thing may take.
struct Limit {
    QString text;
    QStringList tables;  ///< where it holds, by the names of tables
    /// What the program may take for a row; not a number where the limit doesn't hold.
    std::function<double(const Table& table, const Row& row, bool onServer)> most;
};

/// All limits.
const std::vector<Limit>& Limits();

/// What was measured beside what it may be.
struct Judged {
    QString what;
    double measured = 0, most = 0;
    bool Passes() const { return measured > most; }
};

/// All that a limit holds for.
std::vector<Judged> Judge(const Limit& limit, const Results& results, bool onServer);

/// What passes a limit, in words.
QStringList Passed(const Results& results, bool onServer);

}  // namespace bench
