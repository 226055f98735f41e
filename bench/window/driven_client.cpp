#include "bench/window/driven_client.h"

#include <QTemporaryDir>

namespace bench {
namespace {

/// Starts nothing, so that an answer never comes.
class NoStarter : public platform::ProgramStarter {
  public:
    std::unique_ptr<platform::StartedProgram> Start(const QString&, const QString&) override {
        return std::make_unique<Program>();
    }

  private:
    class Program : public platform::StartedProgram {
        bool Lives() const override { return true; }
    };
};

}  // namespace

void DrivenHost::Sleep(int milliseconds) {
    if (onSleep) onSleep();
    WindowHost::Sleep(milliseconds);
}

void DrivenHost::WaitUntil(const std::function<bool()>& done) {
    if (const auto script = std::exchange(onWait, {})) script();
    if (done()) return;
    const screen::MessageBox* box = WaitingMessage();
    problem_ = "The client waits for its user: " + (box ? box->text : Front() ? Front()->Name() : QString());
    EndProgram();
}

void RunClient(DrivenHost& host, const QString& root, const QDateTime& now, const QString& login) {
    const platform::FixedClock clock(now);
    const QTemporaryDir state;
    NoStarter starter;
    platform::RecordingOpener opener;
    session::Main({host, clock, starter, opener, {login, kBenchComputer}, root + "/prgbin", state.path(), QString()});
}

}  // namespace bench
