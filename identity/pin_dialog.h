#pragma once

#include <QString>

#include "identity/staff_identity.h"
#include "platform/clock.h"
#include "screen/form.h"

namespace identity {

/// The dialog `msg暗証番号確認`: who sits at the keyboard says so with a code and a PIN. It sets the running staff
/// member and PinConfirmed. There is no limit on the number of tries. A key file of the PINs that can't be read is
/// told, and noted in `log`.
class PinDialog {
  public:
    PinDialog(session::SessionContext& context, session::DataAccess& data, StaffIdentity& staff,
              screen::ScreenHost& host, const platform::Clock& clock, session::StatementLog& log);

    /// Shows the dialog and waits for it; the result is PinConfirmed. When it isn't confirmed the running staff member
    /// is who it was before, with the same rights.
    void ConfirmPin(const QString& caption);

  private:
    void Build();
    void Load();
    /// Looks a current staff member up by a condition on `M担当者` and shows what was found. False clears the items.
    bool ShowStaff(const QString& condition);
    /// Looks the code on the dialog up anew, in its full width.
    bool CodeLeft();
    void FocusCodeIfEmpty();
    void Confirm();
    void Accept();
    void Refuse(const QString& message);
    QString CurrentStaffCondition() const;
    /// Whether the typed PIN is the one that was stored so.
    bool Opens(const QString& stored, const QString& typed) const;

    session::SessionContext& context_;
    session::DataAccess& data_;
    StaffIdentity& staff_;
    screen::ScreenHost& host_;
    const platform::Clock& clock_;
    session::StatementLog& log_;
    screen::Form form_{QStringLiteral("msg暗証番号確認")};
    screen::Control* code_ = nullptr;
    screen::Control* name_ = nullptr;
    screen::Control* pin_ = nullptr;
    /// PIN of the staff member on the dialog as it is stored; empty when there is none.
    QString storedPin_;
};

}  // namespace identity
