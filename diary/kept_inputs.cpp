#include "diary/kept_inputs.h"

#include <QJsonDocument>
#include <algorithm>

#include "diary/focus_gate.h"
#include "diary/slot_input.h"
#include "items/display_forms.h"

namespace diary {

namespace {

constexpr int kMostKept = 50;
constexpr int kDaysKept = 14;

/// True when it came from the list and stands there as it is.
bool IsPickedUnchanged(const DiaryContext& diary, const QJsonObject& input) {
    const std::vector<platform::KeptFiles::Entry> list = diary.kept.List();
    return std::any_of(list.begin(), list.end(), [&](const platform::KeptFiles::Entry& entry) {
        return entry.id == diary.state.PickedKept && SameInput(QJsonDocument::fromJson(entry.text).object(), input);
    });
}

}  // namespace

void PruneKept(DiaryContext& diary) {
    diary.kept.Prune(items::StampText(diary.clock.Now().addDays(-kDaysKept)), kMostKept);
}

QString KeepInput(DiaryContext& diary, const QJsonObject& input, const QString& reason) {
    const QDateTime now = diary.clock.Now();
    const std::vector<platform::KeptFiles::Entry> before = diary.kept.List();
    QJsonObject kept = input;
    kept.remove("replacing");
    kept.remove("loaded");
    kept["reason"] = reason;
    kept["moment"] = items::StampText(now);
    const QString id = diary.kept.Keep(items::StampText(now), QJsonDocument(kept).toJson(QJsonDocument::Compact));
    if (id.isEmpty()) {
        TellKeepingFailed(diary);
        return id;
    }
    for (const platform::KeptFiles::Entry& entry : before)
        if (SameInput(QJsonDocument::fromJson(entry.text).object(), input)) diary.kept.Drop(entry.id);
    PruneKept(diary);
    return id;
}

QStringList KeepRows(DiaryContext& diary, const QJsonArray& rows, const QString& reason) {
    QStringList ids;
    for (const QJsonValue& row : rows)
        ids << KeepInput(diary, InputOfRow(row.toObject()), reason);
    return ids;
}

void ForgetTyped(DiaryContext& diary) {
    diary.kept.Remove();
    diary.state.KeptContent.clear();
    diary.state.Replacing = {};
}

void TellKeepingFailed(DiaryContext& diary) {
    diary.result.Tell(QStringLiteral("入力内容を控えられません。"));
    if (!std::exchange(diary.state.KeepingFailed, true))
        diary.log.WriteErrorHistory(QStringLiteral("入力内容を控えられません。"));
}

bool HoldsInput(const DiaryContext& diary) {
    return diary.state.InputHappened && !SameContent(diary.slot, diary.state.CameAs);
}

void SettleKey(DiaryContext& diary) {
    const screen::Control* focused = diary.form.Focused();
    if (!focused || GateOrder(focused->Name()) > kLastKeyOrder) diary.state.SettledKey = KeyOnScreen(diary);
}

bool KeepWhatLeaves(DiaryContext& diary, const QString& reason) {
    if (!HoldsInput(diary)) return true;
    QJsonObject input = InputOnScreen(diary);
    const QJsonObject& key = diary.state.SettledKey;
    for (auto part = key.begin(); part != key.end(); ++part)
        input[part.key()] = *part;
    if (!IsPickedUnchanged(diary, input)) {
        if (KeepInput(diary, input, reason).isEmpty()) return false;
        diary.result.Tell(QStringLiteral("入力中の内容を控えました（Ctrl+F2）。"));
    }
    diary.state.InputHappened = false;
    ForgetTyped(diary);
    return true;
}

TypedTextGuard::~TypedTextGuard() {
    const auto lost = [this](const SlotText& text) {
        const QString& before = before_.*text.field;
        return !before.isEmpty() && diary_.slot.*text.field != before &&
               diary_.state.TypedTexts.contains(QString::fromUtf8(text.name));
    };
    if (std::none_of(kPartyTexts.begin(), kPartyTexts.end(), lost)) return;
    const ActivitySlot now = std::exchange(diary_.slot, before_);
    const QJsonObject input = InputOnScreen(diary_);
    diary_.slot = now;
    if (!KeepInput(diary_, input, QStringLiteral("マスタの内容に置換")).isEmpty())
        diary_.result.Tell(QStringLiteral("入力した相手先を控えました（Ctrl+F2）。"));
    diary_.state.TypedTexts.clear();
}

}  // namespace diary
