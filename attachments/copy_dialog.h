#pragma once

#include "platform/file_copy.h"
#include "screen/screen_host.h"

namespace attachments {

/// The dialog `msgコピー中`: shows how far a copy is and lets the user break it off. It comes up only for a copy that
/// is worth it, and goes with this object; the form behind takes no input meanwhile.
class CopyDialog {
  public:
    /// `behind` may be null when no form is shown.
    CopyDialog(screen::ScreenHost& host, screen::Form* behind);
    ~CopyDialog();
    CopyDialog(const CopyDialog&) = delete;
    CopyDialog& operator=(const CopyDialog&) = delete;

    /// What a copy asks between its pieces; it lets events through. Must not outlive the dialog.
    platform::CopyProgress Progress();

  private:
    bool GoesOn(qint64 done, qint64 total);
    void ComeUp();

    screen::ScreenHost& host_;
    screen::Form* behind_;
    screen::Form form_{QStringLiteral("msgコピー中")};
    int asked_ = 0;
    bool cancelled_ = false;
};

}  // namespace attachments
