#pragma once

#include <QString>
#include <optional>

#include "identity/staff_identity.h"
#include "platform/clock.h"
#include "platform/program_starter.h"
#include "screen/form.h"
#include "screen/screen_host.h"
#include "session/environment.h"
#include "suite/link_row.h"

namespace suite {

/// The calling side of an exchange: the message that announces a start, and the wait for the answer. The other side is
/// suite/link_messages.h.
class SiblingCalls {
  public:
    SiblingCalls(session::SessionContext& context, session::DataAccess& data, session::Environment& environment,
                 identity::StaffIdentity& staff, screen::ScreenHost& host, const platform::Clock& clock)
        : context_(context), data_(data), environment_(environment), staff_(staff), host_(host), clock_(clock) {}

    /// Disables `mainForm` and writes the start message; `information` is the sibling's command-line tail. Returns when
    /// the message has reached the store, with the moment at which it was sent ("yyyymmdd hhnnss"). A failed write
    /// isn't told: the sibling then runs without a caller.
    QString SendStartLink(screen::Form& mainForm, const QString& receiver, const QString& information);

    /// Undoes SendStartLink when the sibling couldn't be started: deletes the message of that moment, enables
    /// `mainForm`.
    void TakeBackStartLink(screen::Form& mainForm, const QString& receiver, const QString& information,
                           const QString& sent);

    /// Waits until an answer not older than `since` ("yyyymmdd hhnnss") is there, takes it and enables `mainForm`.
    /// Gives its text, which stays in EndLinkInfo too. It waits as long as it takes: LinkWaitActive and the host tell
    /// that it does. Events are let through meanwhile; a store that is locked or away is looked at again.
    /// When `program` has ended and said nothing for five seconds more, the host tells so, and Escape on `mainForm`
    /// leaves the wait; another process may still answer for it until then. Nothing when the wait was left so, or the
    /// client ended; the start message of the moment `sent` is taken back in the first case.
    std::optional<QString> WaitForEndLink(screen::Form& mainForm, const QString& receiver, const QString& information,
                                          const QString& since, const QString& sent,
                                          const platform::StartedProgram& program);

  private:
    class WayOut;

    bool TakeReply(const LinkExchange& exchange, const QString& since, QString& reply);

    session::SessionContext& context_;
    session::DataAccess& data_;
    session::Environment& environment_;
    identity::StaffIdentity& staff_;
    screen::ScreenHost& host_;
    const platform::Clock& clock_;
};

}  // namespace suite
