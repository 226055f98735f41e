#pragma once

#include <QString>
#include <functional>

#include "platform/registry.h"

namespace hostsetup {

/// Makes the host office suite open the reports in `reportFolder` (without a closing separator) without asking: finds
/// the version that is installed and writes its trust settings for this user. `tell` is given the words for what
/// couldn't be written; the work goes on after each. True when a known version was found and all was written.
bool PrepareOfficeTrust(platform::Registry& registry, const QString& reportFolder,
                        const std::function<void(const QString& message)>& tell);

}  // namespace hostsetup
