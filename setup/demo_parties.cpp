#include "items/text_rules.h"
#include "setup/demo_company.h"
#include "setup/dice.h"
#include "setup/names.h"

namespace setup {
namespace {

constexpr int kRowsBetweenReports = 5000;

struct PartySinks {
    RowSink& parties;
    RowSink& contacts;
};

PartySinks Sinks(StoreFill& fill, int kind) {
    const QString name = PartyKinds()[kind - 1];
    QStringList columns = {"コード",       "略称",         "カナ",         "名称A",      "名称B",     "郵便番号",
                           "住所A",        "住所B",        "住所C",        "電話",       "電話番号",  "FAX",
                           "担当者コード", "取引状況区分", "名称入力区分", "御担当者名", "担当者電話"};
    if (kind == 2 || kind == 5)
        columns << "得意先コード"
                << "仕入先コード";
    return {fill.Rows("M" + name, columns),
            fill.Rows("M" + name + "御担当者",
                      {name + "コード", "御担当者コード", "氏名", "カナ", "電話", "電話番号", "EMAIL"})};
}

void AddContacts(RowSink& contacts, const Party& party, int more, Dice dice) {
    if (party.contactCode.isEmpty()) return;
    const auto mail = [&party](const QString& code) {
        return QString("k%1%2-%3@example.jp").arg(party.kind).arg(party.code, code);
    };
    contacts.Add({party.code, party.contactCode, party.contactName, party.contactKana, party.contactPhone,
                  items::DigitsOnly(party.contactPhone), mail(party.contactCode)});
    for (int i = 1; i <= more; ++i) {
        const Person person = MakePerson(dice);
        const QString phone = MakePhone(dice);
        contacts.Add(
            {party.code, Code(i, 5), person.name, person.kana, phone, items::DigitsOnly(phone), mail(Code(i, 5))});
    }
}

void AddParty(const PartySinks& sinks, const Party& party, std::uint64_t seed) {
    QStringList row = {party.code,
                       party.shortName,
                       party.kana,
                       party.nameA,
                       party.nameB,
                       party.postcode,
                       party.addressA,
                       party.addressB,
                       party.addressC,
                       party.phone,
                       items::DigitsOnly(party.phone),
                       party.fax,
                       party.staffCode,
                       party.status,
                       "1",
                       party.contactName,
                       party.contactPhone};
    if (party.kind == 2 || party.kind == 5) row << party.customerCode << party.supplierCode;
    sinks.parties.Add(row);
    Dice dice{seed, 7, std::uint64_t(party.kind), party.code.toULongLong()};
    const int more = dice.Below(3);
    AddContacts(sinks.contacts, party, more, dice);
}

}  // namespace

void FillDemoParties(StoreFill& fill, const DemoWorld& world, const Progress& progress) {
    qint64 done = 0;
    for (int kind = 1; kind <= 5; ++kind) {
        const PartySinks sinks = Sinks(fill, kind);
        for (int i = 0; i < world.PartyCount(kind) && !fill.Failed(); ++i) {
            AddParty(sinks, world.PartyAt(kind, i), world.Sizes().seed);
            if (++done % kRowsBetweenReports == 0) progress("parties", done, world.Sizes().parties);
        }
    }
    progress("parties", done, world.Sizes().parties);
}

}  // namespace setup
