#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/layouts.h"
#include "screen/form.h"

namespace desktop {

using screen::Control;
using screen::ControlKind;

namespace {

/// Words of several sentences break into lines; a short question keeps its own.
void BreakLongWords(QWidget* widget, const Control& control) {
    constexpr int kLong = 30, kWidth = 460;
    auto* label = qobject_cast<QLabel*>(widget);
    if (!label || control.Caption().size() <= kLong) return;
    label->setWordWrap(true);
    label->setMinimumWidth(kWidth);
}

/// Where a control of a dialog goes.
enum class Place { Words, Title, Entry, Wide, Button };

Place PlaceOf(const Control& control) {
    switch (control.Kind()) {
        case ControlKind::CommandButton:
        case ControlKind::SSCommand:
            return Place::Button;
        case ControlKind::SSPanel:
        case ControlKind::CaptionLabel:
            return control.Name().startsWith(QStringLiteral("itm_ttl_")) ? Place::Title : Place::Words;
        case ControlKind::EntryMemo:
        case ControlKind::ListView:
        case ControlKind::SSTab:
            return Place::Wide;
        default:
            return Place::Entry;
    }
}

}  // namespace

void LayOutDialog(WidgetShelf& shelf, QWidget& content) {
    auto* whole = new QVBoxLayout(&content);
    whole->setContentsMargins(20, 16, 20, 16);
    whole->setSpacing(10);
    auto* words = new QVBoxLayout;
    auto* rows = new QGridLayout;
    auto* buttons = new QHBoxLayout;
    rows->setVerticalSpacing(8);
    rows->setColumnStretch(1, 1);
    buttons->addStretch();
    int row = 0;
    for (const auto& control : shelf.OfForm().Controls()) {
        if (control->container) continue;
        QWidget* widget = shelf.Take(control->Name(), control->Index());
        if (!widget) continue;
        switch (PlaceOf(*control)) {
            case Place::Words:
                if (control->Kind() == ControlKind::SSPanel) widget->setProperty("role", QStringLiteral("title"));
                BreakLongWords(widget, *control);
                words->addWidget(widget);
                break;
            case Place::Title:
                // Its entry brings it along; one without an entry heads the rows that follow.
                if (!shelf.OfForm().Find(QString(control->Name()).remove(0, 8)))
                    rows->addWidget(widget, row++, 0, 1, 2);
                break;
            case Place::Entry: {
                const auto titleName = QStringLiteral("itm_ttl_") + control->Name();
                if (shelf.OfForm().Find(titleName))
                    if (auto* title = content.findChild<QWidget*>(titleName)) rows->addWidget(title, row, 0);
                widget->setMinimumWidth(std::min(160, widget->maximumWidth()));
                rows->addWidget(widget, row++, 1, Qt::AlignLeft);
                break;
            }
            case Place::Wide:
                rows->addWidget(widget, row++, 0, 1, 2);
                break;
            case Place::Button:
                widget->setProperty("role", QStringLiteral("main"));
                buttons->addWidget(widget);
                break;
        }
    }
    whole->addLayout(words);
    whole->addLayout(rows);
    whole->addStretch();
    whole->addLayout(buttons);
    content.setMinimumWidth(320);
}

}  // namespace desktop
