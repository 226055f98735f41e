#include <gtest/gtest.h>

#include "screen/focus_walk.h"
#include "screen/user_input.h"
#include "screen/user_keys.h"

namespace {

using namespace screen;

/// A form that writes down which handlers ran.
struct Sample {
    Form form{QStringLiteral("frm")};
    QStringList log;

    Control& Add(ControlKind kind, const char* name, int index = -1) {
        Control& control = form.Add(kind, name, QString(), index);
        const QString tag = index < 0 ? QString(name) : QString(name) + QString::number(index);
        control.onGotFocus = [this, tag] { log << tag + "+"; };
        control.onLostFocus = [this, tag] { log << tag + "-"; };
        control.onClick = [this, tag] { log << tag + "!"; };
        return control;
    }
};

TEST(Focus, LeavesBeforeItEntersAndAClickComesLast) {
    Sample s;
    Control& code = s.Add(ControlKind::EntryField, "code");
    Control& button = s.Add(ControlKind::SSCommand, "button");
    Control& panel = s.Add(ControlKind::SSPanel, "panel");
    s.form.SetFocus(code);
    UserClick(button);
    UserClick(panel);
    EXPECT_EQ(s.log.join(' '), "code+ code- button+ button! panel!");
    EXPECT_EQ(s.form.Focused(), &button);
}

TEST(Focus, AHandlerMayMoveItOn) {
    Sample s;
    Control& first = s.Add(ControlKind::EntryField, "first");
    Control& second = s.Add(ControlKind::EntryField, "second");
    Control& third = s.Add(ControlKind::EntryField, "third");
    s.form.SetFocus(first);
    // Out of a got focus: the item in between is entered and left.
    second.onGotFocus = [&] {
        s.log << "second+";
        s.form.SetFocus(third);
    };
    s.form.SetFocus(second);
    EXPECT_EQ(s.log.join(' '), "first+ first- second+ second- third+");
    // Out of a lost focus: the item that was aimed at is never entered.
    s.log.clear();
    third.onLostFocus = [&] { s.form.SetFocus(first); };
    s.form.SetFocus(second);
    EXPECT_EQ(s.log.join(' '), "first+");
    EXPECT_EQ(s.form.Focused(), &first);
}

TEST(Focus, StaysWhereItIsWhenTheTargetCannotHaveIt) {
    Sample s;
    Control& entry = s.Add(ControlKind::EntryField, "entry");
    Control& strip = s.Add(ControlKind::SSTab, "strip");
    Control& inside = s.Add(ControlKind::EntryMemo, "inside");
    Control& label = s.Add(ControlKind::CaptionLabel, "label");
    inside.container = &strip;
    s.form.SetFocus(entry);
    strip.SetEnabled(false);
    EXPECT_FALSE(s.form.SetFocus(inside)) << "its strip is disabled";
    EXPECT_FALSE(s.form.SetFocus(label));
    strip.SetEnabled(true);
    strip.SetListIndex(1);
    EXPECT_FALSE(s.form.SetFocus(inside)) << "its page is behind";
    EXPECT_EQ(s.form.Focused(), &entry);
    // The item that is left may put the target out of reach.
    strip.SetListIndex(0);
    entry.onLostFocus = [&] { inside.SetEnabled(false); };
    EXPECT_FALSE(s.form.SetFocus(inside));
    EXPECT_EQ(s.form.Focused(), &entry);
}

TEST(TabOrder, TakesAnOptionGroupAsOneStopAndSkipsWhatIsNone) {
    Sample s;
    Control& first = s.Add(ControlKind::EntryField, "first");
    std::vector<Control*> options;
    for (int index = 0; index < 3; ++index)
        options.push_back(&s.Add(ControlKind::SSOption, "option", index));
    s.Add(ControlKind::SSCommand, "button").SetTabStop(false);
    Control& last = s.Add(ControlKind::EntryField, "last");
    s.form.SetFocus(first);
    UserKey(s.form, Key::Tab);
    EXPECT_EQ(s.form.Focused(), options[0]);
    UserKey(s.form, Key::Tab);
    EXPECT_EQ(s.form.Focused(), &last);
    options[2]->SetValue(1);
    UserKey(s.form, Key::Backtab);
    EXPECT_EQ(s.form.Focused(), options[2]);
    UserKey(s.form, Key::Down);
    EXPECT_EQ(s.form.Focused(), options[0]);
    EXPECT_EQ(options[0]->Value(), 1);
    EXPECT_EQ(options[2]->Value(), 0);
    UserKey(s.form, Key::Enter);
    UserKey(s.form, Key::Enter);
    EXPECT_EQ(s.form.Focused(), &first) << "round the end";
}

TEST(FocusWalk, FindsTheNextControlThatCanTakeIt) {
    Sample s;
    Control& one = s.Add(ControlKind::EntryField, "one");
    Control& option = s.Add(ControlKind::SSOption, "option", 0);
    Control& two = s.Add(ControlKind::EntryField, "two");
    Control& three = s.Add(ControlKind::EntryPhone, "three");
    EXPECT_EQ(AdvanceFocusTarget(s.form, &one), &one) << "an eligible one keeps itself";
    EXPECT_EQ(AdvanceFocusTarget(s.form, &option), &two) << "options are not walked";
    one.SetEnabled(false);
    two.SetTabStop(false);
    EXPECT_EQ(AdvanceFocusTarget(s.form, &one), &three);
    three.tabIndex = two.tabIndex;
    two.SetTabStop(true);
    EXPECT_EQ(AdvanceFocusTarget(s.form, &option), &three) << "of equal ones the later";
    two.SetVisible(false);
    three.SetVisible(false);
    Control* pending = nullptr;
    MoveFocusTo(s.form, one, pending);
    EXPECT_EQ(pending, &one) << "nothing left: the target stays";
    EXPECT_EQ(s.form.Focused(), nullptr) << "and a disabled one gets no focus";
}

TEST(Typing, KeepsTheControlsOwnLimits) {
    Form form(QStringLiteral("frm"));
    const auto typed = [&form](ControlKind kind, EntryUse use, int limit, bool enforced, const QString& text) {
        Control& control = form.Add(kind, QStringLiteral("item"));
        control.use = use;
        control.maxLength = limit;
        control.enforcesMaxLength = enforced;
        UserType(control, text);
        return control.Text();
    };
    EXPECT_EQ(typed(ControlKind::EntryField, EntryUse::Code, 5, true, "０１２３４５"), "01234");
    EXPECT_EQ(typed(ControlKind::EntryField, EntryUse::Text, 0, false, "１２"), "１２");
    EXPECT_EQ(typed(ControlKind::EntryField, EntryUse::Text, 3, true, "あいう"), "あ") << "bytes, never half a letter";
    EXPECT_EQ(typed(ControlKind::EntryField, EntryUse::Text, 2, false, "あいう"), "あいう");
    EXPECT_EQ(typed(ControlKind::EntryField, EntryUse::Text, 0, false, "a\nb"), "ab");
    EXPECT_EQ(typed(ControlKind::EntryMemo, EntryUse::Text, 0, false, "a\nb\r\nc"), "a\r\nb\r\nc");
    EXPECT_EQ(typed(ControlKind::EntryPostcode, EntryUse::Code, 0, false, "1000001"), "100-0001");
    EXPECT_EQ(typed(ControlKind::EntryPostcode, EntryUse::Code, 0, false, ""), "   -");
}

TEST(Typing, ANumberStaysInItsRange) {
    Form form(QStringLiteral("frm"));
    Control& number = form.Add(ControlKind::EntryNumber, QStringLiteral("number"));
    number.maximum = 5;
    int changes = 0;
    number.onChange = [&changes] { ++changes; };
    UserSetValue(number, 9);
    EXPECT_EQ(number.Value(), 5);
    UserType(number, "３");
    EXPECT_EQ(number.Value(), 0) << "full-width digits are folded in code items only";
    number.use = EntryUse::Code;
    UserType(number, "３");
    EXPECT_EQ(number.Value(), 3);
    UserKey(form, Key::Up);
    EXPECT_EQ(number.Value(), 4);
    UserType(number, "4");
    EXPECT_EQ(changes, 4) << "the same value is no change";
}

TEST(Typing, ASpaceReplacesOnlyATextThatStandsSelected) {
    Form form(QStringLiteral("frm"));
    Control& entry = form.Add(ControlKind::EntryField, QStringLiteral("entry"));
    entry.SetText(QStringLiteral("abc"));
    form.SetFocus(entry);
    UserKey(form, Key::Space);
    EXPECT_EQ(entry.Text(), " ");
    UserType(entry, "x");
    UserKey(form, Key::Space);
    EXPECT_EQ(entry.Text(), "x ");
}

}  // namespace
