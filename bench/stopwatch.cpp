#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

double MedianMilliseconds(const std::function<void()>& work) {
    constexpr int kRuns = 7;
    constexpr double kEnough = 2000;  // milliseconds altogether
    std::vector<double> times;
    double total = 0;
    while (times.size() < kRuns && (times.size() < 3 || total < kEnough)) {
        const auto start = std::chrono::steady_clock::now();
        work();
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        total += times.back();
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace bench
