#pragma once

#include <QString>
#include <memory>

#include "bench/list_bench.h"

namespace bench {

/// Searches in the real list windows, drawn on the platform that the application runs on: a fill presses the search
/// button and returns when the filled list is painted.
class WindowFill {
  public:
    /// `root` is the install tree. The windows are made when they are first searched in.
    explicit WindowFill(const QString& root);
    ~WindowFill();

    /// Rows of the filled list; -1 when the store can't be opened.
    int operator()(const ListCase& search);

  private:
    struct Stage;
    std::unique_ptr<Stage> stage_;
};

/// Memory that this process holds, in megabytes; 0 where the system doesn't tell.
double ResidentMegabytes();

}  // namespace bench
