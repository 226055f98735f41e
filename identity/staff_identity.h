#pragma once

#include <QString>

#include "screen/screen_host.h"
#include "session/data_access.h"

namespace identity {

/// The staff member at the keyboard. The code outlives a run: it stands in `起動担当者コード` of the configuration
/// store, which all programs of the suite on a machine share.
class StaffIdentity {
  public:
    StaffIdentity(session::SessionContext& context, session::DataAccess& data, screen::ScreenHost& host)
        : context_(context), data_(data), host_(host) {}

    /// Reads the stored code anew. True when it is not blank; RunningStaffCode is empty otherwise.
    bool ReadRunningStaffCode();

    /// Loads name, place, access level and permits of a staff member, whether still employed or not. True when the row
    /// exists; a Null leaves its field as it was, but gives no right of somebody else's (TakeRights).
    bool LoadRunningStaff(const QString& code);

    /// Stores RunningStaffCode and loads that staff member; a blank code does nothing. A failed write is told.
    void StoreRunningStaffCode();

  private:
    session::SessionContext& context_;
    session::DataAccess& data_;
    screen::ScreenHost& host_;
};

/// Takes access level and permits from the current row of `M担当者`. What is Null there, and all of it where there is
/// no row, is level 0, class permit "0" and an empty operation permit: the rights of whoever was looked up before are
/// gone.
void TakeRights(session::RunningStaff& staff, const store::Recordset& row);

/// Columns of the operation permits in the order of the operation numbers 0 to 7.
extern const QStringList kOperationPermitColumns;

}  // namespace identity
