#include "desktop/layout_parts.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QVariant>

namespace desktop {

void AddRow(WidgetShelf& shelf, QHBoxLayout& row, const QStringList& names) {
    for (QString name : names) {
        const bool stretches = name.endsWith(u'*');
        if (stretches) name.chop(1);
        if (QWidget* widget = shelf.Take(name)) row.addWidget(widget, stretches ? 1 : 0);
    }
}

QHBoxLayout* NewRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap);
    return row;
}

void AddRow(WidgetShelf& shelf, QGridLayout& grid, int line, const QString& title, const QStringList& names) {
    if (QWidget* widget = shelf.Take(title)) grid.addWidget(widget, line, 0);
    QHBoxLayout* row = NewRow();
    AddRow(shelf, *row, names);
    bool stretches = false;
    for (const QString& name : names)
        stretches = stretches || name.endsWith(u'*');
    if (!stretches) row->addStretch();
    grid.addLayout(row, line, 1);
}

void AddCode(WidgetShelf& shelf, QGridLayout& grid, int line, const QString& title, const QString& kind) {
    if (QWidget* heading = shelf.Take(title)) grid.addWidget(heading, line, 0);
    if (QWidget* code = shelf.Take(kind + QStringLiteral("コード"))) grid.addWidget(code, line, 1, Qt::AlignLeft);
    if (QWidget* name = shelf.Take(kind + QStringLiteral("名"))) grid.addWidget(name, line, 2);
}

QGridLayout* NewGroup(QVBoxLayout& column, QWidget* panel, int stretch) {
    auto* frame = new QFrame;
    frame->setProperty("role", QStringLiteral("group"));
    auto* inside = new QVBoxLayout(frame);
    inside->setContentsMargins(8, 4, 8, 5);
    inside->setSpacing(2);
    if (panel) inside->addWidget(panel, 0, Qt::AlignLeft);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(kGap);
    inside->addLayout(grid);
    column.addWidget(frame, stretch);
    return grid;
}

void AddNotice(WidgetShelf& shelf, QHBoxLayout& row) {
    QWidget* notice = shelf.TakeAs("notice", QStringLiteral("お知らせ"));
    if (!notice) return;
    notice->setMinimumWidth(300);
    notice->setMinimumHeight(notice->fontMetrics().height() + 6);
    row.addWidget(notice, 1);
}

void AddCatcher(WidgetShelf& shelf, QBoxLayout& layout, const QString& name) {
    QWidget* catcher = shelf.TakeAs("catcher", name);
    if (!catcher) return;
    catcher->setFixedSize(1, 1);
    layout.addWidget(catcher);
}

}  // namespace desktop
