#pragma once

#include <QString>

#include "identity/staff_identity.h"
#include "platform/clock.h"
#include "session/data_access.h"
#include "session/environment.h"

namespace suite {

/// The messages by which programs of the suite start and answer each other, rows of `プログラム連携情報`.
class LinkMessages {
  public:
    LinkMessages(session::SessionContext& context, session::DataAccess& data, session::Environment& environment,
                 identity::StaffIdentity& staff, const platform::Clock& clock)
        : context_(context), data_(data), environment_(environment), staff_(staff), clock_(clock) {}

    /// Takes the start message whose key is this run's tail, not older than `earliest` ("yyyymmdd hhnnss"): its sender
    /// and key go to the session and the row is deleted. Without one the run has no caller.
    void ReceiveStartLink(const QString& tail, const QString& earliest);

    /// Answers the caller with a result text, which may be empty.
    void SendEndLink(const QString& result);

  private:
    session::SessionContext& context_;
    session::DataAccess& data_;
    session::Environment& environment_;
    identity::StaffIdentity& staff_;
    const platform::Clock& clock_;
};

}  // namespace suite
