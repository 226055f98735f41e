#include "move/move_commands.h"

#include "diary/confirmation.h"
#include "diary/outcome_words.h"
#include "diary/slot_papers.h"
#include "diary/slot_statements.h"
#include "items/calendar.h"
#include "items/display_forms.h"
#include "move/move_statements.h"
#include "session/fault_reason.h"

namespace move {

using attachments::Carry;

namespace {

QString IdentityOf(const SlotKey& key) {
    return attachments::SlotIdentity(key.日付, key.開始時刻, key.終了時刻, key.担当者コード);
}

bool DatesWithinWindow(const MoveContext& move) {
    const session::SessionContext& session = move.diary.session;
    const diary::SlotWindow window =
        MoveWindowOn(items::DateText(move.diary.clock.Now()), numbers::CompanyClosing(session));
    return (window.Holds(move.source.日付) && window.Holds(move.target.Key().日付)) ||
           session.RunningStaffAccessLevel == diary::kAnyDateLevel;
}

/// Right, period and a free target. All three are found out before anything is said, and the user gets one answer.
bool MayWrite(MoveContext& move) {
    const bool permitted = move.diary.permissions.EnsureProgramPermission(
        session::kMenu, QStringLiteral("営業日程移動"), identity::kEnter);
    const bool inPeriod = DatesWithinWindow(move);
    const bool free = TargetSlotFree(move);
    if (permitted && inPeriod && free) return true;
    move.diary.host.Tell(QStringLiteral("操作権限がありません。"));
    move.Focus(*move.lastActive);
    return false;
}

bool Filled(MoveContext& move) {
    const int missing = CheckTargetFilled(move.target);
    if (missing == 0) return true;
    move.Focus(move.Item(kTypedTexts[static_cast<std::size_t>(missing - 1)].name));
    move.ShowNotice(QStringLiteral("必要項目が未入力です。"));
    return false;
}

QString Stamp(const MoveContext& move) {
    return items::StampText(move.diary.clock.Now());
}

bool Write(MoveContext& move, const QString& sql) {
    move.diary.host.SetBusy(true);
    const bool done = move.diary.data.ExecuteMain(sql, true);
    move.diary.host.SetBusy(false);
    return done;
}

QString MoveSlot(MoveContext& move) {
    return diary::WriteWithPapers(
        move.diary, Carry::Kind::Move, IdentityOf(move.source), IdentityOf(move.target.Key()),
        [&move] { return Write(move, MoveStatement(move.diary.session, move.source, move.target, Stamp(move))); });
}

QString AddSlot(MoveContext& move) {
    std::unique_ptr<store::Recordset> row;
    if (!move.diary.data.OpenMainRecordset(row, CopiedRowStatement(move.source))) return {};
    return diary::WriteWithPapers(
        move.diary, Carry::Kind::Copy, IdentityOf(move.source), IdentityOf(move.target.Key()),
        [&] { return Write(move, AddStatement(move.diary.session, *row, move.target, Stamp(move))); });
}

void StoreTargetKey(MoveContext& move) {
    const SlotKey key = move.target.Key();
    move.diary.pick.ListCondition = key.日付 + key.開始時刻 + key.終了時刻 + key.担当者コード;
}

/// What became of it is told on the main screen, which is in front when the user reads it.
void TellOutcome(MoveContext& move, const QString& word) {
    diary::DiaryContext& diary = move.diary;
    const SlotKey key = move.target.Key();
    const auto row = diary.data.ReadMainUntold(diary::kSelectDetail +
                                               diary::StartKeyCondition(key.担当者コード, key.日付, key.開始時刻) +
                                               " AND T営業活動明細.終了時刻 = '" + key.終了時刻 + "'");
    const bool stands = row && !row->Eof();
    const QString reason = diary.data.FailedWrites() > move.failuresBefore
                               ? session::FaultReason(diary.data.LastMainFault())
                               : QStringLiteral("元の枠がありません");
    diary.result.TellOutcome(stands ? word + "しました。" +
                                          diary::SlotWords(key.日付, key.開始時刻, key.終了時刻,
                                                           row->Value(QStringLiteral("相手先略称")).value_or(QString()))
                                    : word + "できませんでした（" + reason + "）。");
}

/// `write` gives the words of why it began nothing.
void RunCommand(MoveContext& move, const QString& word, QString (*write)(MoveContext&)) {
    if (!MayWrite(move) || !Filled(move)) return;
    if (diary::AskRegister(move.diary, QStringLiteral("営業日程") + word, word) > diary::kConfirmed) {
        move.Focus(*move.lastActive);
        return;
    }
    // What the user does from here on is not meant for a screen that is about to close.
    move.form.SetEnabled(false);
    move.diary.host.ProcessEvents();
    move.failuresBefore = move.diary.data.FailedWrites();
    const QString hindrance = write(move);
    move.form.SetEnabled(true);
    if (!hindrance.isEmpty()) {
        move.result.TellOutcome(word + "できませんでした（" + hindrance + "）。");
        move.Focus(*move.lastActive);
        return;
    }
    TellOutcome(move, word);
    StoreTargetKey(move);
    move.diary.host.Unload(move.form);
}

}  // namespace

diary::SlotWindow MoveWindowOn(const QString& today, numbers::Closing closing) {
    const items::Ymd date = items::ReadDate(today);
    diary::SlotWindow window = diary::SlotWindowOn(today, closing);
    window.last = items::DateText(items::PackDate(date.year + 2, date.month, date.day - 1));
    return window;
}

bool TargetSlotFree(MoveContext& move) {
    const SlotKey& source = move.source;
    const SlotKey key = move.target.Key();
    if (key.日付 == source.日付 && key.担当者コード == source.担当者コード && key.開始時刻 == source.開始時刻)
        return false;
    std::unique_ptr<store::Recordset> row;
    return !move.diary.data.OpenMainRecordset(
        row, diary::kSelectDetail + diary::StartKeyCondition(key.担当者コード, key.日付, key.開始時刻));
}

void MoveSource(MoveContext& move) {
    RunCommand(move, QStringLiteral("移動"), MoveSlot);
}

void AddCopy(MoveContext& move) {
    RunCommand(move, QStringLiteral("追加"), AddSlot);
}

}  // namespace move
