#include "drive/window/driven_window_host.h"

namespace drive {

DrivenWindowHost::DrivenWindowHost(platform::FixedClock* clock)
    : WindowHost(QString()), hands_(*this), loop_(*this, clock) {
    loop_.SetHands(hands_);
}

void DrivenWindowHost::WaitUntil(const std::function<bool()>& done) {
    loop_.RunUntil(done);
}

}  // namespace drive
