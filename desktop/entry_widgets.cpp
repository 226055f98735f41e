#include "desktop/entry_widgets.h"

#include <QPainter>
#include <QPolygon>
#include <QTextDocument>

namespace desktop {

namespace {

constexpr int kArrowWidth = 14;

}  // namespace

bool ComposesText(const screen::Control& control) {
    using screen::ControlKind;
    switch (control.Kind()) {
        case ControlKind::EntryNumber:
        case ControlKind::EntrySecret:
        case ControlKind::EntryPostcode:
        case ControlKind::EntryPhone:
            return false;
        default:
            return control.use == screen::EntryUse::Text;
    }
}

QVariant LineEntry::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query == Qt::ImEnabled && !composes_) return false;
    return QLineEdit::inputMethodQuery(query);
}

NumberEntry::NumberEntry(QWidget* parent) : LineEntry(false, parent) {
    setAlignment(Qt::AlignRight);
    setTextMargins(0, 0, kArrowWidth, 0);
}

int NumberEntry::ArrowAt(const QPoint& place) const {
    if (isReadOnly() || place.x() < width() - kArrowWidth - 3) return 0;
    return place.y() < height() / 2 ? 1 : -1;
}

void NumberEntry::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isEnabled() ? QColor(0x5b6b7b) : QColor(0xb4bdc6));
    const int centre = width() - kArrowWidth / 2 - 2;
    const int middle = height() / 2;
    painter.drawPolygon(
        QPolygon{QPoint(centre - 4, middle - 2), QPoint(centre + 4, middle - 2), QPoint(centre, middle - 7)});
    painter.drawPolygon(
        QPolygon{QPoint(centre - 4, middle + 2), QPoint(centre + 4, middle + 2), QPoint(centre, middle + 7)});
}

MemoEntry::MemoEntry(bool composes, QWidget* parent) : QPlainTextEdit(parent), composes_(composes) {
    setTabChangesFocus(true);
}

QVariant MemoEntry::inputMethodQuery(Qt::InputMethodQuery query) const {
    if (query == Qt::ImEnabled && !composes_) return false;
    return QPlainTextEdit::inputMethodQuery(query);
}

QString MemoEntry::TypedText() const {
    QString text = document()->toRawText();
    for (QChar& character : text)
        if (character == QChar::ParagraphSeparator || character == QChar::LineSeparator) character = u'\n';
    return text;
}

}  // namespace desktop
