#include "session/run/command_line.h"

#include "items/text_rules.h"

namespace session {

void ReadCommandLine(SessionContext& context, const QString& tail) {
    context.SlotKeyGiven = false;
    context.NewSlotMode = true;
    if (tail.isEmpty()) return;
    context.SiteCode = items::Piece(tail, 0, 3);
    context.SlotDate = items::Piece(tail, 3, 8);
    context.StartTime = items::Piece(tail, 11, 5);
    context.EndTime = items::Piece(tail, 16, 5);
    context.StaffCode = items::Piece(tail, 21, 5);
    for (const QString* part : {&context.SiteCode, &context.SlotDate, &context.StartTime, &context.EndTime}) {
        if (!items::WithoutBlanks(*part).isEmpty()) continue;
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
