#pragma once

#include <QFileDialog>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QSocketNotifier>
#include <memory>
#include <vector>

#include "desktop/form_view.h"
#include "desktop/window_places.h"
#include "platform/end_signals.h"
#include "screen/screen_host.h"

namespace desktop {

/// Shows the forms as windows of a display and takes the user's input. Needs a QApplication that outlives it.
class WindowHost : public screen::ScreenHost {
  public:
    /// `placesFile` remembers sizes of windows from run to run; empty to remember none.
    explicit WindowHost(const QString& placesFile = WindowPlaces::UserFile());
    ~WindowHost() override;

    /// Ends the program when one of the signals comes, whatever is waited for. They must outlive the host.
    void EndBy(const platform::EndSignals& endSignals);

    QSize DisplaySize() const override;
    void ProcessEvents() override;
    void Sleep(int milliseconds) override;
    void SetBusy(bool busy) override;

    /// The window of a shown form; null when it has none.
    FormView* ViewOf(const screen::Form& form) const;
    /// The message box in front, or null.
    QMessageBox* BoxInFront() const;
    /// The file or folder dialog in front, or null.
    QFileDialog* DialogInFront() const { return dialog_; }

  protected:
    void WaitUntil(const std::function<bool()>& done) override;
    void FormShown(screen::Form& form, bool modal) override;
    void FormUnloaded(screen::Form& form) override;
    void FormHidden(screen::Form& form) override;
    void MessageShown() override;
    void MessageAnswered() override;
    void DialogShown() override;
    void DialogAnswered() override;
    void WaitingChanged() override;

  private:
    FormView* WindowInFront() const;
    FormView* MakeView(screen::Form& form, FormView* below);
    void PlaceByAsker(FormView& view) const;

    WindowPlaces places_;
    QHash<const screen::Form*, QPointer<FormView>> views_;
    QHash<const FormView*, QSize> openedSizes_;
    bool busy_ = false;
    std::vector<QPointer<QMessageBox>> boxes_;
    QPointer<QFileDialog> dialog_;
    std::unique_ptr<QSocketNotifier> endSignal_;
};

}  // namespace desktop
