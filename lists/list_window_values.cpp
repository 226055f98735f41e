// The search values of a list window: how they open, are taken over, committed, shown and cleared.
#include <algorithm>

#include "items/calendar.h"
#include "items/display_forms.h"
#include "items/text_rules.h"
#include "lists/condition_value.h"
#include "lists/list_window.h"

namespace lists {

using screen::Control;

namespace {

/// Digits as far as they go: "2026" compares as the first day of that year does.
bool ComparesAsDate(const QString& value) {
    return value.size() <= 8 && items::DigitsOnly(value) == value;
}

bool IsNumber(const SearchItem& item) {
    return item.value == ValueForm::Digits || item.commit == CommitRule::Postcode;
}

}  // namespace

void ListWindow::FirstLoad() {
    searchMode_ = 0;
    list_->SetSorted({});
    for (const Classification& classification : description_.classifications)
        FillClassification(classification);
    showing_ = true;
    for (const CheckBox& box : description_.checkBoxes)
        At(box.name).SetValue(box.on ? 1 : 0);
    showing_ = false;
    period_ = description_.openingPeriod;
    if (!description_.periods.empty()) form_.At(QStringLiteral("opb_期間"), period_).SetValue(1);
    TakeOverCondition(true);
    ShowValues();
    Search();
}

void ListWindow::FillClassification(const Classification& classification) {
    std::unique_ptr<store::Recordset> row;
    QStringList names;
    const bool any = services_.data.OpenMainRecordset(row, "SELECT * FROM " + classification.table + " ORDER BY 区分");
    for (; any && !row->Eof(); row->MoveNext())
        names << row->Value(QStringLiteral("名称")).value_or(QString());
    // The index of a name is its code; the one behind the last code means all.
    const int all = static_cast<int>(names.size());
    names << QStringLiteral("全て");
    At(classification.item + "名称").SetEntries(names);
    At(classification.item).maximum = all;
    classAll_[classification.item] = all;
    classIndex_[classification.item] = classification.opening < 0 ? all : std::min(classification.opening, all);
}

QString ListWindow::OpeningValue(const SearchItem& item, bool firstLoad) const {
    switch (item.opening) {
        case Opening::Empty:
            return {};
        case Opening::MainStaff:
            if (!firstLoad) return {};
            [[fallthrough]];
        case Opening::MainStaffAlways: {
            const Control* staff = services_.mainForm.Find(QStringLiteral("担当者コード"));
            return staff ? staff->Text() : QString();
        }
        case Opening::ReturnPrefix:
            break;
    }
    if (!firstLoad) return {};
    const Control* asked = services_.pick.ReturnFocusControl;
    const QString digits = items::DigitsOnly(asked ? asked->Text().left(3) : QString());
    return digits.size() < 3 ? QStringLiteral("100") : digits;
}

void ListWindow::TakeOverCondition(bool firstLoad) {
    QString& condition = services_.pick.ListCondition;
    for (const SearchItem& item : description_.items) {
        if (!item.whenChecked.checkBox.isEmpty()) TakeOverCheckBox(item.whenChecked.checkBox);
        QString value = OpeningValue(item, firstLoad);
        if (!item.conditionColumn.isEmpty() && condition.contains(item.conditionColumn, Qt::CaseInsensitive))
            value = TakeConditionValue(item.conditionColumn, condition);
        values_[item.name] = value;
        LookUpName(item);
    }
    for (const Classification& classification : description_.classifications) {
        const QString& text = classification.conditionText;
        if (text.isEmpty() || !condition.contains(text, Qt::CaseInsensitive)) continue;
        const QString column = text.left(text.lastIndexOf(QStringLiteral(" =")));
        const int index = items::Val16(TakeConditionValue(column, condition));
        classIndex_[classification.item] = std::clamp(index, 0, classAll_.value(classification.item));
    }
}

void ListWindow::TakeOverCheckBox(const QString& name) {
    QString& condition = services_.pick.ListCondition;
    for (const CheckBox& box : description_.checkBoxes) {
        if (box.name != name) continue;
        const bool named =
            !box.conditionColumn.isEmpty() && condition.contains(box.conditionColumn, Qt::CaseInsensitive);
        const int value = named ? items::Val16(TakeConditionValue(box.conditionColumn, condition)) : 0;
        showing_ = true;
        At(name).SetValue(value != 0 ? 1 : 0);
        showing_ = false;
    }
}

bool ListWindow::Checked(const SearchItem& item) const {
    const QString& box = item.whenChecked.checkBox;
    return !box.isEmpty() && form_.At(box).Value() != 0;
}

void ListWindow::FormChecked(const QString& checkBox) {
    for (const SearchItem& item : description_.items) {
        if (item.whenChecked.checkBox != checkBox) continue;
        LookUpName(item);
        ShowValues();
    }
}

void ListWindow::LookUpName(const SearchItem& item) {
    if (item.nameItem.isEmpty()) return;
    QString& name = values_[item.nameItem];
    name.clear();
    const QString code = values_.value(item.name);
    std::unique_ptr<store::Recordset> row;
    const QString& sql = Checked(item) ? item.whenChecked.nameSql : item.nameSql;
    if (code.isEmpty() || !services_.data.OpenMainRecordset(row, sql + code + "'")) return;
    name = row->Value(row->Columns().value(0)).value_or(QString());
}

void ListWindow::CommitItem(const SearchItem& item) {
    const QString text = At(item.name).Text();
    const bool wantsDigits = item.commit == CommitRule::IfDigits || item.commit == CommitRule::Postcode;
    if (wantsDigits && items::DigitsOnly(text).isEmpty()) return;
    const QString value = Committed(item, text);
    if (value == values_.value(item.name) && value == text) return;
    values_[item.name] = value;
    LookUpName(item);
    ShowValues();
}

QString ListWindow::Committed(const SearchItem& item, const QString& text) const {
    if (item.commit == CommitRule::Postcode) return items::NormalizePostcodeText(text);
    if (item.commit == CommitRule::Date)
        return items::TypedDate(text, services_.clock.Now().date().year()).value_or(text);
    return items::FormatToMask(text, item.mask);
}

/// True when the search that runs next is by a date which nobody can read.
bool ListWindow::HasUnreadDate() const {
    return std::any_of(description_.items.begin(), description_.items.end(), [this](const SearchItem& item) {
        const QString value = values_.value(item.name);
        if (item.commit != CommitRule::Date || value.trimmed().isEmpty() || ComparesAsDate(value)) return false;
        return std::any_of(description_.modes.begin(), description_.modes.end(), [&](const SearchMode& mode) {
            return mode.number == searchMode_ && mode.items.contains(item.name);
        });
    });
}

void ListWindow::ShowValues() {
    showing_ = true;
    for (const SearchItem& item : description_.items) {
        At(item.name).SetText(values_.value(item.name));
        if (!item.nameItem.isEmpty()) At(item.nameItem).SetText(values_.value(item.nameItem));
        if (!item.whenChecked.checkBox.isEmpty())
            At(item.button).SetCaption(Checked(item) ? item.whenChecked.buttonCaption : item.buttonCaption);
    }
    for (const Classification& classification : description_.classifications) {
        const int index = classIndex_.value(classification.item);
        At(classification.item).SetValue(index);
        At(classification.item + "名称").SetListIndex(index);
    }
    showing_ = false;
    RefreshButtons();
}

void ListWindow::RefreshButtons() {
    for (const SearchItem& item : description_.items) {
        const QString text = At(item.name).RawText();
        const bool filled = !(IsNumber(item) ? items::DigitsOnly(text) : text.trimmed()).isEmpty();
        if (item.mode > 0) At(item.button).SetEnabled(filled);
    }
}

void ListWindow::Clear() {
    searchMode_ = 0;
    // The caller's condition goes too: a clear shows more than the caller asked for, and is meant to.
    if (description_.takesCondition) services_.pick.ListCondition.clear();
    TakeOverCondition(false);
    ShowValues();
    Search();
    form_.SetFocus(*list_);
}

}  // namespace lists
