#pragma once

#include <QList>
#include <QRect>
#include <QSize>
#include <QString>

namespace desktop {

class FormView;

/// Remembers, from one run to the next, how large the user made each list window and how wide its columns. It is kept
/// by the window's name in a file of the user's own; without one, or when it can't be read, windows open as designed.
class WindowPlaces {
  public:
    /// `file` is the path of the file; empty to remember nothing.
    explicit WindowPlaces(QString file) : file_(std::move(file)) {}
    /// The file in the configuration folder of the user who runs the program.
    static QString UserFile();

    /// Gives a list window that is about to open its remembered size, bounded by `room`, and column widths.
    void Recall(FormView& view, const QSize& room) const;
    /// Notes what the user changed of a list window; `opened` is its size as it came up.
    void Remember(const FormView& view, const QSize& opened) const;

  private:
    QString file_;
};

/// Where a window of that size, its frame included, opens: at a side of the item that asks for it, so that both can be
/// seen, else below or above it, and always on the display.
QPoint PlaceBeside(const QRect& asker, const QSize& window, const QRect& display);

}  // namespace desktop
