#include "diary/slot_saving.h"

#include <algorithm>

#include "diary/date_time_entry.h"
#include "diary/replaced_slot.h"
#include "diary/slot_papers.h"
#include "diary/slot_statements.h"
#include "diary/text_items.h"
#include "items/display_forms.h"
#include "session/insert_builder.h"

namespace diary {

using session::InsertBuilder;
using session::SessionContext;

namespace {

void AddKey(InsertBuilder& insert, const SessionContext& session) {
    insert.Quoted(QStringLiteral("担当者コード"), session.StaffCode);
    insert.Quoted(QStringLiteral("日付"), session.SlotDate);
}

void AddPlace(InsertBuilder& insert, const SessionContext& session, const ActivitySlot& slot) {
    insert.Quoted(QStringLiteral("事業所コード"), session.SiteCode);
    insert.Quoted(QStringLiteral("部門コード"), slot.部門コード);
    insert.Quoted(QStringLiteral("セクションコード"), slot.セクションコード);
}

void AddDocuments(InsertBuilder& insert, const ActivitySlot& slot) {
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind) {
        const QString name = session::DocumentKinds()[kind];
        const DocumentLink& link = slot.documents[kind];
        insert.Digit(name + "新規区分", link.新規区分);
        insert.Quoted(name + "事業所コード", link.事業所コード);
        insert.Quoted(name + "番号基準日付", link.番号基準日付);
        insert.Quoted(name + "No", link.No);
    }
}

QString HeaderInsertStatement(const SessionContext& session, const ActivitySlot& slot) {
    InsertBuilder insert(QStringLiteral("T営業活動"));
    AddKey(insert, session);
    AddPlace(insert, session, slot);
    insert.Quoted(QStringLiteral("営業活動備考"), QString());
    insert.Quoted(QStringLiteral("伝票発行区分"), QStringLiteral("0"));
    for (const char* column : {"承認日付", "承認者コード", "承認者備考", "承認区分"})
        insert.Quoted(QString::fromUtf8(column), QString());
    insert.Quoted(QStringLiteral("ユーザID"), UserStamp(session));
    insert.Quoted(QStringLiteral("登録日付"), slot.登録日付);
    insert.Quoted(QStringLiteral("更新日付"), QString());
    return insert.Statement();
}

/// 1 inserted, 3 insert failed, 7 deleted, 6 delete failed.
void KeepOutcome(ScreenState& state, int result, const char* message = "") {
    state.LastSaveResult = result;
    state.LastSaveMessage = QString::fromUtf8(message);
}

bool Insert(DiaryContext& diary, const QString& sql) {
    const bool done = diary.data.ExecuteMain(sql, true);
    if (done)
        KeepOutcome(diary.state, 1);
    else
        KeepOutcome(diary.state, 3, "登録済です。登録できませんでした。");
    return done;
}

bool Delete(DiaryContext& diary, const QString& condition) {
    const bool done = diary.data.ExecuteMain("DELETE FROM T営業活動明細" + condition, true);
    if (done)
        KeepOutcome(diary.state, 7);
    else
        KeepOutcome(diary.state, 6, "既に削除されています。削除できませんでした。");
    return done;
}

void EnsureHeaderRow(DiaryContext& diary) {
    const SessionContext& key = diary.session;
    std::unique_ptr<store::Recordset> row;
    if (diary.data.OpenMainRecordset(row, "SELECT * FROM T営業活動 WHERE T営業活動.担当者コード = '" + key.StaffCode +
                                              "' AND T営業活動.日付 = '" + key.SlotDate + "'"))
        return;
    diary.slot.登録日付 = items::StampText(diary.clock.Now());
    Insert(diary, HeaderInsertStatement(diary.session, diary.slot));
}

bool DeleteDetailForUpdate(DiaryContext& diary) {
    return Delete(diary, StartKeyCondition(diary.session));
}

bool InsertDetailRow(DiaryContext& diary) {
    ActivitySlot& slot = diary.slot;
    // Every save stamps 登録日付 anew, while 更新日付 keeps what was loaded: the rest of the suite reads them so.
    slot.登録日付 = items::StampText(diary.clock.Now());
    if (!Insert(diary, DetailInsertStatement(diary.session, slot))) return false;
    diary.phones.UpsertPhoneDirectory({slot.相手先電話, slot.相手先略称, slot.相手先郵便番号, slot.相手先住所A,
                                       slot.相手先住所B, slot.相手先住所C, 1});
    return true;
}

}  // namespace

QString DetailInsertStatement(const SessionContext& session, const ActivitySlot& slot) {
    InsertBuilder insert(QStringLiteral("T営業活動明細"));
    AddKey(insert, session);
    insert.Quoted(QStringLiteral("開始時刻"), session.StartTime);
    insert.Quoted(QStringLiteral("終了時刻"), session.EndTime);
    AddPlace(insert, session, slot);
    insert.Digit(QStringLiteral("発信区分"), slot.発信区分);
    insert.Digit(QStringLiteral("応対方法"), slot.応対方法);
    insert.Digit(QStringLiteral("要件分類"), slot.要件分類);
    insert.Digit(QStringLiteral("対応分類"), slot.対応分類);
    insert.Digit(QStringLiteral("相手先区分"), slot.相手先区分);
    for (const SlotText& text : kPartyTexts)
        AddText(insert, QString::fromUtf8(text.name), slot.*text.field);
    insert.Digit(QStringLiteral("相手先名称入力区分"), slot.相手先名称入力区分);
    AddDocuments(insert, slot);
    AddText(insert, QStringLiteral("営業活動摘要"), slot.営業活動摘要);
    insert.Bare(QStringLiteral("活動時間"), QString::number(ActivityMinutes(session.StartTime, session.EndTime)));
    insert.Quoted(QStringLiteral("承認日付"), slot.承認日付);
    insert.Quoted(QStringLiteral("承認者コード"), slot.承認者コード);
    insert.Digit(QStringLiteral("承認区分"), slot.承認区分);
    insert.Quoted(QStringLiteral("ユーザID"), UserStamp(session));
    insert.Quoted(QStringLiteral("登録日付"), slot.登録日付);
    insert.Quoted(QStringLiteral("更新日付"), slot.更新日付);
    return insert.Statement();
}

SaveOutcome WriteSlot(DiaryContext& diary) {
    SaveOutcome outcome;
    auto papers = NotePapersOfReplaced(diary);
    const bool change = !diary.session.NewSlotMode;
    if (!change) EnsureHeaderRow(diary);
    const bool deleted = change && DeleteDetailForUpdate(diary);
    // A row that couldn't be deleted holds the key: what the INSERT then complains of isn't the reason.
    if (change && !deleted) outcome.fault = diary.data.LastMainFault();
    outcome.done = InsertDetailRow(diary);
    if (outcome.done) {
        PapersFollow(diary, papers);
        return {true, {}, false};
    }
    if (!change || deleted) outcome.fault = diary.data.LastMainFault();
    outcome.oldIsGone = deleted;
    return outcome;
}

DeleteOutcome DeleteDetailExact(DiaryContext& diary) {
    DeleteOutcome outcome;
    if (const auto rows = StoredRowsAtStart(diary))
        outcome.rows = static_cast<int>(std::count_if(rows->begin(), rows->end(), [&diary](const StoredRow& row) {
            return row["終了時刻"] == diary.session.EndTime;
        }));
    outcome.done = Delete(diary, ExactKeyCondition(diary.session));
    if (!outcome.done) outcome = {false, diary.data.LastMainFault(), 0};
    return outcome;
}

}  // namespace diary
