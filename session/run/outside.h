#pragma once

#include <QString>

#include "platform/clock.h"
#include "platform/document_opener.h"
#include "platform/machine.h"
#include "platform/program_starter.h"
#include "platform/registry.h"
#include "screen/screen_host.h"

namespace session {

/// All that a run of the client is given from outside.
struct Outside {
    screen::ScreenHost& host;
    const platform::Clock& clock;
    platform::ProgramStarter& starter;
    /// Opens documents and the manual.
    platform::DocumentOpener& opener;
    platform::MachineNames names;
    /// Folder of the running program; "prgbin" or "prgsrc" in it marks the install root.
    QString programFolder;
    /// Where the user's unfinished work is kept on this machine.
    QString stateFolder;
    /// The command line behind the program's name.
    QString commandLineTail;
    /// The machine's registry; null when it has none.
    platform::Registry* registry = nullptr;
};

}  // namespace session
