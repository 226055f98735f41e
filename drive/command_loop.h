#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <functional>
#include <optional>

#include "drive/hands.h"
#include "drive/line_reader.h"
#include "drive/outside_record.h"
#include "platform/clock.h"
#include "platform/end_signals.h"
#include "screen/screen_host.h"

namespace drive {

/// Reads commands, one JSON object a line, from standard input, carries them out and answers each with one line on
/// standard output. A command is answered when the client is idle again or waits in a modal window or a message box;
/// such a wait runs this loop anew, one level deeper.
class CommandLoop {
  public:
    /// `clock` is the fixed clock that the "clock" command moves, or null when the real one runs.
    /// `outside` is what the client did to the world around it, told with the state.
    /// `endSignals` end the program as they end the client, also while a line is waited for.
    CommandLoop(screen::ScreenHost& host, platform::FixedClock* clock, const OutsideRecord& outside,
                const platform::EndSignals& endSignals)
        : host_(host), clock_(clock), outside_(outside), signals_(endSignals), input_(endSignals.Handle()) {}

    /// Who carries the commands out; must be set before the first wait.
    void SetHands(Hands& hands) { hands_ = &hands; }

    /// Takes commands until `done` says so. When the input ends, the process ends at once, as a killed one does.
    void RunUntil(const std::function<bool()>& done);

    /// Takes the commands that are there while the client waits for another program, when the command that began the
    /// wait asked for it ("nowait"); that one is answered first. Ends the process when nobody reads its answers any
    /// more.
    void TakeDuringWait();

    /// Answers the command under way, or the first one of a program that ended by itself, with "ended". A program that
    /// was ended by a signal says so without being asked.
    void TellEnded();

  private:
    void AnswerPending();
    bool ReadCommand(QJsonObject& command);
    /// Carries one command out. Returns the words of a refusal, empty when it was done.
    QString CarryOut(const QJsonObject& command);
    QString CarryOutOnForm(const QJsonObject& command, screen::Form& form);

    screen::ScreenHost& host_;
    platform::FixedClock* clock_;
    const OutsideRecord& outside_;
    const platform::EndSignals& signals_;
    LineReader input_;
    Hands* hands_ = nullptr;
    bool pending_ = false;
    QString refusal_;
    QString stateOf_;
    bool tellsState_ = false;
    bool takesDuringWait_ = false;
    bool taking_ = false;
};

}  // namespace drive
