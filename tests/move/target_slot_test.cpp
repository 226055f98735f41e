#include "move/target_slot.h"

#include <gtest/gtest.h>

namespace {

move::TargetSlot Target(const char* date, const char* start, const char* end) {
    move::TargetSlot target;
    move::TakeDate(target, date);
    move::TakeTimes(target, start, end);
    return target;
}

std::string Told(const move::TargetSlot& target) {
    const move::SlotKey key = target.Key();
    return QString(key.日付 + " " + key.開始時刻 + " " + key.終了時刻).toStdString();
}

TEST(StepTimes, KeepsTheLengthWhateverTheEndLooksLike) {
    const struct {
        const char *date, *start, *end;
        int minutes;
        const char* expected;
    } cases[] = {
        {"20260301", "00:00", "00:00", -30, "20260228 23:30 23:30"},
        {"20261231", "23:59", "24:29", 15, "20270101 00:14 00:44"},
        {"20261120", "23:50", "23:55", 15, "20261121 00:05 00:10"},
        {"20261120", "00:10", "26:10", -30, "20261119 23:40 49:40"},
        // An end below the start lies on the next day, in this form and behind the step too.
        {"20261120", "23:50", "00:20", 30, "20261121 00:20 00:50"},
        {"20261120", "22:00", "00:10", -15, "20261120 21:45 23:55"},
        {"20261120", "00:10", "00:05", -15, "20261119 23:55 23:50"},
        // A start that was typed past its day comes back into one; no part ever gets a third digit.
        {"20261120", "24:50", "25:20", 15, "20261121 01:05 01:35"},
        {"20261120", "10:00", "99:50", 15, "20261120 10:15 76:05"},
    };
    for (const auto& c : cases) {
        move::TargetSlot target = Target(c.date, c.start, c.end);
        move::StepTimes(target, c.minutes);
        EXPECT_EQ(Told(target), c.expected) << c.start << " to " << c.end << " by " << c.minutes;
    }
}

}  // namespace
