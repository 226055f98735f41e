#include "bench/stopwatch.h"

#include <algorithm>
#include <chrono>

namespace bench {

double Milliseconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

std::pair<double, double> MedianTurns(int runs, const std::function<void()>& first, const std::function<void()>& second,
                                      const std::function<void()>& before) {
    constexpr double kEnough = 2000, kTooMuch = 20'000;  // milliseconds altogether, of the second
    std::vector<double> firsts, seconds;
    double total = 0;
    while (int(seconds.size()) < runs && total < (seconds.size() < 3 ? kTooMuch : kEnough)) {
        firsts.push_back(Milliseconds(first));
        if (before) before();
        seconds.push_back(Milliseconds(second));
        total += seconds.back();
    }
    return {Median(std::move(firsts)), Median(std::move(seconds))};
}

double Median(std::vector<double> times) {
    if (times.empty()) return 0;
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace bench
