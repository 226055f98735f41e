#pragma once

#include "drive/command_loop.h"
#include "drive/hands.h"
#include "screen/screen_host.h"

namespace drive {

/// A host that draws nothing: every wait takes the next commands.
class HeadlessHost : public screen::ScreenHost {
  public:
    HeadlessHost(platform::FixedClock* clock, const OutsideRecord& outside, const platform::EndSignals& endSignals)
        : hands_(*this), loop_(*this, clock, outside, endSignals) {
        loop_.SetHands(hands_);
    }

    QSize DisplaySize() const override { return {1920, 1080}; }
    void ProcessEvents() override { loop_.TakeDuringWait(); }
    void Sleep(int milliseconds) override;
    CommandLoop& Commands() { return loop_; }

  protected:
    void WaitUntil(const std::function<bool()>& done) override { loop_.RunUntil(done); }

  private:
    Hands hands_;
    CommandLoop loop_;
};

}  // namespace drive
