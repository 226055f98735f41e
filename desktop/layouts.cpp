#include "desktop/layouts.h"

#include <QTabWidget>
#include <QVBoxLayout>
#include <QVariant>

#include "desktop/list_layout.h"
#include "screen/form.h"

namespace desktop {

namespace {

/// Gives each strip's pages those of its own widgets that no layout placed.
void FillPages(WidgetShelf& shelf, QWidget& content) {
    for (const auto& control : shelf.OfForm().Controls()) {
        if (control->Kind() != screen::ControlKind::SSTab) continue;
        auto* strip = content.findChild<QTabWidget*>(control->Name());
        for (int page = 0; strip && page < strip->count(); ++page) {
            QWidget* sheet = strip->widget(page);
            if (!sheet->layout()) new QVBoxLayout(sheet);
            for (ControlWidget left = shelf.TakeAnyOfPage(*control, page); left.whole;
                 left = shelf.TakeAnyOfPage(*control, page))
                sheet->layout()->addWidget(left.whole);
        }
    }
}

}  // namespace

ControlWidget WidgetShelf::TakeAt(std::size_t place) {
    const ControlWidget widget = left_[place];
    left_.erase(left_.begin() + static_cast<std::ptrdiff_t>(place));
    return widget;
}

QWidget* WidgetShelf::Take(const QString& name, int index) {
    for (std::size_t place = 0; place < left_.size(); ++place)
        if (left_[place].control->Name() == name && left_[place].control->Index() == index) return TakeAt(place).whole;
    return nullptr;
}

QWidget* WidgetShelf::TakeAs(const char* role, const QString& name, const QString& heading) {
    QWidget* widget = Take(name);
    if (!widget) return nullptr;
    widget->setProperty("role", QLatin1String(role));
    if (!heading.isEmpty()) SetHeading(*widget, heading);
    return widget;
}

ControlWidget WidgetShelf::TakeAny() {
    return left_.empty() ? ControlWidget() : TakeAt(0);
}

ControlWidget WidgetShelf::TakeAnyOfPage(const screen::Control& strip, int page) {
    for (std::size_t place = 0; place < left_.size(); ++place)
        if (left_[place].control->container == &strip && left_[place].control->page == page) return TakeAt(place);
    return {};
}

void LayOut(WidgetShelf& shelf, QWidget& content) {
    if (shelf.OfForm().Name() == QStringLiteral("frm活動手帳"))
        LayOutDiary(shelf, content);
    else if (shelf.OfForm().Name() == QStringLiteral("sbf営業日程移動"))
        LayOutMove(shelf, content);
    else if (IsListWindow(shelf.OfForm()))
        LayOutList(shelf, content);
    else
        LayOutDialog(shelf, content);
    FillPages(shelf, content);
    for (ControlWidget left = shelf.TakeAny(); left.whole; left = shelf.TakeAny())
        content.layout()->addWidget(left.whole);
}

}  // namespace desktop
