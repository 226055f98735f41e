#include "diary/typed_content.h"

#include <QJsonDocument>

#include "diary/kept_inputs.h"
#include "diary/kept_list.h"
#include "diary/painting.h"
#include "diary/slot_input.h"

namespace diary {

using session::SessionContext;

namespace {

using Leftover = platform::KeptFiles::Entry;

/// The item that is being typed into: its text hasn't reached the slot yet. Null when there is none.
const screen::Control* ItemUnderWay(const DiaryContext& diary) {
    const screen::Control* item = diary.form.Focused();
    if (!item || !item->IsEntry() || item->readOnly) return nullptr;
    const auto painted = PaintedText(diary, item->Name());
    return painted && *painted != item->RawText() ? item : nullptr;
}

QJsonObject Content(const Leftover& leftover) {
    return QJsonDocument::fromJson(leftover.text).object();
}

void Restore(DiaryContext& diary, const QJsonObject& json) {
    PutInputOnScreen(diary, json);
    const QJsonArray loaded = json["loaded"].toArray();
    diary.state.Loaded = {loaded[0].toString(), loaded[1].toString(), loaded[2].toString(), loaded[3].toString(),
                          loaded[4].toString(), loaded[5].toString(), loaded[6].toString()};
    diary.state.Replacing = json["replacing"].toArray();
    KeepTyped(diary);
}

bool BelongsToSlot(const QJsonObject& json, const SessionContext& session) {
    return json["StaffCode"].toString() == session.StaffCode && json["SlotDate"].toString() == session.SlotDate &&
           json["StartTime"].toString() == session.StartTime;
}

/// True when the run ended behind the INSERT of its save.
bool IsStored(const DiaryContext& diary, const QJsonObject& input) {
    if (input.contains("item")) return false;
    const QJsonArray rows = RowsAtStart(diary, input);
    return std::any_of(rows.begin(), rows.end(),
                       [&input](const QJsonValue& row) { return SameInput(input, InputOfRow(row.toObject())); });
}

/// Rows that a broken-off save had taken out of the table, and that nothing has taken the place of.
QJsonArray LostRows(const DiaryContext& diary, const QJsonObject& input) {
    const QJsonArray rows = input["replacing"].toArray();
    return rows.isEmpty() || !RowsAtStart(diary, InputOfRow(rows.first().toObject())).isEmpty() ? QJsonArray() : rows;
}

void PutBackLostRows(DiaryContext& diary, const QJsonObject& input) {
    for (const QJsonValue& row : LostRows(diary, input)) {
        if (diary.data.ExecuteMain(RowStatement(row.toObject()), true))
            diary.result.Tell(QStringLiteral("中断された修正の元の枠を戻しました。"));
        else
            KeepRows(diary, {row}, QStringLiteral("修正前の枠"));
    }
}

/// What is left is the newest at the front.
std::vector<Leftover> LeftoversToAskAbout(DiaryContext& diary) {
    const auto wanted = [&diary](const QByteArray& text) {
        const QJsonDocument document = QJsonDocument::fromJson(text);
        return document.isObject() && (!diary.session.SlotKeyGiven || BelongsToSlot(document.object(), diary.session));
    };
    std::vector<Leftover> leftovers = diary.kept.TakeLeftovers(wanted);
    std::erase_if(leftovers, [&diary](const Leftover& leftover) {
        const QJsonObject input = Content(leftover);
        if (!IsStored(diary, input)) return false;
        KeepRows(diary, input["replacing"].toArray(), QStringLiteral("修正前の枠"));
        diary.kept.DropLeftover(leftover.id);
        return true;
    });
    return leftovers;
}

}  // namespace

bool InputUnderWay(const DiaryContext& diary) {
    return diary.state.InputHappened || ItemUnderWay(diary);
}

bool KeepTyped(DiaryContext& diary) {
    if (diary.host.Ended()) return true;
    if (!InputUnderWay(diary)) {
        ForgetTyped(diary);
        return true;
    }
    QJsonObject json = InputOnScreen(diary);
    if (const screen::Control* item = ItemUnderWay(diary)) {
        json["item"] = item->Name();
        json["text"] = item->RawText();
    }
    const LoadedRow& loaded = diary.state.Loaded;
    json["loaded"] = QJsonArray{loaded.担当者コード, loaded.日付,     loaded.開始時刻, loaded.終了時刻,
                                loaded.登録日付,     loaded.更新日付, loaded.ユーザID};
    if (!diary.state.Replacing.isEmpty()) json["replacing"] = diary.state.Replacing;
    const QByteArray content = QJsonDocument(json).toJson(QJsonDocument::Compact);
    if (content == diary.state.KeptContent) return true;
    const bool kept = diary.kept.Write(content);
    if (kept)
        diary.state.KeptContent = content;
    else if (!diary.state.KeepingFailed)
        TellKeepingFailed(diary);
    diary.state.KeepingFailed = !kept;
    return kept;
}

void OfferTyped(DiaryContext& diary) {
    const std::vector<Leftover> leftovers = LeftoversToAskAbout(diary);
    for (std::size_t place = 1; place < leftovers.size(); ++place) {
        const QJsonObject input = Content(leftovers[place]);
        PutBackLostRows(diary, input);
        KeepInput(diary, input, QStringLiteral("前回の入力"));
        diary.kept.DropLeftover(leftovers[place].id);
    }
    if (leftovers.empty()) return;
    const screen::Button answer = diary.host.Ask({screen::kProgramTitle,
                                                  QStringLiteral("前回の入力内容が残っています。復元しますか？"),
                                                  {screen::Button::Yes, screen::Button::No},
                                                  screen::Button::Yes});
    if (diary.host.Ended()) return;
    const QJsonObject input = Content(leftovers.front());
    if (answer == screen::Button::Yes) {
        KeepRows(diary, LostRows(diary, input), QStringLiteral("修正前の枠"));
        Restore(diary, input);
    } else {
        PutBackLostRows(diary, input);
    }
    diary.kept.DropLeftover(leftovers.front().id);
}

}  // namespace diary
