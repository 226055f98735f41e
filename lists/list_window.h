#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <memory>

#include "lists/list_description.h"
#include "lists/pick_state.h"
#include "platform/clock.h"
#include "screen/screen_host.h"
#include "session/data_access.h"

namespace lists {

class ListWindows;

/// What a list window works with.
struct ListServices {
    session::SessionContext& session;
    session::DataAccess& data;
    screen::ScreenHost& host;
    PickState& pick;
    screen::Form& mainForm;  ///< disabled and enabled around a pick
    const platform::Clock& clock;
};

/// Rows that a window shows instead of a search's, and what becomes of a pick: it is told the row's key when the window
/// is closed.
struct OwnRows {
    std::function<std::vector<screen::ListRow>()> rows;
    std::function<void(const QString& key)> picked;
};

/// One search-and-pick window, read from its description: search items, buttons, the list, and what a pick gives back.
class ListWindow {
  public:
    ListWindow(const ListDescription& description, ListServices services, ListWindows& others, OwnRows own = {});

    /// Shows the window and waits until it is closed. The pick state says what it searches and where the pick goes.
    void Run();

    screen::Form& Form() { return form_; }

    /// No search ever lists more rows.
    static constexpr int kMostRows = 1000;

  private:
    // Building (list_window_items.cpp).
    void BuildItems();
    void AddItem(const SearchItem& item);
    void AddClassification(const Classification& classification);
    void AddCheckBoxes();
    void AddPeriods();
    void AddButtons();

    // Search values (list_window_values.cpp).
    void FirstLoad();
    void FillClassification(const Classification& classification);
    void TakeOverCondition(bool firstLoad);
    void TakeOverCheckBox(const QString& name);
    bool Checked(const SearchItem& item) const;
    void FormChecked(const QString& checkBox);
    QString OpeningValue(const SearchItem& item, bool firstLoad) const;
    void CommitItem(const SearchItem& item);
    QString Committed(const SearchItem& item, const QString& text) const;
    bool HasUnreadDate() const;
    void LookUpName(const SearchItem& item);
    void ShowValues();
    void RefreshButtons();
    void Clear();

    // Search and rows (list_window.cpp).
    void SearchBy(int mode);
    void Search();
    SearchValues Values() const;
    void RunStatement(const ListStatement& statement, const SearchValues& values, std::vector<screen::ListRow>& rows);
    screen::ListRow RowOf(const ListStatement& statement, store::Recordset& found) const;
    void SortBy(int column);
    std::vector<screen::ListRow> Sorted(std::vector<screen::ListRow> rows) const;

    // Closing.
    void Pick();
    void GoBack();
    void CloseWindow();
    void EnableCaller();
    void FocusAsker();
    void OpenNested(const SearchItem& item);
    void OpenOver(const SearchItem& item, ListWindow& list);

    screen::Control& At(const QString& name) { return form_.At(name); }

    const ListDescription& description_;
    const OwnRows own_;
    ListServices services_;
    ListWindows& others_;
    screen::Form form_;
    screen::Control* list_ = nullptr;
    bool loaded_ = false;
    bool showing_ = false;  ///< the program writes to the items itself
    int searchMode_ = 0;
    QHash<QString, QString> values_;  ///< committed values by item
    QHash<QString, int> classIndex_, classAll_;
    int period_ = 0;
};

/// The list windows of the program; each is made when it is first asked for and kept.
class ListWindows {
  public:
    explicit ListWindows(ListServices services) : services_(services) {}

    /// Opens a list over the main form: sets the pick state, disables the form, and waits for the pick. An unknown list
    /// does nothing.
    void OpenListWindow(const QString& name, const QString& condition, screen::Control& returnTo,
                        screen::Control& next);

    /// Opens a list that isn't in the catalogue and finds its rows by itself. `back` has the focus again behind it.
    void OpenOwnList(const ListDescription& description, const OwnRows& rows, screen::Control& back);

    /// The window of that name; null for an unknown one.
    ListWindow* Find(const QString& name);

  private:
    ListServices services_;
    QHash<QString, std::shared_ptr<ListWindow>> windows_;
};

}  // namespace lists
