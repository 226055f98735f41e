#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>
#include <QWidget>

// Single events, sent to a widget as the platform would. Each may run a whole modal wait before it returns, and the
// widget may be gone by then.
namespace drive {

/// Presses and releases the left button there.
void ClickAt(QWidget& widget, const QPoint& place);
/// The second click of a double click.
void DoubleClickAt(QWidget& widget, const QPoint& place);
/// Presses and releases a key.
void Press(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// The same with the text that the key gives.
void PressTyping(QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text);
/// Types the text, a key for each character.
void TypeKeys(QWidget& widget, const QString& text);
/// Puts the text in as a whole, as an input method or the clipboard does.
void CommitText(QWidget& widget, const QString& text);
/// Drops files or folders of this machine onto the widget.
void DropFiles(QWidget& widget, const QStringList& paths);
/// Gives the widget the focus by something else than a click, as an assistive tool does; works also while its window is
/// not the active one.
void GiveFocus(QWidget& widget);

}  // namespace drive
