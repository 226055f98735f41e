#pragma once

#include "identity/company_loader.h"
#include "items/text_rules.h"
#include "session/environment.h"
#include "session/run/outside.h"
#include "suite/link_messages.h"
#include "suite/run_history.h"

namespace session {

/// How a session begins and ends: environment, connections, run history, link with the program that started this one.
class SessionFrame {
  public:
    SessionFrame(SessionContext& context, DataAccess& data, Environment& environment, suite::RunHistory& history,
                 suite::LinkMessages& links, identity::StaffIdentity& staff, const Outside& outside)
        : context_(context),
          data_(data),
          environment_(environment),
          history_(history),
          links_(links),
          staff_(staff),
          outside_(outside) {}

    /// Opens environment and connections, writes the start row and receives the start link. True when the session
    /// stands. After a damaged environment the session is already closed and the program ended.
    bool OpenSession();

    /// Answers a caller, writes the end row, closes both connections. The program ends right after it. Only the first
    /// call does anything.
    void CloseSession();

    /// A name of the main database, the same for all who use it.
    QString DatabaseName() { return store::StoreName(MainConnectionString(), context_.InstallRoot); }

    /// The command-line tail without the blanks at its ends.
    QString Tail() const { return items::WithoutBlanks(outside_.commandLineTail); }

  private:
    bool DB_OPEN();
    bool OpenMainConnection();
    QString MainConnectionString();

    SessionContext& context_;
    DataAccess& data_;
    Environment& environment_;
    suite::RunHistory& history_;
    suite::LinkMessages& links_;
    identity::StaffIdentity& staff_;
    const Outside& outside_;
    bool closed_ = false;
};

}  // namespace session
