#include "drive/window/widget_input.h"

#include <QApplication>
#include <QDropEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPointer>
#include <QUrl>
#include <QtTest/QTest>

namespace drive {

void ClickAt(QWidget& widget, const QPoint& place) {
    const QPointer<QWidget> still = &widget;
    QTest::mousePress(&widget, Qt::LeftButton, Qt::NoModifier, place);
    if (still) QTest::mouseRelease(still, Qt::LeftButton, Qt::NoModifier, place);
}

void DoubleClickAt(QWidget& widget, const QPoint& place) {
    const QPointer<QWidget> still = &widget;
    QMouseEvent press(QEvent::MouseButtonDblClick, place, widget.mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(&widget, &press);
    if (still) QTest::mouseRelease(still, Qt::LeftButton, Qt::NoModifier, place);
}

void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    const QPointer<QWidget> still = &widget;
    QTest::keyPress(&widget, key, modifiers);
    if (still) QTest::keyRelease(still, key, modifiers);
}

void PressTyping(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
    const QPointer<QWidget> still = &widget;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, modifiers, text);
        if (still) QApplication::sendEvent(still, &event);
    }
}

void TypeKeys(QWidget& widget, const QString& text) {
    const QPointer<QWidget> still = &widget;
    for (const QChar character : text) {
        // A key is known by its Latin letter; any other character comes as text alone.
        const int key = character.unicode() < 0x80 ? character.toUpper().unicode() : 0;
        if (still) PressTyping(*still, static_cast<Qt::Key>(key), Qt::NoModifier, character);
    }
}

void CommitText(QWidget& widget, const QString& text) {
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&widget, &event);
}

void DropFiles(QWidget& widget, const QStringList& paths) {
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    QMimeData data;
    data.setUrls(urls);
    // The toolkit lets nothing drop that hasn't come over the widget before.
    QDragEnterEvent over(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &over);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&widget, &drop);
}

void GiveFocus(QWidget& widget) {
    if (widget.isActiveWindow()) {
        widget.setFocus(Qt::OtherFocusReason);
        return;
    }
    QFocusEvent event(QEvent::FocusIn, Qt::OtherFocusReason);
    QApplication::sendEvent(&widget, &event);
}

}  // namespace drive
