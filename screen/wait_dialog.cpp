#include "screen/wait_dialog.h"

namespace screen {

WaitDialog::WaitDialog(ScreenHost& host, Form* behind) : host_(host), behind_(behind) {
    form_.Add(ControlKind::SSPanel, QStringLiteral("banner"), QStringLiteral("Tradewind"));
    form_.Add(ControlKind::CaptionLabel, QStringLiteral("lab_msg"), QStringLiteral("しばらくお待ちください。"));
    // It asks for nothing, so there is nothing to close it by.
    form_.onQueryClose = [] { return false; };
    if (behind_) behind_->SetEnabled(false);
    host_.Show(form_);
    host_.ProcessEvents();
}

WaitDialog::~WaitDialog() {
    host_.ProcessEvents();
    host_.Unload(form_);
    if (behind_) behind_->SetEnabled(true);
}

}  // namespace screen
