#include "bench/list_cases.h"

#include "items/text_rules.h"
#include "lists/list_families.h"

namespace bench {
namespace {

constexpr int kActive = 1;  // the trading state on which the party lists open

struct Search {
    int mode;
    const char* what;
    const char* item;
    QString value;
};

// A party from the middle of a master.
QHash<QString, QString> SampleParty(store::Connection& store, const QString& table) {
    store::Fault fault;
    const auto counted = store.Query("SELECT COUNT(*) AS 件数 FROM " + table, fault);
    const int count = counted ? counted->Value("件数").value_or("0").toInt() : 0;
    QHash<QString, QString> sample;
    const auto rows =
        store.Query("SELECT TOP 1 * FROM " + table +
                        QString(" WHERE コード >= '%1' ORDER BY コード").arg(count / 2, 6, 10, QChar(u'0')),
                    fault);
    if (!rows || rows->Eof()) return sample;
    for (const QString& column : rows->Columns())
        sample.insert(column, rows->Value(column).value_or(QString()));
    return sample;
}

std::vector<Search> Searches(const QHash<QString, QString>& sample) {
    const QString nobody = "該当なし";
    const QString code = sample["コード"];
    return {{0, "検索", "", ""},
            {1, "コード検索", "コード", code},
            {2, "カナ検索: かぶ", "カナ", "かぶ"},
            {2, "カナ検索: ふじみ", "カナ", "ふじみ"},
            {2, "カナ検索: none", "カナ", nobody},
            {3, "名称検索: many", "名称", "電"},
            {3, "名称検索: 電機", "名称", "電機"},
            {3, "名称検索: 株式", "名称", "株式"},
            {3, "名称検索: 株式会社", "名称", "株式会社"},
            {3, "名称検索: none", "名称", nobody},
            {4, "電話番号検索: many", "電話", "06"},
            {4, "電話番号検索: 075", "電話", "075"},
            {4, "電話番号検索: few", "電話", sample["電話"]},
            {5, "郵便番号検索: many", "郵便番号", "1"},
            {5, "郵便番号検索: few", "郵便番号", sample["郵便番号"]},
            {6, "住所検索: many", "住所", "東京"},
            {6, "住所検索: 東京都", "住所", "東京都"},
            {6, "住所検索: none", "住所", nobody},
            {0, "検索 名称: none", "名称", nobody},
            {0, "検索 担当者", "担当者コード", sample["担当者コード"]},
            {0, "検索 電話: few", "電話", sample["電話"]},
            {-1, "否定検索 名称", "名称", nobody}};
}

// Codes are compared as a whole, and a search for what doesn't hold a text passes over hardly any row.
int CharactersOf(const Search& search) {
    if (search.mode < 0) return 0;
    const QString item = search.item;
    if (item == "電話") return int(items::DigitsOnly(search.value).size());
    return item == "カナ" || item == "名称" || item == "郵便番号" || item == "住所" ? int(search.value.size()) : 0;
}

ListCase MakeCase(const lists::ListDescription& list, const Search& search) {
    ListCase made{&list, search.mode, search.what};
    made.characters = CharactersOf(search);
    if (*search.item) made.items.insert(search.item, search.value);
    return made;
}

ListCase PartyCase(const lists::ListDescription& list, const Search& search) {
    ListCase made = MakeCase(list, search);
    for (const lists::Classification& classification : list.classifications)
        made.classIndex.insert(classification.item, kActive);
    return made;
}

void AddCases(std::vector<ListCase>& cases, const QString& list, const std::vector<Search>& searches) {
    for (const Search& search : searches)
        cases.push_back(MakeCase(*lists::FindList(list), search));
}

}  // namespace

std::vector<ListCase> PartyCases(store::Connection& store) {
    std::vector<ListCase> cases;
    for (const QString& kind : lists::PartyKinds() + QStringList{"相手先"}) {
        // The last one searches all masters; a customer will do.
        const auto sample = SampleParty(store, u'M' + (kind == "相手先" ? QString("得意先") : kind));
        const lists::ListDescription* list = lists::FindList("wnd" + kind + "一覧");
        if (!list || sample.isEmpty()) continue;
        for (const Search& search : Searches(sample))
            cases.push_back(PartyCase(*list, search));
    }
    return cases;
}

QString NameOfStaff(store::Connection& store) {
    store::Fault fault;
    const auto rows = store.Query("SELECT 氏名 FROM M担当者 WHERE コード > '00001' ORDER BY コード", fault, 1);
    return rows ? rows->Value("氏名").value_or(QString()).left(2) : QString();
}

std::vector<ListCase> OtherCases(store::Connection& store) {
    std::vector<ListCase> cases;
    const QString name = NameOfStaff(store);
    AddCases(cases, "wnd担当者一覧",
             {{0, "検索", "", ""},
              {1, "コード検索", "コード", "00010"},
              {2, "カナ検索", "カナ", "さ"},
              {3, "名称検索", "名称", name},
              {4, "部門検索", "部門コード", "001"},
              {5, "部署検索", "セクションコード", "002"},
              {-1, "否検索 名称", "名称", name}});
    AddCases(cases, "wnd部門一覧", {{0, "条件ｸﾘｱ", "", ""}});
    AddCases(cases, "wndセクション一覧", {{0, "条件ｸﾘｱ", "", ""}});
    AddCases(cases, "wnd郵便番号一覧",
             {{1, "郵便番号頭３桁", "郵便番号", "100"},
              {2, "都道府県市町村", "都道府県市町村", "千代田"},
              {3, "町域名", "町域名", "町"},
              {0, "複合検索", "町域名", "丸の内"}});
    for (const QString& kind : lists::PartyKinds()) {
        const auto sample = SampleParty(store, u'M' + kind);
        if (sample.isEmpty()) continue;
        AddCases(cases, "wnd" + kind + "御担当者一覧", {{0, "検索", "", ""}});
        cases.back().condition = QString("M%1御担当者.%1コード = '%2'").arg(kind, sample["コード"]);
    }
    return cases;
}

}  // namespace bench
