#include "diary/counterparty.h"

#include "diary/kept_inputs.h"
#include "diary/masked_item.h"
#include "diary/painting.h"
#include "items/text_rules.h"

namespace diary {

using items::DigitsOnly;

namespace {

struct PartyMaster {
    const char* table;
    const char* contactTable;
    const char* contactKey;
};

/// The masters by kind, from 1.
const PartyMaster kMasters[] = {{"M得意先", "M得意先御担当者", "得意先コード"},
                                {"M納品先", "M納品先御担当者", "納品先コード"},
                                {"M仕入先", "M仕入先御担当者", "仕入先コード"},
                                {"Mメーカ", "Mメーカ御担当者", "メーカコード"},
                                {"M対応先", "M対応先御担当者", "対応先コード"}};

const PartyMaster* MasterOf(int kind) {
    return kind >= 1 && kind <= kLastCounterpartyKind ? &kMasters[kind - 1] : nullptr;
}

void Change(DiaryContext& diary, QString& field, const QString& value) {
    if (field == value) return;
    field = value;
    diary.state.InputHappened = true;
}

/// Digits: a number that has some; Number: one that may be empty.
enum class TakeRule { Plain, NonEmpty, Digits, Number };

void Take(DiaryContext& diary, const store::Recordset& row, const char* column, QString& field, TakeRule rule) {
    const auto value = row.Value(QString::fromUtf8(column));
    if (!value) return;
    if (rule == TakeRule::NonEmpty && value->isEmpty()) return;
    if (rule == TakeRule::Digits && DigitsOnly(*value).isEmpty()) return;
    const bool number = rule == TakeRule::Digits || rule == TakeRule::Number;
    Change(diary, field, number ? items::WithoutQuotes(*value) : *value);
}

/// What a party's row fills.
struct Copy {
    const char* column;
    QString ActivitySlot::*field;
    TakeRule rule;
};

const Copy kCopies[] = {{"コード", &ActivitySlot::相手先コード, TakeRule::Plain},
                        {"略称", &ActivitySlot::相手先略称, TakeRule::NonEmpty},
                        {"名称A", &ActivitySlot::相手先名称A, TakeRule::NonEmpty},
                        {"名称B", &ActivitySlot::相手先名称B, TakeRule::NonEmpty},
                        {"郵便番号", &ActivitySlot::相手先郵便番号, TakeRule::Digits},
                        {"住所A", &ActivitySlot::相手先住所A, TakeRule::NonEmpty},
                        {"住所B", &ActivitySlot::相手先住所B, TakeRule::NonEmpty},
                        {"住所C", &ActivitySlot::相手先住所C, TakeRule::NonEmpty},
                        {"電話", &ActivitySlot::相手先電話, TakeRule::Digits},
                        {"FAX", &ActivitySlot::相手先FAX, TakeRule::Digits},
                        {"御担当者名", &ActivitySlot::相手先御担当者名, TakeRule::NonEmpty},
                        {"担当者電話", &ActivitySlot::相手先御担当者電話, TakeRule::Digits}};

/// A pick from the combined list left its row key: "C", the kind, the code. A key of another code was left by a pick
/// that changed nothing, and says nothing of this one.
void TakePickedKind(DiaryContext& diary, const QString& code) {
    QString& condition = diary.pick.ListCondition;
    if (!condition.startsWith(u'C')) return;
    if (condition.mid(2) == code) diary.slot.相手先区分 = items::Val16(condition.mid(1, 1));
    condition.clear();
}

}  // namespace

QString PartyTable(int kind) {
    const PartyMaster* master = MasterOf(kind);
    return master ? QString::fromUtf8(master->table) : QString();
}

QString ContactTable(int kind) {
    const PartyMaster* master = MasterOf(kind);
    return master ? QString::fromUtf8(master->contactTable) : QString();
}

QString ContactKeyColumn(int kind) {
    const PartyMaster* master = MasterOf(kind);
    return master ? QString::fromUtf8(master->contactKey) : QString();
}

QString PartyKey(const ActivitySlot& slot) {
    return QString::number(slot.相手先区分) + slot.相手先コード;
}

std::unique_ptr<store::Recordset> ResolveCounterparty(DiaryContext& diary, const QString& code) {
    std::unique_ptr<store::Recordset> row;
    const QString from = PartyTable(diary.slot.相手先区分);
    const QString sql = "SELECT *" + (from.isEmpty() ? from : " FROM " + from) + " WHERE コード = '" + code + "'";
    return diary.data.OpenMainRecordset(row, sql) ? std::move(row) : nullptr;
}

void TakeCounterparty(DiaryContext& diary, const store::Recordset& row) {
    for (const Copy& copy : kCopies)
        Take(diary, row, copy.column, diary.slot.*copy.field, copy.rule);
    const auto typing = session::NumberColumn(row, QStringLiteral("名称入力区分"));
    if (typing && *typing != diary.slot.相手先名称入力区分) {
        diary.slot.相手先名称入力区分 = *typing;
        diary.state.InputHappened = true;
    }
}

void ForgetCounterparty(DiaryContext& diary) {
    for (const Copy& copy : kCopies)
        Change(diary, diary.slot.*copy.field, QString());
    diary.slot.相手先名称入力区分 = ActivitySlot().相手先名称入力区分;
}

void CounterpartyCodeLeft(DiaryContext& diary) {
    const auto code = ChangedCode(diary, "相手先コード", items::ZeroMask(6), diary.slot.相手先コード);
    if (!code) return;
    diary.state.InputHappened = true;
    if (code->isEmpty()) {
        // Name and address stay: the slot then has a party that was typed in.
        diary.slot.相手先コード.clear();
        return;
    }
    const TypedTextGuard guard(diary);
    TakePickedKind(diary, *code);
    if (diary.slot.相手先区分 == 0) diary.slot.相手先区分 = kLastCounterpartyKind;
    if (const auto row = ResolveCounterparty(diary, *code)) {
        TakeCounterparty(diary, *row);
        diary.state.NoticeText.clear();
    } else {
        diary.state.NoticeText = kNotFound;
    }
    PaintScreen(diary);
    diary.ShowNotice(diary.state.NoticeText);
}

void PostcodeLeft(DiaryContext& diary) {
    const QString text = diary.Item("相手先郵便番号").Text();
    QString& field = diary.slot.相手先郵便番号;
    if (DigitsOnly(text) == DigitsOnly(field)) return;
    diary.state.InputHappened = true;
    diary.state.TypedTexts.insert(QStringLiteral("相手先郵便番号"));
    std::unique_ptr<store::Recordset> row;
    if (DigitsOnly(text).isEmpty()) {
        field.clear();
        diary.state.NoticeText.clear();
    } else if (diary.data.OpenMainRecordset(row, "SELECT * FROM M郵便番号 WHERE 郵便番号 = '" + text + "'")) {
        field = items::WithoutQuotes(row->Value(QStringLiteral("郵便番号")).value_or(field));
        // An address that was typed before stays.
        ActivitySlot& slot = diary.slot;
        if (slot.相手先住所A.trimmed().isEmpty()) session::TakeColumn(*row, QStringLiteral("住所A"), slot.相手先住所A);
        if (slot.相手先住所B.trimmed().isEmpty()) session::TakeColumn(*row, QStringLiteral("住所B"), slot.相手先住所B);
        diary.state.NoticeText.clear();
    } else {
        diary.state.NoticeText = kNotFound;
    }
    PaintScreen(diary);
    diary.ShowNotice(diary.state.NoticeText);
}

std::unique_ptr<store::Recordset> ResolveContact(DiaryContext& diary, const QString& code) {
    QString sql = QStringLiteral("SELECT TOP 1 *");
    // Without a kind there is no master to look in: the statement then fails and is noted as any other.
    if (const PartyMaster* master = MasterOf(diary.slot.相手先区分))
        sql += " FROM " + QString::fromUtf8(master->contactTable) + " WHERE " + master->contactKey + " = '" +
               diary.slot.相手先コード + "'";
    sql += " AND 御担当者コード = '" + code + "'";
    std::unique_ptr<store::Recordset> row;
    return diary.data.OpenMainRecordset(row, sql) ? std::move(row) : nullptr;
}

void TakeContact(DiaryContext& diary, const store::Recordset& row) {
    Take(diary, row, "御担当者コード", diary.slot.相手先御担当者コード, TakeRule::Plain);
    Take(diary, row, "氏名", diary.slot.相手先御担当者名, TakeRule::Plain);
    Take(diary, row, "電話", diary.slot.相手先御担当者電話, TakeRule::Number);
    diary.state.ContactOf = PartyKey(diary.slot);
}

void ForgetContact(DiaryContext& diary) {
    for (QString ActivitySlot::*field :
         {&ActivitySlot::相手先御担当者コード, &ActivitySlot::相手先御担当者名, &ActivitySlot::相手先御担当者電話})
        Change(diary, diary.slot.*field, QString());
}

void ContactCodeLeft(DiaryContext& diary) {
    const QString& held = diary.slot.相手先御担当者コード;
    auto code = ChangedCode(diary, "相手先御担当者コード", items::ZeroMask(5), held);
    // Two parties may each have a contact of that code: picked for the one, it isn't the other's any more.
    const bool ofFormerParty = diary.state.ContactOf != PartyKey(diary.slot);
    if (!code && diary.state.PickingContact && ofFormerParty && !held.isEmpty()) code = held;
    if (!code) return;
    diary.state.InputHappened = true;
    const TypedTextGuard guard(diary);
    if (code->isEmpty()) {
        diary.slot.相手先御担当者コード.clear();
    } else if (const auto row = ResolveContact(diary, *code)) {
        TakeContact(diary, *row);
        diary.state.NoticeText.clear();
    } else {
        diary.slot.相手先御担当者コード.clear();
        diary.state.NoticeText = kNotFound;
    }
    PaintScreen(diary);
    diary.ShowNotice(diary.state.NoticeText);
}

}  // namespace diary
