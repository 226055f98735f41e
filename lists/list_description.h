#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

#include "screen/control.h"

// What a list window is, as data. One engine (list_window.h) reads it; a new list is a new description.
namespace lists {

/// How a window closes and what it gives back beside the picked text.
enum class ListKind {
    KeepsState,  ///< hidden on close: rows and search values stay for the next opening
    Plain,       ///< unloaded
    Number,      ///< unloaded; a pick leaves the row's key in ListCondition
    Name,        ///< unloaded; ListCondition is left alone
};

/// A piece of a WHERE body. "{}" stands for the item's value, "{check}" for the item's check box as 0 or 1. It is
/// written behind " WHERE " or " AND ", whichever its place asks for.
struct Fragment {
    QString body{};
    /// Where the form behind " AND " differs from the other one.
    QString bodyBehindAnd{};
    /// A further condition of a value of digits, in which "{next}" stands for the first text behind all that begin with
    /// them: 101 for 100. Behind nines there is none, and the condition is left out.
    QString below{};
};

/// How a value goes into its fragment.
enum class ValueForm {
    AsItStands,
    Text,    ///< free text: quotes doubled, trailing blanks gone
    Name,    ///< trimmed at both ends, then as Text
    Digits,  ///< the digits alone, then as Text; an item without any counts as empty
};

/// When an item that is left is taken over.
enum class CommitRule {
    Always,
    IfDigits,  ///< only with a digit in it; as typed
    Postcode,  ///< only with a digit in it; in its canonical form
    Date,      ///< as "yyyymmdd", however it was typed; what is no date stands as it was typed
};

/// Where an item's value comes from at the first load and at a clear.
enum class Opening {
    Empty,
    MainStaff,        ///< staff code of the main screen at the first load, empty at a clear
    MainStaffAlways,  ///< the same, at a clear too
    ReturnPrefix,     ///< first three digits of the item that asked; "100" when it has fewer
};

/// What a check box makes of an item while it is on; empty for an item without one.
struct CheckedForm {
    QString checkBox{};
    QString buttonCaption{}, nameSql{}, nestedList{};  ///< in place of the item's own
};

/// One item by which rows are searched.
struct SearchItem {
    QString name{};
    QString caption{};  ///< of its title "itm_ttl_" + `name`; empty for none
    screen::ControlKind kind = screen::ControlKind::EntryField;
    screen::EntryUse use = screen::EntryUse::Text;
    int maxLength = 0;  ///< bytes; 0 for none
    QString mask{};     ///< zeros for a code; empty for a text
    ValueForm value = ValueForm::AsItStands;
    CommitRule commit = CommitRule::Always;
    Opening opening = Opening::Empty;
    /// The qualified column by which a caller's condition is taken over into the item; empty for none.
    QString conditionColumn{};

    /// The button beside the item and its caption. A mode above 0 makes it the item's own search; the button of an item
    /// that opens a list and has no mode opens that list.
    QString button{}, buttonCaption{};
    int mode = 0;

    /// The item that echoes a looked-up name, and the start of its statement up to the code; empty for none.
    QString nameItem{}, nameSql{};

    /// The list that the lookup gesture opens; empty for none. `nextItem` takes the focus after its pick.
    QString nestedList{}, nextItem{};
    /// True when "以降" stands beside the item: its search means this value and later.
    bool fromHereLabel = false;
    /// True when the first gesture on the item only marks it and the next one opens the list.
    bool markFirst = false;
    /// True when the list is opened as one over the main form is, and not as a nested one.
    bool opensOverMain = false;
    /// The check box that says which master the item's code is of.
    CheckedForm whenChecked{};
};

/// A classification shown by number and by name; the index one past the last code means all.
struct Classification {
    QString item{};     ///< the number; its name list is `item` + "名称", its title "itm_ttl_" + `item`
    QString caption{};  ///< of the title
    QString table{};    ///< code table
    int opening = 0;    ///< index at the first load; -1 for all
    /// Text in a caller's condition that has it taken over, such as "M得意先.取引状況区分 ="; empty for none.
    QString conditionText{};
};

enum class SiteFilter {
    None,
    Staff,  ///< staff of this site and of the head office, unless the head office runs the program
    Party,  ///< the party's staff member is of this site
    Own,    ///< the row is of this site; stands ahead of the fixed condition
};

/// An item's piece in a statement. The negative search may append more than one.
struct ItemFragments {
    Fragment positive{};
    std::vector<Fragment> negative{};
};

/// A classification's piece. `negativeAll` is what the negative search adds when all are chosen; empty for nothing.
struct ClassFragments {
    Fragment positive{}, negative{}, negativeAll{};
};

/// When the fixed condition names `word`, rows are ordered by `columns` first ("M納品先.得意先コード DESC,").
struct OrderPrefix {
    QString word{}, columns{};
};

/// One statement of a window. The texts are complete to the character; the engine only puts them together.
struct ListStatement {
    /// Head for the kinds "A" and "S", and for "O". Another kind of database has no statement at all.
    QString head{}, headO{};
    /// True when a condition behind the head is written with " AND " under "O".
    bool continuesUnderO = false;
    /// True when "S" has the head of "O", and goes on as "O" does.
    bool sharesHeadO = false;
    bool usesCondition = true;  ///< whether the caller's fixed condition takes part
    SiteFilter siteFilter = SiteFilter::None;
    QString siteColumn{};                   ///< of SiteFilter::Own
    QString periodColumn{};                 ///< the date that the window's period is about; empty for none
    QString always{};                       ///< a condition of every search, behind the period; empty for none
    QHash<QString, ItemFragments> items{};  ///< by item name
    QHash<QString, ClassFragments> classifications{};  ///< by item name
    QHash<int, QString> orderBy{};                     ///< by mode, the column behind " ORDER BY "
    std::vector<OrderPrefix> orderPrefixes{};          ///< the first whose word occurs counts

    // Of a window with several statements:
    QString checkBox{};  ///< runs only while it is on
    QString keyPrefix = QStringLiteral("C");
    QString firstText{};  ///< text of the first column; empty when it is a column of the row
};

/// Which items a search uses, in order. 0 is the composite search, -1 the negative one.
struct SearchMode {
    int number = 0;
    QStringList items{};
};

struct ListColumn {
    QString header{};
    int width = 0;        ///< twips
    QString source{};     ///< column of the row; empty for the statement's firstText
    bool amount = false;  ///< shown in groups of three digits, right-aligned
};

struct CheckBox {
    QString name{}, caption{};
    bool on = false;
    /// The qualified column by which a caller's condition is taken over into it, in front of the item that it belongs
    /// to; empty for none.
    QString conditionColumn{};
};

/// A choice of the option group "opb_期間": how far back from today a search goes.
struct Period {
    QString caption{};
    int months = 0;  ///< 0 for all there is
};

/// A list window.
struct ListDescription {
    QString name{};   ///< "wnd担当者一覧"
    QString title{};  ///< "担当者一覧"
    QString list{};   ///< name of its list view
    ListKind kind = ListKind::Plain;
    std::vector<ListColumn> columns{};
    QStringList keyColumns{};  ///< what stands in a row's key behind its prefix, with nothing between
    std::vector<SearchItem> items{};
    std::vector<Classification> classifications{};
    std::vector<CheckBox> checkBoxes{};
    std::vector<Period> periods{};
    int openingPeriod = 0;
    std::vector<SearchMode> modes{};
    std::vector<ListStatement> statements{};  ///< in the order in which they run
    QString searchCaption{};                  ///< of btn_複合検索; empty for no such button
    QString negativeCaption{};                ///< of btn_否定検索; empty for no such button
    bool canClear = true;                     ///< has btn_画面クリア
    bool takesCondition = true;               ///< whether a clear drops the caller's condition
    bool keepsKeyInCondition = false;         ///< a pick leaves the row's key in ListCondition and returns its code
};

/// The statement of a window for one search; empty when the kind of database has none. Values are given by item name,
/// class indexes by item name; an index of `all` (its highest) means all.
struct SearchValues {
    QString dbKind{};
    QString condition{};
    QString siteCode{}, operatingSiteCode{};
    QHash<QString, QString> items{};
    QHash<QString, int> classIndex{}, classAll{};
    QHash<QString, int> checks{};   ///< 0 or 1 by check box
    QString firstDay{}, lastDay{};  ///< of the chosen period, "yyyymmdd"; empty for all there is
};
QString BuildSearchSql(const ListDescription& list, const ListStatement& statement, int mode,
                       const SearchValues& values);

/// All list windows by name; null for an unknown one.
const ListDescription* FindList(const QString& name);

/// Each of them once.
std::vector<const ListDescription*> EveryList();

}  // namespace lists
