#pragma once

#include <functional>
#include <vector>

namespace bench {

/// Time that one run of `work` takes, in milliseconds.
double Milliseconds(const std::function<void()>& work);

/// Median time of several runs of `work` in milliseconds; `before` runs ahead of each and isn't counted. A run that
/// takes long is repeated less often.
double MedianMilliseconds(const std::function<void()>& work, const std::function<void()>& before = {});

/// The middle one of some times; 0 for none.
double Median(std::vector<double> times);

}  // namespace bench
