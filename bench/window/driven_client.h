#pragma once

#include <QDateTime>
#include <functional>

#include "desktop/window_host.h"
#include "session/run/main.h"

namespace bench {

/// Draws the client's windows and, where the client would wait for its user, does what it was told to do there.
class DrivenHost : public desktop::WindowHost {
  public:
    DrivenHost() : WindowHost(QString()) {}

    /// What the next wait runs. A wait that nothing was told for ends the program.
    std::function<void()> onWait;
    /// Called at each pause of a wait for another program.
    std::function<void()> onSleep;
    /// What ended the program before its time, in words; empty for nothing.
    const QString& Problem() const { return problem_; }

    void Sleep(int milliseconds) override;

  protected:
    void WaitUntil(const std::function<bool()>& done) override;

  private:
    QString problem_;
};

/// Name of the computer by which rows of a measurement are known.
inline const QString kBenchComputer = QStringLiteral("KATSUDO-BENCH");

/// Runs the whole client on an install tree, on the day `now`, as the user of that login. Returns when it has ended.
void RunClient(DrivenHost& host, const QString& root, const QDateTime& now, const QString& login);

}  // namespace bench
