#pragma once

#include <QStringList>

#include "platform/clock.h"
#include "platform/document_opener.h"
#include "platform/program_starter.h"

namespace drive {

/// What the client did to the world around it, for the answers.
struct OutsideRecord {
    QStringList started;               ///< command lines of the programs that were started
    platform::RecordingOpener opener;  ///< keeps the paths handed to default programs
};

/// Starts programs as ever and notes their command lines. While the clock is fixed they are told its time in
/// KATSUDO_NOW ("yyyymmdd hhnnss"), so that the stand-ins live on the same day.
class RecordingStarter : public platform::ProgramStarter {
  public:
    RecordingStarter(OutsideRecord& record, const platform::FixedClock* clock) : record_(record), clock_(clock) {}
    std::unique_ptr<platform::StartedProgram> Start(const QString& file, const QString& argument) override;

  private:
    OutsideRecord& record_;
    const platform::FixedClock* clock_;
};

}  // namespace drive
