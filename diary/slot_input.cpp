#include "diary/slot_input.h"

#include <QJsonArray>

#include "diary/date_time_entry.h"
#include "diary/slot_row.h"
#include "diary/slot_statements.h"
#include "diary/text_items.h"
#include "items/text_rules.h"
#include "session/insert_builder.h"

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
                             {"StaffCode", &SessionContext::StaffCode},     {"SiteCode", &SessionContext::SiteCode}};

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

QString Name(const char* name) {
    return QString::fromUtf8(name);
}

void AddSlot(QJsonObject& json, const ActivitySlot& slot) {
    ForEachSlotText([&](const SlotText& text) { json[Name(text.name)] = slot.*text.field; });
    for (const SlotNumber& number : kNumbers)
        json[Name(number.name)] = slot.*number.field;
    QJsonArray documents;
    for (const DocumentLink& link : slot.documents)
        documents.append(QJsonArray{link.新規区分, link.事業所コード, link.番号基準日付, link.No});
    json["documents"] = documents;
}

ActivitySlot SlotOf(const QJsonObject& json) {
    ActivitySlot slot;
    ForEachSlotText([&](const SlotText& text) {
        const QString kept = json[Name(text.name)].toString();
        slot.*text.field = IsNumberText(Name(text.name)) ? items::WithoutQuotes(kept) : kept;
    });
    for (const SlotNumber& number : kNumbers)
        slot.*number.field = json[Name(number.name)].toInt();
    const QJsonArray documents = json["documents"].toArray();
    for (std::size_t kind = 0; kind < slot.documents.size(); ++kind) {
        const QJsonArray link = documents[static_cast<qsizetype>(kind)].toArray();
        slot.documents[kind] = {link[0].toInt(), link[1].toString(), link[2].toString(), link[3].toString()};
    }
    return slot;
}

void LookUpName(DiaryContext& diary, const char* table, const char* column, const QString& code, QString& name) {
    if (code.isEmpty() || !name.isEmpty()) return;
    const auto row = diary.data.ReadMainUntold("SELECT " + Name(column) + " FROM " + Name(table) + " WHERE コード = '" +
                                               items::EscapeSqlText(code) + "'");
    if (row && !row->Eof()) session::TakeColumn(*row, Name(column), name);
}

store::Recordset AsRecordset(const QJsonObject& row) {
    store::Recordset::Row values;
    for (const QJsonValue& value : row)
        values.push_back(value.isString() ? std::optional(value.toString()) : std::nullopt);
    return store::Recordset(row.keys(), {values});
}

QString WithoutEndBlanks(QString text) {
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

}  // namespace

QJsonObject KeyOnScreen(const DiaryContext& diary) {
    QJsonObject key;
    for (const KeyText& text : kKeyTexts)
        key[Name(text.name)] = diary.session.*text.field;
    for (const SlotText& text : kStaffTexts)
        key[Name(text.name)] = diary.slot.*text.field;
    return key;
}

QJsonObject InputOnScreen(const DiaryContext& diary) {
    QJsonObject json = KeyOnScreen(diary);
    AddSlot(json, diary.slot);
    return json;
}

void TakeInput(DiaryContext& diary, const QJsonObject& input) {
    const QString site = diary.session.SiteCode;
    for (const KeyText& text : kKeyTexts)
        diary.session.*text.field = input[Name(text.name)].toString();
    if (diary.session.SiteCode.isEmpty()) diary.session.SiteCode = site;
    diary.slot = SlotOf(input);
    NormalizeSlotDate(diary);
    LookUpName(diary, "M担当者", "氏名", diary.session.StaffCode, diary.slot.担当者名);
    LookUpName(diary, "M部門", "名称", diary.slot.部門コード, diary.slot.部門名);
    LookUpName(diary, "Mセクション", "名称", diary.slot.セクションコード, diary.slot.セクション名);
}

QJsonObject RowToKeep(const store::Recordset& row) {
    QJsonObject kept;
    for (const QString& column : row.Columns()) {
        const auto value = row.Value(column);
        kept[column] = value ? QJsonValue(*value) : QJsonValue();
    }
    return kept;
}

QJsonObject InputOfRow(const QJsonObject& row) {
    const auto text = [&row](const char* column) { return row[Name(column)].toString(); };
    const QString date = text("日付"), start = text("開始時刻"), end = text("終了時刻");
    QJsonObject json{{"SlotDate", date},
                     {"SlotYear", date.mid(0, 4)},
                     {"SlotMonth", date.mid(4, 2)},
                     {"SlotDay", date.mid(6, 2)},
                     {"StartTime", start},
                     {"StartHour", start.mid(0, 2)},
                     {"StartMinute", start.mid(3, 2)},
                     {"EndTime", end},
                     {"EndHour", end.mid(0, 2)},
                     {"EndMinute", end.mid(3, 2)},
                     {"StaffCode", text("担当者コード")},
                     {"SiteCode", text("事業所コード")}};
    ActivitySlot slot = SlotOfRow(AsRecordset(row));
    slot.部門コード = text("部門コード");
    slot.セクションコード = text("セクションコード");
    AddSlot(json, slot);
    return json;
}

QJsonArray RowsAtStart(const DiaryContext& diary, const QJsonObject& key) {
    const auto part = [&key](const char* name) { return items::EscapeSqlText(key[Name(name)].toString()); };
    QJsonArray rows;
    const auto found = diary.data.ReadMainUntold(
        kSelectDetail + StartKeyCondition(part("StaffCode"), part("SlotDate"), part("StartTime")));
    for (; found && !found->Eof(); found->MoveNext())
        rows.append(RowToKeep(*found));
    return rows;
}

bool SameContent(const ActivitySlot& a, const ActivitySlot& b) {
    for (const SlotText& text : kPartyTexts)
        if (a.*text.field != b.*text.field) return false;
    for (std::size_t kind = 0; kind < a.documents.size(); ++kind)
        if (a.documents[kind].No != b.documents[kind].No) return false;
    return a.営業活動摘要 == b.営業活動摘要;
}

bool SameInput(const QJsonObject& a, const QJsonObject& b) {
    const auto same = [](const QString& left, const QString& right) {
        return WithoutEndBlanks(left) == WithoutEndBlanks(right);
    };
    for (const char* part :
         {"SlotDate", "StartTime", "EndTime", "StaffCode", "部門コード", "セクションコード", "営業活動摘要"})
        if (!same(a[Name(part)].toString(), b[Name(part)].toString())) return false;
    const ActivitySlot left = SlotOf(a), right = SlotOf(b);
    for (const SlotText& text : kPartyTexts)
        if (!same(left.*text.field, right.*text.field)) return false;
    for (const SlotNumber& number : kNumbers)
        if (left.*number.field != right.*number.field) return false;
    for (std::size_t kind = 0; kind < left.documents.size(); ++kind)
        if (left.documents[kind].No != right.documents[kind].No) return false;
    return true;
}

QString RowStatement(const QJsonObject& row) {
    const session::Table* table = session::FindTable(QStringLiteral("T営業活動明細"));
    session::InsertBuilder insert(table->name);
    for (auto column = row.begin(); column != row.end(); ++column) {
        const auto known = std::find_if(table->columns.begin(), table->columns.end(),
                                        [&column](const session::Column& c) { return c.name == column.key(); });
        const bool number = known != table->columns.end() && known->integer;
        if (!column->isString())
            insert.Bare(column.key(), QStringLiteral("NULL"));
        else if (number)
            insert.Bare(column.key(), QString::number(items::Val16(column->toString())));
        else
            insert.Escaped(column.key(), column->toString());
    }
    return insert.Statement();
}

}  // namespace diary
