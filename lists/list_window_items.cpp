// The items of a list window, made from its description.
#include "lists/list_window.h"

namespace lists {

using screen::Control;
using screen::ControlKind;

void ListWindow::BuildItems() {
    form_.Add(ControlKind::SSPanel, QStringLiteral("wnd_ttl"), description_.title);
    for (const SearchItem& item : description_.items)
        AddItem(item);
    for (const Classification& classification : description_.classifications)
        AddClassification(classification);
    AddCheckBoxes();
    AddPeriods();
    AddButtons();
    list_ = &form_.Add(ControlKind::ListView, description_.list);
    for (const ListColumn& column : description_.columns)
        list_->columns.push_back({column.header, column.width, column.amount});
    list_->onDoubleClick = [this] { Pick(); };
    list_->onHeaderClick = [this](int column) { SortBy(column); };
    form_.Add(ControlKind::SSCommand, QStringLiteral("btn_戻る"), QStringLiteral("戻る")).onClick = [this] {
        GoBack();
    };
    form_
        .Add(ControlKind::CaptionLabel, QStringLiteral("lab_注意"),
             QStringLiteral("一回の検索で1000件までを表示します。"))
        .SetVisible(false);
    form_.Add(ControlKind::CaptionLabel, QStringLiteral("lab_件数"));
}

void ListWindow::AddItem(const SearchItem& item) {
    if (!item.caption.isEmpty()) form_.Add(ControlKind::SSPanel, "itm_ttl_" + item.name, item.caption);
    Control& entry = form_.Add(item.kind, item.name);
    entry.use = item.use;
    entry.maxLength = item.maxLength;
    entry.enforcesMaxLength = item.maxLength > 0;
    // An item that has to be marked before it opens a list doesn't name itself when it gets the focus.
    if (!item.markFirst) entry.onGotFocus = [this, &entry] { services_.pick.ActiveEntryControl = &entry; };
    entry.onChange = [this] {
        if (!showing_) RefreshButtons();
    };
    entry.onLostFocus = [this, &item] { CommitItem(item); };
    if (!item.nestedList.isEmpty()) {
        entry.onDoubleClick = [this, &item] { OpenNested(item); };
        entry.onKeyDown = [this, &item](screen::Key key) {
            if (key == screen::Key::Ctrl) OpenNested(item);
        };
    }
    if (!item.button.isEmpty()) {
        Control& button = form_.Add(ControlKind::SSCommand, item.button, item.buttonCaption);
        if (item.mode > 0)
            button.onClick = [this, mode = item.mode] { SearchBy(mode); };
        else
            button.onClick = [this, &item] { OpenNested(item); };
    }
    if (item.fromHereLabel) form_.Add(ControlKind::CaptionLabel, "lab_" + item.name, QStringLiteral("以降"));
    if (item.nameItem.isEmpty()) return;
    // The echo of a name never holds the focus: it stands outside the tab order and hands on what reaches it.
    Control& echo = form_.Add(ControlKind::EntryField, item.nameItem);
    echo.readOnly = true;
    echo.SetTabStop(false);
    echo.onGotFocus = [this, &echo] {
        if (Control* next = form_.NextInTabOrder(&echo, true)) form_.SetFocus(*next);
    };
}

void ListWindow::AddClassification(const Classification& classification) {
    form_.Add(ControlKind::SSPanel, "itm_ttl_" + classification.item, classification.caption);
    Control& number = form_.Add(ControlKind::EntryNumber, classification.item);
    Control& name = form_.Add(ControlKind::ComboBox, classification.item + "名称");
    number.use = screen::EntryUse::Code;
    number.onGotFocus = [this, &number] { services_.pick.ActiveEntryControl = &number; };
    number.onChange = [this, &number, &name] {
        if (showing_) return;
        name.SetListIndex(number.Value());
        classIndex_[number.Name()] = number.Value();
    };
    name.onClick = [&number, &name] { number.SetValue(name.ListIndex()); };
}

void ListWindow::AddCheckBoxes() {
    for (const CheckBox& box : description_.checkBoxes) {
        Control& control = form_.Add(ControlKind::CheckBox, box.name, box.caption);
        control.SetValue(box.on ? 1 : 0);
        control.onChange = [this, &box] {
            if (!showing_) FormChecked(box.name);
        };
    }
}

void ListWindow::AddPeriods() {
    for (int i = 0; i < static_cast<int>(description_.periods.size()); ++i)
        form_
            .Add(ControlKind::SSOption, QStringLiteral("opb_期間"),
                 description_.periods[static_cast<std::size_t>(i)].caption, i)
            .onClick = [this, i] { period_ = i; };
}

void ListWindow::AddButtons() {
    const auto add = [this](const char* name, const QString& caption, std::function<void()> click) {
        if (!caption.isEmpty())
            form_.Add(ControlKind::SSCommand, QString::fromUtf8(name), caption).onClick = std::move(click);
    };
    add("btn_複合検索", description_.searchCaption, [this] { SearchBy(0); });
    add("btn_否定検索", description_.negativeCaption, [this] { SearchBy(-1); });
    add("btn_画面クリア", description_.canClear ? QStringLiteral("条件ｸﾘｱ") : QString(), [this] { Clear(); });
}

}  // namespace lists
