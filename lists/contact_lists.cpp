#include "lists/list_families.h"

namespace lists {

namespace {

/// The contacts of one party; the caller's condition names the party.
ListDescription ContactList(const QString& kind) {
    const QString table = u'M' + kind + "御担当者";
    ListDescription list;
    list.name = "wnd" + kind + "御担当者一覧";
    list.title = kind + "御担当者一覧";
    list.list = "List御担当者";
    list.kind = ListKind::Plain;
    list.columns = {{"コード", 750, "御担当者コード"},
                    {"氏名", 2500, "氏名"},
                    {"カナ", 2300, "カナ"},
                    {"電話", 2300, "電話"},
                    {"EMAIL", 2300, "EMAIL"}};
    list.keyColumns = {"御担当者コード"};
    list.modes = {{0, {}}};
    list.searchCaption = "検索";
    list.canClear = false;

    ListStatement statement;
    statement.head = "SELECT TOP 1000 * FROM " + table;
    // Without a WHERE to continue, such a server refuses the statement and the list stays empty.
    statement.continuesUnderO = true;
    statement.orderBy = {{0, table + ".御担当者コード"}};
    list.statements = {statement};
    return list;
}

}  // namespace

std::vector<ListDescription> ContactLists() {
    std::vector<ListDescription> lists;
    for (const QString& kind : PartyKinds())
        lists.push_back(ContactList(kind));
    return lists;
}

}  // namespace lists
