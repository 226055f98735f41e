#include "diary/linked_documents.h"

#include "diary/commands.h"
#include "diary/counterparty.h"
#include "diary/focus_gate.h"
#include "diary/kept_inputs.h"
#include "diary/masked_item.h"
#include "diary/painting.h"
#include "diary/slot_loading.h"
#include "diary/text_items.h"
#include "items/calendar.h"
#include "items/text_rules.h"

namespace diary {

using session::TakeColumn;

namespace {

struct DocumentRules {
    const char* series;        ///< number series that its base dates come from
    const char* nextByButton;  ///< item that takes the focus after a pick
    const char* nextByGesture;
};

const std::array<DocumentRules, session::kDocumentKindCount> kRules{{{"16810", "営業引合No", "営業受注No"},
                                                                     {"16110", "営業引合No", "営業受注No"},
                                                                     {"16130", "営業受注No", "営業受注No"},
                                                                     {"16210", "営業引合No", "営業引合No"},
                                                                     {"16220", "営業引合No", "営業引合No"},
                                                                     {"16140", "営業活動摘要", "営業活動摘要"}}};

QString Word(std::size_t kind) {
    return session::DocumentKinds()[kind];
}
QString Table(std::size_t kind) {
    return "T" + Word(kind);
}
QString NumberColumn(std::size_t kind) {
    return Word(kind) + "No";
}

QString Equals(const QString& table, const QString& column, const QString& value) {
    return table + "." + column + " = '" + value + "'";
}

QString Differs(const QString& column, const QString& value) {
    return " AND T営業活動明細." + column + " <> '" + value + "'";
}

/// 1 when no other slot refers to the document. Only a slot of another person on another day at other times counts as
/// another one; the rest of the suite reads the mark so.
int CountReferences(DiaryContext& diary, std::size_t kind) {
    const DocumentLink& link = diary.slot.documents[kind];
    if (link.No.isEmpty()) return 0;
    const QString detail = QStringLiteral("T営業活動明細");
    const session::SessionContext& key = diary.session;
    std::unique_ptr<store::Recordset> row;
    const QString sql = "SELECT TOP 1 T営業活動明細." + NumberColumn(kind) + " FROM T営業活動明細 WHERE " +
                        Equals(detail, Word(kind) + "事業所コード", link.事業所コード) + " AND " +
                        Equals(detail, Word(kind) + "番号基準日付", link.番号基準日付) + " AND " +
                        Equals(detail, NumberColumn(kind), link.No) + Differs("担当者コード", key.StaffCode) +
                        Differs("日付", key.SlotDate) + Differs("開始時刻", key.StartTime) +
                        Differs("終了時刻", key.EndTime);
    return diary.data.OpenMainRecordset(row, sql) ? 0 : 1;
}

/// A payment or a deal brings its staff group onto an empty screen. True when the slot got a staff member by it.
bool TakeStaff(DiaryContext& diary, const store::Recordset& row) {
    if (!diary.session.StaffCode.isEmpty()) return false;
    TakeColumn(row, QStringLiteral("担当者コード"), diary.session.StaffCode);
    for (const SlotText& text : kStaffTexts)
        TakeColumn(row, QString::fromUtf8(text.name), diary.slot.*text.field);
    return !diary.session.StaffCode.isEmpty();
}

/// A deal brings its party onto a slot that has none.
void TakeParty(DiaryContext& diary, const store::Recordset& row) {
    ActivitySlot& slot = diary.slot;
    if (!slot.相手先略称.isEmpty() || !slot.相手先コード.isEmpty() || !slot.相手先御担当者名.isEmpty()) return;
    TakeColumn(row, QStringLiteral("相手先区分"), slot.相手先区分);
    for (const SlotText& text : kPartyTexts) {
        const QString column = QString::fromUtf8(text.name);
        if (IsNumberText(column) && items::DigitsOnly(row.Value(column).value_or(QString())).isEmpty()) continue;
        TakeText(row, text, slot);
    }
    diary.state.ContactOf = PartyKey(slot);
    TakeColumn(row, QStringLiteral("相手先名称入力区分"), slot.相手先名称入力区分);
}

/// Where a typed or picked number is looked up.
struct Place {
    QString site, baseDate;
};

/// Takes the key that a pick from the list of the kind left, when it is that of the number: "C", the site, the base
/// date, the number. A pick that changed nothing leaves its key behind, and that says nothing of another document.
std::optional<Place> TakePickedPlace(DiaryContext& diary, std::size_t kind, const QString& number) {
    const QString key = diary.pick.ListCondition.trimmed();
    if (diary.state.ListedKind != kind || key.size() != 20 || !key.startsWith(u'C') || key.mid(12) != number)
        return std::nullopt;
    diary.pick.ListCondition.clear();
    return Place{key.mid(1, 3), key.mid(4, 8)};
}

Place PlaceOf(DiaryContext& diary, std::size_t kind, const QString& number) {
    if (const auto picked = TakePickedPlace(diary, kind, number)) return *picked;
    const DocumentLink& link = diary.slot.documents[kind];
    Place place{link.事業所コード, link.番号基準日付};
    if (place.site.isEmpty()) place.site = diary.session.SiteCode;
    if (place.baseDate.isEmpty())
        place.baseDate =
            diary.series.ResolveNumberDate(QString::fromLatin1(kRules[kind].series), diary.session.SlotDate);
    return place;
}

void LookUp(DiaryContext& diary, std::size_t kind, const QString& number) {
    const Place place = PlaceOf(diary, kind, number);
    if (const auto row = FetchDocument(diary, kind, place.site, place.baseDate, number)) {
        TakeDocument(diary, kind, *row);
        diary.state.NoticeText.clear();
    } else {
        ForgetDocument(diary, kind);
        diary.state.NoticeText = kNotFound;
    }
    PaintScreen(diary);
    RefreshCommands(diary);
    diary.ShowNotice(diary.state.NoticeText);
}

/// The enquiry's item does more than the others, each time it is left: without a change it drops the enquiry, and
/// either way the notice goes. Known, and kept.
void FinishEnquiry(DiaryContext& diary, bool changed) {
    if (changed) {
        diary.state.InputHappened = true;
        diary.slot.documents[k営業引合].新規区分 = CountReferences(diary, k営業引合);
    } else {
        diary.session.NewSlotMode = true;
        ForgetDocument(diary, k営業引合);
    }
    PaintScreen(diary);
    diary.ShowNotice(QString());
    RefreshCommands(diary);
}

QString PartyFilter(DiaryContext& diary, std::size_t kind, Gesture gesture) {
    const QString code = diary.slot.相手先コード;
    const int party = diary.slot.相手先区分;
    const QString table = Table(kind);
    if (kind == k案件) {
        if (party != 1 || code.trimmed().isEmpty()) return {};
        return " AND " + Equals(table, QStringLiteral("相手先区分"), QString::number(party)) + " AND " +
               Equals(table, QStringLiteral("相手先コード"), code);
    }
    if (gesture == Gesture::Button) return {};
    if (party == 1 && !code.trimmed().isEmpty()) return " AND " + Equals(table, QStringLiteral("得意先コード"), code);
    return party == 2 ? " AND " + Equals(table, QStringLiteral("納品先コード"), code) : QString();
}

QString ListCondition(DiaryContext& diary, std::size_t kind, Gesture gesture) {
    const auto part = [&diary](const char* item) { return items::Val16(diary.Item(item).Text()); };
    const items::Ymd onScreen = items::PackDate(part("営業活動日付年"), part("営業活動日付月"), part("営業活動日付日"));
    const QString table = Table(kind);
    const QString condition = table + ".番号基準日付 <> '' AND " + table + "." + Word(kind) + "日付 >= '" +
                              items::DateText(items::AddYears(onScreen, -1)) + "'";
    if (kind != k出金) return condition + PartyFilter(diary, kind, gesture);
    const QString staff = diary.session.StaffCode;
    return staff.trimmed().isEmpty() ? condition
                                     : condition + " AND " + Equals(table, QStringLiteral("担当者コード"), staff);
}

}  // namespace

QString DocumentStatement(std::size_t kind, const QString& site, const QString& baseDate, const QString& number) {
    const QString table = Table(kind);
    return "SELECT TOP 1 " + table +
           ".*, M担当者.氏名 AS 担当者名, M部門.名称 AS 部門名, Mセクション.名称 AS セクション名"
           " FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M担当者 RIGHT JOIN " +
           table + " ON M担当者.コード = " + table + ".担当者コード) ON M部門.コード = " + table +
           ".部門コード) ON Mセクション.コード = " + table + ".セクションコード WHERE " +
           Equals(table, QStringLiteral("事業所コード"), site) + " AND " +
           Equals(table, QStringLiteral("番号基準日付"), baseDate) + " AND " +
           Equals(table, NumberColumn(kind), number);
}

std::unique_ptr<store::Recordset> FetchDocument(DiaryContext& diary, std::size_t kind, const QString& site,
                                                const QString& baseDate, const QString& number) {
    diary.viewingLog.RecordViewing({session::kProgramId, site, baseDate, number, QString()});
    std::unique_ptr<store::Recordset> row;
    const QString sql = DocumentStatement(kind, site, baseDate, number);
    return diary.data.OpenMainRecordset(row, sql) ? std::move(row) : nullptr;
}

void TakeDocument(DiaryContext& diary, std::size_t kind, const store::Recordset& row) {
    const TypedTextGuard guard(diary);
    if ((kind == k出金 || kind == k案件) && TakeStaff(diary, row)) {
        // The slot may be on file, as after a typed staff member. What was picked goes onto it, and isn't stored yet.
        LoadSlotExact(diary);
        diary.state.InputHappened = true;
    }
    DocumentLink& link = diary.slot.documents[kind];
    TakeColumn(row, QStringLiteral("事業所コード"), link.事業所コード);
    TakeColumn(row, QStringLiteral("番号基準日付"), link.番号基準日付);
    TakeColumn(row, NumberColumn(kind), link.No);
    if (kind == k案件) TakeParty(diary, row);
    link.新規区分 = CountReferences(diary, kind);
}

void ForgetDocument(DiaryContext& diary, std::size_t kind) {
    diary.slot.documents[kind] = DocumentLink();
}

void DocumentNumberLeft(DiaryContext& diary, std::size_t kind) {
    DocumentLink& link = diary.slot.documents[kind];
    const QByteArray item = NumberColumn(kind).toUtf8();
    const auto number = ChangedCode(diary, item.constData(), items::ZeroMask(8), link.No);
    if (number) {
        diary.state.InputHappened = true;
        if (number->isEmpty()) {
            // Site and base date stay: the next number that is typed is looked up under them.
            link.No.clear();
            link.新規区分 = 0;
        } else {
            LookUp(diary, kind, *number);
        }
    }
    if (kind == k営業引合) FinishEnquiry(diary, number.has_value());
}

void OpenDocumentList(DiaryContext& diary, std::size_t kind, Gesture gesture) {
    const QString name = NumberColumn(kind);
    if (gesture != Gesture::Button && FocusGate(diary, 1, name, GateOrder(name))) return;
    const char* next = gesture == Gesture::Button ? kRules[kind].nextByButton : kRules[kind].nextByGesture;
    diary.state.ListedKind = kind;
    diary.lists.OpenListWindow("wnd" + name + "一覧", ListCondition(diary, kind, gesture), diary.Item(name),
                               diary.Item(next));
}

}  // namespace diary
