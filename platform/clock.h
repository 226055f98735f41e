#pragma once

#include <QDateTime>

namespace platform {

/// The one source of "now": local time, to the second.
class Clock {
  public:
    virtual ~Clock() = default;
    virtual QDateTime Now() const = 0;
};

/// The machine's clock.
class SystemClock : public Clock {
  public:
    QDateTime Now() const override { return QDateTime::currentDateTime(); }
};

/// A clock that stands still until it is set anew.
class FixedClock : public Clock {
  public:
    explicit FixedClock(QDateTime now) : now_(std::move(now)) {}
    QDateTime Now() const override { return now_; }
    void Set(const QDateTime& now) { now_ = now; }

  private:
    QDateTime now_;
};

}  // namespace platform
