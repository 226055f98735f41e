#pragma once

#include <functional>

namespace bench {

/// Median time of several runs of `work` in milliseconds. A run that takes long is repeated less often.
double MedianMilliseconds(const std::function<void()>& work);

}  // namespace bench
