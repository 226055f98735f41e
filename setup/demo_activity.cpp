#include <algorithm>
#include <map>

#include "setup/demo_company.h"
#include "setup/dice.h"

namespace setup {
namespace {

constexpr int kWorkdays = 65;       // of three months
constexpr int kUsualSlots = 4;      // of a day
constexpr int kFullSlots = 6;       // a day that still looks like one; beyond, the days reach further back
constexpr int kMostWorkdays = 780;  // three years
constexpr int kMostSlots = 48;      // quarters of an hour from 8 to 20
constexpr int kRowsBetweenReports = 5000;

constexpr const char* kMemos[] = {"新製品のご案内。次回、見積書を持参する。",
                                  "現行機の更新時期を確認。来月に再訪。",
                                  "見積条件の打合せ。値引きの要望あり。",
                                  "納期の確認。\r\n一部の品目を分納とする。",
                                  "定期訪問。特に問題なし。",
                                  "担当者の交代の挨拶。",
                                  "不具合の状況を聞き取り。技術へ連絡済。",
                                  "競合他社の提案内容を確認。",
                                  "社内会議の資料作成。",
                                  ""};

/// How a number of slots is laid over one staff member's days.
struct Layout {
    qint64 slotCount = 0;
    int days = 0;

    explicit Layout(qint64 count) : slotCount(count) {
        const qint64 wanted = (count + kFullSlots - 1) / kFullSlots;
        days = int(std::clamp<qint64>(wanted, kWorkdays, kMostWorkdays));
        days = int(std::max<qint64>(days, (count + kMostSlots - 1) / kMostSlots));
    }
    int OfDay(int day) const { return int(slotCount * (day + 1) / days - slotCount * day / days); }
};

std::vector<QDate> WorkdaysUpTo(QDate today, int count) {
    std::vector<QDate> days;
    for (QDate day = today; int(days.size()) < count; day = day.addDays(-1))
        if (day.dayOfWeek() <= 5) days.push_back(day);
    std::reverse(days.begin(), days.end());
    return days;
}

QString TimeOf(int minutes) {
    return QString("%1:%2").arg(minutes / 60, 2, 10, QChar(u'0')).arg(minutes % 60, 2, 10, QChar(u'0'));
}

/// The slots of one staff member, one day after the other.
class Diary {
  public:
    Diary(StoreFill& fill, const DemoWorld& world, int staff);
    void WriteDay(QDate day, int count);

  private:
    void WriteSlot(QDate day, int start, int minutes);
    const Party& ChooseParty();
    QStringList Links(QDate day, Party& party);

    const DemoWorld& world_;
    int index_;
    Staff staff_;
    QString stamp_;
    Dice dice_;
    std::map<std::pair<int, int>, Party> known_;
    RowSink& days_;
    RowSink& rows_;
};

Diary::Diary(StoreFill& fill, const DemoWorld& world, int staff)
    : world_(world),
      index_(staff),
      staff_(world.StaffAt(staff)),
      stamp_("eigyo" + staff_.code + staff_.code + "PC" + staff_.code),
      dice_{world.Sizes().seed, 9, std::uint64_t(staff)},
      days_(fill.Rows("T営業活動", {"担当者コード", "日付", "事業所コード", "部門コード", "セクションコード",
                                    "伝票発行区分", "ユーザID", "登録日付"})),
      rows_(fill.Rows("T営業活動明細", session::FindTable("T営業活動明細")->ColumnNames())) {}

void Diary::WriteDay(QDate day, int count) {
    if (count == 0) return;
    days_.Add({staff_.code, DayText(day), staff_.site, staff_.department, staff_.section, "0", stamp_,
               DayText(day) + " 173000"});
    // The day is a row of cells; the slots take some of them, in order.
    const int length = count <= 8 ? 60 : count <= 20 ? 30 : 15;
    const int first = count <= 8 ? 9 * 60 : 8 * 60;
    const int cells = count <= 8 ? 9 : 12 * 60 / length;
    int left = count;
    for (int cell = 0; cell < cells && left > 0; ++cell) {
        if (dice_.Below(cells - cell) >= left) continue;
        WriteSlot(day, first + cell * length, length == 60 && dice_.Chance(50) ? 30 : length);
        --left;
    }
}

const Party& Diary::ChooseParty() {
    const int roll = dice_.Below(100);
    int kind = roll < 70 ? 1 : roll < 80 ? 2 : roll < 87 ? 3 : roll < 92 ? 4 : 5;
    if (world_.PartyCount(kind) == 0) kind = 1;
    // A staff member sees the same few dozen parties again and again.
    const int pick = dice_.Below(30);
    const auto [known, isNew] = known_.try_emplace({kind, pick});
    if (isNew && world_.PartyCount(kind) > 0) known->second = world_.PartyOf(kind, index_, pick);
    return known->second;
}

// The four columns of each document kind. A linked document decides whom the slot is about.
QStringList Diary::Links(QDate day, Party& party) {
    const int linked = dice_.Chance(12) ? dice_.Below(session::kDocumentKindCount) : -1;
    const int place = linked < 0 ? -1 : world_.RecentDocument(index_, day, dice_.Below(3));
    QStringList columns;
    for (int kind = 0; kind < session::kDocumentKindCount; ++kind) {
        if (kind != linked || place < 0) {
            columns << "0"
                    << ""
                    << ""
                    << "";
            continue;
        }
        const Document document = world_.DocumentAt(kind, place);
        columns << "1" << document.site << document.baseDate << document.number;
        if (kind > 0 && document.customer.kind != 0) party = document.customer;
    }
    return columns;
}

void Diary::WriteSlot(QDate day, int start, int minutes) {
    Party party = ChooseParty();
    const QStringList links = Links(day, party);
    const QString date = DayText(day);
    QStringList row = {staff_.code,
                       date,
                       TimeOf(start),
                       TimeOf(start + minutes),
                       staff_.site,
                       staff_.department,
                       staff_.section,
                       QString::number(1 + dice_.Below(3)),
                       QString::number(1 + dice_.Below(5)),
                       QString::number(1 + dice_.Below(9)),
                       QString::number(1 + dice_.Below(3)),
                       QString::number(party.kind),
                       party.code,
                       party.shortName,
                       party.postcode,
                       party.addressA,
                       party.addressB,
                       party.addressC,
                       party.nameA,
                       party.nameB,
                       party.phone,
                       party.fax,
                       party.contactCode,
                       party.contactName,
                       party.contactPhone,
                       "1"};
    row << links << kMemos[dice_.Below(std::size(kMemos))] << QString::number(minutes) << ""
        << ""
        << "0" << stamp_ << date + " 173000"
        << "";
    rows_.Add(row);
}

}  // namespace

void FillDemoActivity(StoreFill& fill, const DemoWorld& world, const Progress& progress) {
    const qint64 staff = qint64(world.ActiveStaff().size());
    const qint64 total = world.Sizes().activities >= 0 ? world.Sizes().activities : staff * kWorkdays * kUsualSlots;
    if (staff == 0 || total == 0) return;
    qint64 done = 0;
    qint64 reported = 0;
    for (qint64 i = 0; i < staff; ++i) {
        const Layout layout(total * (i + 1) / staff - total * i / staff);
        const std::vector<QDate> days = WorkdaysUpTo(world.Sizes().today, layout.days);
        Diary diary(fill, world, world.ActiveStaff()[std::size_t(i)]);
        for (int day = 0; day < layout.days && !fill.Failed(); ++day) {
            diary.WriteDay(days[std::size_t(day)], layout.OfDay(day));
            done += layout.OfDay(day);
            if (done - reported < kRowsBetweenReports) continue;
            reported = done;
            progress("activity", done, total);
        }
    }
    progress("activity", done, total);
}

}  // namespace setup
