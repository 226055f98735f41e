#pragma once

#include <QString>
#include <QStringList>

#include "identity/pin_dialog.h"
#include "identity/staff_identity.h"

namespace identity {

/// Operation numbers that rights are asked for.
enum Operation { kOperate = 0, kEnter = 1, kModify = 2, kDelete = 3 };

/// May the running staff member perform an operation of a program? Asked at start and before each write.
class Permissions {
  public:
    Permissions(session::SessionContext& context, session::DataAccess& data, StaffIdentity& staff, PinDialog& dialog,
                screen::ScreenHost& host)
        : context_(context), data_(data), staff_(staff), dialog_(dialog), host_(host) {}

    /// The whole check. Without PINs in use every right is granted; otherwise a stored identity with the right passes,
    /// and for a missing identity or right the PIN dialog comes up and its identity is judged.
    bool EnsureProgramPermission(const QString& menu, const QString& programId, int operation);

    /// Reads the identity and judges its rights, without a dialog; sets PinConfirmed.
    bool CheckSignedInPermission(const QString& menu, const QString& programId, int operation);

    /// Judges the rights of the identity that is loaded. A failed read counts as no row.
    bool EvaluatePermission(const QString& menu, const QString& programId, int operation);

    /// Tells the suite which items a start of the program takes: names for the positions A to Z, up to 26; missing ones
    /// are empty. A failed write is told.
    void UpdateConditionItems(const QString& menu, const QString& programId, const QStringList& names);

  private:
    bool MenuRowGrants(const QString& menu, const QString& programId);

    session::SessionContext& context_;
    session::DataAccess& data_;
    StaffIdentity& staff_;
    PinDialog& dialog_;
    screen::ScreenHost& host_;
};

}  // namespace identity
