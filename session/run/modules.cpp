#include "session/run/modules.h"

namespace session {

Modules::Modules(const Outside& world, std::function<void()> end)
    : outside(world),
      instances(world.programFolder, world.names.login, world.names.computer),
      typedFile(
          world.stateFolder + "/" + platform::PlaceName(world.programFolder, world.names.login, world.names.computer),
          instances),
      diary{context, data, world.host, world.clock,   permissions, company, viewingLog,    phones,
            series,  pick, siblings,   world.starter, typedFile,   history, std::move(end)} {
    diary.showMoveScreen = [this] { moveScreen.Show(); };
}

}  // namespace session
