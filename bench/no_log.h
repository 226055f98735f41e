#pragma once

#include "session/data_access.h"

namespace bench {

/// Nobody reads the history of a measurement.
class NoLog : public session::StatementLog {
  public:
    void WriteOutputHistory(const QString&) override {}
    void WriteErrorHistory(const QString&) override {}
};

}  // namespace bench
