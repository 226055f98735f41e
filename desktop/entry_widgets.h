#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "screen/control.h"

namespace desktop {

/// Whether an item lets an input method compose into it: free text does, codes and numbers don't.
bool ComposesText(const screen::Control& control);

/// One line of text. Its widget, not only a hint, says whether the input method is on: a hint leaves it running.
class LineEntry : public QLineEdit {
  public:
    LineEntry(bool composes, QWidget* parent) : QLineEdit(parent), composes_(composes) {}
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

  private:
    bool composes_;
};

/// A line for a number, with two arrows at its right end to be clicked.
class NumberEntry : public LineEntry {
  public:
    explicit NumberEntry(QWidget* parent);
    /// 1 for a click on the arrow that counts up, -1 for the other, 0 for elsewhere.
    int ArrowAt(const QPoint& place) const;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Several lines of text. It speaks in plain line feeds.
class MemoEntry : public QPlainTextEdit {
  public:
    MemoEntry(bool composes, QWidget* parent);
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    /// The text as typed. (toPlainText() would turn hard blanks into plain ones.)
    QString TypedText() const;

  private:
    bool composes_;
};

}  // namespace desktop
