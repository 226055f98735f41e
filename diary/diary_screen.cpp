#include "diary/diary_screen.h"

#include "diary/attachment_page.h"
#include "diary/classification.h"
#include "diary/commands.h"
#include "diary/counterparty.h"
#include "diary/date_time_entry.h"
#include "diary/focus_gate.h"
#include "diary/kept_inputs.h"
#include "diary/kept_list.h"
#include "diary/launching.h"
#include "diary/linked_documents.h"
#include "diary/list_gestures.h"
#include "diary/outcome_words.h"
#include "diary/painting.h"
#include "diary/screen_items.h"
#include "diary/slot_loading.h"
#include "diary/staff_resolution.h"
#include "diary/text_items.h"
#include "diary/typed_content.h"
#include "hostsetup/documents.h"
#include "items/text_rules.h"

namespace diary {

using screen::Control;

DiaryScreen::DiaryScreen(DiaryContext& diary) : diary_(diary) {
    BuildScreenItems(diary_.form);
    WireFocus();
    WireDateAndTime();
    WireStaff();
    WireClassification();
    WireCounterparty();
    WireCommands();
    WireLists();
    WireDocuments();
    WireSiblings();
    WireAttachments();
    diary_.form.onLoad = [this] { Load(); };
    diary_.form.onUserActed = [this] {
        KeepTyped(diary_);
        SettleKey(diary_);
        if (diary_.form.gesturesUnderWay == 0) diary_.result.GestureDone(InputUnderWay(diary_));
    };
    diary_.form.onQueryClose = [this] {
        if (diary_.HandlersAsleep()) return false;
        // The frame takes no focus: what stands in the item under the cursor hasn't been taken over yet. The item isn't
        // left by that, so a refused close goes back to the one that was.
        Control* const left = diary_.state.LastLeftControl;
        diary_.form.CommitFocused();
        diary_.state.LastLeftControl = left;
        return QuitScreen(diary_);
    };
}

std::function<void()> DiaryScreen::Awake(std::function<void()> handler) {
    return [this, handler = std::move(handler)] {
        if (!diary_.HandlersAsleep()) handler();
    };
}

void DiaryScreen::Load() {
    ScreenState& state = diary_.state;
    diary_.form.SetCaption(session::kProgramId + "（" + diary_.session.Company.名称 + "）");
    FillClassificationGroups(diary_);
    state.FirstEntryControl = diary_.pick.ActiveEntryControl = state.LastLeftControl = &Item("相手先略称");
    Item("prg_ttl").SetCaption(diary_.company.ProgramTitle());
    if (diary_.session.NewSlotMode) {
        ClearSlot(diary_);
    } else {
        NormalizeSlotDate(diary_);
        ResolveStaff(diary_, diary_.session.StaffCode);
        LoadSlotExact(diary_);
    }
    RefreshScreen(diary_);
    diary_.ShowNotice(QString());
    SettleKey(diary_);
}

void DiaryScreen::FocusAfterShow() {
    FocusControl(diary_, *diary_.state.FirstEntryControl);
}

void DiaryScreen::WireFocus() {
    for (const QString& name : GatedItems()) {
        Control& item = diary_.Item(name);
        const int order = GateOrder(name);
        item.onGotFocus = Awake([this, &item, name, order] {
            if (!item.readOnly) diary_.pick.ActiveEntryControl = &item;
            FocusGate(diary_, 1, name, order);
        });
        if (!item.readOnly) item.onLostFocus = Awake([this, &item] { diary_.state.LastLeftControl = &item; });
    }
    // The weekday hands over as the day that it belongs to, and is no place to be sent back to.
    Item("営業活動曜日").onGotFocus = Awake([this] {
        if (FocusGate(diary_, 1, QStringLiteral("営業活動日付日"), GateOrder(QStringLiteral("営業活動曜日"))))
            FocusControl(diary_, *diary_.state.LastLeftControl);
    });
    Control& kind = Item("相手先区分");
    kind.onGotFocus = Awake([this, &kind] {
        diary_.pick.ActiveEntryControl = &kind;
        FocusGate(diary_, 1, kind.Name(), GateOrder(kind.Name()));
    });
    kind.onLostFocus = Awake([this, &kind] { diary_.state.LastLeftControl = &kind; });
    Item("ヘッド終了").onGotFocus = Awake([this] { HeadReached(diary_); });
    Item("テイル終了").onGotFocus = Awake([this] { TailReached(diary_); });
}

void DiaryScreen::LeaveDateOrTime(Control& item, QString& field, const QString& mask,
                                  void (*normalize)(DiaryContext&)) {
    diary_.state.LastLeftControl = &item;
    const QString text = TypedPart(item.Text(), mask);
    if (text == field) {
        const FillingScope filling(diary_.state);
        item.SetText(text);
        return;
    }
    diary_.state.InputHappened = true;
    field = text;
    const bool hasStaff = !diary_.session.StaffCode.isEmpty();
    normalize(diary_);
    if (hasStaff) LoadSlotExact(diary_);
    // The start hour alone repaints no more than the items.
    if (item.Name() == QStringLiteral("開始時刻時"))
        PaintScreen(diary_);
    else
        RefreshScreen(diary_);
}

void DiaryScreen::WireDateAndTime() {
    session::SessionContext& key = diary_.session;
    struct Part {
        const char* item;
        QString& field;
        const char* mask;
        void (*normalize)(DiaryContext&);
    };
    const Part parts[] = {{"営業活動日付年", key.SlotYear, "0000", NormalizeSlotDate},
                          {"営業活動日付月", key.SlotMonth, "00", NormalizeSlotDate},
                          {"営業活動日付日", key.SlotDay, "00", NormalizeSlotDate},
                          {"開始時刻時", key.StartHour, "00", NormalizeStartTime},
                          {"開始時刻分", key.StartMinute, "00", NormalizeStartTime},
                          {"終了時刻時", key.EndHour, "00", NormalizeEndTime},
                          {"終了時刻分", key.EndMinute, "00", NormalizeEndTime}};
    for (const Part& part : parts) {
        Control& item = Item(part.item);
        item.onLostFocus = Awake([this, &item, &field = part.field, mask = QString::fromLatin1(part.mask),
                                  normalize = part.normalize] { LeaveDateOrTime(item, field, mask, normalize); });
    }

    const auto step = [this](const char* button, std::function<void()> move) {
        Item(button).onClick = Awake([this, move = std::move(move)] {
            move();
            LoadSlotByStart(diary_);
            RefreshScreen(diary_);
            FocusControl(diary_, *diary_.state.FirstEntryControl);
        });
    };
    step("btn_前日", [this] { StepDate(diary_, DateUnit::Day, -1); });
    step("btn_翌日", [this] { StepDate(diary_, DateUnit::Day, 1); });
    step("btn_前週", [this] { StepDate(diary_, DateUnit::Week, -1); });
    step("btn_翌週", [this] { StepDate(diary_, DateUnit::Week, 1); });
    step("btn_一時間前", [this] { StepTimes(diary_, 60, -1); });
    step("btn_一時間後", [this] { StepTimes(diary_, 60, 1); });
    step("btn_30分前", [this] { StepTimes(diary_, 30, -1); });
    step("btn_30分後", [this] { StepTimes(diary_, 30, 1); });
    step("btn_Now", [this] { SetTimesToNow(diary_); });
    for (const char* title : {"itm_ttl_営業活動日付", "itm_ttl_開始時刻"})
        Item(title).onClick = Awake([this, name = QString::fromUtf8(title)] { FocusGate(diary_, 2, name, 0); });
}

void DiaryScreen::OnLeaving(const char* name, void (*left)(DiaryContext&)) {
    Control& item = Item(name);
    item.onLostFocus = Awake([this, &item, left] {
        diary_.state.LastLeftControl = &item;
        left(diary_);
    });
}

void DiaryScreen::WireStaff() {
    OnLeaving("担当者コード", StaffCodeLeft);
    OnLeaving("部門コード", DepartmentCodeLeft);
    OnLeaving("セクションコード", SectionCodeLeft);
}

void DiaryScreen::WireClassification() {
    const auto group = [this](const char* name, int count, int ActivitySlot::*field) {
        for (int index = 0; index < count; ++index)
            Item(name, index).onClick = Awake([this, field, index] { OptionClicked(diary_, field, index); });
    };
    group("opb_発信区分", k発信区分Options, &ActivitySlot::発信区分);
    group("opb_応対方法", k応対方法Options, &ActivitySlot::応対方法);
    group("opb_要件分類", k要件分類Options, &ActivitySlot::要件分類);
    for (int index = 0; index < k要件分類Options; ++index) {
        Item("対応分類", index).onChange = Awake([this, index] { HandlingChanged(diary_, index); });
        Item("対応分類名称", index).onClick = Awake([this, index] { HandlingChosen(diary_, index); });
        for (const char* name : {"対応分類", "対応分類名称"}) {
            Control& item = Item(name, index);
            item.onGotFocus = Awake([this, &item] { diary_.pick.ActiveEntryControl = &item; });
            item.onLostFocus = Awake([this, &item] { diary_.state.LastLeftControl = &item; });
        }
    }
    Item("相手先区分").onChange = Awake([this] { CounterpartyKindChanged(diary_); });
}

void DiaryScreen::WireCounterparty() {
    OnLeaving("相手先コード", CounterpartyCodeLeft);
    OnLeaving("相手先郵便番号", PostcodeLeft);
    OnLeaving("相手先御担当者コード", ContactCodeLeft);
    for (const SlotText& text : kLimitedTexts) {
        Control& item = Item(text.name);
        item.onChange = Awake([this, &item] { CheckItemLength(diary_, item); });
        item.onLostFocus = Awake([this, &item, text] {
            diary_.state.LastLeftControl = &item;
            LimitedTextLeft(diary_, text);
        });
    }
    for (const SlotText& text : kPartyTexts) {
        Control& item = Item(text.name);
        if (item.Kind() != screen::ControlKind::EntryPhone) continue;
        item.onLostFocus = Awake([this, &item, text] {
            diary_.state.LastLeftControl = &item;
            PhoneLeft(diary_, text);
        });
    }
    Item("営業活動摘要").onChange = Awake([this] { MemoChanged(diary_); });
    Item("itm_ttl_相手先電話").onClick = Awake([this] {
        if (!FocusGate(diary_, 1, QStringLiteral("相手先電話"), GateOrder(QStringLiteral("相手先電話"))))
            FocusControl(diary_, "相手先電話");
    });
}

void DiaryScreen::WireLists() {
    const auto wire = [this](const char* name, void (*open)(DiaryContext&, Gesture)) {
        Control& item = Item(name);
        diary_.Item("btn_" + item.Name()).onClick = Awake([this, open] { open(diary_, Gesture::Button); });
        item.onKeyDown = [this, open](screen::Key key) {
            if (key == screen::Key::Ctrl && !diary_.HandlersAsleep()) open(diary_, Gesture::Ctrl);
        };
        item.onDoubleClick = Awake([this, open] { open(diary_, Gesture::DoubleClick); });
    };
    wire("担当者コード", OpenStaffList);
    wire("部門コード", OpenDepartmentList);
    wire("セクションコード", OpenSectionList);
    wire("相手先コード", OpenCounterpartyList);
    wire("相手先郵便番号", OpenPostcodeList);
    wire("相手先御担当者コード", OpenContactList);
}

void DiaryScreen::WireDocuments() {
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind) {
        Control& item = diary_.Item(session::DocumentKinds()[kind] + "No");
        item.onLostFocus = Awake([this, &item, kind] {
            diary_.state.LastLeftControl = &item;
            DocumentNumberLeft(diary_, kind);
        });
        diary_.Item("btn_" + item.Name()).onClick =
            Awake([this, kind] { OpenDocumentList(diary_, kind, Gesture::Button); });
        item.onKeyDown = [this, kind](screen::Key key) {
            if (key == screen::Key::Ctrl && !diary_.HandlersAsleep()) OpenDocumentList(diary_, kind, Gesture::Ctrl);
        };
        item.onDoubleClick = Awake([this, kind] { OpenDocumentList(diary_, kind, Gesture::DoubleClick); });
    }
}

void DiaryScreen::WireSiblings() {
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind)
        diary_.Item("btn_参照" + session::DocumentKinds()[kind]).onClick =
            Awake([this, kind] { LaunchDocument(diary_, kind); });
    Item("btn_暦編集").onClick = Awake([this] { LaunchCalendar(diary_); });
    const auto panel = [this](const char* name, void (*launch)(DiaryContext&)) {
        Item(name).onClick = Awake([this, launch] {
            // A panel takes no focus, but what was just typed belongs to the party that is handed over.
            diary_.form.CommitFocused();
            launch(diary_);
        });
    };
    panel("bak_相手先", LaunchPartyCard);
    panel("bak_相手先御担当者", LaunchContactCard);
}

void DiaryScreen::WireAttachments() {
    Item("btn_付属書類追加").onClick = Awake([this] { AddFile(diary_); });
    Item("btn_フォルダ").onClick = Awake([this] { AddFolder(diary_); });
    Item("btn_付属書類削除").onClick = Awake([this] { RemoveSelected(diary_); });
    Control& list = Item("List付属書類");
    list.onDoubleClick = Awake([this] { OpenSelected(diary_); });
    list.onPathsGiven = [this](const QStringList& paths) {
        if (!diary_.HandlersAsleep()) AddGiven(diary_, paths);
    };
}

void DiaryScreen::WireCommands() {
    Item("btn_登録").onClick = Awake([this] { RegisterSlot(diary_); });
    Item("btn_登録").onRefused = Awake([this] {
        // A finding that just changed keeps it off until the next focus change.
        const QString missing = MissingWords(diary_);
        diary_.result.TellOutcome(missing.isEmpty() ? QStringLiteral("もう一度押してください。") : missing);
        RefreshCommands(diary_);
    });
    Item("btn_削除").onClick = Awake([this] { DeleteSlot(diary_); });
    Item("btn_移動").onClick = Awake([this] { OpenMoveScreen(diary_); });
    Item("btn_終了").onClick = Awake([this] { QuitScreen(diary_); });
    Item("btn_控え一覧").onClick = Awake([this] { OpenKeptList(diary_); });
    Item("manualpanel").onClick = Awake([this] {
        const bool opened = hostsetup::OpenManual(diary_.opener, diary_.session);
        diary_.ShowNotice(opened ? QString() : QStringLiteral("マニュアルを開けませんでした。"));
    });
    Item("prg_ttl").onClick = Awake([this] { FocusControl(diary_, *diary_.state.LastLeftControl); });
}

}  // namespace diary
