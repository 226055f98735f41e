#include "diary/slot_window.h"

#include <gtest/gtest.h>

namespace {

using diary::SlotDateEditable;
using diary::SlotWindowOn;

struct WindowCase {
    const char* today;
    numbers::Closing closing;
    const char* first;
    const char* last;
};

TEST(SlotWindow, KeepsTheYearBeforeOpenForTwoMonths) {
    const WindowCase cases[] = {
        {"20261120", {3, 31}, "20260401", "20290331"}, {"20260401", {3, 31}, "20250401", "20290331"},
        {"20260531", {3, 31}, "20250401", "20290331"}, {"20260601", {3, 31}, "20260401", "20290331"},
        {"20260320", {3, 20}, "20250321", "20280320"}, {"20260321", {3, 20}, "20250321", "20290320"},
        {"20260521", {3, 20}, "20260321", "20290320"}, {"20260228", {12, 31}, "20250101", "20281231"},
        {"20260301", {12, 31}, "20260101", "20281231"}};
    for (const WindowCase& c : cases) {
        const diary::SlotWindow window = SlotWindowOn(c.today, c.closing);
        EXPECT_EQ(window.first.toStdString(), c.first) << c.today;
        EXPECT_EQ(window.last.toStdString(), c.last) << c.today;
    }
}

TEST(SlotWindow, DecidesWhoMayWriteWhat) {
    const diary::SlotWindow window{"20260401", "20290331"};
    const QString in = "20261120", before = "20260331", behind = "20290401";
    EXPECT_TRUE(SlotDateEditable({in, "", true}, window, 0));
    EXPECT_TRUE(SlotDateEditable({window.first, window.last, false}, window, 0)) << "the bounds belong to it";
    EXPECT_FALSE(SlotDateEditable({before, "", true}, window, 5));
    EXPECT_FALSE(SlotDateEditable({behind, in, false}, window, 0));
    EXPECT_FALSE(SlotDateEditable({in, before, false}, window, 0)) << "a closed slot can't be pulled into the window";
    EXPECT_TRUE(SlotDateEditable({in, before, false}, window, 6));
    EXPECT_TRUE(SlotDateEditable({before, before, true}, window, 6));
    EXPECT_TRUE(SlotDateEditable({in, "", false}, window, 0)) << "no loaded date counts as inside";
}

}  // namespace
