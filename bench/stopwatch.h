#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace bench {

/// How often things are repeated, and for how long. Medians of many are worth something; few are enough to try whether
/// all works.
struct Effort {
    int runs = 7;       ///< of a search
    int numbers = 100;  ///< typed, of each kind
    int starts = 9, slotCount = 40;
    int waitMilliseconds = 3000;

    static Effort Quick() { return {1, 2, 1, 2, 300}; }
};

/// Time that one run of `work` takes, in milliseconds.
double Milliseconds(const std::function<void()>& work);

/// Median times of several runs of two works in milliseconds. They take turns, so that whatever else the machine does
/// meets both alike. `before` runs ahead of each second one and isn't counted. What takes long is repeated less often.
std::pair<double, double> MedianTurns(int runs, const std::function<void()>& first, const std::function<void()>& second,
                                      const std::function<void()>& before = {});

/// The middle one of some times; 0 for none.
double Median(std::vector<double> times);

}  // namespace bench
