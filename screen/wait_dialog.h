#pragma once

#include "screen/screen_host.h"

namespace screen {

/// The wait dialog `msgお待ち`, in front for as long as this object lives. The form behind it takes no input meanwhile,
/// and what the user clicked or typed in that time is dropped: it was meant for what stood there before.
class WaitDialog {
  public:
    /// `behind` may be null when no form is shown yet.
    WaitDialog(ScreenHost& host, Form* behind);
    ~WaitDialog();
    WaitDialog(const WaitDialog&) = delete;
    WaitDialog& operator=(const WaitDialog&) = delete;

  private:
    ScreenHost& host_;
    Form* behind_;
    Form form_{QStringLiteral("msgお待ち")};
};

}  // namespace screen
