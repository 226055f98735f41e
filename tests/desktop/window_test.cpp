#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest/QTest>
#include <csignal>

#include "desktop/result_label.h"
#include "desktop/window_host.h"
#include "drive/window/window_hands.h"
#include "sample_screen.h"

using screen::Button;

namespace {

class Window : public testing::Test {
  protected:
    Window() {
        host.Show(sample.form);
        host.ProcessEvents();
    }
    ~Window() override { host.Unload(sample.form); }

    desktop::FormView& View() { return *host.ViewOf(sample.form); }
    QWidget& Keys(const char* name, int index = -1) { return *View().WidgetOf(sample.At(name, index))->keys; }
    std::string Focused() { return sample.form.Focused()->Name().toStdString(); }
    std::string TakeLog() {
        const std::string log = sample.log.join(", ").toStdString();
        sample.log.clear();
        return log;
    }
    void Go(const char* name) {
        sample.form.SetFocus(sample.At(name));
        sample.log.clear();
    }

    desktop::WindowHost host;
    SampleScreen sample;
};

void Scroll(QWidget& widget, int angle) {
    const QPointF place(widget.rect().center());
    QWheelEvent event(place, widget.mapToGlobal(place), {}, {0, angle}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&widget, &event);
}

}  // namespace

TEST_F(Window, CtrlAloneIsAGestureAndWithAKeyIsNone) {
    QWidget& code = Keys("コード");
    QTest::keyClicks(&code, "123");
    sample.log.clear();
    QTest::keyPress(&code, Qt::Key_Control);
    QTest::keyRelease(&code, Qt::Key_Control);
    EXPECT_EQ(TakeLog(), "コード ctrl");
    QTest::keyPress(&code, Qt::Key_Control);
    QTest::keyClick(&code, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&code, Qt::Key_C, Qt::ControlModifier);
    QTest::keyRelease(&code, Qt::Key_Control);
    EXPECT_EQ(TakeLog(), "");
    EXPECT_EQ(QApplication::clipboard()->text(), QString("123"));
    QTest::keyPress(&code, Qt::Key_Control);
    QTest::mouseClick(&Keys("名称"), Qt::LeftButton);
    QTest::keyRelease(&Keys("名称"), Qt::Key_Control);
    EXPECT_EQ(TakeLog(), "コード lost, 名称 got");
}

TEST_F(Window, EnterGoesOnAndShiftEnterBack) {
    struct Case {
        const char* from;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* to;
    };
    const Case cases[] = {{"名称", Qt::Key_Enter, Qt::KeypadModifier, "郵便番号"},
                          {"名称", Qt::Key_Return, Qt::ShiftModifier, "コード"},
                          {"一覧", Qt::Key_Return, Qt::NoModifier, "確認"},
                          {"確認", Qt::Key_Tab, Qt::ShiftModifier, "一覧"},
                          {"btn_登録", Qt::Key_Enter, Qt::KeypadModifier, "btn_登録"},
                          {"btn_登録", Qt::Key_Left, Qt::NoModifier, "btn_登録"},
                          {"摘要", Qt::Key_Enter, Qt::KeypadModifier, "摘要"}};
    for (const Case& one : cases) {
        Go(one.from);
        QTest::keyClick(&Keys(one.from), one.key, one.modifiers);
        EXPECT_EQ(Focused(), one.to) << one.from << one.key;
    }
    EXPECT_EQ(sample.At("摘要").RawText(), QString("\r\n"));
}

TEST_F(Window, EditingInTheMiddleKeepsTheCursor) {
    QWidget& code = Keys("コード");
    auto& line = static_cast<QLineEdit&>(code);
    QTest::keyClicks(&code, "124");
    QTest::keyClick(&code, Qt::Key_Left);
    QInputMethodEvent fullWidth;
    fullWidth.setCommitString("３");
    QApplication::sendEvent(&code, &fullWidth);
    EXPECT_EQ(sample.At("コード").RawText(), QString("1234"));
    EXPECT_EQ(line.text(), QString("1234"));
    EXPECT_EQ(line.cursorPosition(), 3);
}

TEST_F(Window, InputMethodIsOnInTextItemsOnly) {
    const std::pair<const char*, bool> cases[] = {
        {"コード", false}, {"名称", true}, {"郵便番号", false}, {"区分", false}, {"摘要", true}};
    for (const auto& [name, on] : cases)
        EXPECT_EQ(Keys(name).inputMethodQuery(Qt::ImEnabled).toBool(), on) << name;
}

TEST_F(Window, TheWheelTurnsOnlyWhatHoldsTheFocus) {
    for (const char* name : {"区分", "一覧"}) {
        Go("コード");
        Scroll(Keys(name), 120);
        Scroll(Keys(name), -120);
        EXPECT_EQ(TakeLog(), "") << name;
        Go(name);
        Scroll(Keys(name), name == std::string("区分") ? 120 : -120);
        EXPECT_NE(TakeLog(), "") << name;
    }
    EXPECT_EQ(sample.At("区分").Value(), 1);
    EXPECT_EQ(sample.At("一覧").ListIndex(), 0);
}

TEST_F(Window, ThePostcodeIsDrawnBareWhileItIsTyped) {
    auto& line = static_cast<QLineEdit&>(Keys("郵便番号"));
    EXPECT_EQ(line.text(), QString("   -"));
    Go("郵便番号");
    EXPECT_EQ(line.text(), QString());
    QTest::keyClicks(&line, "1000001");
    EXPECT_EQ(line.text(), QString("1000001"));
    Go("名称");
    EXPECT_EQ(line.text(), QString("100-0001"));
}

TEST_F(Window, ADisabledFormIsDrawnAndTakesNothing) {
    sample.form.SetEnabled(false);
    EXPECT_TRUE(Keys("btn_登録").isEnabled());
    QTest::keyClicks(&Keys("コード"), "12");
    QTest::mouseClick(&Keys("btn_登録"), Qt::LeftButton);
    QTest::mouseClick(&Keys("名称"), Qt::LeftButton);
    QTest::keyClick(&Keys("コード"), Qt::Key_Tab);
    View().close();
    EXPECT_EQ(TakeLog(), "");
    EXPECT_TRUE(View().isVisible());
}

TEST_F(Window, AnotherWindowInFrontMovesNoFocus) {
    Go("名称");
    QLineEdit other;
    other.show();
    other.activateWindow();
    other.setFocus();
    host.ProcessEvents();
    View().activateWindow();
    host.ProcessEvents();
    EXPECT_EQ(TakeLog(), "");
    EXPECT_EQ(View().focusWidget(), &Keys("名称"));
}

TEST_F(Window, TheFocusedItemThatGoesOffLeavesTheKeysWorking) {
    Go("btn_登録");
    sample.At("btn_登録").SetEnabled(false);
    EXPECT_EQ(TakeLog(), "");
    EXPECT_EQ(Focused(), "btn_登録");
    QTest::keyClick(View().FocusTarget(), Qt::Key_Tab);
    EXPECT_EQ(Focused(), "btn_終了");
}

TEST_F(Window, ARefusedClickIsHeardByTheItemAlone) {
    Go("名称");
    QTest::mouseClick(&Keys("btn_削除"), Qt::LeftButton);
    EXPECT_EQ(TakeLog(), "btn_削除 refused");
    QTest::keyClick(&Keys("名称"), Qt::Key_F9);
    EXPECT_EQ(TakeLog(), "btn_削除 refused");
    QTest::mouseClick(&Keys("btn_削除"), Qt::RightButton);
    sample.At("btn_削除").SetVisible(false);
    QTest::keyClick(&Keys("名称"), Qt::Key_F9);
    EXPECT_EQ(TakeLog(), "");
    sample.At("tab_詳細").SetEnabled(false);
    QTest::mouseClick(&Keys("摘要"), Qt::LeftButton);
    EXPECT_EQ(TakeLog(), "摘要 refused");
    EXPECT_EQ(Focused(), "名称");
}

TEST_F(Window, AnOptionThatIsOnlyPressedCanStillBeChosen) {
    screen::Control& option = sample.At("opb_方法", 1);
    const desktop::ControlWidget& widget = *View().WidgetOf(option);
    option.SetValue(1);
    EXPECT_TRUE(desktop::DrawnChosen(widget));
    option.SetChosen(false);
    EXPECT_FALSE(desktop::DrawnChosen(widget));
    EXPECT_EQ(widget.whole->accessibleName(), QString("方法1、未選択"));
    sample.form.SetFocus(option);
    sample.log.clear();
    QTest::mouseClick(widget.mouse, Qt::LeftButton, {}, QPoint(8, widget.mouse->height() / 2));
    QTest::keyClick(widget.keys, Qt::Key_Space);
    EXPECT_EQ(TakeLog(), "opb_方法1 click, opb_方法1 click");
    EXPECT_EQ(option.Value(), 1);
    sample.At("opb_方法", 0).SetValue(1);
    option.SetValue(1);
    EXPECT_TRUE(option.Chosen()) << "pressed anew";
    EXPECT_EQ(widget.whole->accessibleName(), QString("方法1"));
}

TEST_F(Window, TheResultIsSpokenAndNeverWidensTheWindow) {
    auto& line = static_cast<desktop::ResultLabel&>(Keys("結果"));
    QStringList spoken;
    // The toolkit speaks only where a screen reader listens.
    line.announcer = [&spoken](QAccessibleEvent* event) {
        const QAccessibleInterface* item = event->accessibleInterface();
        const QString kind = event->type() == QAccessible::Alert ? "alert " : "";
        spoken.append(kind + item->text(QAccessible::Name) + u'=' + item->text(QAccessible::Description));
    };
    const QSize size = View().minimumSizeHint();
    sample.At("結果").SetCaption("登録しました。");
    sample.At("結果").SetCaption("登録しました。");
    sample.At("結果").SetEnabled(false);
    EXPECT_EQ(spoken.join(u'|').toStdString(), "結果=登録しました。|alert 結果=登録しました。");
    const QString longText = QString("部門と所属は引き継がれません。").repeated(40);
    sample.At("結果").SetCaption(longText);
    sample.At("結果").SetCaption("");
    EXPECT_EQ(spoken.size(), 4) << "silence is no news";
    EXPECT_EQ(spoken.back(), "alert 結果=" + longText);
    sample.At("結果").SetCaption(longText);
    host.ProcessEvents();
    EXPECT_EQ(View().minimumSizeHint(), size);
    EXPECT_EQ(line.toolTip(), longText);
    View().resize(400, 300);
    host.ProcessEvents();
    EXPECT_TRUE(View().rect().contains(line.mapTo(&View(), line.rect().bottomRight()))) << "scrolled out of sight";
}

TEST_F(Window, ItemsBearTheirNames) {
    EXPECT_TRUE(View().findChild<QLineEdit*>("名称"));
    EXPECT_TRUE(View().findChild<QAbstractButton*>("opb_方法_2"));
    EXPECT_EQ(Keys("名称").accessibleName(), QString("名前"));
    EXPECT_EQ(Keys("一覧").accessibleName(), QString("一覧"));
    EXPECT_EQ(Keys("btn_終了").accessibleName(), QString("終了 & 閉じる"));
    EXPECT_EQ(static_cast<QPushButton&>(Keys("btn_終了")).text(), QString("終了 && 閉じる"));
}

TEST_F(Window, TheFrameClosesWhatAllowsIt) {
    bool allowed = false;
    sample.form.onQueryClose = [&] { return allowed; };
    View().close();
    EXPECT_TRUE(sample.form.Loaded());
    EXPECT_TRUE(View().isVisible());
    allowed = true;
    View().close();
    EXPECT_FALSE(sample.form.Loaded());
    EXPECT_EQ(host.ViewOf(sample.form), nullptr);
}

TEST_F(Window, AMessageIsAnsweredByItsRealButtons) {
    struct Case {
        std::vector<Button> buttons;
        Button byDefault;
        std::function<void(QMessageBox&)> act;
        Button expected;
    };
    const Case cases[] = {
        {{Button::Yes, Button::No}, Button::Yes, [](auto& box) { QTest::keyClick(&box, Qt::Key_Escape); }, Button::No},
        {{Button::Yes, Button::No}, Button::No, [](auto& box) { box.close(); }, Button::No},
        {{Button::Yes, Button::No}, Button::Yes, [](auto& box) { box.button(QMessageBox::Yes)->click(); }, Button::Yes},
        {{Button::Yes, Button::No},
         Button::No,
         [](auto& box) { QTest::keyClick(box.defaultButton(), Qt::Key_Return); },
         Button::No},
        {{Button::Yes, Button::No},
         Button::Yes,
         [](auto& box) { QTest::keyClick(box.focusWidget(), Qt::Key_N); },
         Button::No},
        {{Button::Yes, Button::No}, Button::No, [](auto& box) { QTest::keyClick(&box, Qt::Key_Y); }, Button::Yes},
        {{Button::OK}, Button::OK, [](auto& box) { box.close(); }, Button::OK}};
    for (const Case& one : cases) {
        QString shown;
        QTimer::singleShot(0, &View(), [&] {
            shown = host.BoxInFront()->text();
            one.act(*host.BoxInFront());
        });
        EXPECT_EQ(host.Ask({"活動手帳", "入力がありました。\r終了しますか？", one.buttons, one.byDefault}),
                  one.expected);
        EXPECT_EQ(shown, QString("入力がありました。\n終了しますか？"));
        EXPECT_EQ(host.BoxInFront(), nullptr);
    }
    EXPECT_EQ(TakeLog(), "");
}

TEST_F(Window, APathComesFromTheDialogOrNotAtAll) {
    screen::PathDialog asked{
        screen::PathDialog::Kind::File, "追加", QDir::tempPath(), {"全て (*.*)|*.*", "文書|*.doc;*.docx"}};
    QStringList filters;
    drive::WindowHands hands(host);
    QTimer::singleShot(0, &View(), [&] {
        filters = host.DialogInFront()->nameFilters();
        hands.AnswerPath(std::nullopt);
    });
    EXPECT_EQ(host.AskPath(asked), std::nullopt);
    // A name without a point is a name too.
    EXPECT_EQ(filters, (QStringList{"全て (*)", "文書 (*.doc *.docx)"}));
    QTimer::singleShot(0, &View(), [&] { hands.AnswerPath(QStringLiteral("./見積.doc")); });
    EXPECT_EQ(host.AskPath(asked), QString("./見積.doc"));
    EXPECT_EQ(host.DialogInFront(), nullptr);
}

TEST_F(Window, AModalFormReturnsWhenItIsUnloaded) {
    SampleScreen dialog;
    dialog.At("btn_登録").onClick = [&] {
        const Button answer = host.Ask({"活動手帳", "よろしいですか？", {Button::Yes, Button::No}, Button::No});
        if (answer == Button::Yes) host.Unload(dialog.form);
    };
    drive::WindowHands hands(host);
    QTimer::singleShot(0, &View(), [&] {
        QTimer::singleShot(0, &View(), [&] { hands.Answer(Button::Yes); });
        hands.Click(dialog.At("btn_登録"));
    });
    host.ShowModal(dialog.form);
    EXPECT_FALSE(dialog.form.Loaded());
    EXPECT_EQ(host.Front(), &sample.form);
    host.ProcessEvents();
    EXPECT_EQ(hands.DrawnDifference(sample.form).toStdString(), "");
}

TEST(DiaryWindow, ShowsEveryItemWithinASmallDisplay) {
    desktop::WindowHost host;
    screen::Form form("frm活動手帳");
    FillDiaryForm(form);
    form.Add(screen::ControlKind::SSCommand, "btn_新設", "新設");
    host.Show(form);
    host.ProcessEvents();
    desktop::FormView& view = *host.ViewOf(form);
    EXPECT_EQ(drive::WindowHands(host).DrawnDifference(form).toStdString(), "");
    for (const int page : {0, 1}) {
        form.At("tab_詳細").SetListIndex(page);
        host.ProcessEvents();
        for (const auto& control : form.Controls()) {
            if (!control->EffectivelyVisible()) continue;
            const QWidget& widget = *view.WidgetOf(*control)->whole;
            const bool catcher = control->Kind() == screen::ControlKind::CommandButton;
            EXPECT_EQ(widget.width() <= 1, catcher) << control->Name().toStdString();
            // A widget that no layout took lies in the corner, over others.
            EXPECT_NE(widget.pos(), QPoint(0, 0)) << control->Name().toStdString();
        }
    }
    QWidget* content = view.findChild<QWidget*>("お知らせ")->parentWidget();
    EXPECT_LE(content->minimumSizeHint().width(), 1260);
    EXPECT_LE(content->minimumSizeHint().height(), 720);
    host.Unload(form);
}

TEST(DiaryWindow, DoesWithoutItemsThatAFormLacks) {
    desktop::WindowHost host;
    screen::Form form("frm活動手帳");
    form.Add(screen::ControlKind::EntryField, "担当者コード");
    form.Add(screen::ControlKind::SSTab, "tab_詳細").pages = QStringList{"摘要"};
    host.Show(form);
    form.FocusFirst();
    EXPECT_EQ(drive::WindowHands(host).DrawnDifference(form).toStdString(), "");
    host.Unload(form);
}

TEST_F(Window, ASignalEndsTheProgramBehindAQuestionAndAnswersNothing) {
    const platform::EndSignals endSignals;
    desktop::WindowHost ended;
    ended.EndBy(endSignals);
    QTimer::singleShot(0, [] { std::raise(SIGTERM); });
    EXPECT_EQ(ended.Ask({"", "終了しますか？", {Button::Yes, Button::No}, Button::Yes}), Button::No);
    EXPECT_TRUE(ended.Ended());
}
