#include "session/run/modules.h"

#include "hostsetup/office_trust.h"

namespace session {

Modules::Modules(const Outside& world, std::function<void()> end)
    : outside(world),
      instances(world.programFolder, world.names.login, world.names.computer),
      diary{context,    data,    world.host,  world.clock,  permissions,   company,
            viewingLog, phones,  series,      pick,         siblings,      world.starter,
            kept,       history, attachments, world.opener, std::move(end)} {
    environment.prepareOfficeTrust = [this] {
        // Where there is no registry there is no suite that asks.
        return !outside.registry ||
               hostsetup::PrepareOfficeTrust(*outside.registry, context.UserReportFolder,
                                             [this](const QString& message) { outside.host.Tell(message); });
    };
    diary.showMoveScreen = [this] { moveScreen.Show(); };
}

}  // namespace session
