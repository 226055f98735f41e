#pragma once

#include <QHash>
#include <QWidget>
#include <functional>
#include <memory>

#include "desktop/control_widget.h"
#include "screen/form.h"

class QLabel;
class QScrollArea;

namespace desktop {

class FocusRing;
class Gestures;

/// Draws one form, whatever it is: a widget for each of its controls, laid out by the form's name. The form holds the
/// state and the focus; the view follows its changes and hands the user's gestures to it.
class FormView : public QWidget, public screen::FormWatcher {
  public:
    /// `closeAsked` runs when the user closes the window by its frame; the window itself stays.
    FormView(screen::Form& form, std::function<void()> closeAsked, QWidget* parent, Qt::WindowFlags flags);
    ~FormView() override;

    /// Lets go of the form, which may then vanish before the view does.
    void Detach();
    /// The form, or null once it was let go.
    screen::Form* Model() const { return form_; }

    /// The widget of a control of the form; null for one that the view doesn't know.
    const ControlWidget* WidgetOf(const screen::Control& control) const;
    /// The widget that ought to hold the focus of the window: that of the focused control, or the view itself when that
    /// one can't be focused now.
    QWidget* FocusTarget();
    /// Brings the window's focus to where the form has it.
    void SyncFocus();
    /// Draws one control anew.
    void Draw(const screen::Control& control);
    /// True while the view itself changes widgets, so that their signals tell of no user.
    bool Drawing() const { return drawing_ > 0; }
    /// Scrolls what has the focus into view, where the window is smaller than its content.
    void ShowFocused();
    /// Puts the focus ring round the focused widget again, after it moved.
    void PlaceRing();

    /// Shows a notice over the window that takes no input; an empty one takes it away.
    void ShowOverlay(const QString& notice);

    void ControlChanged(screen::Control& control) override;
    void FocusChanged() override;
    void FormChanged() override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void MakeWidgets();
    void PlaceResult(QWidget* line);
    void FitToDisplay();
    void PlaceOverlay();

    screen::Form* form_;
    std::function<void()> closeAsked_;
    QScrollArea* area_;
    QWidget* content_;
    QWidget* foot_ = nullptr;
    FocusRing* ring_;
    QLabel* overlay_ = nullptr;
    std::unique_ptr<Gestures> gestures_;
    QHash<const screen::Control*, ControlWidget> widgets_;
    const screen::Control* ringed_ = nullptr;
    int drawing_ = 0;
};

}  // namespace desktop
