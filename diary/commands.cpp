#include "diary/commands.h"

#include <utility>

#include "diary/confirmation.h"
#include "diary/focus_gate.h"
#include "diary/kept_inputs.h"
#include "diary/masked_item.h"
#include "diary/outcome_words.h"
#include "diary/painting.h"
#include "diary/replaced_slot.h"
#include "diary/slot_input.h"
#include "diary/slot_loading.h"
#include "diary/slot_statements.h"
#include "diary/slot_window.h"
#include "diary/told_writing.h"
#include "diary/typed_content.h"
#include "items/display_forms.h"
#include "screen/wait_dialog.h"

namespace diary {

using identity::Operation;
using screen::Button;

namespace {

const QString kNoRight = QStringLiteral("操作権限がありません。");

bool MayWriteDate(const DiaryContext& diary) {
    const SlotWindow window = SlotWindowOn(items::DateText(diary.clock.Now()), numbers::CompanyClosing(diary.session));
    return SlotDateEditable({diary.session.SlotDate, diary.state.LoadedSlotDate, diary.session.NewSlotMode}, window,
                            diary.session.RunningStaffAccessLevel);
}

/// Right and period of a writing command; a refusal is told and gives the focus back.
bool MayWrite(DiaryContext& diary, Operation operation) {
    const bool permitted = diary.permissions.EnsureProgramPermission(session::kMenu, session::kProgramId, operation);
    const bool inPeriod = MayWriteDate(diary);
    if (permitted && inPeriod) return true;
    diary.host.Tell(kNoRight);
    FocusControl(diary, *diary.state.LastLeftControl);
    return false;
}

/// Finds out by staff, date and start whether the slot is on file, and gives what stands there. A read that fails
/// leaves the finding as it was.
std::vector<StoredRow> FindByStart(DiaryContext& diary) {
    auto rows = StoredRowsAtStart(diary);
    if (rows) diary.session.NewSlotMode = rows->empty();
    return std::move(rows).value_or(std::vector<StoredRow>());
}

/// Behind a save or delete. A run for one slot, which another program started, ends with what was `done`, and keeps its
/// slot on the screen when nothing was; others go on with the next slot in any case.
void GoOnAt(DiaryContext& diary, bool done, const char* nextItem) {
    if (diary.session.SlotKeyGiven && done)
        QuitScreen(diary);
    else
        FocusControl(diary, nextItem);
}

/// Makes room for the next slot. What is safe nowhere stays on the screen, and so does the slot of a run for one slot
/// when it isn't done.
void MakeRoomForNext(DiaryContext& diary, const ToldWrite& told) {
    if (told.safe && (told.done || !diary.session.SlotKeyGiven))
        ClearSlot(diary);
    else
        FindByStart(diary);
    RefreshScreen(diary);
}

/// Whether anything refers to the slot. Nothing in this program does; the place is kept for such a rule.
bool SlotIsReferredTo() {
    return false;
}

}  // namespace

bool SlotRegistrable(const DiaryContext& diary) {
    const ActivitySlot& slot = diary.slot;
    if (slot.発信区分 == 0 || slot.応対方法 == 0 || slot.要件分類 == 0 || slot.対応分類 == 0) return false;
    return FirstMissingKeyItem(diary) == 0;
}

void RefreshCommands(DiaryContext& diary) {
    const bool hasStaff = !diary.Item("担当者コード").Text().isEmpty();
    diary.Item("btn_部門コード").SetEnabled(hasStaff);
    diary.Item("btn_セクションコード").SetEnabled(hasStaff);

    const int kind = diary.Item("相手先区分").Value();
    const bool salesDocuments = kind == 0 || kind == 1 || kind == 5;
    for (const char* button : {"btn_営業見積No", "btn_参照営業見積", "btn_営業引合No", "btn_参照営業引合",
                               "btn_営業受注No", "btn_参照営業受注"})
        diary.Item(button).SetEnabled(salesDocuments);

    diary.Item("tab_詳細").SetEnabled(FirstMissingKeyItem(diary) == 0);
    // These two follow the finding of the pass before: it is renewed only below.
    diary.Item("btn_削除").SetEnabled(!diary.session.NewSlotMode);
    diary.Item("btn_移動").SetEnabled(!diary.session.NewSlotMode);

    std::unique_ptr<store::Recordset> row;
    const bool before = diary.session.NewSlotMode;
    diary.session.NewSlotMode = !diary.data.OpenMainRecordset(row, kSelectDetail + StartKeyCondition(diary.session));
    const bool kept = diary.session.NewSlotMode == before;
    diary.Item("btn_登録").SetEnabled(kept && SlotRegistrable(diary) && diary.state.InputHappened);
}

bool CheckRequiredItems(DiaryContext& diary) {
    const int missing = FirstMissingKeyItem(diary);
    if (missing == 0) return true;
    diary.ShowNotice(QStringLiteral("必須項目が未入力です。"));
    FocusMissingItem(diary, missing);
    return false;
}

void RegisterSlot(DiaryContext& diary) {
    // A key that was just typed has been looked for by its end only.
    const std::vector<StoredRow> replaced = FindByStart(diary);
    if (!MayWrite(diary, diary.session.NewSlotMode ? identity::kEnter : identity::kModify)) return;
    if (!CheckRequiredItems(diary)) return;
    if (AskRegister(diary, session::kProgramId, QString(), WordsBeforeSave(diary, replaced)) > kConfirmed) {
        FocusControl(diary, *diary.state.LastLeftControl);
        return;
    }
    ToldWrite told;
    {
        const screen::WaitDialog wait(diary.host, &diary.form);
        told = SaveAndTell(diary);
        MakeRoomForNext(diary, told);
    }
    GoOnAt(diary, told.done, "営業活動日付日");
}

void DeleteSlot(DiaryContext& diary) {
    if (!MayWrite(diary, identity::kDelete)) return;
    if (SlotIsReferredTo()) {
        diary.host.Tell(QStringLiteral("参照済です。削除出来ません。"));
        FocusControl(diary, *diary.state.LastLeftControl);
        return;
    }
    const Button answer =
        diary.host.Ask({screen::kProgramTitle, QStringLiteral("削除しますか?"), {Button::Yes, Button::No}, Button::No});
    if (answer != Button::Yes) {
        FocusControl(diary, *diary.state.LastLeftControl);
        return;
    }
    ToldWrite told;
    {
        const screen::WaitDialog wait(diary.host, &diary.form);
        told = DeleteAndTell(diary);
        MakeRoomForNext(diary, told);
    }
    GoOnAt(diary, told.done, "相手先コード");
}

void OpenMoveScreen(DiaryContext& diary) {
    diary.pick.ListCondition.clear();
    diary.form.SetEnabled(false);
    diary.showMoveScreen();
    diary.form.SetEnabled(true);
    if (diary.host.Ended()) return;
    const QString key = std::exchange(diary.pick.ListCondition, QString());
    if (!key.isEmpty()) {
        // What was typed into the slot before it moved wasn't part of that, and belongs to where the slot is now.
        if (RowsAtStart(diary, diary.state.SettledKey).isEmpty()) diary.state.SettledKey = {};
        ReopenFromMoveResult(diary, key);
    }
    FocusControl(diary, *diary.state.LastLeftControl);
    // Another client was faster, or the statement failed: what the screen shows isn't on file.
    if (!key.isEmpty() && diary.session.NewSlotMode) diary.ShowNotice(kNotFound);
}

bool QuitScreen(DiaryContext& diary) {
    // What was only looked at may lack what it likes: the slot of somebody who has left has no department here.
    if (diary.state.InputHappened && !diary.session.NewSlotMode && !CheckRequiredItems(diary)) return false;
    if (diary.state.InputHappened) {
        const Button answer = diary.host.Ask({screen::kProgramTitle,
                                              QStringLiteral("入力がありました。\r終了しますか？"),
                                              {Button::Yes, Button::No},
                                              Button::Yes});
        if (answer != Button::Yes) {
            FocusControl(diary, *diary.state.LastLeftControl);
            return false;
        }
    }
    // What finds no room on the list stays where a killed run leaves it, for the next start.
    if (KeepWhatLeaves(diary, QStringLiteral("終了時の入力"))) ForgetTyped(diary);
    diary.closeSession();
    return true;
}

void HeadReached(DiaryContext& diary) {
    if (diary.Item("tab_詳細").ListIndex() != 0) {
        TailReached(diary);
        return;
    }
    FocusControl(diary, "営業活動摘要");
    // The memo can't be entered while a key item is empty; the focus must not rest on a button that nobody sees.
    if (diary.form.Focused() == &diary.Item("ヘッド終了")) FocusMissingItem(diary, FirstMissingKeyItem(diary));
}

void TailReached(DiaryContext& diary) {
    {
        const FillingScope filling(diary.state);
        FocusControl(diary, *diary.state.FirstEntryControl);
        if (!diary.state.InputHappened) return;
        diary.result.Tell(MissingWords(diary));
        RegisterSlot(diary);
    }
    if (!diary.host.Ended()) RefreshCommands(diary);
}

}  // namespace diary
