#pragma once

#include <QString>

#include "diary/activity_slot.h"
#include "session/session_context.h"

// Command-line tails of the suite's other programs: fixed positions, blank-filled, with the texts of a party behind
// them where there is no record yet. A comma in one of those isn't escaped: the receivers count on none.
namespace diary {

/// What a tail is made of.
struct LaunchData {
    const session::SessionContext& session;
    const ActivitySlot& slot;
};

QString PartyCardTail(const LaunchData& data);
QString ContactCardTail(const LaunchData& data);
QString CalendarTail(const LaunchData& data);
/// `kind` is a place in the document kinds.
QString DocumentTail(const LaunchData& data, std::size_t kind);

/// What a deal is about, for its editor: the first line of a memo, at most 20 characters.
QString SubjectOf(const QString& memo);

}  // namespace diary
