#include "diary/slot_papers.h"

#include <algorithm>

#include "attachments/copy_dialog.h"
#include "diary/attachment_page.h"
#include "diary/slot_statements.h"

namespace diary {

using attachments::Carry;
using attachments::CopyDialog;
using attachments::Outcome;
using attachments::SlotIdentity;
using platform::FileFault;
using session::kProgramId;

namespace {

QString Text(DiaryContext& diary, const char* item) {
    return diary.Item(item).Text();
}

/// The ends ("hh:nn") of the slots that are stored at a start.
QStringList StoredEnds(DiaryContext& diary, const QString& staff, const QString& date, const QString& start) {
    QStringList ends;
    const auto row =
        diary.data.ReadMainUntold("SELECT T営業活動明細.終了時刻 FROM T営業活動明細" +
                                  StartKeyCondition(staff, date, start) + " ORDER BY T営業活動明細.終了時刻");
    for (; row && !row->Eof(); row->MoveNext())
        ends << row->Value(QStringLiteral("終了時刻")).value_or(QString());
    return ends;
}

/// An identity taken apart: date 8, start 4, end 4 digits, and the staff code.
struct IdentityParts {
    explicit IdentityParts(const QString& identity)
        : date(identity.mid(0, 8)),
          start(identity.mid(8, 2) + ":" + identity.mid(10, 2)),
          end(identity.mid(12, 2) + ":" + identity.mid(14, 2)),
          staff(identity.mid(16)) {}
    bool SameStart(const IdentityParts& other) const {
        return date == other.date && start == other.start && staff == other.staff;
    }
    QString date, start, end, staff;
};

/// Whether a slot has that identity; nothing when the store doesn't answer.
std::optional<bool> SlotStands(DiaryContext& diary, const QString& identity) {
    const IdentityParts slot(identity);
    const auto row = diary.data.ReadMainUntold("SELECT TOP 1 T営業活動明細.終了時刻 FROM T営業活動明細" +
                                               StartKeyCondition(slot.staff, slot.date, slot.start) +
                                               " AND T営業活動明細.終了時刻 = '" + slot.end + "'");
    return row ? std::optional(!row->Eof()) : std::nullopt;
}

Outcome CarryOut(DiaryContext& diary, Carry& carry) {
    CopyDialog dialog(diary.host, diary.host.Front());
    return diary.papers.CarryOut(carry, dialog.Progress());
}

/// Lets the papers follow when the slot went where they were to go. Where it didn't, the note goes, unless that may
/// still come: the store didn't answer, or a replaced slot wasn't stored again yet.
Outcome Settle(DiaryContext& diary, Carry& carry) {
    const auto there = SlotStands(diary, carry.to), here = SlotStands(diary, carry.from);
    if (!there || !here) return {carry.numbers.empty()};
    const bool went = *there && !(carry.IsMove() && *here);
    if (went) return CarryOut(diary, carry);
    const bool between = carry.kind == Carry::Kind::Replace && !*there && !*here;
    if (!between) diary.papers.Drop(carry);
    return {};
}

void WriteDown(DiaryContext& diary, Carry& carry) {
    if (!diary.papers.WriteDown(carry)) diary.log.WriteErrorHistory(QStringLiteral("付属書類の移動を控えられません。"));
}

QString Notice(const Carry& carry, const Outcome& outcome) {
    if (outcome.stored) return attachments::OutcomeNotice(outcome);
    return carry.IsMove() ? QStringLiteral("付属書類を移動できませんでした。")
                          : QStringLiteral("付属書類をコピーできませんでした。");
}

QString WordsOfFolder(FileFault fault) {
    return fault == FileFault::DiskFull ? QStringLiteral("ディスクの空き容量が足りません")
                                        : QStringLiteral("ドキュメントフォルダに書き込めません");
}

}  // namespace

std::optional<QString> PaperIdentity(DiaryContext& diary) {
    const QString staff = Text(diary, "担当者コード");
    const QString date = Text(diary, "営業活動日付年") + Text(diary, "営業活動日付月") + Text(diary, "営業活動日付日");
    const QString start = Text(diary, "開始時刻時") + ":" + Text(diary, "開始時刻分");
    const QString end = Text(diary, "終了時刻時") + ":" + Text(diary, "終了時刻分");
    const QStringList ends = StoredEnds(diary, staff, date, start);
    if (ends.isEmpty()) return std::nullopt;
    return SlotIdentity(date, start, ends.contains(end) ? end : ends.first(), staff);
}

QString WriteWithPapers(DiaryContext& diary, Carry::Kind kind, const QString& from, const QString& to,
                        const std::function<bool()>& write) {
    // What didn't come as far as this slot yet would be left on the way.
    for (Carry& earlier : diary.papers.Unfinished()) {
        if (earlier.to != from) continue;
        Settle(diary, earlier);
        if (!earlier.file.isEmpty()) return WordsOfFolder(FileFault::NoFolder);
    }
    auto carry = diary.papers.Plan(kind, kProgramId, from, to);
    if (!carry) return QStringLiteral("付属書類を読めません");
    if (const FileFault fault = diary.papers.FaultOfFolder(*carry); fault != FileFault::None)
        return WordsOfFolder(fault);
    WriteDown(diary, *carry);
    const bool ran = write();
    // A statement that failed may have run all the same, on a server that was lost with its answer.
    if (!ran && carry->file.isEmpty()) return {};
    const QString notice = Notice(*carry, Settle(diary, *carry));
    if (ran && !notice.isEmpty()) diary.host.Tell(notice);
    return {};
}

std::vector<Carry> NotePapersOfReplaced(DiaryContext& diary) {
    const session::SessionContext& key = diary.session;
    const QString to = SlotIdentity(key.SlotDate, key.StartTime, key.EndTime, key.StaffCode);
    QStringList replaced;
    if (!key.NewSlotMode)
        for (const QString& end : StoredEnds(diary, key.StaffCode, key.SlotDate, key.StartTime))
            replaced << SlotIdentity(key.SlotDate, key.StartTime, end, key.StaffCode);
    // Of an earlier save only the deletion came through, or the papers couldn't follow: this one takes them.
    std::vector<Carry> earlier;
    for (Carry& carry : diary.papers.Unfinished()) {
        if (!IdentityParts(carry.to).SameStart(IdentityParts(to))) continue;
        Settle(diary, carry);
        if (carry.file.isEmpty() || carry.kind != Carry::Kind::Replace) continue;
        replaced << carry.from;
        earlier.push_back(carry);
    }
    replaced.removeDuplicates();
    replaced.removeAll(to);
    std::vector<Carry> carries;
    for (const QString& from : replaced) {
        auto carry = diary.papers.Plan(Carry::Kind::Replace, kProgramId, from, to);
        if (!carry || carry->numbers.empty()) continue;
        WriteDown(diary, *carry);
        carries.push_back(std::move(*carry));
    }
    for (Carry& carry : earlier) {
        const bool taken = std::any_of(carries.begin(), carries.end(),
                                       [&carry](const Carry& other) { return other.from == carry.from; });
        if (taken || carry.from == to) diary.papers.Drop(carry);
    }
    return carries;
}

void PapersFollow(DiaryContext& diary, std::vector<Carry>& carries) {
    for (Carry& carry : carries) {
        const QString notice = Notice(carry, Settle(diary, carry));
        if (notice.isEmpty()) continue;
        diary.result.Tell(notice);
        if (!carry.file.isEmpty()) diary.result.Tell(QStringLiteral("付属書類の移動は次の起動時に続けます。"));
    }
}

void FinishPapers(DiaryContext& diary) {
    std::vector<Carry> unfinished = diary.papers.Unfinished();
    // A run with a slot key closes behind its save, before anybody has read what that left undone.
    PapersFollow(diary, unfinished);
    if (!unfinished.empty()) ShowAttachments(diary);
}

}  // namespace diary
