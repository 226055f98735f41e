#include "diary/slot_loading.h"

#include "diary/counterparty.h"
#include "diary/date_time_entry.h"
#include "diary/painting.h"
#include "diary/replaced_slot.h"
#include "diary/slot_statements.h"
#include "diary/staff_resolution.h"
#include "diary/text_items.h"

namespace diary {

using session::TakeColumn;

namespace {

void LogViewing(DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    diary.viewingLog.RecordViewing({session::kProgramId, {}, {}, {}, key.StaffCode + key.SlotDate + key.StartTime});
}

void TakeDocument(const store::Recordset& row, const QString& kind, DocumentLink& link) {
    TakeColumn(row, kind + "新規区分", link.新規区分);
    TakeColumn(row, kind + "事業所コード", link.事業所コード);
    TakeColumn(row, kind + "番号基準日付", link.番号基準日付);
    TakeColumn(row, kind + "No", link.No);
}

/// A Null never clears what the screen held before.
void TakeRow(const store::Recordset& row, ActivitySlot& slot, bool withDeal) {
    TakeColumn(row, QStringLiteral("発信区分"), slot.発信区分);
    TakeColumn(row, QStringLiteral("応対方法"), slot.応対方法);
    TakeColumn(row, QStringLiteral("要件分類"), slot.要件分類);
    TakeColumn(row, QStringLiteral("対応分類"), slot.対応分類);
    TakeColumn(row, QStringLiteral("相手先区分"), slot.相手先区分);
    for (const SlotText& text : kPartyTexts)
        TakeText(row, text, slot);
    TakeColumn(row, QStringLiteral("相手先名称入力区分"), slot.相手先名称入力区分);
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind) {
        const QString name = session::DocumentKinds()[kind];
        // Payments are written with a slot but never shown by a load.
        if (name == QStringLiteral("出金") || (name == QStringLiteral("案件") && !withDeal)) continue;
        TakeDocument(row, name, slot.documents[kind]);
    }
    TakeColumn(row, QStringLiteral("営業活動摘要"), slot.営業活動摘要);
    TakeColumn(row, QStringLiteral("承認日付"), slot.承認日付);
    TakeColumn(row, QStringLiteral("承認者コード"), slot.承認者コード);
    TakeColumn(row, QStringLiteral("承認区分"), slot.承認区分);
    TakeColumn(row, QStringLiteral("登録日付"), slot.登録日付);
    TakeColumn(row, QStringLiteral("更新日付"), slot.更新日付);
}

void BecomeNew(DiaryContext& diary) {
    // Who had typed something and then moved the key has a new slot with content.
    if (!diary.slot.相手先略称.isEmpty()) diary.state.InputHappened = true;
    diary.session.NewSlotMode = true;
    diary.state.LoadedSlotDate.clear();
}

void BecomeExisting(DiaryContext& diary, const store::Recordset& row, bool withDeal) {
    diary.state.LoadedSlotDate = diary.session.SlotDate;
    TakeRow(row, diary.slot, withDeal);
    diary.state.Loaded = LoadedRowOf(row);
    diary.state.ContactOf = PartyKey(diary.slot);
    diary.session.NewSlotMode = false;
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
