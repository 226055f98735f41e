#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "screen/key_press.h"

namespace screen {

class Form;

/// What a control is. The names are those of the platform's controls; KindName tells them as text.
enum class ControlKind {
    CommandButton,  ///< plain push button
    SSCommand,      ///< push button of the screens
    SSPanel,        ///< framed text; may be clicked, takes no focus
    SSOption,       ///< one option of a group; the group is the array of one name
    CheckBox,
    ComboBox,  ///< list to choose one entry from
    ListView,  ///< table of rows
    SSTab,     ///< strip of pages
    EntryField,
    EntrySecret,
    EntryNumber,
    EntryMemo,
    EntryKana,
    EntryPostcode,
    EntryPhone,
    CaptionLabel,
};

QString KindName(ControlKind kind);

/// What an entry item is for: it decides the input method and the folding of full-width digits.
enum class EntryUse {
    Text,  ///< free text: input method on
    Code,  ///< codes and numbers: input method off, full-width digits become half-width
};

struct ListColumn {
    QString header;
    int width = 0;  ///< twips
    bool rightAligned = false;
    bool elideStart = false;  ///< a text that is too long loses its beginning, not its end
    bool stretches = false;   ///< takes the room that a wider window gives
};

struct ListRow {
    QString key;
    QStringList cells;
};

/// The column, from 0, by which a click on its header put the rows of a list in order.
struct RowOrder {
    int column = 0;
    bool descending = false;
    bool operator==(const RowOrder&) const = default;
};

/// One item of a form: its design (name, kind, limits, place in the tab order) and its state. Every change of state is
/// told to the form's watcher, so that a view can follow; SetText, SetValue and SetListIndex also fire OnChange when
/// the content really changes, whoever wrote it.
class Control {
  public:
    Control(Form& form, ControlKind kind, QString name, int index);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Form& Owner() const { return form_; }
    ControlKind Kind() const { return kind_; }
    const QString& Name() const { return name_; }
    /// Place in an array of controls of one name, from 0; -1 for a single control.
    int Index() const { return index_; }

    // Design, set once when the form is built.
    int tabIndex = 0;
    /// Limit in bytes of the code page; 0 for none.
    int maxLength = 0;
    /// True when the control cuts what is typed at maxLength; otherwise the limit is the program's affair.
    bool enforcesMaxLength = false;
    bool readOnly = false;
    EntryUse use = EntryUse::Text;
    /// Range of an EntryNumber.
    int minimum = 0;
    int maximum = 32767;
    /// The page of a tab strip that holds this control, with the strip; null when it lies on the form itself.
    Control* container = nullptr;
    int page = 0;
    /// Pages of a tab strip.
    QStringList pages;
    std::vector<ListColumn> columns;
    /// Key that clicks this button from anywhere on the form, as KeyNamed reads it ("F12", "Shift+F3", "Y").
    QString shortcut;
    /// Colour of the text as 0xBBGGRR; nothing for the system's.
    std::optional<int> foreColor;

    // State.
    const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);

    /// The text as the program reads it. An EntryPostcode gives its formatted text, an EntryNumber its value.
    QString Text() const;
    /// The text as it was written or typed, before any formatting.
    const QString& RawText() const { return text_; }
    void SetText(const QString& text);

    /// EntryNumber: its number, kept within the range. SSOption and CheckBox: 0 or 1. Pressing an option releases the
    /// others of its group.
    int Value() const { return value_; }
    void SetValue(int value);

    /// SSOption: true when the record holds it, false when it is only drawn pressed. Follows the value, from each
    /// change of it on, until it is told otherwise.
    bool Chosen() const { return value_ != 0 && !onlyPressed_; }
    void SetChosen(bool chosen);

    /// ComboBox: the chosen entry, -1 for none. SSTab: the page in front. ListView: the selected row, -1 for none.
    /// Setting one that isn't there chooses none.
    int ListIndex() const { return listIndex_; }
    void SetListIndex(int index);
    const QStringList& Entries() const { return entries_; }
    void SetEntries(const QStringList& entries);
    const std::vector<ListRow>& Rows() const { return rows_; }
    void SetRows(std::vector<ListRow> rows);
    /// ListView: how the rows lie since a header was clicked; nothing while they lie as they came. Setting it says so,
    /// and moves no row.
    const std::optional<RowOrder>& Sorted() const { return sorted_; }
    void SetSorted(std::optional<RowOrder> sorted);

    bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    bool TabStop() const { return tabStop_; }
    void SetTabStop(bool tabStop);

    /// True when the control and what it lies in can be seen: its page is in front and its strip visible.
    bool EffectivelyVisible() const;
    /// True when the control, its strip and its form take input.
    bool EffectivelyEnabled() const;
    /// True for the kinds that can hold the focus; panels and captions never do.
    bool TakesFocus() const;
    /// True for the kinds whose text a user types.
    bool IsEntry() const;
    /// True for the push buttons.
    bool IsButton() const;

    // Handlers; an empty one does nothing.
    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;
    std::function<void()> onChange;
    std::function<void()> onClick;
    /// A click, by mouse or shortcut, that does nothing since the control can be seen but takes no input: here it can
    /// be told why.
    std::function<void()> onRefused;
    std::function<void()> onDoubleClick;
    std::function<void(Key)> onKeyDown;
    std::function<void(int column)> onHeaderClick;
    /// Files or folders were dropped or pasted onto the control; without a handler it takes none.
    std::function<void(const QStringList& paths)> onPathsGiven;

  private:
    void Changed();

    Form& form_;
    ControlKind kind_;
    QString name_;
    int index_;
    QString caption_;
    QString text_;
    int value_ = 0;
    bool onlyPressed_ = false;
    int listIndex_ = -1;
    QStringList entries_;
    std::vector<ListRow> rows_;
    std::optional<RowOrder> sorted_;
    bool visible_ = true;
    bool enabled_ = true;
    bool tabStop_ = true;
};

}  // namespace screen
