#include "desktop/list_layout.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/list_table.h"
#include "screen/form.h"

namespace desktop {

using screen::Control;
using screen::ControlKind;

namespace {

constexpr int kRowsAtFirst = 20;
constexpr int kNarrowest = 360;
const char* const kCommands[] = {"btn_複合検索", "btn_否定検索", "btn_画面クリア"};

bool IsButton(const Control& control) {
    return control.Kind() == ControlKind::SSCommand || control.Kind() == ControlKind::CommandButton;
}

bool IsCommand(const Control& control) {
    return std::any_of(std::begin(kCommands), std::end(kCommands),
                       [&](const char* name) { return control.Name() == QString::fromUtf8(name); });
}

/// True for an item that begins a cell of its own: an entry that can be typed into and isn't headed by its title.
bool BeginsCell(const Control& control) {
    const QString title = QStringLiteral("itm_ttl_");
    if (control.Kind() == ControlKind::SSPanel) return control.Name().startsWith(title);
    if (control.Kind() == ControlKind::ComboBox) return !control.Name().endsWith(QStringLiteral("名称"));
    return control.IsEntry() && !control.readOnly && !control.Owner().Find(title + control.Name());
}

/// True for what stands in the cell of the item before it: its search button, its number and name, a word behind it.
bool ContinuesCell(const Control& control) {
    if (IsButton(control)) return !IsCommand(control);
    const bool label = control.Kind() == ControlKind::CaptionLabel;
    return label || control.IsEntry() || control.Kind() == ControlKind::ComboBox;
}

/// True for what has its place beside the search items: check boxes and options, the list, the buttons of the whole
/// window.
bool StandsAlone(const Control& control) {
    return control.Kind() == ControlKind::CheckBox || control.Kind() == ControlKind::SSOption ||
           control.Kind() == ControlKind::ListView || IsButton(control);
}

/// Takes what lies outside of the search items first, so that these can be taken in their order.
struct Frame {
    explicit Frame(WidgetShelf& shelf)
        : title(shelf.TakeAs("title", QStringLiteral("wnd_ttl"))),
          notice(shelf.TakeAs("notice", QStringLiteral("お知らせ"))),
          back(shelf.TakeAs("main", QStringLiteral("btn_戻る"))),
          limit(shelf.TakeAs("limit", QStringLiteral("lab_注意"))),
          count(shelf.TakeAs("count", QStringLiteral("lab_件数"))) {}
    QWidget *title, *notice, *back, *limit, *count;
};

QHBoxLayout* NewRow(QVBoxLayout& whole) {
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    whole.addLayout(row);
    return row;
}

/// The search items, each in a cell with what belongs to it.
class Cells {
  public:
    void Begin() {
        cells_.push_back({new QHBoxLayout, false});
        cells_.back().row->setSpacing(4);
        open_ = true;
    }
    /// What follows belongs to no item.
    void Close() { open_ = false; }
    bool Open() const { return open_; }

    void Add(const Control& control, QWidget& widget) {
        const bool text = control.IsEntry() && widget.maximumWidth() == QWIDGETSIZE_MAX;
        if (text) widget.setMinimumWidth(84);
        cells_.back().stretches |= text;
        cells_.back().row->addWidget(&widget, text ? 1 : 0);
    }

    void Place(QGridLayout& grid) const {
        const int count = static_cast<int>(cells_.size());
        const int across = count <= 3 ? count : count == 4 ? 2 : 3;
        for (int place = 0; place < count; ++place) {
            const Cell& cell = cells_[static_cast<std::size_t>(place)];
            if (!cell.stretches) cell.row->addStretch(1);
            grid.addLayout(cell.row, place / across, place % across);
            grid.setColumnStretch(place % across, 1);
        }
    }

  private:
    struct Cell {
        QHBoxLayout* row;
        bool stretches;
    };
    std::vector<Cell> cells_;
    bool open_ = false;
};

void LayOutHead(const Frame& frame, QVBoxLayout& whole) {
    QHBoxLayout* row = NewRow(whole);
    if (frame.title) row->addWidget(frame.title);
    row->addSpacing(12);
    if (frame.notice)
        row->addWidget(frame.notice, 1);
    else
        row->addStretch(1);
    if (frame.back) row->addWidget(frame.back);
}

void LayOutFoot(const Frame& frame, QVBoxLayout& whole) {
    QHBoxLayout* row = NewRow(whole);
    if (frame.limit) row->addWidget(frame.limit);
    row->addStretch(1);
    if (!frame.count) return;
    frame.count->setMinimumWidth(frame.count->fontMetrics().horizontalAdvance(QStringLiteral("0000件")));
    if (auto* words = qobject_cast<QLabel*>(frame.count)) words->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row->addWidget(frame.count);
}

}  // namespace

bool IsListWindow(const screen::Form& form) {
    if (!form.Name().startsWith(QStringLiteral("wnd")) || !form.Name().endsWith(QStringLiteral("一覧"))) return false;
    return std::any_of(form.Controls().begin(), form.Controls().end(),
                       [](const auto& control) { return control->Kind() == ControlKind::ListView; });
}

void LayOutList(WidgetShelf& shelf, QWidget& content) {
    auto* whole = new QVBoxLayout(&content);
    whole->setContentsMargins(12, 8, 12, 8);
    whole->setSpacing(6);
    const Frame frame(shelf);
    LayOutHead(frame, *whole);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(4);
    whole->addLayout(grid);
    QHBoxLayout* commands = NewRow(*whole);
    auto* checks = new QHBoxLayout;
    checks->setSpacing(14);
    commands->addLayout(checks);
    commands->addStretch(1);
    Cells cells;
    for (const auto& control : shelf.OfForm().Controls()) {
        const bool begins = BeginsCell(*control);
        if (!begins && !(cells.Open() && ContinuesCell(*control)) && !StandsAlone(*control)) continue;
        QWidget* widget = shelf.Take(control->Name(), control->Index());
        if (!widget) continue;
        if (begins) cells.Begin();
        if (begins || (cells.Open() && ContinuesCell(*control))) {
            cells.Add(*control, *widget);
            continue;
        }
        cells.Close();
        if (control->Kind() == ControlKind::CheckBox || control->Kind() == ControlKind::SSOption) {
            checks->addWidget(widget);
        } else if (control->Kind() == ControlKind::ListView) {
            static_cast<ListTable*>(widget)->FillWindow(kRowsAtFirst);
            whole->addWidget(widget, 1);
        } else {
            widget->setProperty("role", QStringLiteral("main"));
            commands->addWidget(widget);
        }
    }
    content.setMinimumWidth(kNarrowest);
    cells.Place(*grid);
    LayOutFoot(frame, *whole);
}

}  // namespace desktop
