#include "session/run/command_line.h"

namespace session {

void ReadCommandLine(SessionContext& context, const QString& tail) {
    context.SlotKeyGiven = false;
    context.NewSlotMode = true;
    if (tail.isEmpty()) return;
    context.SiteCode = tail.mid(0, 3);
    context.SlotDate = tail.mid(3, 8);
    context.StartTime = tail.mid(11, 5);
    context.EndTime = tail.mid(16, 5);
    context.StaffCode = tail.mid(21, 5);
    for (const QString* part : {&context.SiteCode, &context.SlotDate, &context.StartTime, &context.EndTime}) {
        if (!part->trimmed().isEmpty()) continue;
        context.SlotDate = context.SlotYear + context.SlotMonth + context.SlotDay;
        return;
    }
    context.SlotYear = context.SlotDate.mid(0, 4);
    context.SlotMonth = context.SlotDate.mid(4, 2);
    context.SlotDay = context.SlotDate.mid(6, 2);
    context.StartHour = context.StartTime.mid(0, 2);
    context.StartMinute = context.StartTime.mid(3, 2);
    context.EndHour = context.EndTime.mid(0, 2);
    context.EndMinute = context.EndTime.mid(3, 2);
    context.SlotKeyGiven = true;
    context.NewSlotMode = false;
}

}  // namespace session
