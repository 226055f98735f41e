#pragma once

#include <QString>

#include "identity/staff_identity.h"
#include "platform/clock.h"
#include "session/data_access.h"
#include "session/environment.h"

namespace suite {

/// The side of an exchange that was started: it takes the message that came with its start, and answers at its end.
/// The caller's side is suite/sibling_calls.h.
class LinkMessages {
  public:
    /// `programId` is the program that this process is.
    LinkMessages(session::SessionContext& context, session::DataAccess& data, session::Environment& environment,
                 identity::StaffIdentity& staff, const platform::Clock& clock, QString programId = session::kProgramId)
        : context_(context),
          data_(data),
          environment_(environment),
          staff_(staff),
          clock_(clock),
          programId_(std::move(programId)) {}

    /// Takes the start message whose key is this run's tail, not older than `earliest` ("yyyymmdd hhnnss"): its sender
    /// and key go to the session and the row is deleted. Without one the run has no caller. Gives the moment at which
    /// the message was sent, in the same form; empty without one.
    QString ReceiveStartLink(const QString& tail, const QString& earliest);

    /// Answers the caller with a result text, which may be empty. False when the answer couldn't be stored.
    bool SendEndLink(const QString& result);

  private:
    session::SessionContext& context_;
    session::DataAccess& data_;
    session::Environment& environment_;
    identity::StaffIdentity& staff_;
    const platform::Clock& clock_;
    QString programId_;
};

}  // namespace suite
