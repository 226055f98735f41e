#include "desktop/list_table.h"

#include <QAbstractTableModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <numeric>

#include "desktop/look.h"

namespace desktop {

/// The rows as the table asks for them: it asks only for those that can be seen, so that many rows cost nothing.
class ListRows : public QAbstractTableModel {
  public:
    ListRows(const std::vector<screen::ListColumn>& columns, QObject* parent)
        : QAbstractTableModel(parent), columns_(columns) {}

    bool Shows(const std::vector<screen::ListRow>& rows) const {
        return std::equal(rows_.begin(), rows_.end(), rows.begin(), rows.end(),
                          [](const screen::ListRow& a, const screen::ListRow& b) { return a.cells == b.cells; });
    }
    void SetRows(const std::vector<screen::ListRow>& rows) {
        beginResetModel();
        rows_ = rows;
        endResetModel();
    }
    const QStringList& Cells(int row) const { return rows_[static_cast<std::size_t>(row)].cells; }

    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(columns_.size());
    }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid()) return {};
        if (role == Qt::TextAlignmentRole) return Alignment(index.column());
        if (role == Qt::FontRole && RightAligned(index.column())) return AmountFont();
        return role == Qt::DisplayRole ? Cells(index.row()).value(index.column()) : QVariant();
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
        if (role == Qt::TextAlignmentRole) return Alignment(section);
        return role == Qt::DisplayRole ? columns_[static_cast<std::size_t>(section)].header : QVariant();
    }

  private:
    bool RightAligned(int column) const { return columns_[static_cast<std::size_t>(column)].rightAligned; }
    QVariant Alignment(int column) const {
        return QVariant::fromValue(
            Qt::Alignment((RightAligned(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter));
    }

    std::vector<screen::ListColumn> columns_;
    std::vector<screen::ListRow> rows_;
};

namespace {

constexpr int kNarrowest = 12;

// The style's mark points down where rows ascend; the programs that people know have it point up there.
Qt::SortOrder MarkOf(bool descending) {
    return descending ? Qt::AscendingOrder : Qt::DescendingOrder;
}

/// Draws a text that its column cuts by its end, so that names which begin alike stay apart.
class CutAtStart : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideLeft;
    }
};

/// A row as one line of a table; what would break a line or a cell becomes a blank.
QString AsLine(QStringList cells) {
    for (QString& cell : cells)
        for (QChar& character : cell)
            if (character == u'\t' || character == u'\r' || character == u'\n') character = u' ';
    return cells.join(u'\t');
}

}  // namespace

int PixelsOfTwips(int twips, const QWidget& widget) {
    return twips * widget.logicalDpiX() / 1440;
}

ListTable::ListTable(const screen::Control& control, QWidget* parent)
    : QTableView(parent), rows_(new ListRows(control.columns, this)) {
    setModel(rows_);
    horizontalHeader()->setMinimumSectionSize(kNarrowest);
    const QScopedValueRollback<bool> fitting(fitting_, true);
    horizontalHeader()->setStretchLastSection(true);
    for (int column = 0; column < rows_->columnCount(); ++column) {
        const screen::ListColumn& design = control.columns[static_cast<std::size_t>(column)];
        designed_.append(PixelsOfTwips(design.width, *this));
        setColumnWidth(column, designed_.back());
        if (design.elideStart) setItemDelegateForColumn(column, new CutAtStart(this));
        if (design.stretches) LetGrow(column);
    }
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
}

void ListTable::Draw(const screen::Control& control) {
    DrawOrder(control.Sorted());
    if (!rows_->Shows(control.Rows())) {
        rows_->SetRows(control.Rows());
        unpainted_ = true;
    }
    if (RowCount() == 0 || rows_->columnCount() == 0) return;
    const int row = control.ListIndex();
    const bool chosen = row >= 0 && row < RowCount();
    // Some screen readers fall over a table without a current cell, so one stays even when no row is chosen.
    const QModelIndex current = rows_->index(chosen ? row : 0, 0);
    if (chosen)
        selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    else
        selectionModel()->setCurrentIndex(currentIndex().isValid() ? currentIndex() : current,
                                          QItemSelectionModel::Clear);
}

// The header turns its own mark round at each click, whether the rows follow or not: what it shows is set anew.
void ListTable::DrawOrder(const std::optional<screen::RowOrder>& sorted) {
    horizontalHeader()->setSortIndicatorShown(sorted.has_value());
    if (sorted) horizontalHeader()->setSortIndicator(sorted->column, MarkOf(sorted->descending));
}

std::optional<screen::RowOrder> ListTable::DrawnOrder() const {
    const QHeaderView& header = *horizontalHeader();
    if (!header.isSortIndicatorShown()) return std::nullopt;
    return screen::RowOrder{header.sortIndicatorSection(), header.sortIndicatorOrder() == MarkOf(true)};
}

int ListTable::SelectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

int ListTable::RowCount() const {
    return rows_->rowCount();
}

QString ListTable::CellText(int row, int column) const {
    return rows_->Cells(row).value(column);
}

void ListTable::CopyRows() const {
    if (RowCount() == 0) return;
    if (const int row = SelectedRow(); row >= 0)
        return QGuiApplication::clipboard()->setText(AsLine(rows_->Cells(row)));
    QString text;
    for (int row = 0; row < RowCount(); ++row)
        text += AsLine(rows_->Cells(row)) + u'\n';
    QGuiApplication::clipboard()->setText(text);
}

bool ListTable::BringSelectedIntoView() {
    const int row = SelectedRow();
    if (row < 0) return false;
    const QModelIndex index = model()->index(row, 0);
    const QRect rows = visualRect(index);
    if (rows.top() >= 0 && rows.bottom() <= viewport()->height()) return false;
    scrollTo(index);
    return true;
}

void ListTable::PaintNow() {
    viewport()->repaint();
    unpainted_ = false;
}

void ListTable::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    unpainted_ = false;
}

void ListTable::FillWindow(int rows) {
    preferredRows_ = rows;
    if (growing_ < 0) LetGrow(static_cast<int>(designed_.size()) - 1);
    setMinimumHeight(horizontalHeader()->sizeHint().height() + 4 * verticalHeader()->defaultSectionSize());
    const QScopedValueRollback<bool> fitting(fitting_, true);
    for (int column = 0; column < designed_.size(); ++column)
        setColumnWidth(column, designed_[column]);
    updateGeometry();
}

void ListTable::LetGrow(int column) {
    growing_ = column;
    horizontalHeader()->setStretchLastSection(false);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { chosen_ = chosen_ || !fitting_; });
}

QSize ListTable::sizeHint() const {
    if (preferredRows_ == 0) return QTableView::sizeHint();
    const int frame = 2 * frameWidth();
    const int width = std::accumulate(designed_.begin(), designed_.end(), 0) + verticalScrollBar()->sizeHint().width();
    const int height =
        horizontalHeader()->sizeHint().height() + preferredRows_ * verticalHeader()->defaultSectionSize();
    return {width + frame, height + frame};
}

void ListTable::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int sideways = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(sideways);
}

void ListTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (growing_ >= 0 && !chosen_) WidenGrowing();
}

/// Until the user sets a width, the growing column takes what the window has left.
void ListTable::WidenGrowing() {
    const QScopedValueRollback<bool> fitting(fitting_, true);
    const int designed = designed_[growing_];
    const int others = std::accumulate(designed_.begin(), designed_.end(), 0) - designed;
    setColumnWidth(growing_, std::max(viewport()->width() - others, designed));
}

QList<int> ListTable::ChosenWidths() const {
    QList<int> widths;
    for (int column = 0; chosen_ && column < designed_.size(); ++column)
        widths.append(columnWidth(column));
    return widths;
}

void ListTable::SetChosenWidths(const QList<int>& widths) {
    constexpr int kWidest = 4000;
    if (widths.isEmpty() || widths.size() != designed_.size()) return;
    for (int column = 0; column < widths.size(); ++column)
        setColumnWidth(column, std::clamp(widths[column], kNarrowest, kWidest));
    chosen_ = true;
}

bool ListTable::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        // A text that its column cuts can be read in full under the mouse.
        const QPoint place = static_cast<QHelpEvent*>(event)->pos();
        const QModelIndex cell = indexAt(place);
        const QString text = cell.isValid() ? CellText(cell.row(), cell.column()) : QString();
        const bool cut = cell.isValid() && sizeHintForIndex(cell).width() > columnWidth(cell.column());
        viewport()->setToolTip(cut ? text : QString());
    }
    return QTableView::viewportEvent(event);
}

}  // namespace desktop
