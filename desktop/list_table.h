#pragma once

#include <QTableView>

#include "screen/control.h"

namespace desktop {

class ListRows;

/// A list of rows that shows a ListView control. It changes nothing by itself: rows and the selected one come from the
/// control, so that a row on which the focus merely stands counts as no choice.
class ListTable : public QTableView {
  public:
    ListTable(const screen::Control& control, QWidget* parent);
    /// Draws the rows, the selected one, and the mark of their order in the header.
    void Draw(const screen::Control& control);
    /// The row that is drawn as selected, -1 for none.
    int SelectedRow() const;
    int RowCount() const;
    /// The text of a cell as it is drawn.
    QString CellText(int row, int column) const;
    /// The order that the mark in the header tells; nothing when there is none.
    std::optional<screen::RowOrder> DrawnOrder() const;
    /// Scrolls to the selected row when it is out of sight. True when it was.
    bool BringSelectedIntoView();
    /// Puts the selected row on the clipboard, or all rows when none is selected: a line each, the cells parted by
    /// tabs.
    void CopyRows() const;

    /// True while the rows changed but weren't painted yet: a click that arrives now was meant for other rows.
    bool Unpainted() const { return unpainted_; }
    /// Paints at once what the next event would find unpainted.
    void PaintNow();

    /// Makes the list the body of a window: it asks for the width of all its columns and for that many rows, and its
    /// columns may be wider together than the window.
    void FillWindow(int rows);
    /// Widths of the columns in pixels when the user changed one; otherwise nothing. Only of a list that fills a
    /// window.
    QList<int> ChosenWidths() const;
    /// Sets widths that were chosen earlier; others than one for each column are ignored.
    void SetChosenWidths(const QList<int>& widths);

    QSize sizeHint() const override;
    /// Scrolls to the row; sideways the list stays where the user scrolled it.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void DrawOrder(const std::optional<screen::RowOrder>& sorted);
    void LetGrow(int column);
    void WidenGrowing();

    ListRows* rows_;
    QList<int> designed_;
    int growing_ = -1;  ///< the column that takes what the window has left, -1 for none
    int preferredRows_ = 0;
    bool unpainted_ = false;
    bool fitting_ = false;
    bool chosen_ = false;
};

/// Pixels of a width in twips on the display of `widget`.
int PixelsOfTwips(int twips, const QWidget& widget);

}  // namespace desktop
