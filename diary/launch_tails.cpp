#include "diary/launch_tails.h"

#include "diary/linked_documents.h"
#include "items/text_rules.h"

namespace diary {

namespace {

constexpr int kSubjectCharacters = 20;
constexpr int kCustomer = 1, kDestination = 2;

QString Fixed(const QString& text, int width) {
    return items::Piece(text, 0, width).leftJustified(width, u' ');
}

QString Staff5(const LaunchData& data) {
    return Fixed(data.session.StaffCode, 5);
}
QString Kind1(const LaunchData& data) {
    return QString::number(data.slot.相手先区分);
}
QString Party6(const LaunchData& data) {
    return Fixed(data.slot.相手先コード, 6);
}
QString Contact5(const LaunchData& data) {
    return Fixed(data.slot.相手先御担当者コード, 5);
}

/// A document that isn't there yet, at the site of this run.
QString NoDoc(const LaunchData& data) {
    return data.session.SiteCode + items::ZeroMask(16);
}

const DocumentLink& Link(const LaunchData& data, std::size_t kind) {
    return data.slot.documents[kind];
}

bool Holds(const LaunchData& data, std::size_t kind) {
    return !Link(data, kind).No.isEmpty();
}

QString Ref19(const LaunchData& data, std::size_t kind) {
    const DocumentLink& link = Link(data, kind);
    return Fixed(link.事業所コード, 3) + Fixed(link.番号基準日付, 8) + Fixed(link.No, 8);
}

QStringList PartyTexts(const ActivitySlot& slot) {
    return {slot.相手先略称,  slot.相手先名称A, slot.相手先名称B, slot.相手先郵便番号, slot.相手先住所A,
            slot.相手先住所B, slot.相手先住所C, slot.相手先電話,  slot.相手先FAX};
}

QString NewDealTail(const LaunchData& data) {
    QStringList parts{NoDoc(data) + Staff5(data) + Kind1(data) + Party6(data),
                      QString::number(data.slot.相手先名称入力区分)};
    parts += PartyTexts(data.slot);
    parts +=
        {Contact5(data), data.slot.相手先御担当者名, data.slot.相手先御担当者電話, SubjectOf(data.slot.営業活動摘要)};
    return parts.join(u',');
}

/// For a quotation or an order that stems from nothing in the slot.
QString FreshTail(const LaunchData& data) {
    return NoDoc(data) + NoDoc(data) + NoDoc(data) + Staff5(data) + Kind1(data) + Party6(data) + Contact5(data) +
           data.slot.相手先御担当者名;
}

QString NewSalesOrderTail(const LaunchData& data) {
    const bool enquiry = Holds(data, k営業引合), order = Holds(data, k顧客注文);
    if (enquiry && order) return NoDoc(data) + Ref19(data, k営業引合) + Ref19(data, k顧客注文);
    if (enquiry) return NoDoc(data) + Ref19(data, k営業引合);
    if (order) return NoDoc(data) + NoDoc(data) + Ref19(data, k顧客注文);
    const bool toDestination = data.slot.相手先区分 == kDestination;
    const QString customer = data.slot.相手先区分 == kCustomer ? Party6(data) : Fixed({}, 6);
    const QString destination = toDestination ? Party6(data) : Fixed({}, 6);
    const QString contact = toDestination ? Contact5(data) : Fixed({}, 5);
    return NoDoc(data) + NoDoc(data) + NoDoc(data) + Staff5(data) + customer + destination + contact + "," +
           data.slot.相手先名称A + "," + data.slot.相手先名称B;
}

QString NewDocumentTail(const LaunchData& data, std::size_t kind) {
    switch (kind) {
        case k出金:
            return NoDoc(data) + Staff5(data);
        case k案件:
            return NewDealTail(data);
        case k営業引合:
            return NoDoc(data) + NoDoc(data) + Staff5(data) + Kind1(data) + Party6(data);
        case k営業見積:
            return Holds(data, k営業引合) ? NoDoc(data) + NoDoc(data) + Ref19(data, k営業引合) : FreshTail(data);
        case k顧客注文:
            return Holds(data, k営業見積) ? NoDoc(data) + Ref19(data, k営業見積) : FreshTail(data);
        default:
            return NewSalesOrderTail(data);
    }
}

}  // namespace

QString SubjectOf(const QString& memo) {
    const qsizetype lineEnd = memo.indexOf(u'\r');
    return items::Piece(memo, 0, lineEnd >= 0 && lineEnd < kSubjectCharacters ? lineEnd : kSubjectCharacters);
}

QString PartyCardTail(const LaunchData& data) {
    const ActivitySlot& slot = data.slot;
    if (!slot.相手先コード.isEmpty()) return data.session.SiteCode + Party6(data);
    QStringList parts{data.session.SiteCode + items::ZeroMask(6)};
    parts += PartyTexts(slot);
    parts += {slot.相手先御担当者名, slot.相手先御担当者電話, data.session.StaffCode};
    return parts.join(u',');
}

QString ContactCardTail(const LaunchData& data) {
    const ActivitySlot& slot = data.slot;
    const QString party = data.session.SiteCode + Party6(data);
    if (!slot.相手先御担当者コード.isEmpty()) return party + Contact5(data);
    return QStringList{party + items::ZeroMask(5), slot.相手先御担当者名, slot.相手先御担当者電話}.join(u',');
}

QString CalendarTail(const LaunchData& data) {
    return data.session.SiteCode + items::Piece(data.session.SlotDate, 0, 6);
}

QString DocumentTail(const LaunchData& data, std::size_t kind) {
    return Holds(data, kind) ? Ref19(data, kind) : NewDocumentTail(data, kind);
}

}  // namespace diary
