// Lists of a few columns and hardly any items: departments, sections, postcodes.
#include "lists/item_forms.h"
#include "lists/list_families.h"

namespace lists {

namespace {

/// The list of a master that has only a name and a state: 部門 or セクション.
ListDescription NameList(const QString& what) {
    const QString table = u'M' + what;
    ListDescription list;
    list.name = "wnd" + what + "一覧";
    list.title = what + "一覧";
    list.list = "List" + what;
    list.kind = ListKind::KeepsState;
    list.columns = {{"コード", 750, "コード"}, {"名称", 2500, "名称"}};
    list.keyColumns = {"コード"};
    list.classifications = {{"稼動状況区分", "稼動状況", "K稼動状況区分", 0, table + ".稼動状況区分"}};
    list.modes = {{0, {}}};

    ListStatement statement;
    statement.head = "SELECT コード,名称 FROM " + table;
    statement.usesCondition = false;
    statement.classifications = {{"稼動状況区分", Classified(table + ".稼動状況区分")}};
    statement.orderBy = {{0, table + ".コード"}};
    list.statements = {statement};
    return list;
}

std::vector<SearchItem> PostcodeItems() {
    SearchItem postcode = SearchedBy(TextItem("郵便番号", ValueForm::Digits), "郵便番号", "郵便番号頭３桁", 1);
    postcode.use = screen::EntryUse::Code;
    postcode.maxLength = 3;
    postcode.opening = Opening::ReturnPrefix;
    return {postcode, SearchedBy(TextItem("都道府県市町村", ValueForm::Name), "都道府県市町村", "都道府県市町村", 2),
            SearchedBy(TextItem("町域名", ValueForm::Name), "町域名", "町域名", 3)};
}

ListDescription PostcodeList() {
    ListDescription list;
    list.name = "wnd郵便番号一覧";
    list.title = "郵便番号一覧";
    list.list = "List郵便番号";
    list.kind = ListKind::Plain;
    list.columns = {{"番号", 1050, "郵便番号"}, {"都道府県市町村", 3500, "住所A"}, {"町域名", 3500, "住所B"}};
    list.keyColumns = {"郵便番号"};
    list.items = PostcodeItems();
    list.modes = {
        {1, {"郵便番号"}}, {2, {"都道府県市町村"}}, {3, {"町域名"}}, {0, {"郵便番号", "都道府県市町村", "町域名"}}};
    list.searchCaption = "複合検索";

    ListStatement statement;
    statement.head = "SELECT 郵便番号,住所A,住所B FROM M郵便番号";
    statement.usesCondition = false;
    // A range instead of a pattern, so that the key's index serves it.
    statement.items = {{"郵便番号", {{"郵便番号 >= '{}'", {}, "郵便番号 < '{next}'"}, {}}},
                       {"都道府県市町村", {{"住所A LIKE '%{}%'", {}}, {}}},
                       {"町域名", {{"住所B LIKE '%{}%'", {}}, {}}}};
    statement.orderBy = {{0, "M郵便番号.郵便番号"}};
    list.statements = {statement};
    return list;
}

}  // namespace

std::vector<ListDescription> SmallLists() {
    return {NameList("部門"), NameList("セクション"), PostcodeList()};
}

}  // namespace lists
