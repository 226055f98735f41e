#pragma once

#include <QSize>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

#include "screen/form.h"

namespace screen {

enum class Button { OK, Yes, No };
QString ButtonName(Button button);

/// A message box while it waits.
struct MessageBox {
    QString title;
    QString text;
    std::vector<Button> buttons;
    Button defaultButton = Button::OK;
};

/// A file or folder dialog while it waits.
struct PathDialog {
    enum class Kind { File, Folder };
    Kind kind = Kind::File;
    QString prompt;
    QString startFolder;
    QStringList filters;  ///< "name (*.ext)|*.ext" pairs, as text
};

/// What only the outside can do for the screens: show a form, run one modally, ask a message box, ask for a path, let
/// events through, sleep, end. It keeps the stack of shown forms and whatever waits in front of them; a host says how
/// they are drawn and where the next input comes from.
class ScreenHost {
  public:
    virtual ~ScreenHost() = default;

    /// Resolution of the display in pixels.
    virtual QSize DisplaySize() const = 0;

    /// Shows a form in front, without waiting for it: OnLoad, then the window.
    void Show(Form& form);
    /// Shows a form and returns when it is unloaded (or the program ended). The forms below take no input meanwhile.
    void ShowModal(Form& form);
    /// Takes a form off the screen; one that isn't shown is left alone.
    void Unload(Form& form);
    /// The same for a form that stays loaded: it is shown again as it was left.
    void Hide(Form& form);
    /// Shows the message and returns the button that answers it. When the program ended meanwhile, the last one, which
    /// does least: nobody has answered.
    Button Ask(const MessageBox& box);
    /// A message with one OK button and the program's title.
    void Tell(const QString& text);
    /// Asks for a file or a folder; nothing when cancelled.
    std::optional<QString> AskPath(const PathDialog& dialog);

    /// The user closes the form by its frame: OnQueryClose may refuse, otherwise the form is unloaded.
    void CloseByFrame(Form& form);

    /// Answers what waits in front. For hosts and their input.
    void Answer(Button button);
    void AnswerPath(const std::optional<QString>& path);

    /// Waits until the program ends.
    void Run();
    /// Marks the program as ended: every wait returns, and the caller's code runs out.
    void EndProgram();
    bool Ended() const { return ended_; }

    /// Lets pending events through once.
    virtual void ProcessEvents() = 0;
    virtual void Sleep(int milliseconds) = 0;
    /// Tells the user, for as long as `program` isn't empty, that the program waits for that other program; when that
    /// one has `ended` without an answer, also that Escape leaves the wait.
    void SetWaiting(const QString& program, bool ended = false);
    /// The program waited for; empty when none is.
    const QString& Waiting() const { return waiting_; }
    bool WaitingHasEnded() const { return waitingHasEnded_; }

    /// Tells the user that the program works and takes no input, until it is called with false.
    virtual void SetBusy(bool /*busy*/) {}

    /// The shown forms, the front one last.
    const std::vector<Form*>& Shown() const { return shown_; }
    /// The forms that are loaded but hidden.
    const std::vector<Form*>& Hidden() const { return hidden_; }
    /// The form in front, or null.
    Form* Front() const { return shown_.empty() ? nullptr : shown_.back(); }
    /// What waits in front of the forms, or null.
    const MessageBox* WaitingMessage() const { return messages_.empty() ? nullptr : messages_.back().box; }
    const PathDialog* WaitingDialog() const { return dialog_; }

  protected:
    /// Takes input until `done` says so.
    virtual void WaitUntil(const std::function<bool()>& done) = 0;
    /// Hooks for a host that draws; each comes after the host's own record changed.
    virtual void FormShown(Form&, bool /*modal*/) {}
    virtual void FormUnloaded(Form&) {}
    virtual void FormHidden(Form& form) { FormUnloaded(form); }
    virtual void MessageShown() {}
    virtual void MessageAnswered() {}
    virtual void DialogShown() {}
    virtual void DialogAnswered() {}
    virtual void WaitingChanged() {}

  private:
    struct WaitingBox {
        const MessageBox* box;
        std::optional<Button> answer;
    };

    void Present(Form& form, bool modal);

    std::vector<Form*> shown_;
    std::vector<Form*> hidden_;
    std::vector<WaitingBox> messages_;
    const PathDialog* dialog_ = nullptr;
    std::optional<std::optional<QString>> dialogAnswer_;
    QString waiting_;
    bool waitingHasEnded_ = false;
    bool ended_ = false;
};

/// Title of every message box of the program.
inline const QString kProgramTitle = QStringLiteral("活動手帳");

}  // namespace screen
