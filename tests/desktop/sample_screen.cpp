#include "sample_screen.h"

using screen::Control;
using screen::ControlKind;

namespace {

QString NameOf(const Control& control) {
    return control.Index() < 0 ? control.Name() : control.Name() + QString::number(control.Index());
}

}  // namespace

Control& SampleScreen::Add(ControlKind kind, const QString& name, const QString& caption, int index) {
    Control& control = form.Add(kind, name, caption, index);
    Control* one = &control;
    const auto tell = [this, one](const QString& what) { log.append(NameOf(*one) + u' ' + what); };
    control.onGotFocus = [tell] { tell("got"); };
    control.onLostFocus = [tell] { tell("lost"); };
    control.onChange = [tell, one] { tell("= " + one->Text() + u'/' + QString::number(one->Value())); };
    control.onClick = [tell] { tell("click"); };
    control.onDoubleClick = [tell] { tell("double"); };
    control.onKeyDown = [tell](screen::Key) { tell("ctrl"); };
    control.onRefused = [tell] { tell("refused"); };
    control.onHeaderClick = [tell](int column) { tell("header " + QString::number(column)); };
    return control;
}

SampleScreen::SampleScreen() {
    Add(ControlKind::SSPanel, "見出し", "見出し");
    Add(ControlKind::SSPanel, "結果");
    Control& code = Add(ControlKind::EntryField, "コード");
    code.use = screen::EntryUse::Code;
    code.maxLength = 5;
    code.enforcesMaxLength = true;
    Add(ControlKind::CaptionLabel, "itm_ttl_名称", "名前");
    Add(ControlKind::EntryField, "名称").maxLength = 40;
    Add(ControlKind::EntryPostcode, "郵便番号").use = screen::EntryUse::Code;
    Control& number = Add(ControlKind::EntryNumber, "区分");
    number.use = screen::EntryUse::Code;
    number.maximum = 5;
    for (int index = 0; index < 3; ++index)
        Add(ControlKind::SSOption, "opb_方法", QString("方法%1").arg(index), index);
    Add(ControlKind::ComboBox, "一覧").SetEntries({"なし", "A訪問", "B電話", "Aその他"});
    Add(ControlKind::CheckBox, "確認", "確認");
    Control& gated = Add(ControlKind::EntryField, "関門");
    // Like an item behind an empty key item: who enters is sent back.
    gated.onGotFocus = [this] {
        log.append("関門 got");
        form.SetFocus(At("コード"));
    };
    Control& strip = Add(ControlKind::SSTab, "tab_詳細");
    strip.pages = QStringList{"摘要", "書類"};
    Control& memo = Add(ControlKind::EntryMemo, "摘要");
    memo.container = &strip;
    Control& list = Add(ControlKind::ListView, "書類");
    list.columns = {{"名前", 2000}, {"日付", 1500}};
    std::vector<screen::ListRow> rows;
    for (int row = 1; row <= 13; ++row)
        rows.push_back({QString::number(row), {QString("書類%1").arg(row), "20260101"}});
    list.SetRows(rows);
    list.container = &strip;
    list.page = 1;
    Add(ControlKind::SSCommand, "btn_登録", "登録").shortcut = "F12";
    Add(ControlKind::SSCommand, "btn_終了", "終了 & 閉じる").shortcut = "Shift+F3";
    Add(ControlKind::SSCommand, "btn_はい", "はい").shortcut = "Y";
    Control& off = Add(ControlKind::SSCommand, "btn_削除", "削除");
    off.shortcut = "F9";
    off.SetEnabled(false);
    Add(ControlKind::EntryField, "固定").readOnly = true;
    form.onEscape = [this] { log.append("escape"); };
    form.FocusFirst();
    log.clear();
}

QString SampleScreen::State() const {
    QStringList lines;
    for (const auto& control : form.Controls())
        lines.append(QString("%1|%2|%3|%4|%5")
                         .arg(NameOf(*control), control->RawText())
                         .arg(control->Value())
                         .arg(control->ListIndex())
                         .arg(control->EffectivelyEnabled()));
    lines.append(form.Focused() ? "focus " + NameOf(*form.Focused()) : "no focus");
    lines.append(form.WholeTextSelected() ? "selected" : "");
    return lines.join(u'\n');
}

namespace {

void AddAll(screen::Form& form, ControlKind kind, const QStringList& names) {
    for (const QString& name : names) {
        const QStringList parts = name.split(u'=');
        form.Add(kind, parts[0], parts.value(1));
    }
}

void AddClassification(screen::Form& form) {
    AddAll(form, ControlKind::SSPanel, {"bak_発信者", "itm_ttl_発信区分=発信", "bak_応対方法=応対方法"});
    const QStringList senders{"当社", "相手先", "その他"};
    for (int index = 0; index < 3; ++index)
        form.Add(ControlKind::SSOption, "opb_発信区分", senders[index], index);
    const QStringList means{"訪問", "来社", "電話", "FAX", "メール", ""};
    for (int index = 0; index < 6; ++index)
        form.Add(ControlKind::SSOption, "opb_応対方法", means[index], index).SetVisible(index < 5);
    const QStringList matters{"新規開拓", "引合対応", "見積提出", "受注",  "納期調整",
                              "苦情対応", "回収",     "情報収集", "その他"};
    for (int index = 0; index < 9; ++index) {
        form.Add(ControlKind::SSOption, "opb_要件分類", matters[index], index);
        Control& number = form.Add(ControlKind::EntryNumber, "対応分類", {}, index);
        Control& list = form.Add(ControlKind::ComboBox, "対応分類名称", {}, index);
        list.SetEntries({"", "説明済み", "継続", "完了"});
        list.SetListIndex(index == 2 ? 2 : 0);
        number.SetValue(index == 2 ? 2 : 0);
        number.SetEnabled(index == 2);
        list.SetEnabled(index == 2);
    }
    form.At("opb_要件分類", 2).SetValue(1);
    form.At("opb_応対方法", 0).SetValue(1);
    form.At("opb_発信区分", 0).SetValue(1);
}

void AddCode(screen::Form& form, const QString& name, int length, const QString& text = QString()) {
    Control& control = form.Add(ControlKind::EntryField, name);
    control.maxLength = length;
    control.enforcesMaxLength = true;
    control.use = screen::EntryUse::Code;
    control.SetText(text);
}

void AddDetail(screen::Form& form) {
    Control& strip = form.Add(ControlKind::SSTab, "tab_詳細");
    strip.pages = QStringList{"摘要", "付属書類"};
    Control& memo = form.Add(ControlKind::EntryMemo, "営業活動摘要");
    memo.container = &strip;
    memo.SetText("新型の見積書を持参。\r\n価格は了承、納期のみ再確認とのこと。");
    Control& list = form.Add(ControlKind::ListView, "List付属書類");
    list.columns = {{"書類", 6000}, {"登録", 2000}};
    list.container = &strip;
    list.page = 1;
    for (const char* name :
         {"btn_付属書類追加=付属書類追加", "btn_付属書類削除=付属書類削除", "btn_フォルダ=フォルダ追加"}) {
        const QStringList parts = QString::fromUtf8(name).split(u'=');
        Control& button = form.Add(ControlKind::SSCommand, parts[0], parts[1]);
        button.container = &strip;
        button.page = 1;
    }
}

}  // namespace

void FillDiaryForm(screen::Form& form) {
    form.SetCaption("活動手帳［株式会社見本商事］");
    form.Add(ControlKind::CommandButton, "ヘッド終了");
    AddAll(
        form, ControlKind::SSPanel,
        {"prg_ttl=営業活動手帳", "manualpanel=Manual", "お知らせ=文字オーバーです。3", "itm_ttl_営業活動日付=日付",
         "itm_ttl_開始時刻=時刻", "bak_相手先", "itm_ttl_住所=住所", "itm_ttl_名称=正式名称", "itm_ttl_相手先電話=電話",
         "itm_ttl_FAX=FAX", "bak_相手先御担当者", "itm_ttl_相手先御担当者電話=御担当電話"});
    AddAll(form, ControlKind::CaptionLabel,
           {"Lab_営業活動日付年=年", "Lab_営業活動日付月=月", "lab_営業活動日付日=日", "Lab_開始時刻時=：",
            "lab_開始時刻=～", "Lab_終了時刻時=：", "lab_相手先略称=略称"});
    AddAll(form, ControlKind::SSCommand,
           {"btn_登録=登録", "btn_削除=削除", "btn_移動=移動/追加", "btn_暦編集=暦", "btn_終了=終了"});
    AddCode(form, "営業活動日付年", 4, "2026");
    AddCode(form, "営業活動日付月", 2, "11");
    AddCode(form, "営業活動日付日", 2, "20");
    form.Add(ControlKind::EntryField, "営業活動曜日").SetText("金曜日");
    AddCode(form, "開始時刻時", 2, "10");
    AddCode(form, "開始時刻分", 2, "00");
    AddCode(form, "終了時刻時", 2, "10");
    AddCode(form, "終了時刻分", 2, "30");
    AddAll(form, ControlKind::SSCommand,
           {"btn_前日=前日", "btn_翌日=翌日", "btn_前週=前週", "btn_翌週=翌週", "btn_一時間前=一時間前",
            "btn_一時間後=一時間後", "btn_30分前=30分前", "btn_30分後=30分後", "btn_Now=現在"});
    AddCode(form, "担当者コード", 5, "00012");
    form.Add(ControlKind::EntryField, "担当者名").SetText("髙橋　健一");
    AddCode(form, "部門コード", 3, "010");
    form.Add(ControlKind::EntryField, "部門名").SetText("第一営業部");
    AddCode(form, "セクションコード", 3, "001");
    form.Add(ControlKind::EntryField, "セクション名").SetText("東日本課");
    AddAll(form, ControlKind::SSCommand,
           {"btn_担当者コード=担当者", "btn_部門コード=部門", "btn_セクションコード=所属", "btn_相手先コード=相手先",
            "btn_相手先郵便番号=郵便番号", "btn_相手先御担当者コード=御担当者"});
    AddClassification(form);
    Control& kind = form.Add(ControlKind::EntryNumber, "相手先区分");
    kind.maximum = 5;
    kind.SetValue(1);
    AddCode(form, "相手先コード", 6, "000123");
    for (const char* name : {"相手先略称", "相手先住所A", "相手先住所B", "相手先住所C", "相手先名称A", "相手先名称B"})
        form.Add(ControlKind::EntryField, QString::fromUtf8(name)).maxLength = 40;
    form.At("相手先略称").SetText("葛城精機");
    form.At("相手先住所A").SetText("東京都葛飾区東金町一丁目２番３号");
    form.At("相手先名称A").SetText("葛城精機株式会社");
    form.Add(ControlKind::EntryPostcode, "相手先郵便番号").SetText("1250041");
    for (const char* name : {"相手先電話", "相手先FAX", "相手先御担当者電話"})
        form.Add(ControlKind::EntryPhone, QString::fromUtf8(name)).SetText("03-1234-5678");
    AddCode(form, "相手先御担当者コード", 5, "00001");
    form.Add(ControlKind::EntryField, "相手先御担当者名").SetText("辻　美咲");
    for (const char* kindName : {"出金", "案件", "営業引合", "営業見積", "顧客注文", "営業受注"}) {
        const QString name = QString::fromUtf8(kindName);
        AddCode(form, name + "No", 8, name == "営業見積" ? "00000345" : "");
        form.Add(ControlKind::SSCommand, "btn_" + name + "No", name.right(2) + "No");
        form.Add(ControlKind::SSCommand, "btn_参照" + name).SetEnabled(name != "顧客注文");
    }
    AddDetail(form);
    form.Add(ControlKind::CommandButton, "テイル終了");
}
