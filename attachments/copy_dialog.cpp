#include "attachments/copy_dialog.h"

#include "items/display_forms.h"

namespace attachments {

using screen::ControlKind;

namespace {

/// Less than this is copied before a user could read the dialog.
constexpr qint64 kWorthShowingBytes = 8 << 20;
constexpr int kWorthShowingPieces = 300;

}  // namespace

CopyDialog::CopyDialog(screen::ScreenHost& host, screen::Form* behind) : host_(host), behind_(behind) {
    form_.SetCaption(screen::kProgramTitle);
    form_.Add(ControlKind::CaptionLabel, QStringLiteral("lab_msg"), QStringLiteral("書類をコピーしています。"));
    form_.Add(ControlKind::CaptionLabel, QStringLiteral("lab_進捗"));
    form_.Add(ControlKind::SSCommand, QStringLiteral("btn_中止"), QStringLiteral("中止")).onClick = [this] {
        cancelled_ = true;
    };
    form_.onEscape = [this] { cancelled_ = true; };
    // The copy itself takes the dialog away, when it has cleared up.
    form_.onQueryClose = [this] {
        cancelled_ = true;
        return false;
    };
}

CopyDialog::~CopyDialog() {
    if (!form_.Loaded()) return;
    host_.ProcessEvents();
    host_.Unload(form_);
    if (behind_) behind_->SetEnabled(true);
}

platform::CopyProgress CopyDialog::Progress() {
    return [this](qint64 done, qint64 total) { return GoesOn(done, total); };
}

void CopyDialog::ComeUp() {
    if (behind_) behind_->SetEnabled(false);
    host_.Show(form_);
    form_.FocusFirst();
}

bool CopyDialog::GoesOn(qint64 done, qint64 total) {
    if (host_.Ended()) return false;
    ++asked_;
    if (!form_.Loaded()) {
        if (total < kWorthShowingBytes && asked_ < kWorthShowingPieces) return true;
        ComeUp();
    }
    form_.At(QStringLiteral("lab_進捗"))
        .SetCaption(items::FileSizeText(done) + " / " + items::FileSizeText(total) + "（" +
                    QString::number(total > 0 ? done * 100 / total : 0) + "%）");
    host_.ProcessEvents();
    return !cancelled_ && !host_.Ended();
}

}  // namespace attachments
