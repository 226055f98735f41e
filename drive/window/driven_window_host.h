#pragma once

#include "desktop/window_host.h"
#include "drive/command_loop.h"
#include "drive/window/window_hands.h"

namespace drive {

/// A host with real windows whose input comes from commands: every wait takes the next ones.
class DrivenWindowHost : public desktop::WindowHost {
  public:
    DrivenWindowHost(platform::FixedClock* clock, const OutsideRecord& outside, const platform::EndSignals& endSignals);

    /// The same display whatever the real one is, so that the answers don't hang on the machine.
    QSize DisplaySize() const override { return {1920, 1080}; }
    void ProcessEvents() override;
    CommandLoop& Commands() { return loop_; }

  protected:
    void WaitUntil(const std::function<bool()>& done) override;

  private:
    WindowHands hands_;
    CommandLoop loop_;
};

}  // namespace drive
