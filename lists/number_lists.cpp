// The lists of sales documents, found by their number. Each pick leaves site, base date and number in its key. Their
// statements were written at different times; blanks and names that differ are known to the suite's users.
#include "lists/item_forms.h"
#include "lists/list_families.h"

namespace lists {

namespace {

/// A document's list without its items: its key, its rows of this site, its buttons.
ListDescription DocumentList(const QString& kind, const QString& columns) {
    const QString table = u'T' + kind;
    ListDescription list;
    list.name = "wnd" + kind + "No一覧";
    list.title = kind + "No一覧";
    list.list = "List" + kind;
    list.kind = ListKind::Number;
    list.keyColumns = {"事業所コード", "番号基準日付", kind + "No"};
    list.searchCaption = "検索";
    list.negativeCaption = "否検索";

    ListStatement statement;
    statement.head = "SELECT TOP 1000 " + columns + " FROM " + table;
    statement.siteFilter = SiteFilter::Own;
    statement.siteColumn = table + ".事業所コード";
    const QString date = table + '.' + kind + "日付", number = table + '.' + kind + "No";
    statement.items = {{kind + "日付", FromHereOn(date)}, {kind + "No", FromHereOn(number)}};
    // Newest first, unless a search has an order of its own.
    statement.orderBy = {
        {0, date + " DESC, " + number + " DESC"}, {1, date + ", " + number}, {2, number + ", " + date + " DESC"}};
    list.statements = {statement};
    return list;
}

/// An item for a date of a document, from which on its rows are shown.
SearchItem DateItem(const QString& kind, const QString& what, int mode) {
    SearchItem item = SearchedBy(TextItem(kind + what, ValueForm::AsItStands), kind + what, what + "検索", mode);
    item.use = screen::EntryUse::Code;
    item.maxLength = 14;  // 2026年12月31日
    item.commit = CommitRule::Date;
    item.conditionColumn = u'T' + kind + '.' + kind + what;
    item.fromHereLabel = true;
    return item;
}

/// The items that every document list begins with: from which date, from which number.
std::vector<SearchItem> DateAndNumber(const QString& kind) {
    SearchItem number = SearchedBy(CodeItem(kind + "No", "00000000"), kind + "No", "No検索", 2);
    number.conditionColumn = u'T' + kind + '.' + kind + "No";
    number.fromHereLabel = true;
    return {DateItem(kind, "日付", 1), number};
}

/// An item for a text that was used before: its gesture offers those texts.
SearchItem UsedText(const QString& name, ValueForm value, const QString& caption, int mode, const QString& names,
                    const QString& next) {
    SearchItem item = SearchedBy(TextItem(name, value), name, caption, mode);
    item.nestedList = "wnd" + names + "一覧";
    item.nextItem = next;
    item.opensOverMain = true;
    return item;
}

/// An item for the code of a party, 得意先 or 納品先, with its short name beside it.
SearchItem PartyCode(const QString& party, const QString& table, int mode) {
    const QString name = party + "コード";
    SearchItem item = SearchedBy(CodeItem(name, "000000"), name, party + "検索", mode);
    item.conditionColumn = table + '.' + name;
    item.nameItem = party + "略称";
    item.nameSql = "SELECT 略称 FROM M" + party + " WHERE コード = '";
    item.nestedList = "wnd" + party + "一覧";
    return item;
}

/// Gives the list a customer's code that is another party's while a check box is on. `kindNegated` is the column of the
/// kind as the negative search writes it. A code and its kind are one thing: another kind is another code.
void AddCustomerOrOther(ListDescription& list, const QString& table, int mode, const QString& kindNegated) {
    SearchItem item = PartyCode("得意先", table, mode);
    item.whenChecked = {"chb_得意先対応先", "対応先検索", "SELECT 略称 FROM M対応先 WHERE コード = '", "wnd対応先一覧"};
    list.items.push_back(item);
    list.checkBoxes = {{"chb_得意先対応先", "対応先", false, table + ".得意先対応先区分"}};
    const QString code = table + ".得意先コード";
    list.statements.front().items["得意先コード"] = {
        {code + " = '{}' AND " + table + ".得意先対応先区分 = '{check}'", {}},
        {{u'(' + code + " <> '{}' OR " + kindNegated + " <> '{check}')", {}}}};
}

/// One search for each item and the two over all of them, which take them in the order of `all`.
std::vector<SearchMode> Modes(const std::vector<SearchItem>& items, QStringList all = {}) {
    std::vector<SearchMode> modes;
    for (const SearchItem& item : items)
        modes.push_back({item.mode, {item.name}});
    if (all.isEmpty())
        for (const SearchItem& item : items)
            all.append(item.name);
    modes.push_back({0, all});
    modes.push_back({-1, all});
    return modes;
}

/// Quotations and customer orders: they differ in their names, and in a blank.
ListDescription TitledList(const QString& kind, const QString& what, int codeWidth, const QString& blank) {
    const QString table = u'T' + kind, date = kind + "日付", number = kind + "No", amount = what + "金額合計";
    const auto column = [&](const QString& name) { return table + '.' + name; };
    QStringList selected;
    for (const QString& name : {QString("事業所コード"), QString("番号基準日付"), number, date, QString("得意先コード"),
                                QString("得意先名称A"), QString("タイトル"), amount})
        selected << column(name);
    ListDescription list = DocumentList(kind, selected.join(','));
    list.columns = {
        {what + "No", 1150, number},          {what + "日付", 1150, date},    {"得コード", codeWidth, "得意先コード"},
        {"得意先名称A", 3400, "得意先名称A"}, {"タイトル", 3400, "タイトル"}, {what + "金額", 1700, amount, true}};
    list.items = DateAndNumber(kind);
    list.items.push_back(UsedText("得意先名", ValueForm::Name, "得意先名検索", 3, what + "得意先名", "件名"));
    list.items.push_back(UsedText("件名", ValueForm::Text, "件名検索", 4, kind + "タイトル", "得意先コード"));
    ListStatement& statement = list.statements.front();
    statement.items["得意先名"] = ContainingInAny({column("得意先名称A"), column("得意先名称B")});
    statement.items["件名"] = Containing(column("タイトル"));
    statement.orderBy[1] = column(date) + ", " + column(number) + ' ';
    statement.orderBy[2] = column(number) + ',' + blank + column(date) + " DESC";
    AddCustomerOrOther(list, table, 5, column("得意先対応先区分"));
    list.modes = Modes(list.items, {date, number, "件名", "得意先名", "得意先コード"});
    return list;
}

ListDescription EnquiryList() {
    const auto column = [](const QString& name) { return "T営業引合." + name; };
    // The delivery date is selected twice.
    ListDescription list =
        DocumentList("営業引合",
                     "T営業引合.事業所コード,T営業引合.番号基準日付,T営業引合.営業引合No,T営業引合.営業引合日付,"
                     "T営業引合.営業引合納期,T営業引合.得意先コード,T営業引合.得意先名称A,T営業引合.営業引合商品名A,"
                     "T営業引合.営業引合納期,T営業引合.営業引合金額");
    list.columns = {{"引合No", 1150, "営業引合No"},      {"引合日付", 1150, "営業引合日付"},
                    {"引合納期", 1150, "営業引合納期"},  {"得意先名", 3000, "得意先名称A"},
                    {"商品名", 3000, "営業引合商品名A"}, {"引合金額", 1700, "営業引合金額", true}};
    list.items = DateAndNumber("営業引合");
    list.items.push_back(DateItem("営業引合", "納期", 3));
    list.items.push_back(UsedText("得意先名", ValueForm::Name, "得意先名検索", 4, "引合得意先名", "商品名"));
    list.items.push_back(UsedText("商品名", ValueForm::Name, "商品名検索", 5, "引合商品名", "得意先コード"));
    ListStatement& statement = list.statements.front();
    statement.items["営業引合納期"] = FromHereOn(column("営業引合納期"));
    statement.items["得意先名"] = ContainingInAny({column("得意先名称A"), column("得意先名称B")});
    statement.items["商品名"] = ContainingInAny({column("営業引合商品名A"), column("営業引合商品名B")});
    statement.orderBy[1] = "T営業引合.営業引合日付, T営業引合.営業引合No ";
    statement.orderBy[2] = "T営業引合.営業引合No,T営業引合.営業引合日付 DESC";
    statement.orderBy[3] = "T営業引合.営業引合納期, T営業引合.営業引合日付 DESC";
    // Its negative search names the kind without the table.
    AddCustomerOrOther(list, "T営業引合", 6, "得意先対応先区分");
    list.modes = Modes(list.items);
    return list;
}

ListDescription SalesOrderList() {
    const auto column = [](const QString& name) { return "T営業受注." + name; };
    // Shown is another delivery date than the one that is searched for.
    ListDescription list =
        DocumentList("営業受注",
                     "T営業受注.事業所コード,T営業受注.番号基準日付,T営業受注.営業受注No,T営業受注.営業受注日付,"
                     "T営業受注.受注納期,T営業受注.得意先コード,T営業受注.得意先名称A,T営業受注.納品先コード,"
                     "T営業受注.納品先名称A,T営業受注.受注金額合計");
    list.columns = {{"受注No", 1150, "営業受注No"},    {"受注日付", 1150, "営業受注日付"},
                    {"受注納期", 1150, "受注納期"},    {"得意先名", 3350, "得意先名称A"},
                    {"納品先名", 3350, "納品先名称A"}, {"受注金額", 1700, "受注金額合計", true}};
    list.items = DateAndNumber("営業受注");
    list.items.push_back(DateItem("営業受注", "納期", 3));
    list.items.push_back(UsedText("得意先名", ValueForm::Name, "得意先名検索", 4, "受注得意先名", "納品先名"));
    list.items.push_back(UsedText("納品先名", ValueForm::Name, "納品先名検索", 5, "受注納品先名", "得意先コード"));
    list.items.push_back(PartyCode("得意先", "T営業受注", 6));
    list.items.push_back(PartyCode("納品先", "T営業受注", 7));
    ListStatement& statement = list.statements.front();
    statement.items["営業受注納期"] = FromHereOn(column("営業受注納期"));
    statement.items["得意先名"] = ContainingInAny({column("得意先名称A"), column("得意先名称B")});
    statement.items["納品先名"] = ContainingInAny({column("納品先名称A"), column("納品先名称B")});
    statement.items["得意先コード"] = Exactly(column("得意先コード"));
    statement.items["納品先コード"] = Exactly(column("納品先コード"));
    statement.orderBy[3] = "T営業受注.営業受注納期, T営業受注.営業受注日付 DESC";
    list.modes = Modes(list.items);
    return list;
}

ListDescription DealList() {
    ListDescription list =
        DocumentList("案件",
                     "T案件.事業所コード,T案件.番号基準日付,T案件.案件No,T案件.案件日付,T案件.相手先略称,"
                     "T案件.相手先御担当者名,T案件.案件名");
    list.columns = {{"案件No", 1150, "案件No"},
                    {"案件日付", 1150, "案件日付"},
                    {"案件名", 3850, "案件名"},
                    {"相手先", 2700, "相手先略称"},
                    {"御担当者", 2300, "相手先御担当者名"}};
    list.items = DateAndNumber("案件");
    list.items.push_back(UsedText("案件名", ValueForm::Name, "案件名検索", 3, "案件名", "相手先略称"));
    list.items.push_back(UsedText("相手先略称", ValueForm::Name, "相手先検索", 4, "案件相手先名", "相手先御担当者名"));
    list.items.push_back(
        UsedText("相手先御担当者名", ValueForm::Name, "御担当者検索", 5, "案件相手先御担当者名", "btn_複合検索"));
    ListStatement& statement = list.statements.front();
    statement.items["案件名"] = Containing("T案件.案件名");
    statement.items["相手先略称"] = ContainingInAny({"T案件.相手先略称", "T案件.相手先名称A", "T案件.相手先名称B"});
    // As the first condition it negates the short name alone, and asks the full names to match.
    statement.items["相手先略称"].negative = {
        {"T案件.相手先略称 NOT LIKE '%{}%' AND T案件.相手先名称A LIKE '%{}%' AND T案件.相手先名称B LIKE '%{}%'",
         "T案件.相手先略称 NOT LIKE '%{}%' AND T案件.相手先名称A NOT LIKE '%{}%'"
         " AND T案件.相手先名称B NOT LIKE '%{}%'"}};
    statement.items["相手先御担当者名"] = Containing("T案件.相手先御担当者名");
    for (int mode = 3; const QString name : {"案件名", "相手先略称", "相手先御担当者名"})
        statement.orderBy[mode++] = "T案件." + name;
    list.modes = Modes(list.items);
    return list;
}

ListDescription PaymentList() {
    ListDescription list = DocumentList("出金", {});
    list.columns = {{"出金No", 1150, "出金No"},
                    {"出金日付", 1150, "出金日付"},
                    {"仕コード", 1100, "担当者コード"},
                    {"担当者名", 2300, "担当者名"},
                    {"出金金額", 1700, "実質出金金額合計", true}};
    ListStatement& statement = list.statements.front();
    const QString columns =
        "SELECT TOP 1000 T出金.事業所コード, T出金.番号基準日付, T出金.出金No, T出金.出金日付, T出金.担当者コード,"
        " T出金.実質出金金額合計, M担当者.氏名 as 担当者名";
    statement.head = columns + " FROM M担当者 INNER JOIN T出金 ON M担当者.コード = T出金.担当者コード ";
    statement.headO = columns + " FROM M担当者, T出金 WHERE M担当者.コード = T出金.担当者コード ";
    statement.continuesUnderO = true;
    statement.sharesHeadO = true;
    list.items = DateAndNumber("出金");
    list.items.push_back(SearchedBy(TextItem("担当者名", ValueForm::Name), "担当者名", "担当者名検索", 3));
    SearchItem staff = SearchedBy(CodeItem("担当者コード", "00000"), "担当者コード", "担当者検索", 4);
    staff.conditionColumn = "T出金.担当者コード";
    staff.nameItem = "氏名";
    staff.nameSql = "SELECT 氏名 FROM M担当者 WHERE コード = '";
    staff.nestedList = "wnd担当者一覧";
    list.items.push_back(staff);
    statement.items["担当者名"] = Containing("M担当者.氏名");
    statement.items["担当者コード"] = Exactly("T出金.担当者コード");
    list.modes = Modes(list.items);
    return list;
}

}  // namespace

std::vector<ListDescription> NumberLists() {
    return {TitledList("営業見積", "見積", 1100, {}),  EnquiryList(), SalesOrderList(),
            TitledList("顧客注文", "注文", 1050, " "), DealList(),    PaymentList()};
}

}  // namespace lists
