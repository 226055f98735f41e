#include "desktop/window_places.h"

#include <QSettings>
#include <QStandardPaths>
#include <algorithm>

#include "desktop/form_view.h"
#include "desktop/list_layout.h"
#include "desktop/list_table.h"

namespace desktop {

namespace {

ListTable* TableOf(const FormView& view) {
    const screen::Form* form = view.Model();
    if (!form || !IsListWindow(*form)) return nullptr;
    for (const auto& control : form->Controls())
        if (control->Kind() == screen::ControlKind::ListView)
            return static_cast<ListTable*>(view.WidgetOf(*control)->whole);
    return nullptr;
}

}  // namespace

QString WindowPlaces::UserFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/katsudo-techo/windows.ini");
}

void WindowPlaces::Recall(FormView& view, const QSize& room) const {
    ListTable* table = TableOf(view);
    if (!table || file_.isEmpty()) return;
    QSettings settings(file_, QSettings::IniFormat);
    settings.beginGroup(view.Model()->Name());
    const QSize size = settings.value(QStringLiteral("size")).toSize();
    if (size.isValid()) view.resize(size.boundedTo(room).expandedTo(view.minimumSizeHint()));
    QList<int> widths;
    for (const QVariant& width : settings.value(QStringLiteral("columns")).toList())
        widths.append(width.toInt());
    table->SetChosenWidths(widths);
}

void WindowPlaces::Remember(const FormView& view, const QSize& opened) const {
    const ListTable* table = TableOf(view);
    if (!table || file_.isEmpty()) return;
    const QList<int> widths = table->ChosenWidths();
    const bool resized = view.size() != opened && !view.isMaximized() && !view.isMinimized();
    if (!resized && widths.isEmpty()) return;
    QSettings settings(file_, QSettings::IniFormat);
    settings.beginGroup(view.Model()->Name());
    if (resized) settings.setValue(QStringLiteral("size"), view.size());
    if (!widths.isEmpty()) settings.setValue(QStringLiteral("columns"), QVariantList(widths.begin(), widths.end()));
}

QPoint PlaceBeside(const QRect& asker, const QSize& window, const QRect& display) {
    constexpr int kGap = 12;
    const int rightmost = std::max(display.left() + display.width() - window.width(), display.left());
    const int lowest = std::max(display.top() + display.height() - window.height(), display.top());
    const int y = std::clamp(asker.top(), display.top(), lowest);
    const int toTheRight = asker.left() + asker.width() + kGap;
    if (toTheRight <= rightmost) return {std::max(toTheRight, display.left()), y};
    const int toTheLeft = asker.left() - kGap - window.width();
    if (toTheLeft >= display.left()) return {std::min(toTheLeft, rightmost), y};
    const int x = std::clamp(asker.left(), display.left(), rightmost);
    const int below = asker.top() + asker.height() + kGap;
    if (below <= lowest) return {x, std::max(below, display.top())};
    const int above = asker.top() - kGap - window.height();
    if (above >= display.top()) return {x, std::min(above, lowest)};
    return {rightmost, y};
}

}  // namespace desktop
