// The lists of texts that were used before in a column of a document table, each text once. They fill the search items
// of the number lists and know neither site nor condition: a name that another site used is offered too.
#include "lists/item_forms.h"
#include "lists/list_families.h"

namespace lists {

namespace {

const QString kSearchText = QStringLiteral("検索文字列");

/// `kind` is the document's, `column` and `date` are as the statement writes them.
ListDescription UsedNames(const QString& what, const QString& kind, const QString& column, const QString& date) {
    ListDescription list;
    list.name = "wnd" + what + "一覧";
    list.title = what + "一覧";
    list.list = "List" + what;
    list.kind = ListKind::Name;
    const QString source = column.section(u'.', -1);
    list.columns = {{what, 6400, source}};
    list.keyColumns = {source};

    SearchItem text = TextItem(kSearchText, ValueForm::Text);
    text.caption = kSearchText;
    list.items = {text};
    list.modes = {{0, {kSearchText}}, {-1, {kSearchText}}};
    list.periods = {{"直近３ヶ月", 3}, {"直近１年", 12}, {"直近３年", 36}, {"直近10年", 120}, {"全て", 0}};
    // As far back as the number lists look when they open.
    list.openingPeriod = 1;
    list.searchCaption = "検索";
    list.negativeCaption = "否検索";
    list.takesCondition = false;

    ListStatement statement;
    // No row limit here: how many texts there are says nothing about the rows to be read for them.
    statement.head = "SELECT DISTINCT " + column + " FROM T" + kind;
    statement.usesCondition = false;
    statement.periodColumn = date;
    statement.always = column + " <> ''";
    statement.items = {{kSearchText, Containing(column)}};
    statement.orderBy = {{0, column}};
    list.statements = {statement};
    return list;
}

/// A list whose statement names the table with each column.
ListDescription Qualified(const QString& what, const QString& kind, const QString& column) {
    const QString table = u'T' + kind + '.';
    return UsedNames(what, kind, table + column, table + kind + "日付");
}

/// A list of titles. Its pick leaves a key, which then stands in the way of the number list that opened it.
ListDescription Titles(const QString& kind) {
    ListDescription list = Qualified(kind + "タイトル", kind, "タイトル");
    list.kind = ListKind::Number;
    return list;
}

}  // namespace

std::vector<ListDescription> NameLists() {
    return {UsedNames("案件名", "案件", "案件名", "案件日付"),
            Qualified("案件相手先名", "案件", "相手先略称"),
            Qualified("案件相手先御担当者名", "案件", "相手先御担当者名"),
            Qualified("引合得意先名", "営業引合", "得意先名称A"),
            Qualified("引合商品名", "営業引合", "営業引合商品名A"),
            Qualified("見積得意先名", "営業見積", "得意先名称A"),
            Titles("営業見積"),
            Qualified("注文得意先名", "顧客注文", "得意先名称A"),
            Titles("顧客注文"),
            Qualified("受注得意先名", "営業受注", "得意先名称A"),
            Qualified("受注納品先名", "営業受注", "納品先名称A")};
}

}  // namespace lists
