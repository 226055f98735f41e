#include "drive/window/driven_window_host.h"

namespace drive {

DrivenWindowHost::DrivenWindowHost(platform::FixedClock* clock, const OutsideRecord& outside,
                                   const platform::EndSignals& endSignals)
    : WindowHost(QString()), hands_(*this), loop_(*this, clock, outside, endSignals) {
    loop_.SetHands(hands_);
}

void DrivenWindowHost::ProcessEvents() {
    WindowHost::ProcessEvents();
    loop_.TakeDuringWait();
}

void DrivenWindowHost::WaitUntil(const std::function<bool()>& done) {
    loop_.RunUntil(done);
}

}  // namespace drive
