#include "desktop/result_label.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>

namespace desktop {

namespace {

constexpr int kLines = 2;

}  // namespace

ResultLabel::ResultLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ResultLabel::Tell(const QString& text) {
    if (this->text() == text) return;
    setText(text);
    setToolTip(text);
    setAccessibleDescription(text);
    if (text.isEmpty()) return;
    // There is no event for "this was said"; between these two each reader finds one that it follows.
    for (const QAccessible::Event kind : {QAccessible::NameChanged, QAccessible::Alert}) {
        QAccessibleEvent event(this, kind);
        announcer(&event);
    }
}

QSize ResultLabel::sizeHint() const {
    const QMargins frame = contentsMargins();
    return {0, kLines * fontMetrics().lineSpacing() + frame.top() + frame.bottom()};
}

QSize ResultLabel::minimumSizeHint() const {
    return sizeHint();
}

void ResultLabel::paintEvent(QPaintEvent* event) {
    // The frame is drawn by the style sheet, the text by hand: a label alone would cut it without a sign.
    QFrame::paintEvent(event);
    const QRect room = contentsRect();
    const QString whole = text();
    QTextLayout layout(whole, font());
    layout.beginLayout();
    QStringList lines;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(room.width());
        const bool last = lines.size() == kLines - 1;
        const QString rest = whole.mid(line.textStart(), last ? -1 : line.textLength());
        lines.append(last ? fontMetrics().elidedText(rest, Qt::ElideRight, room.width()) : rest);
        if (last) break;
    }
    layout.endLayout();
    QPainter painter(this);
    style()->drawItemText(&painter, room, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), lines.join(u'\n'),
                          foregroundRole());
}

}  // namespace desktop
