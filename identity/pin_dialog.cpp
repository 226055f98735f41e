#include "identity/pin_dialog.h"

#include <QDir>

#include "identity/stored_pin.h"
#include "items/display_forms.h"
#include "items/text_rules.h"

namespace identity {

using screen::Control;
using screen::ControlKind;

PinDialog::PinDialog(session::SessionContext& context, session::DataAccess& data, StaffIdentity& staff,
                     screen::ScreenHost& host, const platform::Clock& clock, session::StatementLog& log)
    : context_(context), data_(data), staff_(staff), host_(host), clock_(clock), log_(log) {
    Build();
}

void PinDialog::Build() {
    struct Item {
        const char* name;
        const char* title;
        ControlKind kind;
    };
    const Item items[] = {{"担当者コード", "コード", ControlKind::EntryField},
                          {"担当者名", "担当者氏名", ControlKind::EntryField},
                          {"暗証番号", "暗証番号", ControlKind::EntrySecret}};
    for (const Item& item : items) {
        Control& title = form_.Add(ControlKind::SSPanel, QStringLiteral("itm_ttl_") + item.name, item.title);
        Control& entry = form_.Add(item.kind, item.name);
        title.onClick = [&entry] { entry.Owner().SetFocus(entry); };
    }
    code_ = &form_.At(QStringLiteral("担当者コード"));
    name_ = &form_.At(QStringLiteral("担当者名"));
    pin_ = &form_.At(QStringLiteral("暗証番号"));
    code_->maxLength = 5;
    code_->enforcesMaxLength = true;
    code_->use = pin_->use = screen::EntryUse::Code;
    name_->readOnly = true;
    name_->SetTabStop(false);
    code_->onLostFocus = [this] { CodeLeft(); };
    name_->onLostFocus = pin_->onLostFocus = [this] { FocusCodeIfEmpty(); };

    form_.Add(ControlKind::SSCommand, QStringLiteral("btn_OK"), QStringLiteral("OK")).onClick = [this] { Confirm(); };
    form_.Add(ControlKind::SSCommand, QStringLiteral("btn_キャンセル"), QStringLiteral("ｷｬﾝｾﾙ")).onClick = [this] {
        context_.PinConfirmed = false;
        host_.Unload(form_);
    };
    form_.onLoad = [this] { Load(); };
    form_.onEscape = [this] { host_.CloseByFrame(form_); };
}

void PinDialog::ConfirmPin(const QString& caption) {
    form_.SetCaption(caption);
    const session::RunningStaff before = context_;
    context_.PinConfirmed = false;
    host_.ShowModal(form_);
    // Whoever leaves the dialog leaves the one who was there before, not the last one who was shown.
    if (!context_.PinConfirmed) static_cast<session::RunningStaff&>(context_) = before;
}

void PinDialog::Load() {
    code_->SetText(QString());
    name_->SetText(QString());
    pin_->SetText(QString());
    storedPin_.clear();
    context_.RunningStaffCode.clear();
    // A staff member whose login is known only confirms the PIN.
    const bool known =
        ShowStaff("M担当者.ログインID = '" + items::EscapeSqlText(context_.LoginUserId) + "'") && CodeLeft();
    code_->SetEnabled(!known);
}

QString PinDialog::CurrentStaffCondition() const {
    return " AND (M担当者.在籍区分 = '0' OR (M担当者.在籍区分 = '1' AND M担当者.退社日付 <>'' AND M担当者.退社日付 > "
           "'" +
           items::DateText(clock_.Now()) + "')) AND (M担当者.事業所コード = '" + context_.SiteCode +
           "' OR M担当者.事業所コード = '" + items::ZeroMask(3) + "')";
}

bool PinDialog::ShowStaff(const QString& condition) {
    std::unique_ptr<store::Recordset> row;
    storedPin_.clear();
    const bool found =
        data_.OpenMainRecordset(row, "SELECT M担当者.* FROM M担当者 WHERE " + condition + CurrentStaffCondition());
    TakeRights(context_, *row);
    if (!found) {
        code_->SetText(QString());
        name_->SetText(QString());
        return false;
    }
    code_->SetText(row->Value(QStringLiteral("コード")).value_or(QString()));
    name_->SetText(row->Value(QStringLiteral("氏名")).value_or(QString()));
    storedPin_ = row->Value(QStringLiteral("暗証番号")).value_or(QString());
    context_.RunningLoginId = row->Value(QStringLiteral("ログインID")).value_or(QString());
    return true;
}

bool PinDialog::CodeLeft() {
    const QString code = items::FormatToMask(code_->Text(), items::ZeroMask(5));
    return ShowStaff("M担当者.コード = '" + code + "'");
}

void PinDialog::FocusCodeIfEmpty() {
    if (code_->Text().isEmpty()) form_.SetFocus(*code_);
}

void PinDialog::Confirm() {
    const QString typed = pin_->Text().toUpper();
    if (typed.size() <= 3) {
        Refuse(QStringLiteral("暗証番号を入力してください。"));
    } else if (Opens(context_.SitePrivilegePin, typed) || Opens(storedPin_, typed)) {
        Accept();
    } else if (IsPinKey(PinKeyFile(context_.InstallRoot))) {
        Refuse(QStringLiteral("暗証番号が違います。"));
    } else {
        // Without the key no PIN can be the right one, and the user would look for the fault in what was typed.
        const QString words = QStringLiteral("暗証番号の鍵ファイルを読めません。");
        log_.WriteErrorHistory(words);
        Refuse(words);
    }
}

bool PinDialog::Opens(const QString& stored, const QString& typed) const {
    // The stored PIN is compared as it stands: one with small letters can't be typed.
    return DecodeStoredPin(stored, PinKeyFile(context_.InstallRoot)) == typed;
}

void PinDialog::Accept() {
    context_.RunningStaffCode = code_->Text();
    staff_.StoreRunningStaffCode();
    context_.PinConfirmed = true;
    host_.Unload(form_);
}

void PinDialog::Refuse(const QString& message) {
    context_.RunningStaffCode.clear();
    context_.PinConfirmed = false;
    host_.Tell(message);
    form_.SetFocus(*pin_);
}

}  // namespace identity
