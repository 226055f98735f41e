#pragma once

#include <optional>

#include "setup/tree.h"

namespace setup {

/// Whose PIN is to be set: a staff member's, or the privilege PIN of the company and its sites.
struct PinOrder {
    std::optional<QString> staff;
    std::optional<QString> site;  ///< of the privilege PIN; nothing for the company and every site
    QString pin;
    /// Who stores it on a server: the client's own login has no right to.
    std::optional<ServerAdmin> admin;
};

/// Stores the PIN, enciphered, as it was given. Gives the words of what went wrong; empty on success. A staff member or
/// a site that isn't there is refused, and then nothing is changed.
QString StorePin(const Tree& tree, const PinOrder& order);

/// Words of warning when the PIN dialog could never accept this PIN; empty otherwise.
QString PinWarning(const QString& pin);

}  // namespace setup
