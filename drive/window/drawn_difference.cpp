#include "drive/window/drawn_difference.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTabWidget>

#include "desktop/list_table.h"

namespace drive {

using desktop::ControlWidget;
using screen::Control;
using screen::ControlKind;

namespace {

QString Told(const char* what, const QString& held, const QString& drawn) {
    return QStringLiteral("%1 is \"%2\", drawn as \"%3\"").arg(QLatin1String(what), held, drawn);
}

QString Differs(const char* what, int held, int drawn) {
    return held == drawn ? QString() : Told(what, QString::number(held), QString::number(drawn));
}

QString RowDifference(const Control& control, const desktop::ListTable& table) {
    const int count = static_cast<int>(control.Rows().size());
    if (count != table.RowCount()) return Differs("number of rows", count, table.RowCount());
    for (int row = 0; row < count; ++row)
        for (int column = 0; column < static_cast<int>(control.columns.size()); ++column) {
            const QString held = control.Rows()[static_cast<std::size_t>(row)].cells.value(column);
            const QString drawn = table.CellText(row, column);
            if (held != drawn) return Told("a cell", held, drawn);
        }
    if (control.Sorted() != table.DrawnOrder()) return QStringLiteral("another order of the rows is drawn");
    return Differs("selected row", control.ListIndex(), table.SelectedRow());
}

QString ChoiceDifference(const Control& control, const QComboBox& list) {
    QStringList drawn;
    for (int entry = 0; entry < list.count(); ++entry)
        drawn.append(list.itemText(entry));
    if (drawn != control.Entries()) return Told("list", control.Entries().join(u'/'), drawn.join(u'/'));
    return Differs("entry", control.ListIndex(), list.currentIndex());
}

QString ContentDifference(const ControlWidget& widget) {
    const Control& control = *widget.control;
    if (control.Kind() == ControlKind::ListView)
        return RowDifference(control, static_cast<desktop::ListTable&>(*widget.whole));
    if (auto* list = qobject_cast<QComboBox*>(widget.whole)) return ChoiceDifference(control, *list);
    if (auto* strip = qobject_cast<QTabWidget*>(widget.whole))
        return Differs("page", control.ListIndex(), strip->currentIndex());
    if (auto* button = qobject_cast<QAbstractButton*>(widget.whole); button && button->isCheckable())
        if (const QString pressed = Differs("value", control.Value() != 0, button->isChecked()); !pressed.isEmpty())
            return pressed;
    if (control.Kind() == ControlKind::SSOption)
        if (const QString chosen = Differs("chosen", control.Chosen(), desktop::DrawnChosen(widget)); !chosen.isEmpty())
            return chosen;
    const QString held = desktop::TextToDraw(widget);
    const QString drawn = desktop::DrawnText(widget);
    return held == drawn ? QString() : Told("text", held, drawn);
}

QString ControlDifference(const ControlWidget& widget, const desktop::FormView& view) {
    const Control& control = *widget.control;
    QString difference = Differs("visible", control.EffectivelyVisible(), widget.whole->isVisibleTo(&view));
    if (difference.isEmpty())
        difference = Differs("enabled", desktop::EnabledToDraw(control), widget.whole->isEnabled());
    if (difference.isEmpty()) difference = ContentDifference(widget);
    return difference;
}

QString FocusDifference(desktop::FormView& view) {
    const QWidget* drawn = view.focusWidget() ? view.focusWidget() : &view;
    const QWidget* held = view.FocusTarget();
    return drawn == held ? QString() : Told("focus", held->objectName(), drawn->objectName());
}

}  // namespace

QString FormDifference(const screen::Form& form, desktop::FormView& view) {
    if (!view.isVisible()) return form.Name() + QStringLiteral(" is hidden");
    for (const auto& control : form.Controls()) {
        const ControlWidget* widget = view.WidgetOf(*control);
        if (!widget) return control->Name() + QStringLiteral(" is not drawn");
        const QString difference = ControlDifference(*widget, view);
        if (!difference.isEmpty()) return widget->whole->objectName() + u' ' + difference;
    }
    return FocusDifference(view);
}

}  // namespace drive
