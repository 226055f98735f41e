#include "diary/told_writing.h"

#include "diary/kept_inputs.h"
#include "diary/outcome_words.h"
#include "diary/slot_input.h"
#include "diary/slot_saving.h"
#include "diary/typed_content.h"
#include "session/fault_reason.h"

namespace diary {

namespace {

const QString kReplacedRow = QStringLiteral("修正前の枠");

QString Reason(const store::Fault& fault) {
    return QStringLiteral("（%1）。").arg(session::FaultReason(fault));
}

/// Rows that would be stored as the slot on the screen is aren't worth keeping.
QJsonArray OthersThan(const QJsonObject& input, const QJsonArray& rows) {
    QJsonArray others;
    for (const QJsonValue& row : rows)
        if (!SameInput(InputOfRow(row.toObject()), input)) others.append(row);
    return others;
}

QJsonArray ExactRows(const DiaryContext& diary) {
    QJsonArray rows;
    for (const QJsonValue& row : RowsAtStart(diary, KeyOnScreen(diary)))
        if (row[QStringLiteral("終了時刻")].toString() == diary.session.EndTime) rows.append(row);
    return rows;
}

/// The slot is stored; some other write of the command may have failed.
void TellDone(DiaryContext& diary, const QString& what, int failuresBefore) {
    diary.result.TellOutcome(what);
    if (diary.data.FailedWrites() > failuresBefore)
        diary.result.Tell("一部の情報を書き込めませんでした" + Reason(diary.data.LastMainFault()));
}

}  // namespace

ToldWrite SaveAndTell(DiaryContext& diary) {
    const QString word = diary.session.NewSlotMode ? QStringLiteral("登録") : QStringLiteral("修正");
    const QString slot = SlotWords(diary);
    const QJsonObject input = InputOnScreen(diary);
    if (!diary.session.NewSlotMode) diary.state.Replacing = RowsAtStart(diary, input);
    KeepTyped(diary);
    const QJsonArray replaced = OthersThan(input, diary.state.Replacing);
    const int failures = diary.data.FailedWrites();
    const SaveOutcome outcome = WriteSlot(diary);
    if (outcome.done) {
        TellDone(diary, word + "しました。" + slot, failures);
        KeepRows(diary, replaced, kReplacedRow);
        diary.kept.Drop(diary.state.PickedKept);
        ForgetTyped(diary);
        return {true, true};
    }
    if (outcome.oldIsGone || RowsAtStart(diary, input).isEmpty()) KeepRows(diary, replaced, kReplacedRow);
    diary.state.PickedKept = KeepInput(diary, input, word + "失敗");
    const bool kept = !diary.state.PickedKept.isEmpty();
    diary.result.TellOutcome(word + "できませんでした" + Reason(outcome.fault) +
                             (kept ? "入力内容は控えてあります（Ctrl+F2）。" : "入力内容は画面に残してあります。"));
    // A run for one slot goes on with it.
    if (kept && !diary.session.SlotKeyGiven) ForgetTyped(diary);
    return {false, kept};
}

ToldWrite DeleteAndTell(DiaryContext& diary) {
    const QString slot = SlotWords(diary);
    const QStringList kept = KeepRows(diary, ExactRows(diary), QStringLiteral("削除した枠"));
    const DeleteOutcome outcome = DeleteDetailExact(diary);
    const bool leaves = outcome.done || !diary.session.SlotKeyGiven;
    const bool safe = !leaves || KeepWhatLeaves(diary, QStringLiteral("削除時の入力"));
    if (!outcome.done) {
        for (const QString& id : kept)
            diary.kept.Drop(id);
        diary.result.TellOutcome("削除できませんでした" + Reason(outcome.fault));
        return {false, safe};
    }
    diary.result.TellOutcome(outcome.rows == 0 ? QStringLiteral("削除する枠がありませんでした。")
                                               : "削除しました。" + slot);
    if (!kept.contains(QString())) return {true, safe};
    // The screen has the only copy of the row now.
    diary.state.InputHappened = true;
    return {true, false};
}

}  // namespace diary
