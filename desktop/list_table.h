#pragma once

#include <QTableWidget>

#include "screen/control.h"

namespace desktop {

/// A list of rows that shows a ListView control. It changes nothing by itself: rows and the selected one come from the
/// control, so that a row on which the focus merely stands counts as no choice.
class ListTable : public QTableWidget {
  public:
    ListTable(const screen::Control& control, QWidget* parent);
    /// Draws the rows and the selected one.
    void Draw(const screen::Control& control);
    /// The row that is drawn as selected, -1 for none.
    int SelectedRow() const;
    /// Puts the selected row on the clipboard, its cells parted by tabs.
    void CopySelection() const;

  private:
    std::vector<screen::ListRow> drawn_;
};

/// Pixels of a width in twips on the display of `widget`.
int PixelsOfTwips(int twips, const QWidget& widget);

}  // namespace desktop
