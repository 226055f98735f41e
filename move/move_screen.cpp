#include "move/move_screen.h"

#include "items/text_rules.h"
#include "move/move_commands.h"
#include "move/screen_items.h"
#include "move/source_slot.h"
#include "move/target_codes.h"

namespace move {

using screen::Control;

namespace {

const char* const kFirstAsked = "移動日付日";

}  // namespace

MoveScreen::MoveScreen(MoveContext& move) : move_(move) {
    BuildScreenItems(move_.form);
    move_.form.SetCaption(QStringLiteral("営業日程移動"));
    WireTyped();
    WireShown();
    WireSteps();
    WireCommands();
    WireLists();
    move_.form.onLoad = [this] { Load(); };
    move_.form.onUserActed = [this] {
        if (move_.form.gesturesUnderWay == 0) move_.result.GestureDone(false);
    };
    move_.form.onEscape = [this] { move_.diary.host.CloseByFrame(move_.form); };
}

void MoveScreen::Show() {
    move_.diary.host.ShowModal(move_.form);
}

void MoveScreen::Load() {
    Item("prg_ttl").SetCaption(MoveTitle(move_));
    TakeSource(move_);
    move_.ShowNotice(QString());
    move_.lastActive = &Item(kFirstAsked);
    move_.form.SetFocus(*move_.lastActive);
}

void MoveScreen::WireTyped() {
    for (const TargetText& text : kTypedTexts) {
        Control& item = Item(text.name);
        item.onGotFocus = [this, &item] { move_.lastActive = &item; };
        item.onLostFocus = [this, &item, text] {
            const QString typed = items::FormatToMask(item.Text(), items::ZeroMask(text.width));
            const bool fits = Fits(text, typed);
            QString& field = move_.target.*text.field;
            const bool refilled = field.isEmpty() && !typed.isEmpty();
            field = fits ? typed : QString();
            if (!fits)
                move_.ShowNotice(kWrongCode);
            else if (refilled && Item("お知らせ").Caption() == kWrongCode)
                move_.ShowNotice(QString());
            RepairDate(move_.target);
            move_.PaintTarget();
        };
    }
    const auto code = [this](const char* name, void (*left)(MoveContext&)) {
        // Nothing is looked up while the main screen waits for another program.
        Item(name).onLostFocus = [this, left] {
            if (!move_.diary.session.LinkWaitActive) left(move_);
        };
    };
    code("移動担当者コード", StaffCodeLeft);
    code("移動部門コード", DepartmentCodeLeft);
    code("移動セクションコード", SectionCodeLeft);
}

void MoveScreen::PassOn(const char* item, const char* to) {
    Control& target = Item(to);
    Item(item).onGotFocus = [this, &target] { move_.Focus(target); };
}

void MoveScreen::WireShown() {
    for (const auto& control : move_.form.Controls()) {
        const bool panel = control->Kind() == screen::ControlKind::SSPanel;
        if (!panel && !control->readOnly) continue;
        (panel ? control->onClick : control->onGotFocus) = [this] { move_.Focus(Item(kFirstAsked)); };
    }
    PassOn("開始時刻", "移動開始時刻時");
    PassOn("終了時刻", "移動終了時刻時");
    for (const char* staff : {"担当者コード", "担当者名", "移動担当者名"})
        PassOn(staff, "移動担当者コード");
    for (const char* department : {"部門名", "移動部門名"})
        PassOn(department, "移動部門コード");
    for (const char* section : {"セクション名", "移動セクション名"})
        PassOn(section, "移動セクションコード");
    Control& head = Item("ヘッド終了");
    Control& tail = Item("テイル終了");
    head.onGotFocus = [this, &tail] { move_.form.SetFocus(*move_.form.NextInTabOrder(&tail, false)); };
    tail.onGotFocus = [this, &head] { move_.form.SetFocus(*move_.form.NextInTabOrder(&head, true)); };
}

void MoveScreen::Step(const char* button, void (*shift)(TargetSlot&)) {
    Item(button).onClick = [this, shift] {
        shift(move_.target);
        move_.PaintTarget();
        // The hand that steps goes on where it was: Enter walks on, and doesn't step again.
        move_.Focus(*move_.lastActive);
    };
}

void MoveScreen::WireSteps() {
    Step("btn_前日", [](TargetSlot& target) { StepDate(target, -1); });
    Step("btn_翌日", [](TargetSlot& target) { StepDate(target, 1); });
    Step("btn_前週", [](TargetSlot& target) { StepDate(target, -7); });
    Step("btn_翌週", [](TargetSlot& target) { StepDate(target, 7); });
    Step("btn_15分前", [](TargetSlot& target) { StepTimes(target, -15); });
    Step("btn_15分後", [](TargetSlot& target) { StepTimes(target, 15); });
    Step("btn_30分前", [](TargetSlot& target) { StepTimes(target, -30); });
    Step("btn_30分後", [](TargetSlot& target) { StepTimes(target, 30); });
    Item("btn_Now").onClick = [this] {
        SetToNow(move_.target, move_.diary.clock.Now());
        move_.PaintTarget();
        move_.Focus(*move_.lastActive);
    };
}

void MoveScreen::WireCommands() {
    Item("btn_移動").onClick = [this] { MoveSource(move_); };
    Item("btn_追加").onClick = [this] { AddCopy(move_); };
    Item("btn_終了").onClick = [this] { move_.diary.host.Unload(move_.form); };
}

void MoveScreen::WireLists() {
    const auto wire = [this](const char* name, const char* list, const char* next) {
        const auto open = [this, name, list, next] {
            move_.diary.lists.OpenListWindow(QString::fromUtf8(list), QString(), move_.Item(name), move_.Item(next));
        };
        Control& item = Item(name);
        // 移動担当者コード is looked up by btn_担当者コード.
        move_.form.At("btn_" + item.Name().mid(2)).onClick = open;
        item.onDoubleClick = open;
        item.onKeyDown = [open](screen::Key key) {
            if (key == screen::Key::Ctrl) open();
        };
    };
    // A staff member brings department and section along, so what follows is the command.
    wire("移動担当者コード", "wnd担当者一覧", "btn_移動");
    wire("移動部門コード", "wnd部門一覧", "移動セクションコード");
    wire("移動セクションコード", "wndセクション一覧", "btn_移動");
}

}  // namespace move
