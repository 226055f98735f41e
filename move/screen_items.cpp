#include "move/screen_items.h"

#include "move/target_slot.h"

namespace move {

using screen::Control;
using screen::ControlKind;
using screen::Form;

namespace {

void AddPanel(Form& form, const char* name, const char* caption = "") {
    form.Add(ControlKind::SSPanel, QString::fromUtf8(name), QString::fromUtf8(caption));
}

void AddLabel(Form& form, const char* name, const char* caption) {
    form.Add(ControlKind::CaptionLabel, QString::fromUtf8(name), QString::fromUtf8(caption));
}

void AddShown(Form& form, const char* name, ControlKind kind = ControlKind::EntryField) {
    Control& control = form.Add(kind, QString::fromUtf8(name));
    control.readOnly = true;
    control.SetTabStop(false);
}

Control& AddButton(Form& form, const char* name, const char* caption, const char* shortcut = "") {
    Control& button = form.Add(ControlKind::SSCommand, QString::fromUtf8(name), QString::fromUtf8(caption));
    button.shortcut = QString::fromLatin1(shortcut);
    return button;
}

void AddAside(Form& form, const char* name, const char* caption, const char* shortcut = "") {
    AddButton(form, name, caption, shortcut).SetTabStop(false);
}

void AddSource(Form& form) {
    AddPanel(form, "bak_移動元", "移動元");
    AddPanel(form, "itm_ttl_表示日付", "日付");
    AddShown(form, "表示日付");
    AddShown(form, "曜日");
    AddPanel(form, "itm_ttl_開始時刻", "時刻");
    AddShown(form, "開始時刻");
    AddLabel(form, "lab_開始時刻", "～");
    AddShown(form, "終了時刻");
    AddPanel(form, "itm_ttl_担当者コード", "担当者");
    AddShown(form, "担当者コード");
    form.At(QStringLiteral("担当者コード")).maxLength = 5;
    AddShown(form, "担当者名");
    AddPanel(form, "itm_ttl_部門名", "部門");
    AddShown(form, "部門名");
    AddPanel(form, "itm_ttl_セクション名", "所属");
    AddShown(form, "セクション名");
    AddPanel(form, "itm_ttl_発信状況", "発信");
    AddShown(form, "発信状況");
    AddPanel(form, "itm_ttl_要件内容", "要件");
    AddShown(form, "要件内容");
    AddPanel(form, "itm_ttl_相手先略称", "相手先");
    AddShown(form, "相手先略称");
    AddPanel(form, "itm_ttl_相手先御担当者名", "御担当者");
    AddShown(form, "相手先御担当者名");
    AddPanel(form, "itm_ttl_営業活動摘要", "摘要");
    AddShown(form, "営業活動摘要", ControlKind::EntryMemo);
}

void AddTyped(Form& form) {
    for (const TargetText& text : kTypedTexts) {
        Control& control = form.Add(ControlKind::EntryField, QString::fromUtf8(text.name));
        control.use = screen::EntryUse::Code;
        control.maxLength = text.width;
        control.enforcesMaxLength = true;
    }
}

void AddTarget(Form& form) {
    AddPanel(form, "bak_移動先", "移動先");
    AddPanel(form, "itm_ttl_移動日付", "日付");
    AddPanel(form, "itm_ttl_移動開始時刻", "時刻");
    AddTyped(form);
    for (const TargetText& text : kEchoedTexts)
        AddShown(form, text.name);
    AddLabel(form, "lab_移動日付年", "年");
    AddLabel(form, "lab_移動日付月", "月");
    AddLabel(form, "lab_移動日付日", "日");
    AddLabel(form, "lab_移動開始時刻時", "：");
    AddLabel(form, "lab_移動開始時刻", "～");
    AddLabel(form, "lab_移動終了時刻時", "：");
    AddAside(form, "btn_担当者コード", "担当者");
    AddAside(form, "btn_部門コード", "部門");
    AddAside(form, "btn_セクションコード", "所属");
    // The same keys as on the main screen, which steps by the hour where this one steps by the quarter.
    AddAside(form, "btn_前日", "前日", "F3");
    AddAside(form, "btn_翌日", "翌日", "F4");
    AddAside(form, "btn_前週", "前週", "Shift+F3");
    AddAside(form, "btn_翌週", "翌週", "Shift+F4");
    AddAside(form, "btn_15分前", "15分前", "Shift+F7");
    AddAside(form, "btn_15分後", "15分後", "Shift+F8");
    AddAside(form, "btn_30分前", "30分前", "F7");
    AddAside(form, "btn_30分後", "30分後", "F8");
    AddAside(form, "btn_Now", "現在", "F5");
}

}  // namespace

void BuildScreenItems(Form& form) {
    form.Add(ControlKind::CommandButton, QStringLiteral("ヘッド終了"));
    AddPanel(form, "prg_ttl");
    AddPanel(form, "お知らせ");
    AddPanel(form, "結果");
    AddSource(form);
    AddTarget(form);
    AddButton(form, "btn_移動", "移動", "F12");
    AddButton(form, "btn_追加", "追加", "F11");
    AddButton(form, "btn_終了", "終了", "F10");
    form.Add(ControlKind::CommandButton, QStringLiteral("テイル終了"));
}

}  // namespace move
