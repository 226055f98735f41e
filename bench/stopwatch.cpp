#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>

namespace bench {

double Milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double MedianMilliseconds(const std::function<void()>& work, const std::function<void()>& before) {
    constexpr int kRuns = 7;
    constexpr double kEnough = 2000;  // milliseconds altogether
    std::vector<double> times;
    double total = 0;
    while (times.size() < kRuns && (times.size() < 3 || total < kEnough)) {
        if (before) before();
        times.push_back(Milliseconds(work));
        total += times.back();
    }
    return Median(std::move(times));
}

double Median(std::vector<double> times) {
    if (times.empty()) return 0;
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace bench
