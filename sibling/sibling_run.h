#pragma once

#include <QSize>

#include "platform/clock.h"
#include "platform/machine.h"
#include "screen/screen_host.h"
#include "suite/link_messages.h"

namespace sibling {

/// A run of a program that stands in for one of the suite's: it takes the message with which it was started, and
/// answers it. It uses the environment database alone.
class SiblingRun {
  public:
    /// `programFile` names the program by its file and the installation by its folder; `tail` is the command line.
    SiblingRun(const QString& programFile, const QString& tail, const platform::MachineNames& names);

    /// Opens the environment and takes the start message, when there is one. False when the installation isn't there.
    bool Open();

    const QString& Program() const { return program_; }
    const QString& Tail() const { return tail_; }
    /// The program that waits for an answer; empty when nobody does.
    const QString& Caller() const { return context_.CallerProgramId; }
    /// Answers the caller; does nothing without one.
    void Answer(const QString& text);

  private:
    /// The machine's time, or that of KATSUDO_NOW ("yyyymmdd hhnnss"); never before the start message was sent, since
    /// the caller looks for later ones only.
    class AnswerClock : public platform::Clock {
      public:
        QDateTime Now() const override;
        QDateTime earliest;
    };

    /// A screen where nothing is ever shown.
    class NoScreen : public screen::ScreenHost {
      public:
        NoScreen() { EndProgram(); }
        QSize DisplaySize() const override { return {}; }
        void ProcessEvents() override {}
        void Sleep(int) override {}

      protected:
        void WaitUntil(const std::function<bool()>&) override {}
    };

    /// The stand-in keeps no history.
    class NoHistory : public session::StatementLog {
      public:
        void WriteOutputHistory(const QString&) override {}
        void WriteErrorHistory(const QString&) override {}
    };

    QString program_, folder_, tail_;
    AnswerClock clock_;
    NoScreen screen_;
    NoHistory history_;
    session::SessionContext context_;
    session::DataAccess data_{context_, history_};
    session::Environment environment_;
    identity::StaffIdentity staff_{context_, data_, screen_};
    suite::LinkMessages links_;
};

}  // namespace sibling
