#include "diary/list_gestures.h"

#include "diary/counterparty.h"
#include "diary/focus_gate.h"
#include "items/text_rules.h"

namespace diary {

namespace {

/// A double click looks up only where the item may be entered.
bool GatePasses(DiaryContext& diary, const char* item, Gesture gesture) {
    if (gesture != Gesture::DoubleClick) return true;
    const QString name = QString::fromUtf8(item);
    return !FocusGate(diary, 1, name, GateOrder(name));
}

void Open(DiaryContext& diary, const char* list, const QString& condition, const char* item, const char* next) {
    diary.lists.OpenListWindow(QString::fromUtf8(list), condition, diary.Item(item), diary.Item(next));
}

}  // namespace

void OpenStaffList(DiaryContext& diary, Gesture gesture) {
    if (GatePasses(diary, "担当者コード", gesture))
        Open(diary, "wnd担当者一覧", QStringLiteral("M担当者.在籍区分 = '0'"), "担当者コード", "相手先コード");
}

void OpenDepartmentList(DiaryContext& diary, Gesture gesture) {
    if (GatePasses(diary, "部門コード", gesture))
        Open(diary, "wnd部門一覧", QString(), "部門コード", "セクションコード");
}

void OpenSectionList(DiaryContext& diary, Gesture gesture) {
    if (GatePasses(diary, "セクションコード", gesture))
        Open(diary, "wndセクション一覧", QString(), "セクションコード", "相手先コード");
}

void OpenCounterpartyList(DiaryContext& diary, Gesture gesture) {
    if (GatePasses(diary, "相手先コード", gesture))
        Open(diary, "wnd相手先一覧", QString(), "相手先コード", "相手先略称");
}

void OpenPostcodeList(DiaryContext& diary, Gesture gesture) {
    screen::Control& item = diary.Item("相手先郵便番号");
    const bool doubleClick = gesture == Gesture::DoubleClick;
    if (GatePasses(diary, "相手先郵便番号", gesture) && (!doubleClick || diary.state.LastLeftControl == &item))
        Open(diary, "wnd郵便番号一覧", QString(), "相手先郵便番号", "相手先住所A");
    // The first double click on the item marks it, the next one opens the list.
    if (doubleClick) diary.state.LastLeftControl = &item;
}

void OpenContactList(DiaryContext& diary, Gesture gesture) {
    const int kind = diary.slot.相手先区分;
    const QString code = diary.slot.相手先コード;
    if (gesture != Gesture::Button && code.trimmed().isEmpty()) return;
    if (!GatePasses(diary, "相手先御担当者コード", gesture)) return;
    const QString table = ContactTable(kind);
    if (table.isEmpty()) return;
    // By key and double click the contacts of another party are asked for by a column that their table lacks: that
    // search lists nothing, and is known to.
    const bool strayColumn = kind == kLastCounterpartyKind && gesture != Gesture::Button;
    const QString column = strayColumn ? QStringLiteral("メーカコード") : ContactKeyColumn(kind);
    const QString condition = table + "." + column + " = '" + items::FormatToMask(code, items::ZeroMask(6)) + "'";
    const QByteArray list = ("wnd" + table.mid(1) + "一覧").toUtf8();
    // A pick leaves the code item while the list is still open; a list that is given up doesn't.
    diary.state.PickingContact = true;
    Open(diary, list.constData(), condition, "相手先御担当者コード", "相手先御担当者電話");
    diary.state.PickingContact = false;
}

}  // namespace diary
