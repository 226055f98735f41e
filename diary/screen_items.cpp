#include "diary/screen_items.h"

namespace diary {

using screen::Control;
using screen::ControlKind;
using screen::EntryUse;
using screen::Form;

namespace {

struct Entry {
    const char* name;
    ControlKind kind;
    EntryUse use;
    int maxLength;         ///< bytes; 0 for none
    bool enforced = true;  ///< the item itself cuts at maxLength
};

void AddEntry(Form& form, const Entry& entry) {
    Control& control = form.Add(entry.kind, QString::fromUtf8(entry.name));
    control.use = entry.use;
    control.maxLength = entry.maxLength;
    control.enforcesMaxLength = entry.enforced && entry.maxLength > 0;
}

/// An item that shows what belongs to another one; it is never typed into and stands outside the tab order.
void AddShown(Form& form, const char* name) {
    Control& control = form.Add(ControlKind::EntryField, QString::fromUtf8(name));
    control.readOnly = true;
    control.SetTabStop(false);
}

void AddButton(Form& form, const char* name, const char* caption, const char* shortcut = "") {
    Control& button = form.Add(ControlKind::SSCommand, QString::fromUtf8(name), QString::fromUtf8(caption));
    button.SetTabStop(false);
    button.shortcut = QString::fromLatin1(shortcut);
}

void AddPanel(Form& form, const char* name, const char* caption = "") {
    form.Add(ControlKind::SSPanel, QString::fromUtf8(name), QString::fromUtf8(caption));
}

void AddLabel(Form& form, const char* name, const char* caption) {
    form.Add(ControlKind::CaptionLabel, QString::fromUtf8(name), QString::fromUtf8(caption));
}

void AddCatcher(Form& form, const char* name) {
    form.Add(ControlKind::CommandButton, QString::fromUtf8(name));
}

void AddTitleAndCommands(Form& form) {
    AddPanel(form, "prg_ttl");
    AddPanel(form, "manualpanel", "Manual");
    AddPanel(form, "お知らせ");
    AddPanel(form, "結果");
    AddButton(form, "btn_登録", "登録", "F12");
    AddButton(form, "btn_削除", "削除", "F9");
    AddButton(form, "btn_移動", "移動/追加", "F6");
    AddButton(form, "btn_控え一覧", "控え", "Ctrl+F2");
    AddButton(form, "btn_終了", "終了", "F10");
    AddButton(form, "btn_暦編集", "暦", "F11");
}

void AddDateAndTime(Form& form) {
    AddPanel(form, "itm_ttl_営業活動日付", "日付");
    AddEntry(form, {"営業活動日付年", ControlKind::EntryField, EntryUse::Code, 4});
    AddLabel(form, "Lab_営業活動日付年", "年");
    AddEntry(form, {"営業活動日付月", ControlKind::EntryField, EntryUse::Code, 2});
    AddLabel(form, "Lab_営業活動日付月", "月");
    AddEntry(form, {"営業活動日付日", ControlKind::EntryField, EntryUse::Code, 2});
    AddLabel(form, "lab_営業活動日付日", "日");
    AddShown(form, "営業活動曜日");
    AddPanel(form, "itm_ttl_開始時刻", "時刻");
    AddEntry(form, {"開始時刻時", ControlKind::EntryField, EntryUse::Code, 2});
    AddLabel(form, "Lab_開始時刻時", "：");
    AddEntry(form, {"開始時刻分", ControlKind::EntryField, EntryUse::Code, 2});
    AddLabel(form, "lab_開始時刻", "～");
    AddEntry(form, {"終了時刻時", ControlKind::EntryField, EntryUse::Code, 2});
    AddLabel(form, "Lab_終了時刻時", "：");
    AddEntry(form, {"終了時刻分", ControlKind::EntryField, EntryUse::Code, 2});
    AddButton(form, "btn_前日", "前日", "F3");
    AddButton(form, "btn_翌日", "翌日", "F4");
    AddButton(form, "btn_前週", "前週", "Shift+F3");
    AddButton(form, "btn_翌週", "翌週", "Shift+F4");
    AddButton(form, "btn_一時間前", "一時間前", "Shift+F7");
    AddButton(form, "btn_一時間後", "一時間後", "Shift+F8");
    AddButton(form, "btn_30分前", "30分前", "F7");
    AddButton(form, "btn_30分後", "30分後", "F8");
    AddButton(form, "btn_Now", "現在", "F5");
}

void AddStaff(Form& form) {
    AddButton(form, "btn_担当者コード", "担当者");
    AddEntry(form, {"担当者コード", ControlKind::EntryField, EntryUse::Code, 5});
    AddShown(form, "担当者名");
    AddButton(form, "btn_部門コード", "部門");
    AddEntry(form, {"部門コード", ControlKind::EntryField, EntryUse::Code, 3});
    AddShown(form, "部門名");
    AddButton(form, "btn_セクションコード", "所属");
    AddEntry(form, {"セクションコード", ControlKind::EntryField, EntryUse::Code, 3});
    AddShown(form, "セクション名");
}

void AddOptions(Form& form, const char* name, int count) {
    for (int index = 0; index < count; ++index)
        form.Add(ControlKind::SSOption, QString::fromUtf8(name), QString(), index);
}

void AddClassification(Form& form) {
    AddPanel(form, "bak_発信者");
    AddPanel(form, "itm_ttl_発信区分", "発信者");
    AddOptions(form, "opb_発信区分", k発信区分Options);
    AddPanel(form, "bak_応対方法");
    AddOptions(form, "opb_応対方法", k応対方法Options);
    AddOptions(form, "opb_要件分類", k要件分類Options);
    for (int index = 0; index < k要件分類Options; ++index) {
        Control& number = form.Add(ControlKind::EntryNumber, QStringLiteral("対応分類"), QString(), index);
        number.use = EntryUse::Code;
        number.maximum = 0;
        form.Add(ControlKind::ComboBox, QStringLiteral("対応分類名称"), QString(), index);
    }
}

void AddCounterparty(Form& form) {
    AddPanel(form, "bak_相手先", "相手先");
    AddEntry(form, {"相手先区分", ControlKind::EntryNumber, EntryUse::Code, 0});
    form.At(QStringLiteral("相手先区分")).maximum = 5;
    AddButton(form, "btn_相手先コード", "相手先");
    AddEntry(form, {"相手先コード", ControlKind::EntryField, EntryUse::Code, 8});
    AddLabel(form, "lab_相手先略称", "略称");
    AddEntry(form, {"相手先略称", ControlKind::EntryField, EntryUse::Text, 20, false});
    AddButton(form, "btn_相手先郵便番号", "郵便番号");
    AddEntry(form, {"相手先郵便番号", ControlKind::EntryPostcode, EntryUse::Code, 0});
    AddPanel(form, "itm_ttl_住所", "住所");
    AddEntry(form, {"相手先住所A", ControlKind::EntryField, EntryUse::Text, 40, false});
    AddEntry(form, {"相手先住所B", ControlKind::EntryField, EntryUse::Text, 40, false});
    AddEntry(form, {"相手先住所C", ControlKind::EntryField, EntryUse::Text, 40, false});
    AddPanel(form, "itm_ttl_名称", "正式名称");
    AddEntry(form, {"相手先名称A", ControlKind::EntryField, EntryUse::Text, 40, false});
    AddEntry(form, {"相手先名称B", ControlKind::EntryField, EntryUse::Text, 40, false});
    AddPanel(form, "itm_ttl_相手先電話", "電話");
    AddEntry(form, {"相手先電話", ControlKind::EntryPhone, EntryUse::Code, 0});
    AddPanel(form, "itm_ttl_FAX", "FAX");
    AddEntry(form, {"相手先FAX", ControlKind::EntryPhone, EntryUse::Code, 0});
}

void AddContact(Form& form) {
    AddPanel(form, "bak_相手先御担当者", "御担当者");
    AddButton(form, "btn_相手先御担当者コード", "御担当者");
    AddEntry(form, {"相手先御担当者コード", ControlKind::EntryField, EntryUse::Code, 5});
    AddEntry(form, {"相手先御担当者名", ControlKind::EntryField, EntryUse::Text, 40, false});
    AddPanel(form, "itm_ttl_相手先御担当者電話", "御担当電話");
    AddEntry(form, {"相手先御担当者電話", ControlKind::EntryPhone, EntryUse::Code, 0});
}

void AddDocuments(Form& form) {
    static const char* const captions[] = {"出金No", "案件No", "引合No", "見積No", "注文No", "受注No"};
    for (std::size_t kind = 0; kind < session::kDocumentKindCount; ++kind) {
        const QString name = session::DocumentKinds()[kind];
        const QByteArray number = (name + "No").toUtf8();
        AddButton(form, ("btn_" + number).constData(), captions[kind]);
        AddEntry(form, {number.constData(), ControlKind::EntryField, EntryUse::Code, 8});
        AddButton(form, ("btn_参照" + name).toUtf8().constData(), "参照");
    }
}

void AddDetailPages(Form& form) {
    Control& strip = form.Add(ControlKind::SSTab, QStringLiteral("tab_詳細"));
    strip.pages = {QStringLiteral("摘要"), QStringLiteral("付属書類")};
    strip.SetTabStop(false);
    AddEntry(form, {"営業活動摘要", ControlKind::EntryMemo, EntryUse::Text, 0});
    Control& list = form.Add(ControlKind::ListView, QStringLiteral("List付属書類"));
    list.columns = {{.header = QStringLiteral("書類名"), .width = 5000, .elideStart = true, .stretches = true},
                    {QStringLiteral("サイズ"), 1500, true},
                    {QStringLiteral("更新日付"), 1500}};
    AddButton(form, "btn_付属書類追加", "付属書類追加");
    AddButton(form, "btn_付属書類削除", "付属書類削除");
    AddButton(form, "btn_フォルダ", "フォルダ追加");
    form.At(QStringLiteral("営業活動摘要")).container = &strip;
    for (const char* name : {"List付属書類", "btn_付属書類追加", "btn_付属書類削除", "btn_フォルダ"}) {
        Control& control = form.At(QString::fromUtf8(name));
        control.container = &strip;
        control.page = 1;
    }
}

/// Puts the captions of a table's rows on the buttons of a group. Returns the highest index in use, -1 for none.
int FillOptions(DiaryContext& diary, const char* group, const QString& sql,
                const std::function<void(int index, const QString& kind)>& each = {}) {
    std::unique_ptr<store::Recordset> row;
    int index = -1;
    for (bool any = diary.data.OpenMainRecordset(row, sql); any && !row->Eof(); row->MoveNext()) {
        ++index;
        diary.Item(group, index).SetCaption(row->Value(QStringLiteral("名称")).value_or(QString()));
        if (each) each(index, row->Value(QStringLiteral("区分")).value_or(QString()));
    }
    return index;
}

void FillHandlingList(DiaryContext& diary, int index, const QString& matter) {
    std::unique_ptr<store::Recordset> row;
    QStringList names;
    const bool any =
        diary.data.OpenMainRecordset(row, "SELECT * FROM K対応分類 WHERE 要件分類 = '" + matter + "' ORDER BY 区分");
    for (; any && !row->Eof(); row->MoveNext())
        names.append(row->Value(QStringLiteral("名称")).value_or(QString()));
    diary.Item("対応分類名称", index).SetEntries(names);
    diary.Item("対応分類", index).maximum = std::max(0, static_cast<int>(names.size()) - 1);
}

}  // namespace

void BuildScreenItems(Form& form) {
    AddCatcher(form, "ヘッド終了");
    AddDateAndTime(form);
    AddStaff(form);
    AddCounterparty(form);
    AddContact(form);
    AddClassification(form);
    AddDocuments(form);
    AddDetailPages(form);
    AddTitleAndCommands(form);
    AddCatcher(form, "テイル終了");
}

void FillClassificationGroups(DiaryContext& diary) {
    ScreenState& state = diary.state;
    state.発信区分Count = FillOptions(diary, "opb_発信区分",
                                      QStringLiteral("SELECT TOP 3 * FROM K発信区分 WHERE 区分 > '0' ORDER BY 区分"));
    state.応対方法Count = FillOptions(diary, "opb_応対方法",
                                      QStringLiteral("SELECT TOP 5 * FROM K応対方法 WHERE 区分 > '0' ORDER BY 区分"));
    state.要件分類Count = FillOptions(
        diary, "opb_要件分類", QStringLiteral("SELECT TOP 9 * FROM K要件分類 WHERE 区分 > '0' ORDER BY 区分"),
        [&diary](int index, const QString& kind) { FillHandlingList(diary, index, kind); });
}

}  // namespace diary
