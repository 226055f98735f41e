#pragma once

#include <QStringList>

#include "desktop/layouts.h"

class QBoxLayout;
class QGridLayout;
class QHBoxLayout;
class QVBoxLayout;

// What the drawn screens are laid out of. A name that the shelf doesn't hold is left out.
namespace desktop {

/// Pixels between items that belong together.
inline constexpr int kGap = 4;

/// An empty row.
QHBoxLayout* NewRow();

/// Adds items in the order of their names; one whose name ends in "*" stretches.
void AddRow(WidgetShelf& shelf, QHBoxLayout& row, const QStringList& names);

/// The same as a line of a grid, behind its title.
void AddRow(WidgetShelf& shelf, QGridLayout& grid, int line, const QString& title, const QStringList& names);

/// A line of a grid with a code: `title`, the item KINDコード, and the item KIND名, which stretches.
void AddCode(WidgetShelf& shelf, QGridLayout& grid, int line, const QString& title, const QString& kind);

/// A framed group with its grid; `panel` heads it when it is given.
QGridLayout* NewGroup(QVBoxLayout& column, QWidget* panel = nullptr, int stretch = 0);

/// The notice line, as wide as there is room.
void AddNotice(WidgetShelf& shelf, QHBoxLayout& row);

/// A catcher of the focus, which nobody sees.
void AddCatcher(WidgetShelf& shelf, QBoxLayout& layout, const QString& name);

}  // namespace desktop
