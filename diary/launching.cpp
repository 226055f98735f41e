#include "diary/launching.h"

#include <algorithm>

#include "diary/commands.h"
#include "diary/counterparty.h"
#include "diary/kept_inputs.h"
#include "diary/launch_tails.h"
#include "diary/linked_documents.h"
#include "diary/painting.h"
#include "items/display_forms.h"
#include "items/text_rules.h"
#include "suite/sibling_programs.h"

namespace diary {

namespace program = suite::program;

namespace {

constexpr int kPartyAnswer = 6, kContactAnswer = 5, kDocumentAnswer = 19;

const std::array<const char*, session::kDocumentKindCount> kEditorMissing{
    "支払記録プログラムが有りません", "商談記録プログラムが有りません", "問い合わせ記録プログラムが有りません",
    "提案起票プログラムが有りません", "発注起票プログラムが有りません", "成約記録プログラムが有りません"};

LaunchData DataOf(const DiaryContext& diary) {
    return {diary.session, diary.slot};
}

/// Starts a program and waits for its answer. Nothing when it can't be started, of which the user was told `missing`
/// then, and when it gave none.
std::optional<QString> Ask(DiaryContext& diary, const QString& sibling, const QString& tail, const QString& missing) {
    const QString since = items::StampText(diary.clock.Now());
    const QString sent = diary.siblings.SendStartLink(diary.form, sibling, tail);
    // A client that the machine ends meanwhile starts nothing any more; the message is of no use then either.
    const auto program = diary.host.Ended()
                             ? nullptr
                             : diary.starter.Start(platform::ProgramFile(diary.session.ProgramFolder, sibling), tail);
    if (!program) {
        diary.siblings.TakeBackStartLink(diary.form, sibling, tail, sent);
        diary.host.Tell(missing);
        return std::nullopt;
    }
    return diary.siblings.WaitForEndLink(diary.form, sibling, tail, since, sent, *program);
}

/// The card of a kind of counterparty, the last one for kinds that have none of their own.
const QString& CardOf(const QStringList& cards, int kind) {
    return cards.at(kind >= 1 && kind <= cards.size() ? kind - 1 : cards.size() - 1);
}

/// Takes the answer over as the document's reference, when it is one. False when it isn't.
bool TakeReference(DocumentLink& link, const QString& answer) {
    if (answer.size() != kDocumentAnswer) return false;
    link.事業所コード = items::Piece(answer, 0, 3);
    link.番号基準日付 = items::Piece(answer, 3, 8);
    link.No = items::Piece(answer, 11, 8);
    return true;
}

/// Reads the slot's document again. False when it is gone; it is off the slot then.
bool RefreshDocument(DiaryContext& diary, std::size_t kind) {
    const DocumentLink link = diary.slot.documents[kind];
    if (const auto row = FetchDocument(diary, kind, link.事業所コード, link.番号基準日付, link.No)) {
        TakeDocument(diary, kind, *row);
        return true;
    }
    ForgetDocument(diary, kind);
    return false;
}

void ApplyDocumentAnswer(DiaryContext& diary, std::size_t kind, const QString& answer) {
    DocumentLink& link = diary.slot.documents[kind];
    const bool hadOne = !link.No.isEmpty();
    if (!hadOne && !TakeReference(link, answer)) return;
    // A new document changes the slot's reference, and so does a vanished one; one that is still there doesn't.
    const bool found = RefreshDocument(diary, kind);
    if (found != hadOne) diary.state.InputHappened = true;
    PaintScreen(diary);
}

}  // namespace

void LaunchPartyCard(DiaryContext& diary) {
    ActivitySlot& slot = diary.slot;
    const auto answer = Ask(diary, CardOf(program::kPartyCards, slot.相手先区分), PartyCardTail(DataOf(diary)),
                            QStringLiteral("相手先カードプログラムが有りません"));
    if (!answer) return;
    if (const QString code = answer->trimmed(); slot.相手先コード.isEmpty() && code.size() == kPartyAnswer) {
        slot.相手先区分 = kLastCounterpartyKind;
        slot.相手先コード = code;
        diary.state.InputHappened = true;
    }
    if (slot.相手先コード.isEmpty()) return;
    const TypedTextGuard guard(diary);
    if (const auto row = ResolveCounterparty(diary, slot.相手先コード))
        TakeCounterparty(diary, *row);
    else
        ForgetCounterparty(diary);
    PaintScreen(diary);
}

void LaunchContactCard(DiaryContext& diary) {
    ActivitySlot& slot = diary.slot;
    if (slot.相手先区分 == 0 || slot.相手先コード.isEmpty()) return;
    const auto answer = Ask(diary, CardOf(program::kContactCards, slot.相手先区分), ContactCardTail(DataOf(diary)),
                            QStringLiteral("相手先窓口カードプログラムが有りません"));
    if (!answer) return;
    if (const QString code = answer->trimmed(); slot.相手先御担当者コード.isEmpty() && code.size() == kContactAnswer) {
        slot.相手先御担当者コード = code;
        diary.state.InputHappened = true;
    }
    if (slot.相手先御担当者コード.isEmpty()) return;
    const TypedTextGuard guard(diary);
    if (const auto row = ResolveContact(diary, slot.相手先御担当者コード))
        TakeContact(diary, *row);
    else
        ForgetContact(diary);
    PaintScreen(diary);
}

void LaunchCalendar(DiaryContext& diary) {
    Ask(diary, program::k社内暦編集, CalendarTail(DataOf(diary)), QStringLiteral("暦編集プログラムが有りません"));
    if (!diary.host.Ended()) RefreshCommands(diary);
}

void LaunchDocument(DiaryContext& diary, std::size_t kind) {
    const auto answer = Ask(diary, program::kDocumentEditors.at(static_cast<qsizetype>(kind)),
                            DocumentTail(DataOf(diary), kind), QString::fromUtf8(kEditorMissing[kind]));
    if (answer) ApplyDocumentAnswer(diary, kind, *answer);
    if (!diary.host.Ended()) RefreshCommands(diary);
}

}  // namespace diary
