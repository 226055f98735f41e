#include "lists/item_forms.h"
#include "lists/list_families.h"

namespace lists {

namespace {

std::vector<SearchItem> StaffItems() {
    SearchItem code = SearchedBy(CodeItem("コード", "00000"), "コード", "コード検索", 1);
    code.conditionColumn = "M担当者.コード";
    code.fromHereLabel = true;

    const SearchItem kana = SearchedBy(TextItem("カナ", ValueForm::Text), "カナ", "カナ検索", 2);
    const SearchItem name = SearchedBy(TextItem("名称", ValueForm::Name), "名称", "名称検索", 3);

    SearchItem department = SearchedBy(CodeItem("部門コード", "000"), "部門コード", "部門検索", 4);
    department.conditionColumn = "M担当者.部門コード";
    department.nameItem = "部門名";
    department.nameSql = "SELECT 名称 FROM M部門 WHERE コード = '";
    department.nestedList = "wnd部門一覧";
    department.nextItem = department.button;
    department.markFirst = true;

    SearchItem section = SearchedBy(CodeItem("セクションコード", "000"), "セクションコード", "部署検索", 5);
    section.conditionColumn = "M担当者.セクションコード";
    section.nameItem = "セクション名";
    section.nameSql = "SELECT 名称 FROM Mセクション WHERE コード = '";
    section.nestedList = "wndセクション一覧";
    section.nextItem = section.button;
    section.markFirst = true;

    return {code, kana, name, department, section};
}

ListStatement StaffStatement() {
    const QString columns =
        "SELECT TOP 1000"
        " M担当者.コード,M担当者.氏名,M事業所.名称 AS 事業所名,M部門.名称 AS 部門名,Mセクション.名称 AS セクション名";
    ListStatement statement;
    // All three joins are optional: someone without a site, department or section is listed too.
    statement.head = columns +
                     " FROM Mセクション RIGHT JOIN (M部門 RIGHT JOIN (M事業所 RIGHT JOIN M担当者"
                     " ON M事業所.コード = M担当者.事業所コード) ON M部門.コード = M担当者.部門コード)"
                     " ON Mセクション.コード = M担当者.セクションコード";
    statement.headO = columns +
                      " FROM Mセクション,M部門,M事業所,M担当者"
                      " WHERE M事業所.コード(+) = M担当者.事業所コード AND M部門.コード(+) = M担当者.部門コード"
                      " AND Mセクション.コード(+) = M担当者.セクションコード";
    statement.continuesUnderO = true;
    statement.siteFilter = SiteFilter::Staff;
    statement.items = {{"コード", FromHereOn("M担当者.コード")},
                       {"名称", Containing("M担当者.氏名")},
                       {"カナ", Containing("M担当者.カナ")},
                       {"部門コード", Exactly("M担当者.部門コード")},
                       {"セクションコード", Exactly("M担当者.セクションコード")}};
    statement.classifications = {{"在籍区分", Classified("M担当者.在籍区分")},
                                 {"社員区分", Classified("M担当者.社員区分")}};
    statement.orderBy = {{0, "M担当者.コード"}, {1, "M担当者.コード"}, {2, "M担当者.カナ"},
                         {3, "M担当者.氏名"},   {4, "M担当者.コード"}, {5, "M担当者.コード"}};
    return statement;
}

}  // namespace

ListDescription StaffList() {
    ListDescription list;
    list.name = "wnd担当者一覧";
    list.title = "担当者一覧";
    list.list = "List担当者";
    list.kind = ListKind::KeepsState;
    list.columns = {{"コード", 750, "コード"},
                    {"氏名", 2500, "氏名"},
                    {"事業所", 2300, "事業所名"},
                    {"部門", 2300, "部門名"},
                    {"セクション", 2300, "セクション名"}};
    list.keyColumns = {"コード"};
    list.items = StaffItems();
    // Whoever has left is looked for seldom: the list opens on the first employment state, and on every staff class.
    list.classifications = {{"在籍区分", "在籍区分", "K在籍区分", 0, {}},
                            {"社員区分", "社員区分", "K社員区分", -1, {}}};
    const QStringList all = {"コード", "名称", "カナ", "部門コード", "セクションコード"};
    list.modes = {{1, {"コード"}},           {3, {"名称"}}, {2, {"カナ"}}, {4, {"部門コード"}},
                  {5, {"セクションコード"}}, {0, all},      {-1, all}};
    list.statements = {StaffStatement()};
    list.searchCaption = "検索";
    list.negativeCaption = "否検索";
    return list;
}

}  // namespace lists
