#include "setup/demo_world.h"

#include "numbers/period_dates.h"
#include "setup/names.h"

namespace setup {
namespace {

// Each kind of thing throws its dice from a stream of its own.
enum Stream : std::uint64_t { kStaffDice = 1, kPartyDice, kDocumentDice };

constexpr int kSharePercent[] = {50, 20, 12, 6, 12};
constexpr int kDocumentDays = 365;
constexpr numbers::Closing kClosing{3, 31};

constexpr const char* kGoods[] = {"複合機",   "業務用空調", "測定器", "搬送ロボット", "監視カメラ", "配電盤",
                                  "照明設備", "サーバー",   "梱包材", "洗浄装置",     "什器",       "会計ソフト"};
constexpr const char* kDeals[] = {"更新", "新規導入", "増設", "保守契約", "入替", "試験導入"};

QString FiscalYear(QDate day) {
    return numbers::FiscalYearEnd(kClosing, DayText(day));
}

}  // namespace

const std::array<QString, 5>& PartyKinds() {
    static const std::array<QString, 5> kinds = {"得意先", "納品先", "仕入先", "メーカ", "対応先"};
    return kinds;
}

QString Code(int index, int width) {
    return QString("%1").arg(index + 1, width, 10, QChar(u'0'));
}

QString DayText(QDate day) {
    return day.toString("yyyyMMdd");
}

DemoWorld::DemoWorld(DemoSizes sizes) : sizes_(sizes), postcodes_(Postcodes()) {
    for (const Postcode& postcode : postcodes_)
        if (!postcode.town.isEmpty() && postcode.city.size() + postcode.town.size() <= 20) towns_.push_back(postcode);
    int rest = sizes_.parties;
    for (int kind = 4; kind > 0; --kind) {
        partyCounts_[kind] = int(qint64(sizes_.parties) * kSharePercent[kind] / 100);
        rest -= partyCounts_[kind];
    }
    partyCounts_[0] = rest;
    for (int i = 0; i < sizes_.staff; ++i)
        if (!StaffAt(i).left) active_.push_back(i);
    years_ = CountYears();
}

Staff DemoWorld::StaffAt(int index) const {
    Dice dice{sizes_.seed, kStaffDice, std::uint64_t(index)};
    const Person person = MakePerson(dice);
    const int team = index % 9;
    return {Code(index, 5),    person.name,   person.kana,     QString("00%1").arg(team % 3),
            Code(team / 3, 3), Code(team, 3), index % 13 == 12};
}

void DemoWorld::PlaceParty(Dice& dice, Party& party) const {
    static constexpr const char* kBuildings[] = {"中央ビル", "第一ビル", "センタービル", "本町ビル", "駅前ビル"};
    const Postcode& place = dice.Pick(towns_);
    party.postcode = place.code;
    party.addressA = place.city;
    party.addressB =
        QString("%1%2-%3-%4").arg(place.town).arg(1 + dice.Below(9)).arg(1 + dice.Below(30)).arg(1 + dice.Below(20));
    party.addressC = dice.Chance(35) ? QString("%1%2F").arg(kBuildings[dice.Below(5)]).arg(1 + dice.Below(12)) : "";
    party.phone = MakePhone(dice);
    party.fax = dice.Chance(80) ? MakePhone(dice) : "";
}

Party DemoWorld::PartyAt(int kind, int index) const {
    Dice dice{sizes_.seed, kPartyDice, std::uint64_t(kind), std::uint64_t(index)};
    static constexpr const char* kBranches[] = {"本社", "東京支店", "大阪支店", "営業部", "購買部", "工場"};
    Party party;
    party.kind = kind;
    party.code = Code(index, 6);
    const CompanyName name = MakeCompanyName(dice);
    party.shortName = name.shortName;
    party.kana = name.kana;
    party.nameA = name.nameA;
    party.nameB = dice.Chance(40) ? kBranches[dice.Below(6)] : "";
    PlaceParty(dice, party);
    party.staffCode = sizes_.staff > 0 ? Code(index % sizes_.staff, 5) : "";
    party.status = dice.Chance(85) ? "1" : dice.Chance(50) ? "0" : "2";
    // Destinations and other parties belong to a customer or a supplier.
    const bool owned = kind == 2 || kind == 5;
    if (owned && PartyCount(1) > 0 && dice.Chance(70)) party.customerCode = Code(dice.Below(PartyCount(1)), 6);
    if (owned && PartyCount(3) > 0 && dice.Chance(20)) party.supplierCode = Code(dice.Below(PartyCount(3)), 6);
    if (dice.Chance(75)) {
        const Person person = MakePerson(dice);
        party.contactCode = "00001";
        party.contactName = person.name;
        party.contactKana = person.kana;
        party.contactPhone = MakePhone(dice);
    }
    return party;
}

Party DemoWorld::PartyOf(int kind, int staff, int pick) const {
    const int own = (PartyCount(kind) - staff + sizes_.staff - 1) / sizes_.staff;
    return PartyAt(kind, own > 0 ? staff + (pick % own) * sizes_.staff : pick % PartyCount(kind));
}

QDate DemoWorld::DocumentDay(int index) const {
    return sizes_.today.addDays(int(qint64(index) * kDocumentDays / sizes_.documents) - kDocumentDays + 1);
}

Document DemoWorld::DocumentAt(int kind, int index) const {
    Dice dice{sizes_.seed, kDocumentDice, std::uint64_t(kind), std::uint64_t(index)};
    Document document;
    const QDate day = DocumentDay(index);
    document.date = DayText(day);
    document.baseDate = FiscalYear(day);
    document.staff = index % sizes_.staff;
    document.site = StaffAt(document.staff).site;
    int before = 0;
    for (const auto& [year, count] : DocumentYears())
        if (year < document.baseDate) before += count;
    document.number = Code(index - before, 8);
    if (PartyCount(1) > 0) document.customer = PartyOf(1, document.staff, dice.Below(1 << 20));
    if (PartyCount(2) > 0) document.destination = PartyOf(2, document.staff, dice.Below(1 << 20));
    document.title = QString(kGoods[dice.Below(std::size(kGoods))]) + kDeals[dice.Below(std::size(kDeals))];
    document.amount = QString::number((1 + dice.Below(kind == 0 ? 300 : 5000)) * (kind == 0 ? 100 : 1000));
    document.deliveryDate = DayText(day.addDays(14 + dice.Below(60)));
    return document;
}

int DemoWorld::RecentDocument(int staff, QDate day, int pick) const {
    const qint64 passed = sizes_.today.addDays(1 - kDocumentDays).daysTo(day);
    if (passed < 0 || sizes_.documents == 0) return -1;
    const int latest = int(passed * sizes_.documents / kDocumentDays);
    const int newestOwn = (latest - staff) / sizes_.staff - (latest < staff ? 1 : 0);
    const int chosen = staff + (newestOwn - pick % 3) * sizes_.staff;
    return chosen >= 0 && chosen < sizes_.documents && DocumentDay(chosen) <= day ? chosen : -1;
}

std::vector<std::pair<QString, int>> DemoWorld::CountYears() const {
    std::vector<std::pair<QString, int>> years;
    if (sizes_.documents == 0) return years;
    const QString first = FiscalYear(DocumentDay(0));
    const QString last = FiscalYear(DocumentDay(sizes_.documents - 1));
    if (first == last) return {{first, sizes_.documents}};
    int low = 0;
    int high = sizes_.documents - 1;  // the first document of the later year lies in (low, high]
    while (high - low > 1) {
        const int middle = low + (high - low) / 2;
        (FiscalYear(DocumentDay(middle)) == first ? low : high) = middle;
    }
    return {{first, high}, {last, sizes_.documents - high}};
}

}  // namespace setup
