#pragma once

#include <QAccessible>
#include <QLabel>
#include <functional>

namespace desktop {

/// The line at the foot of a screen that tells what became of what the user did. It takes the width that it is given: a
/// longer text goes on in a second line, and what doesn't fit there either is read under the mouse. A screen reader
/// hears each new text.
class ResultLabel : public QLabel {
  public:
    explicit ResultLabel(QWidget* parent);
    /// Shows the text and tells it to a screen reader; one that stands there already is not told again.
    void Tell(const QString& text);

    /// Who passes events on to screen readers; the toolkit, unless it is told otherwise.
    std::function<void(QAccessibleEvent*)> announcer = QAccessible::updateAccessibility;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace desktop
