#include "lists/list_window.h"

#include <algorithm>

#include "items/display_forms.h"
#include "screen/focus_walk.h"

namespace lists {

using screen::Control;
using screen::ListRow;

ListWindow::ListWindow(const ListDescription& description, ListServices services, ListWindows& others, OwnRows own)
    : description_(description), own_(std::move(own)), services_(services), others_(others), form_(description.name) {
    BuildItems();
    form_.SetCaption(description.title);
    form_.onLoad = [this] {
        if (!loaded_) FirstLoad();
        loaded_ = true;
        // Where there is nothing to type the arrow keys are wanted at once.
        if (description_.items.empty()) form_.SetFocus(*list_);
    };
    form_.onEscape = [this] { GoBack(); };
    form_.onQueryClose = [this] {
        GoBack();
        return false;
    };
}

void ListWindow::Run() {
    form_.openedBeside = services_.pick.ReturnFocusControl;
    form_.SetEnabled(true);
    services_.host.ShowModal(form_);
}

void ListWindow::SearchBy(int mode) {
    searchMode_ = mode;
    Search();
    form_.SetFocus(*list_);
}

void ListWindow::Search() {
    std::vector<ListRow> rows = own_.rows ? own_.rows() : std::vector<ListRow>();
    const SearchValues values = Values();
    // Compared as it stands, a text that is no date would find other days than whoever typed it means.
    const bool unread = HasUnreadDate();
    services_.host.SetBusy(true);
    for (const ListStatement& statement : description_.statements)
        if (!unread && (statement.checkBox.isEmpty() || At(statement.checkBox).Value() != 0))
            RunStatement(statement, values, rows);
    const int count = static_cast<int>(rows.size());
    list_->SetRows(Sorted(std::move(rows)));
    services_.host.SetBusy(false);
    At(QStringLiteral("lab_注意")).SetVisible(count >= kMostRows);
    At(QStringLiteral("lab_件数"))
        .SetCaption(unread ? QStringLiteral("日付が正しくありません。") : QStringLiteral("%1件").arg(count));
    RefreshButtons();
}

SearchValues ListWindow::Values() const {
    const session::SessionContext& session = services_.session;
    SearchValues values{
        session.DbKind, services_.pick.ListCondition, session.SiteCode, session.OperatingSiteCode, values_, classIndex_,
        classAll_};
    for (const CheckBox& box : description_.checkBoxes)
        values.checks[box.name] = form_.At(box.name).Value();
    if (description_.periods.empty()) return values;
    const int months = description_.periods.at(static_cast<std::size_t>(period_)).months;
    if (months == 0) return values;
    const QDateTime now = services_.clock.Now();
    values.firstDay = items::DateText(now.addMonths(-months));
    values.lastDay = items::DateText(now);
    return values;
}

void ListWindow::RunStatement(const ListStatement& statement, const SearchValues& values, std::vector<ListRow>& rows) {
    const int room = kMostRows - static_cast<int>(rows.size());
    const QString sql = BuildSearchSql(description_, statement, searchMode_, values);
    std::unique_ptr<store::Recordset> found;
    // Not every statement has a limit of its own.
    if (room == 0 || sql.isEmpty() || !services_.data.OpenMainRecordset(found, sql, false, room)) return;
    for (; !found->Eof(); found->MoveNext())
        rows.push_back(RowOf(statement, *found));
}

ListRow ListWindow::RowOf(const ListStatement& statement, store::Recordset& found) const {
    ListRow row;
    row.key = statement.keyPrefix;
    for (const QString& column : description_.keyColumns)
        row.key += found.Value(column).value_or(QString());
    for (const ListColumn& column : description_.columns) {
        if (column.source.isEmpty()) {
            row.cells << statement.firstText;
            continue;
        }
        const std::optional<QString> value = found.Value(column.source);
        // No amount at all stays blank, unlike an amount of nothing.
        row.cells << (value && column.amount ? items::AmountColumnText(*value) : value.value_or(QString()));
    }
    return row;
}

std::vector<ListRow> ListWindow::Sorted(std::vector<ListRow> rows) const {
    const auto sorted = list_->Sorted();
    if (!sorted) return rows;
    std::stable_sort(rows.begin(), rows.end(), [&sorted](const ListRow& a, const ListRow& b) {
        const int order = a.cells.value(sorted->column).compare(b.cells.value(sorted->column), Qt::CaseInsensitive);
        return sorted->descending ? order > 0 : order < 0;
    });
    return rows;
}

void ListWindow::SortBy(int column) {
    // Another column lies the way the last one did; the same one turns round.
    const screen::RowOrder last = list_->Sorted().value_or(screen::RowOrder{-1, false});
    list_->SetSorted(screen::RowOrder{column, last.column == column ? !last.descending : last.descending});
    // The row that was selected stays it, wherever it now stands.
    const int selected = list_->ListIndex();
    const QString key = selected < 0 ? QString() : list_->Rows()[static_cast<std::size_t>(selected)].key;
    list_->SetRows(Sorted(list_->Rows()));
    if (selected < 0) return;
    const auto place =
        std::find_if(list_->Rows().begin(), list_->Rows().end(), [&key](const ListRow& row) { return row.key == key; });
    list_->SetListIndex(static_cast<int>(place - list_->Rows().begin()));
}

void ListWindow::Pick() {
    const int selected = list_->ListIndex();
    if (selected < 0) return;
    const ListRow row = list_->Rows()[static_cast<std::size_t>(selected)];
    if (own_.picked) {
        GoBack();
        own_.picked(row.key);
        return;
    }
    PickState& pick = services_.pick;
    const bool leavesKey = description_.kind == ListKind::Number || description_.keepsKeyInCondition;
    if (leavesKey) pick.ListCondition = row.key;
    Control& target = *pick.ReturnFocusControl;
    target.SetText(description_.keepsKeyInCondition ? row.key.mid(2) : row.cells.value(0));
    CloseWindow();
    EnableCaller();
    if (!leavesKey && description_.kind != ListKind::Name) pick.ListCondition.clear();
    FocusAsker();
    if (!pick.PendingFocusControl) return;
    // A caller on the main form may have its next item out of reach; one in another list never has.
    if (&pick.PendingFocusControl->Owner() == &services_.mainForm)
        pick.PendingFocusControl = screen::AdvanceFocusTarget(services_.mainForm, pick.PendingFocusControl);
    pick.PendingFocusControl->Owner().SetFocus(*pick.PendingFocusControl);
}

void ListWindow::GoBack() {
    PickState& pick = services_.pick;
    CloseWindow();
    EnableCaller();
    if (description_.kind != ListKind::Name) pick.ListCondition.clear();
    FocusAsker();
}

void ListWindow::FocusAsker() {
    Control& asker = *services_.pick.ReturnFocusControl;
    asker.Owner().SetFocus(asker);
    // It may have had the focus all the time, and then doesn't hear of it. In an outer list the mark is part of the
    // gesture.
    if (&asker.Owner() == &services_.mainForm) services_.pick.ActiveEntryControl = &asker;
}

void ListWindow::CloseWindow() {
    if (description_.kind == ListKind::KeepsState) {
        // What was typed last is searched by when the window is opened again.
        form_.CommitFocused();
        services_.host.Hide(form_);
        return;
    }
    loaded_ = false;
    services_.host.Unload(form_);
}

void ListWindow::EnableCaller() {
    if (services_.pick.NestedListOpen == 1)
        services_.pick.OuterListWindow->Form().SetEnabled(true);
    else
        services_.mainForm.SetEnabled(true);
}

void ListWindow::OpenNested(const SearchItem& item) {
    PickState& pick = services_.pick;
    Control& control = At(item.name);
    ListWindow* nested = others_.Find(Checked(item) ? item.whenChecked.nestedList : item.nestedList);
    if (nested && (!item.markFirst || pick.ActiveEntryControl == &control)) OpenOver(item, *nested);
    pick.ActiveEntryControl = &control;
}

void ListWindow::OpenOver(const SearchItem& item, ListWindow& list) {
    // The caller's two controls come back behind the pick; its condition doesn't: the searches that follow run without
    // it, or with the key that a pick left there. A list opened out of a nested one gives the nesting back as it was.
    PickState& pick = services_.pick;
    const PickState before = pick;
    if (item.opensOverMain) {
        services_.mainForm.SetEnabled(false);
    } else {
        pick.OuterListWindow = this;
        pick.NestedListOpen = 1;
        form_.SetEnabled(false);
    }
    pick.ListCondition.clear();
    pick.ReturnFocusControl = &At(item.name);
    pick.PendingFocusControl = &At(item.nextItem.isEmpty() ? item.button : item.nextItem);
    list.Run();
    pick.NestedListOpen = before.NestedListOpen;
    pick.OuterListWindow = before.OuterListWindow;
    pick.ReturnFocusControl = before.ReturnFocusControl;
    pick.PendingFocusControl = before.PendingFocusControl;
}

void ListWindows::OpenListWindow(const QString& name, const QString& condition, Control& returnTo, Control& next) {
    ListWindow* window = Find(name);
    if (!window) return;
    services_.mainForm.SetEnabled(false);
    services_.pick.ListCondition = condition;
    services_.pick.ReturnFocusControl = &returnTo;
    services_.pick.PendingFocusControl = &next;
    window->Run();
}

void ListWindows::OpenOwnList(const ListDescription& description, const OwnRows& rows, Control& back) {
    services_.mainForm.SetEnabled(false);
    services_.pick.ListCondition.clear();
    services_.pick.ReturnFocusControl = services_.pick.PendingFocusControl = &back;
    ListWindow(description, services_, *this, rows).Run();
}

ListWindow* ListWindows::Find(const QString& name) {
    const auto known = windows_.constFind(name);
    if (known != windows_.cend()) return known->get();
    const ListDescription* description = FindList(name);
    if (!description) return nullptr;
    return windows_.insert(name, std::make_shared<ListWindow>(*description, services_, *this))->get();
}

}  // namespace lists
