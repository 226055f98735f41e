#include "sample_list.h"

using screen::Control;
using screen::ControlKind;

std::vector<screen::ListRow> Rows(int count, const QString& mark) {
    std::vector<screen::ListRow> rows;
    for (int row = 0; row < count; ++row) {
        const QString code = QString("%1").arg(row + 1, 5, 10, QChar('0'));
        rows.push_back({"C" + code, {code, mark + code, "本社", "営業部", "第一課"}});
    }
    return rows;
}

SampleList::SampleList(const char* name) : form(QString::fromUtf8(name)) {
    form.SetCaption("見本一覧");
    form.Add(ControlKind::SSPanel, "wnd_ttl", "見本一覧");
    AddItem("コード", "btn_コード検索", 5).use = screen::EntryUse::Code;
    form.Add(ControlKind::CaptionLabel, "lab_コード", "以降");
    AddItem("名称", "btn_名称検索", 40);
    AddItem("部門コード", "btn_部門コード検索", 3);
    Control& echo = form.Add(ControlKind::EntryField, "部門名");
    echo.readOnly = true;
    echo.SetTabStop(false);
    AddItem("電話", "btn_電話番号検索", 0);
    form.Add(ControlKind::SSPanel, "itm_ttl_在籍区分", "在籍区分");
    form.Add(ControlKind::EntryNumber, "在籍区分");
    form.Add(ControlKind::ComboBox, "在籍区分名称").SetEntries({"在籍", "退職", "全て"});
    form.Add(ControlKind::CheckBox, "chb_得意先", "得意先");
    form.Add(ControlKind::CheckBox, "chb_対応先", "対応先");
    form.Add(ControlKind::SSCommand, "btn_複合検索", "検索");
    form.Add(ControlKind::SSCommand, "btn_否定検索", "否検索");
    form.Add(ControlKind::SSCommand, "btn_画面クリア", "条件ｸﾘｱ");
    list = &form.Add(ControlKind::ListView, "List見本");
    list->columns = {{"コード", 750}, {"氏名", 2500}, {"事業所", 2300}, {"部門", 2300}, {"セクション", 2300}};
    list->onDoubleClick = [this] {
        if (list->ListIndex() >= 0) picked << QString::number(list->ListIndex());
    };
    form.Add(ControlKind::SSCommand, "btn_戻る", "戻る");
    form.Add(ControlKind::CaptionLabel, "lab_注意", "一回の検索で1000件までを表示します。").SetVisible(false);
    form.Add(ControlKind::CaptionLabel, "lab_件数", "3件");
    form.Add(ControlKind::CaptionLabel, "lab_他", "どこにも属さない");
    list->SetRows(Rows(3));
}

Control& SampleList::AddItem(const QString& name, const QString& button, int length) {
    Control& entry = form.Add(ControlKind::EntryField, name);
    entry.maxLength = length;
    form.Add(ControlKind::SSCommand, button, name + "検索");
    return entry;
}
