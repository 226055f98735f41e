#include "diary/slot_loading.h"

#include "diary/counterparty.h"
#include "diary/date_time_entry.h"
#include "diary/kept_inputs.h"
#include "diary/linked_documents.h"
#include "diary/painting.h"
#include "diary/replaced_slot.h"
#include "diary/slot_row.h"
#include "diary/slot_statements.h"
#include "diary/staff_resolution.h"
#include "diary/text_items.h"

namespace diary {

namespace {

void LogViewing(DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    diary.viewingLog.RecordViewing({session::kProgramId, {}, {}, {}, key.StaffCode + key.SlotDate + key.StartTime});
}

void BecomeNew(DiaryContext& diary) {
    // Who had typed something and then moved the key has a new slot with content.
    if (!diary.slot.相手先略称.isEmpty()) diary.state.InputHappened = true;
    diary.session.NewSlotMode = true;
    diary.state.LoadedSlotDate.clear();
}

/// A step takes the stored row but for its end and its deal, which stay as the screen holds them.
void TellWhatStays(DiaryContext& diary, const store::Recordset& row) {
    const QString end = row.Value(QStringLiteral("終了時刻")).value_or(QString());
    if (end != diary.session.EndTime)
        diary.result.Tell("終了時刻は画面の " + diary.session.EndTime + " のままです（登録は " + end + "）。");
    const QString deal = row.Value(QStringLiteral("案件No")).value_or(QString());
    const QString shown = diary.slot.documents[k案件].No;
    if (deal != shown)
        diary.result.Tell("案件Noは画面の " + (shown.isEmpty() ? QStringLiteral("空欄") : shown) +
                          " のままです（登録は " + (deal.isEmpty() ? QStringLiteral("空欄") : deal) + "）。");
}

void BecomeExisting(DiaryContext& diary, const store::Recordset& row, bool withDeal) {
    diary.state.LoadedSlotDate = diary.session.SlotDate;
    diary.session.NewSlotMode = false;
    if (!KeepWhatLeaves(diary, QStringLiteral("別の枠を表示"))) {
        diary.result.Tell(QStringLiteral("登録済みの枠は表示していません。"));
        return;
    }
    if (!withDeal) TellWhatStays(diary, row);
    // Payments are written with a slot but never shown by a load.
    TakeRow(row, diary.slot, {!withDeal, true});
    diary.state.Loaded = LoadedRowOf(row);
    diary.state.ContactOf = PartyKey(diary.slot);
    diary.state.CameAs = diary.slot;
    diary.state.TypedTexts.clear();
    diary.state.PickedKept.clear();
    diary.state.InputHappened = false;
}

}  // namespace

void LoadSlotExact(DiaryContext& diary) {
    std::unique_ptr<store::Recordset> row;
    if (!diary.data.OpenMainRecordset(row, kSelectDetail + ExactKeyCondition(diary.session))) {
        BecomeNew(diary);
        return;
    }
    LogViewing(diary);
    BecomeExisting(diary, *row, true);
}

void LoadSlotByStart(DiaryContext& diary) {
    LogViewing(diary);
    std::unique_ptr<store::Recordset> row;
    if (diary.data.OpenMainRecordset(row, kSelectDetail + StartKeyCondition(diary.session)))
        BecomeExisting(diary, *row, false);
    else
        BecomeNew(diary);
}

void ReopenFromMoveResult(DiaryContext& diary, const QString& key) {
    session::SessionContext& session = diary.session;
    session.SlotDate = key.mid(0, 8);
    session.SlotYear = session.SlotDate.mid(0, 4);
    session.SlotMonth = session.SlotDate.mid(4, 2);
    session.SlotDay = session.SlotDate.mid(6, 2);
    session.StartTime = key.mid(8, 5);
    session.StartHour = session.StartTime.mid(0, 2);
    session.StartMinute = session.StartTime.mid(3, 2);
    session.EndTime = key.mid(13, 5);
    session.EndHour = session.EndTime.mid(0, 2);
    session.EndMinute = session.EndTime.mid(3, 2);
    session.StaffCode = key.mid(18, 5);
    NormalizeSlotDate(diary);
    NormalizeStartTime(diary);
    NormalizeEndTime(diary);
    if (ResolveStaff(diary, session.StaffCode)) LoadSlotExact(diary);
    RefreshScreen(diary);
}

}  // namespace diary
