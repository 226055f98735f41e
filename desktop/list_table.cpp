#include "desktop/list_table.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <algorithm>

namespace desktop {

namespace {

bool SameRows(const std::vector<screen::ListRow>& left, const std::vector<screen::ListRow>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const screen::ListRow& a, const screen::ListRow& b) { return a.cells == b.cells; });
}

}  // namespace

int PixelsOfTwips(int twips, const QWidget& widget) {
    return twips * widget.logicalDpiX() / 1440;
}

ListTable::ListTable(const screen::Control& control, QWidget* parent) : QTableWidget(parent) {
    setColumnCount(static_cast<int>(control.columns.size()));
    QStringList headers;
    for (int column = 0; column < columnCount(); ++column) {
        const screen::ListColumn& design = control.columns[static_cast<std::size_t>(column)];
        headers.append(design.header);
        setColumnWidth(column, PixelsOfTwips(design.width, *this));
    }
    setHorizontalHeaderLabels(headers);
    horizontalHeader()->setSectionsClickable(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
}

void ListTable::Draw(const screen::Control& control) {
    if (!SameRows(drawn_, control.Rows())) {
        drawn_ = control.Rows();
        setRowCount(static_cast<int>(drawn_.size()));
        for (int row = 0; row < rowCount(); ++row)
            for (int column = 0; column < columnCount(); ++column)
                setItem(row, column, new QTableWidgetItem(drawn_[static_cast<std::size_t>(row)].cells.value(column)));
    }
    const int row = control.ListIndex();
    if (row >= 0 && row < rowCount()) {
        setCurrentCell(row, 0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    } else {
        // Some screen readers fall over a table without a current cell, so one stays even when no row is chosen.
        if (rowCount() > 0 && columnCount() > 0) setCurrentCell(0, 0, QItemSelectionModel::Clear);
        clearSelection();
    }
}

int ListTable::SelectedRow() const {
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.front().row();
}

void ListTable::CopySelection() const {
    const int row = SelectedRow();
    if (row < 0) return;
    QGuiApplication::clipboard()->setText(drawn_[static_cast<std::size_t>(row)].cells.join(u'\t'));
}

}  // namespace desktop
