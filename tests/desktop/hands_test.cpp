#include <gtest/gtest.h>

#include "drive/window/window_hands.h"
#include "sample_screen.h"
#include "screen/user_input.h"

using screen::Key;

namespace {

/// A host that draws nothing and never waits.
class BareHost : public screen::ScreenHost {
  public:
    QSize DisplaySize() const override { return {1920, 1080}; }
    void ProcessEvents() override {}
    void Sleep(int) override {}

  protected:
    void WaitUntil(const std::function<bool()>&) override {}
};

/// What happened to the screen. Keys change a text one after the other where the plain hands set it at once, so that
/// only the last of the changes in a row counts.
std::string Events(const SampleScreen& screen) {
    QStringList events;
    for (const QString& event : screen.log) {
        const QString change = event.section(u'=', 0, 0) + u'=';
        if (!events.isEmpty() && event.contains(u'=') && events.back().startsWith(change)) events.removeLast();
        events.append(event);
    }
    return events.join(", ").toStdString();
}

struct Gesture {
    const char* what;
    std::function<void(drive::Hands&, SampleScreen&)> make;
};

Gesture Focus(const char* name, int index = -1) {
    return {name, [=](auto& hands, auto& screen) { hands.Focus(screen.At(name, index)); }};
}
Gesture Type(const char* text) {
    return {text, [=](auto& hands, auto& screen) { hands.Type(*screen.form.Focused(), QString::fromUtf8(text)); }};
}
Gesture Press(const char* what, screen::KeyPress key) {
    return {what, [=](auto& hands, auto& screen) { hands.PressKey(screen.form, key); }};
}
Gesture Click(const char* name, int index = -1) {
    return {name, [=](auto& hands, auto& screen) { hands.Click(screen.At(name, index)); }};
}
Gesture Double(const char* name) {
    return {name, [=](auto& hands, auto& screen) { hands.DoubleClick(screen.At(name)); }};
}
Gesture Choose(const char* name, int entry) {
    return {name, [=](auto& hands, auto& screen) { hands.Choose(screen.At(name), entry); }};
}
Gesture Set(const char* name, int value) {
    return {name, [=](auto& hands, auto& screen) { hands.SetValue(screen.At(name), value); }};
}
Gesture Select(const char* name, int row) {
    return {name, [=](auto& hands, auto& screen) { hands.SelectRow(screen.At(name), row); }};
}

struct Play {
    const char* name;
    std::vector<Gesture> gestures;
};

void PrintTo(const Play& play, std::ostream* out) {
    *out << play.name;
}

const Gesture kTab = Press("Tab", Key::Tab), kBacktab = Press("Backtab", Key::Backtab),
              kEnter = Press("Enter", Key::Enter), kUp = Press("Up", Key::Up), kDown = Press("Down", Key::Down),
              kSpace = Press("Space", Key::Space), kCtrl = Press("Ctrl", Key::Ctrl),
              kEscape = Press("Escape", Key::Escape);

/// The same screen without a window and with one, and hands for each.
struct BothScreens {
    BothScreens() {
        bareHost.Show(bare.form);
        windowHost.Show(drawn.form);
        real.Settle();
    }
    ~BothScreens() { windowHost.Unload(drawn.form); }
    /// Makes the gesture on both: the same events in the same order, the same state, and all of it drawn.
    void Make(const Gesture& gesture) {
        gesture.make(plain, bare);
        gesture.make(real, drawn);
        real.Settle();
        EXPECT_EQ(Events(bare), Events(drawn)) << gesture.what;
        ASSERT_EQ(bare.State().toStdString(), drawn.State().toStdString()) << gesture.what;
        ASSERT_EQ("", real.DrawnDifference(drawn.form).toStdString()) << gesture.what;
    }

    BareHost bareHost;
    SampleScreen bare;
    drive::Hands plain{bareHost};
    desktop::WindowHost windowHost;
    SampleScreen drawn;
    drive::WindowHands real{windowHost};
};

class SameHands : public testing::TestWithParam<Play> {};

}  // namespace

// The real keys and clicks do to a form what the plain hands do to it.
TEST_P(SameHands, OnTheModelAndOnTheWidgets) {
    BothScreens both;
    for (const Gesture& gesture : GetParam().gestures)
        ASSERT_NO_FATAL_FAILURE(both.Make(gesture));
    EXPECT_FALSE(both.drawn.log.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Plays, SameHands,
    testing::Values(
        Play{"walk", std::vector<Gesture>(20, kTab)}, Play{"walkBack", std::vector<Gesture>(20, kBacktab)},
        Play{"enters", std::vector<Gesture>(9, kEnter)},
        Play{"code", {Type("１２3"), kSpace, Type("123456789"), Type("AB漢漢C"), Type(""), kCtrl, kDown, kEscape}},
        Play{"text", {Focus("名称"), Type("葛城　精機"), kSpace, kTab, kBacktab, kSpace, Type("𠮷野家 ①"), kEnter}},
        Play{"postcode",
             {Focus("郵便番号"), Type("１００"), kTab, kBacktab, kSpace, Type("1000001"), kTab, kBacktab, Type("")}},
        Play{"number",
             {Focus("区分"), Type("3"), kUp, kUp, kUp, kDown, kSpace, Type("-3"), Type("99"), Type(""), Set("区分", 4),
              Set("区分", 77), Focus("名称"), Set("区分", -1)}},
        Play{"options", {Click("opb_方法", 1), kDown, kDown, kUp, kSpace, kTab, Focus("opb_方法", 2), kSpace, kEnter}},
        Play{"combo",
             {Choose("一覧", 2), Choose("一覧", 2), Choose("一覧", 0), kDown, kUp, kUp, kSpace, Focus("コード"),
              Choose("一覧", 3)}},
        Play{"buttons",
             {Click("btn_登録"), kSpace, kEnter, Click("btn_終了"), Focus("名称"), Focus("btn_登録"), Click("見出し"),
              Click("itm_ttl_名称"), Click("確認"), kSpace}},
        Play{"refused", {Focus("名称"), Click("btn_削除"), Press("F9", *screen::KeyNamed("F9"))}},
        Play{"doubleClicks", {Double("名称"), Double("名称"), Double("関門"), kTab}},
        Play{"gate", {Focus("名称"), Focus("関門"), Focus("確認"), kTab}},
        Play{"memo", {Focus("摘要"), Type("一行目\r\n二行目"), kEnter, kSpace, kUp, kEnter, Type("　字下げ"), kTab}},
        Play{"list",
             {Choose("tab_詳細", 1),
              Focus("書類"),
              kDown,
              kDown,
              kUp,
              Double("書類"),
              kEnter,
              Select("書類", 2),
              Focus("コード"),
              Select("書類", 0),
              Double("書類"),
              {"header", [](auto& hands, auto& screen) { hands.ClickHeader(screen.At("書類"), 1); }},
              Choose("tab_詳細", 0)}},
        Play{"readOnly", {Focus("固定"), kSpace, kTab}}),
    [](const auto& info) { return info.param.name; });

// What a handler does to the form while the user's gesture is under way.
TEST(WindowHands, FollowHandlersThatChangeTheForm) {
    struct Case {
        const char* what;
        std::function<void(SampleScreen&)> arrange;
        Gesture gesture;
    };
    const Case cases[] = {
        {"leaving turns the button off",
         [](auto& s) { s.At("コード").onLostFocus = [&s] { s.At("btn_登録").SetEnabled(false); }; }, Click("btn_登録")},
        {"leaving sends the focus elsewhere, the click still counts",
         [](auto& s) { s.At("コード").onLostFocus = [&s] { s.form.SetFocus(s.At("名称")); }; }, Click("btn_登録")},
        {"the choice too", [](auto& s) { s.At("コード").onLostFocus = [&s] { s.form.SetFocus(s.At("名称")); }; },
         Choose("一覧", 1)},
        {"the button turns itself off",
         [](auto& s) { s.At("btn_登録").onClick = [&s] { s.At("btn_登録").SetEnabled(false); }; }, Click("btn_登録")},
        {"the click hides the focused item",
         [](auto& s) { s.At("見出し").onClick = [&s] { s.At("コード").SetVisible(false); }; }, Click("見出し")},
        {"entering paints the item",
         [](auto& s) { s.At("名称").onGotFocus = [&s] { s.At("名称").SetText("塗り直し"); }; }, Focus("名称")},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        BothScreens both;
        one.arrange(both.bare);
        one.arrange(both.drawn);
        for (const Gesture& gesture : {one.gesture, kTab, kSpace, Focus("コード")})
            both.Make(gesture);
    }
}

// Every key with everything that can be held beside it, in every item, in an untouched text and behind a typed one.
TEST(WindowHands, PressEveryKeyInEveryItemAlike) {
    QStringList keys{"Tab",  "Backtab", "Enter", "Escape", "Space",  "Up",      "Down",
                     "Left", "Right",   "Home",  "End",    "PageUp", "PageDown"};
    for (int number = 1; number <= 12; ++number)
        keys.append('F' + QString::number(number));
    for (const char character : {'A', 'b', 'C', 'V', 'X', 'Y', 'z', '0', '2', '5'})
        keys.append(QChar(character));
    for (const QString& bare : QStringList(keys))
        keys << "Shift+" + bare << "Ctrl+" + bare;
    keys.append("Ctrl");
    BothScreens both;
    QStringList items;
    for (const auto& control : both.bare.form.Controls())
        if (control->TakesFocus() && control->Enabled() && control->Index() <= 0) items.append(control->Name());
    for (const QString& item : items) {
        SCOPED_TRACE(item.toStdString());
        const std::string name = item.toStdString();
        const int index = both.bare.form.Find(item) ? -1 : 0;
        both.Make(Choose("tab_詳細", item == "書類" ? 1 : 0));
        for (const QString& key : keys) {
            const std::string what = key.toStdString();
            if (both.bare.form.Focused() != &both.bare.At(name.c_str(), index)) both.Make(Focus(name.c_str(), index));
            ASSERT_NO_FATAL_FAILURE(both.Make(Press(what.c_str(), *screen::KeyNamed(key))));
            both.bare.log.clear();
            both.drawn.log.clear();
        }
    }
}

TEST(WindowHands, NameWhatIsDrawnOtherwise) {
    desktop::WindowHost host;
    SampleScreen screen;
    drive::WindowHands hands(host);
    host.Show(screen.form);
    ASSERT_EQ(QString(), hands.DrawnDifference(screen.form));
    screen.form.watcher = nullptr;
    const std::function<void()> changes[] = {
        [&] { screen.At("名称").SetText("別の名"); },       [&] { screen.At("btn_登録").SetEnabled(false); },
        [&] { screen.At("一覧").SetListIndex(1); },         [&] { screen.At("opb_方法", 2).SetValue(1); },
        [&] { screen.At("opb_方法", 2).SetChosen(false); }, [&] { screen.At("区分").SetVisible(false); },
        [&] { screen.At("書類").SetListIndex(1); },         [&] { screen.form.SetFocus(screen.At("確認")); }};
    for (const auto& change : changes) {
        change();
        EXPECT_NE(QString(), hands.DrawnDifference(screen.form));
        host.ViewOf(screen.form)->FocusChanged();
        for (const auto& control : screen.form.Controls())
            host.ViewOf(screen.form)->ControlChanged(*control);
        EXPECT_EQ(QString(), hands.DrawnDifference(screen.form));
    }
}
