#include "bench/list_cases.h"

namespace bench {
namespace {

constexpr int kActive = 1;         // the trading state on which the party lists open
constexpr int kTradingStates = 3;  // one behind the last: all

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
            {2, "カナ検索: none", "カナ", nobody},
            {3, "名称検索: many", "名称", "電"},
            {3, "名称検索: none", "名称", nobody},
            {4, "電話番号検索: many", "電話", "06"},
            {4, "電話番号検索: few", "電話", sample["電話"]},
            {5, "郵便番号検索: many", "郵便番号", "1"},
            {5, "郵便番号検索: few", "郵便番号", sample["郵便番号"]},
            {6, "住所検索: many", "住所", "東京"},
            {6, "住所検索: none", "住所", nobody},
            {0, "検索 名称: none", "名称", nobody},
            {0, "検索 担当者", "担当者コード", sample["担当者コード"]},
            {0, "検索 電話: few", "電話", sample["電話"]},
            {-1, "否定検索 名称", "名称", nobody}};
}

ListCase MakeCase(const lists::ListDescription& list, const Search& search) {
    ListCase made;
    made.list = &list;
    made.mode = search.mode;
    made.what = search.what;
    made.values.dbKind = "A";
    made.values.siteCode = made.values.operatingSiteCode = "000";
    if (*search.item) made.values.items.insert(search.item, search.value);
    for (const lists::Classification& classification : list.classifications) {
        made.values.classIndex.insert(classification.item, kActive);
        made.values.classAll.insert(classification.item, kTradingStates);
    }
    return made;
}

}  // namespace

QStringList ListCase::Statements() const {
    QStringList texts;
    for (const lists::ListStatement& statement : list->statements) {
        bool on = true;
        for (const lists::CheckBox& box : list->checkBoxes)
            if (box.name == statement.checkBox) on = box.on;
        if (on) texts << lists::BuildSearchSql(*list, statement, mode, values);
    }
    return texts;
}

std::vector<ListCase> PartyCases(store::Connection& store) {
    std::vector<ListCase> cases;
    for (const QString kind : {"得意先", "納品先", "仕入先", "メーカ", "対応先", "相手先"}) {
        // The last one searches all masters; a customer will do.
        const auto sample = SampleParty(store, u'M' + (kind == "相手先" ? QString("得意先") : kind));
        const lists::ListDescription* list = lists::FindList("wnd" + kind + "一覧");
        if (!list || sample.isEmpty()) continue;
        for (const Search& search : Searches(sample))
            cases.push_back(MakeCase(*list, search));
    }
    return cases;
}

}  // namespace bench
