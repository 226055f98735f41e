#include "session/run/command_line.h"

#include <gtest/gtest.h>

namespace {

const QString kWholeKey = QStringLiteral(
    "00120261120"
    "09:00"
    "09:30"
    "00002");

session::SessionContext ReadTail(const QString& tail) {
    session::SessionContext context;
    context.SiteCode = "000";
    context.SlotYear = "2026";
    context.SlotMonth = "11";
    context.SlotDay = "22";
    context.SlotDate = "20261122";
    session::ReadCommandLine(context, tail);
    return context;
}

TEST(CommandLine, TakesAWholeKeyByPosition) {
    const session::SessionContext key = ReadTail(kWholeKey);
    EXPECT_TRUE(key.SlotKeyGiven);
    EXPECT_FALSE(key.NewSlotMode);
    EXPECT_EQ(key.SiteCode, "001");
    EXPECT_EQ(key.SlotYear + key.SlotMonth + key.SlotDay, "20261120");
    EXPECT_EQ(key.StartHour + key.StartMinute + key.EndHour + key.EndMinute, "09000930");
    EXPECT_EQ(key.StaffCode, "00002");
}

TEST(CommandLine, AnyShorterOrLongerTailIsReadToItsEnd) {
    for (int length = 0; length <= kWholeKey.size() + 3; ++length) {
        const QString tail = (kWholeKey + "xyz").left(length);
        const session::SessionContext key = ReadTail(tail);
        // The staff code isn't part of what makes a key; a part of one character is a part.
        EXPECT_EQ(key.SlotKeyGiven, length > 16) << length;
        EXPECT_EQ(key.NewSlotMode, length <= 16) << length;
        const bool today = length <= 16;
        EXPECT_EQ(key.SlotDate == "20261122", today) << length << ": otherwise a start for today";
        EXPECT_EQ(key.SiteCode, length == 0 ? QString("000") : QString("001").left(length)) << length;
    }
    EXPECT_FALSE(ReadTail("001        09:0009:3000002").SlotKeyGiven) << "a blank date is none";
}

}  // namespace
