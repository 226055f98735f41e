#include "diary/typed_content.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "diary/commands.h"
#include "diary/focus_gate.h"
#include "diary/painting.h"
#include "diary/text_items.h"
#include "items/text_rules.h"

namespace diary {

using session::SessionContext;

namespace {

struct KeyText {
    const char* name;
    QString SessionContext::*field;
};

const KeyText kKeyTexts[] = {{"SlotDate", &SessionContext::SlotDate},       {"SlotYear", &SessionContext::SlotYear},
                             {"SlotMonth", &SessionContext::SlotMonth},     {"SlotDay", &SessionContext::SlotDay},
                             {"StartTime", &SessionContext::StartTime},     {"StartHour", &SessionContext::StartHour},
                             {"StartMinute", &SessionContext::StartMinute}, {"EndTime", &SessionContext::EndTime},
                             {"EndHour", &SessionContext::EndHour},         {"EndMinute", &SessionContext::EndMinute},
                             {"StaffCode", &SessionContext::StaffCode}};

const SlotText kFurtherTexts[] = {
    {"営業活動曜日", &ActivitySlot::営業活動曜日}, {"営業活動摘要", &ActivitySlot::営業活動摘要},
    {"承認日付", &ActivitySlot::承認日付},         {"承認者コード", &ActivitySlot::承認者コード},
    {"登録日付", &ActivitySlot::登録日付},         {"更新日付", &ActivitySlot::更新日付}};

struct SlotNumber {
    const char* name;
    int ActivitySlot::*field;
};

const SlotNumber kNumbers[] = {
    {"発信区分", &ActivitySlot::発信区分},     {"応対方法", &ActivitySlot::応対方法},
    {"要件分類", &ActivitySlot::要件分類},     {"対応分類", &ActivitySlot::対応分類},
    {"相手先区分", &ActivitySlot::相手先区分}, {"相手先名称入力区分", &ActivitySlot::相手先名称入力区分},
    {"承認区分", &ActivitySlot::承認区分}};

template <typename Visit>
void ForEachSlotText(const Visit& visit) {
    for (const SlotText& text : kStaffTexts)
        visit(text);
    for (const SlotText& text : kPartyTexts)
        visit(text);
    for (const SlotText& text : kFurtherTexts)
        visit(text);
}

/// The item that is being typed into: its text hasn't reached the slot yet. Null when there is none.
const screen::Control* ItemUnderWay(const DiaryContext& diary) {
    const screen::Control* item = diary.form.Focused();
    if (!item || !item->IsEntry() || item->readOnly) return nullptr;
    const auto painted = PaintedText(diary, item->Name());
    return painted && *painted != item->RawText() ? item : nullptr;
}

QJsonObject ToJson(const DiaryContext& diary) {
    QJsonObject json;
    for (const KeyText& text : kKeyTexts)
        json[QString::fromUtf8(text.name)] = diary.session.*text.field;
    ForEachSlotText([&](const SlotText& text) { json[QString::fromUtf8(text.name)] = diary.slot.*text.field; });
    for (const SlotNumber& number : kNumbers)
        json[QString::fromUtf8(number.name)] = diary.slot.*number.field;
    QJsonArray documents;
    for (const DocumentLink& link : diary.slot.documents)
        documents.append(QJsonArray{link.新規区分, link.事業所コード, link.番号基準日付, link.No});
    json["documents"] = documents;
    json["NewSlotMode"] = diary.session.NewSlotMode;
    json["InputHappened"] = diary.state.InputHappened;
    json["LoadedSlotDate"] = diary.state.LoadedSlotDate;
    const LoadedRow& loaded = diary.state.Loaded;
    json["Loaded"] = QJsonArray{loaded.担当者コード, loaded.日付,     loaded.開始時刻, loaded.終了時刻,
                                loaded.登録日付,     loaded.更新日付, loaded.ユーザID};
    if (const screen::Control* item = ItemUnderWay(diary)) {
        json["item"] = item->Name();
        json["text"] = item->RawText();
    }
    return json;
}

void FromJson(DiaryContext& diary, const QJsonObject& json) {
    for (const KeyText& text : kKeyTexts)
        diary.session.*text.field = json[QString::fromUtf8(text.name)].toString();
    ForEachSlotText([&](const SlotText& text) {
        const QString name = QString::fromUtf8(text.name);
        const QString kept = json[name].toString();
        diary.slot.*text.field = IsNumberText(name) ? items::WithoutQuotes(kept) : kept;
    });
    for (const SlotNumber& number : kNumbers)
        diary.slot.*number.field = json[QString::fromUtf8(number.name)].toInt();
    const QJsonArray documents = json["documents"].toArray();
    for (std::size_t kind = 0; kind < diary.slot.documents.size(); ++kind) {
        const QJsonArray link = documents[static_cast<qsizetype>(kind)].toArray();
        diary.slot.documents[kind] = {link[0].toInt(), link[1].toString(), link[2].toString(), link[3].toString()};
    }
    diary.session.NewSlotMode = json["NewSlotMode"].toBool();
    diary.state.InputHappened = json["InputHappened"].toBool();
    diary.state.LoadedSlotDate = json["LoadedSlotDate"].toString();
    const QJsonArray loaded = json["Loaded"].toArray();
    diary.state.Loaded = {loaded[0].toString(), loaded[1].toString(), loaded[2].toString(), loaded[3].toString(),
                          loaded[4].toString(), loaded[5].toString(), loaded[6].toString()};
}

void Restore(DiaryContext& diary, const QJsonObject& json) {
    FromJson(diary, json);
    PaintScreen(diary);
    RefreshCommands(diary);
    RefreshScreen(diary);
    const QString item = json["item"].toString();
    screen::Control* control = item.isEmpty() ? nullptr : diary.form.Find(item);
    FocusControl(diary, control ? *control : *diary.state.FirstEntryControl);
    if (control) control->SetText(json["text"].toString());
    KeepTyped(diary);
}

bool BelongsToSlot(const QJsonObject& json, const SessionContext& session) {
    return json["StaffCode"].toString() == session.StaffCode && json["SlotDate"].toString() == session.SlotDate &&
           json["StartTime"].toString() == session.StartTime;
}

}  // namespace

bool InputUnderWay(const DiaryContext& diary) {
    return diary.state.InputHappened || ItemUnderWay(diary);
}

void KeepTyped(DiaryContext& diary) {
    if (diary.host.Ended()) return;
    if (!InputUnderWay(diary)) {
        ForgetTyped(diary);
        return;
    }
    const QByteArray content = QJsonDocument(ToJson(diary)).toJson(QJsonDocument::Compact);
    if (content == diary.state.KeptContent) return;
    diary.state.KeptContent = content;
    if (diary.typedFile.Write(content) || diary.state.KeepingFailed) return;
    diary.state.KeepingFailed = true;
    diary.log.WriteErrorHistory(QStringLiteral("入力内容を控えられません。"));
}

void ForgetTyped(DiaryContext& diary) {
    diary.typedFile.Remove();
    diary.state.KeptContent.clear();
}

void SetTypedAside(DiaryContext& diary) {
    diary.typedFile.SetAside();
    diary.state.KeptContent.clear();
}

void OfferTyped(DiaryContext& diary) {
    const auto wanted = [&diary](const QByteArray& content) {
        const QJsonDocument document = QJsonDocument::fromJson(content);
        return document.isObject() && (!diary.session.SlotKeyGiven || BelongsToSlot(document.object(), diary.session));
    };
    while (const auto leftover = diary.typedFile.TakeLeftover(wanted)) {
        const screen::Button answer = diary.host.Ask({screen::kProgramTitle,
                                                      QStringLiteral("前回の入力内容が残っています。復元しますか？"),
                                                      {screen::Button::Yes, screen::Button::No},
                                                      screen::Button::Yes});
        if (diary.host.Ended()) return;
        if (answer == screen::Button::Yes) Restore(diary, QJsonDocument::fromJson(leftover->content).object());
        diary.typedFile.Drop(*leftover);
        if (answer == screen::Button::Yes) return;
    }
}

}  // namespace diary
