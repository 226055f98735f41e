#include "lists/item_forms.h"
#include "lists/list_families.h"

namespace lists {

namespace {

/// Where the list of one party kind differs from the others.
struct PartyDifferences {
    QString kind;
    QString negativeCaption;
    bool takesTradingState;  ///< takes the trading state over from the caller's condition
    Opening staffOpening;
};

ListDescription PartyList(const PartyDifferences& party) {
    const QString table = u'M' + party.kind;
    ListDescription list;
    list.name = "wnd" + party.kind + "一覧";
    list.title = party.kind + "一覧";
    list.list = "List" + party.kind;
    list.kind = ListKind::KeepsState;
    list.columns = PartyColumns();
    list.columns.insert(list.columns.begin(), {"コード", 1100, "コード"});
    list.keyColumns = {"コード"};
    list.items = PartyItems(party.staffOpening);
    list.items.front().conditionColumn = table + ".コード";
    list.classifications = {TradingState()};
    if (party.takesTradingState) list.classifications.front().conditionText = table + ".取引状況区分 =";
    list.modes = PartyModes();
    list.statements = {PartyStatement(party.kind)};
    list.searchCaption = "検索";
    list.negativeCaption = party.negativeCaption;
    return list;
}

/// The telephone number of the party or of one of its contacts.
ItemFragments AnyTelephone(const QString& kind) {
    const QString column = u'M' + kind + ".電話番号";
    const QString contacts = "EXISTS (SELECT * FROM M" + kind + "御担当者 WHERE " + kind + "コード = M" + kind +
                             ".コード AND 電話番号 LIKE '%{}%')";
    return {{u'(' + column + " LIKE '%{}%' OR " + contacts + u')', {}},
            {{u'(' + column + " NOT LIKE '%{}%' AND NOT " + contacts + u')', {}}}};
}

}  // namespace

const QStringList& PartyKinds() {
    static const QStringList kinds = {"得意先", "納品先", "仕入先", "メーカ", "対応先"};
    return kinds;
}

std::vector<SearchItem> PartyItems(Opening staffOpening) {
    SearchItem code = SearchedBy(CodeItem("コード", "000000"), "コード", "コード検索", 1);
    code.fromHereLabel = true;

    SearchItem postcode = SearchedBy(TextItem("郵便番号", ValueForm::Text), "郵便番号", "郵便番号検索", 5);
    postcode.kind = screen::ControlKind::EntryPostcode;
    postcode.use = screen::EntryUse::Code;
    postcode.commit = CommitRule::Postcode;

    SearchItem telephone = SearchedBy(TextItem("電話", ValueForm::Digits), "電話番号", "電話番号検索", 4);
    telephone.use = screen::EntryUse::Code;
    telephone.commit = CommitRule::IfDigits;

    SearchItem staff = CodeItem("担当者コード", "00000");
    staff.opening = staffOpening;
    staff.button = "btn_担当者コード";
    staff.buttonCaption = "担当者";
    staff.nameItem = "担当者名";
    staff.nameSql = "SELECT 氏名 FROM M担当者 WHERE コード = '";
    staff.nestedList = "wnd担当者一覧";
    staff.nextItem = "取引状況区分";

    return {code,
            SearchedBy(TextItem("カナ", ValueForm::Text), "カナ", "カナ検索", 2),
            SearchedBy(TextItem("名称", ValueForm::Name), "名称", "名称検索", 3),
            SearchedBy(TextItem("住所", ValueForm::Text), "住所", "住所検索", 6),
            postcode,
            telephone,
            staff};
}

std::vector<SearchMode> PartyModes() {
    const QStringList all = {"コード", "名称", "カナ", "住所", "郵便番号", "電話", "担当者コード"};
    return {{1, {"コード", "担当者コード"}},
            {3, {"名称", "担当者コード"}},
            {2, {"カナ", "担当者コード"}},
            {6, {"住所", "担当者コード"}},
            {5, {"郵便番号", "担当者コード"}},
            {4, {"電話", "担当者コード"}},
            {0, all},
            {-1, all}};
}

Classification TradingState() {
    return {"取引状況区分", "取引状況", "K取引状況区分", 1, {}};
}

std::vector<ListColumn> PartyColumns() {
    return {{"略称", 2550, "略称"},       {"担当者", 1600, "担当者名"}, {"電話", 1850, "電話"},  {"カナ", 1150, "カナ"},
            {"郵便No", 1150, "郵便番号"}, {"住所A", 2000, "住所A"},     {"住所B", 2000, "住所B"}};
}

ListStatement PartyStatement(const QString& kind) {
    const QString table = u'M' + kind;
    const auto column = [&](const QString& name) { return table + u'.' + name; };
    const QString columns = "SELECT TOP 1000 " + table + ".コード, " + table + ".略称, " + table + ".カナ, " + table +
                            ".電話, " + table + ".郵便番号, " + table + ".住所A, " + table +
                            ".住所B, M担当者.氏名 AS 担当者名";
    const QString join = table + ".担当者コード = M担当者.コード";
    ListStatement statement;
    statement.head = columns + " FROM M担当者 INNER JOIN " + table + " ON " + join;
    statement.headO = columns + " FROM M担当者, " + table + " WHERE " + join;
    statement.continuesUnderO = true;
    statement.siteFilter = SiteFilter::Party;
    statement.items = {{"コード", FromHereOn(column("コード"))},
                       {"名称", ContainingInAny({column("名称A"), column("名称B"), column("略称")})},
                       {"カナ", Containing(column("カナ"))},
                       {"住所", ContainingInAny({column("住所A"), column("住所B"), column("住所C")})},
                       {"郵便番号", Containing(column("郵便番号"))},
                       {"電話", AnyTelephone(kind)},
                       {"担当者コード", Exactly(column("担当者コード"))}};
    ClassFragments state = Classified(column("取引状況区分"));
    // The opposite of all states is the states past the last known one: as a rule no row.
    state.negativeAll.body = column("取引状況区分") + " >= '{}'";
    statement.classifications = {{"取引状況区分", state}};
    statement.orderBy = {{0, column("コード")}, {1, column("コード")},   {2, column("カナ")}, {3, column("名称A")},
                         {4, column("電話")},   {5, column("郵便番号")}, {6, column("住所A")}};
    // The two masters whose rows belong to a customer or a supplier.
    if (kind == u"納品先" || kind == u"対応先")
        for (const QString owner : {"得意先コード", "仕入先コード"})
            statement.orderPrefixes.push_back({owner, column(owner) + " DESC,"});
    return statement;
}

std::vector<ListDescription> PartyLists() {
    return {PartyList({"得意先", "否定検索", true, Opening::MainStaff}),
            PartyList({"納品先", "否検索", false, Opening::MainStaff}),
            PartyList({"仕入先", "否定検索", true, Opening::Empty}),
            PartyList({"メーカ", "否定検索", false, Opening::Empty}),
            PartyList({"対応先", "否検索", false, Opening::Empty})};
}

}  // namespace lists
