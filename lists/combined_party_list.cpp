// The list of all parties: one window, a statement for each of the five masters. Its negative search is uneven between
// the masters, and meant to stay so: the other programs of the suite list the same rows.
#include "lists/list_families.h"

namespace lists {

namespace {

/// Parties of the chosen staff member, and those of whoever has left: nobody else would find them.
ItemFragments StaffOrNobody(const QString& kind) {
    const QString column = u'M' + kind + ".担当者コード";
    const QString employed = kind == u"メーカ" ? "'1'" : "'0'";
    ItemFragments fragments;
    fragments.positive.body = u'(' + column + " = '{}' OR M担当者.在籍区分 <> '0')";
    if (kind == u"得意先") fragments.negative.push_back({column + " <> '{}'", {}});
    fragments.negative.push_back({u'(' + column + " <> '{}' AND M担当者.在籍区分 = " + employed + u')', {}});
    return fragments;
}

ListStatement CombinedStatement(const QString& kind, int number) {
    ListStatement statement = PartyStatement(kind);
    statement.items["担当者コード"] = StaffOrNobody(kind);
    // Invalid behind another condition, so that makers then drop out of the negative search by address.
    if (kind == u"メーカ")
        statement.items["住所"].negative.front().bodyBehindAnd =
            "(Mメーカ.住所A NOT LIKE '%{}%' AND Mメーカ.NOT 住所B LIKE '%{}%' AND Mメーカ.住所C NOT LIKE '%{}%')";
    statement.checkBox = "chb_" + kind;
    statement.keyPrefix = u'C' + QString::number(number);
    statement.firstText = kind;
    return statement;
}

}  // namespace

ListDescription CombinedPartyList() {
    ListDescription list;
    list.name = "wnd相手先一覧";
    list.title = "相手先一覧";
    list.list = "List相手先";
    list.kind = ListKind::KeepsState;
    list.columns = PartyColumns();
    list.columns.insert(list.columns.begin(), {{"相手先", 1100, {}}, {"コード", 900, "コード"}});
    list.keyColumns = {"コード"};
    list.items = PartyItems(Opening::MainStaffAlways);
    list.classifications = {TradingState()};
    list.modes = PartyModes();
    for (int i = 0; i < PartyKinds().size(); ++i) {
        const QString& kind = PartyKinds()[i];
        const bool on = kind == u"得意先" || kind == u"対応先";
        list.checkBoxes.push_back({"chb_" + kind, kind, on});
        list.statements.push_back(CombinedStatement(kind, i + 1));
    }
    list.searchCaption = "検索";
    list.negativeCaption = "否検索";
    list.takesCondition = false;
    list.keepsKeyInCondition = true;
    return list;
}

}  // namespace lists
