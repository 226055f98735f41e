#include "desktop/window_host.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include "desktop/key_meaning.h"
#include "desktop/look.h"
#include "screen/user_keys.h"

namespace desktop {

using screen::Button;

namespace {

/// Room for the frame that the desktop draws round a window, which isn't known before it is shown.
constexpr QSize kFrame(8, 40);

QMessageBox::StandardButton StandardOf(Button button) {
    switch (button) {
        case Button::OK:
            return QMessageBox::Ok;
        case Button::Yes:
            return QMessageBox::Yes;
        case Button::No:
            break;
    }
    return QMessageBox::No;
}

QString WordsOf(Button button) {
    switch (button) {
        case Button::OK:
            return QStringLiteral("OK");
        case Button::Yes:
            return QStringLiteral("はい(&Y)");
        case Button::No:
            break;
    }
    return QStringLiteral("いいえ(&N)");
}

/// Lets letters answer a message box, whatever its buttons are called.
class AnswerByLetter : public QObject {
  public:
    AnswerByLetter(const screen::MessageBox& message, QMessageBox& box) : QObject(&box), message_(message), box_(box) {
        box.installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return false;
        const auto press = PressOf(static_cast<QKeyEvent&>(*event));
        if (!press || press->key != screen::Key::Character) return false;
        if (const auto meant = ButtonMeant(message_, *press)) box_.button(StandardOf(*meant))->click();
        return true;
    }

  private:
    const screen::MessageBox message_;
    QMessageBox& box_;
};

/// The program's message texts part their lines by carriage returns.
QString WithLineFeeds(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

/// "文書 (*.doc)|*.doc" as the toolkit writes it: "文書 (*.doc)".
QStringList NameFilters(const QStringList& filters) {
    QStringList names;
    for (const QString& filter : filters) {
        const QStringList parts = filter.split(u'|');
        for (qsizetype place = 0; place < parts.size(); place += 2) {
            const QString pattern = parts.value(place + 1, QStringLiteral("*")).replace(u';', u' ');
            const QString name =
                parts[place].contains(u'(') ? parts[place] : QStringLiteral("%1 (%2)").arg(parts[place], pattern);
            // Here a name need have no point in it.
            names.append(QString(name).replace(QStringLiteral("(*.*)"), QStringLiteral("(*)")));
        }
    }
    return names;
}

/// The toolkit's own dialog speaks its own language otherwise.
void SetWords(QFileDialog& dialog, screen::PathDialog::Kind kind) {
    const bool file = kind == screen::PathDialog::Kind::File;
    dialog.setLabelText(QFileDialog::LookIn, QStringLiteral("場所:"));
    dialog.setLabelText(QFileDialog::FileName, file ? QStringLiteral("ファイル名:") : QStringLiteral("フォルダ名:"));
    dialog.setLabelText(QFileDialog::FileType, QStringLiteral("種類:"));
    dialog.setLabelText(QFileDialog::Accept, file ? QStringLiteral("開く") : QStringLiteral("選択"));
    dialog.setLabelText(QFileDialog::Reject, QStringLiteral("キャンセル"));
}

}  // namespace

WindowHost::WindowHost(const QString& placesFile) : places_(placesFile) {
    PrepareLook();
    // The forms say when the program ends, not their windows.
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

WindowHost::~WindowHost() {
    SetBusy(false);
    // The forms may be gone already, so the views let go of them first. A window deletes those that it bore.
    for (const auto& view : std::as_const(views_))
        if (view) view->Detach();
    const auto views = views_.values();
    views_.clear();
    for (const auto& view : views)
        delete view.data();
}

void WindowHost::EndBy(const platform::EndSignals& endSignals) {
    endSignal_ = std::make_unique<QSocketNotifier>(endSignals.Handle(), QSocketNotifier::Read);
    QObject::connect(endSignal_.get(), &QSocketNotifier::activated, endSignal_.get(), [this] {
        // It would be told again and again.
        endSignal_->setEnabled(false);
        EndProgram();
    });
}

QSize WindowHost::DisplaySize() const {
    const QScreen* display = QGuiApplication::primaryScreen();
    return display ? display->size() * display->devicePixelRatio() : QSize(1024, 768);
}

void WindowHost::ProcessEvents() {
    QCoreApplication::processEvents();
    // Outside of a running event loop nobody else removes the windows that were closed.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void WindowHost::Sleep(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void WindowHost::SetBusy(bool busy) {
    if (busy == busy_) return;
    busy_ = busy;
    if (busy)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

void WindowHost::WaitUntil(const std::function<bool()>& done) {
    while (!done()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

FormView* WindowHost::ViewOf(const screen::Form& form) const {
    return views_.value(&form);
}

QMessageBox* WindowHost::BoxInFront() const {
    return boxes_.empty() ? nullptr : boxes_.back().data();
}

FormView* WindowHost::WindowInFront() const {
    for (auto form = Shown().rbegin(); form != Shown().rend(); ++form)
        if (FormView* view = ViewOf(**form); view && !view->isHidden()) return view;
    return nullptr;
}

FormView* WindowHost::MakeView(screen::Form& form, FormView* below) {
    const Qt::WindowFlags flags = below ? Qt::Dialog | Qt::WindowCloseButtonHint : Qt::Window;
    auto* view = new FormView(
        form, [this, &form] { CloseByFrame(form); }, below, flags);
    views_[&form] = view;
    const QSize room = view->screen()->availableSize() - kFrame;
    if (below) view->resize(view->size().boundedTo(room));
    places_.Recall(*view, room);
    openedSizes_[view] = view->size();
    return view;
}

void WindowHost::PlaceByAsker(FormView& view) const {
    const screen::Control* asker = view.Model()->openedBeside;
    const FormView* asking = asker ? ViewOf(asker->Owner()) : nullptr;
    const ControlWidget* widget = asking ? asking->WidgetOf(*asker) : nullptr;
    if (!widget) return;
    const QRect place(widget->whole->mapToGlobal(QPoint(0, 0)), widget->whole->size());
    view.move(PlaceBeside(place, view.size() + kFrame, asking->screen()->availableGeometry()));
}

void WindowHost::FormShown(screen::Form& form, bool modal) {
    FormView* below = WindowInFront();
    FormView* view = ViewOf(form);
    if (view == below && view) below = nullptr;
    if (!view) {
        view = MakeView(form, below);
    } else if (view->isHidden()) {
        const QSize size = view->size();
        view->setParent(below, view->windowFlags());
        view->resize(size);
    }
    if (view->isHidden()) PlaceByAsker(*view);
    view->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    view->show();
    view->raise();
    view->activateWindow();
    view->SyncFocus();
}

void WindowHost::FormHidden(screen::Form& form) {
    FormView* view = ViewOf(form);
    if (!view) return;
    places_.Remember(*view, openedSizes_.value(view));
    openedSizes_[view] = view->size();
    view->hide();
    // The window that it came up over may vanish before it comes up again.
    view->setParent(nullptr, view->windowFlags());
    if (QWidget* next = WindowInFront()) next->activateWindow();
}

void WindowHost::FormUnloaded(screen::Form& form) {
    FormView* view = views_.take(&form);
    form.watcher = nullptr;
    if (!view) return;
    places_.Remember(*view, openedSizes_.take(view));
    view->Detach();
    view->hide();
    view->deleteLater();
    if (QWidget* next = WindowInFront()) next->activateWindow();
}

void WindowHost::MessageShown() {
    const screen::MessageBox& message = *WaitingMessage();
    auto* box = new QMessageBox(WindowInFront());
    box->setObjectName(QStringLiteral("messageBox"));
    box->setWindowTitle(message.title);
    box->setTextFormat(Qt::PlainText);
    box->setText(WithLineFeeds(message.text));
    box->setIcon(message.buttons.size() > 1 ? QMessageBox::Question : QMessageBox::Information);
    for (const Button button : message.buttons)
        box->addButton(StandardOf(button))->setText(WordsOf(button));
    box->setDefaultButton(StandardOf(message.defaultButton));
    const std::vector<Button> buttons = message.buttons;
    QObject::connect(box, &QMessageBox::finished, box, [this, buttons](int result) {
        for (const Button button : buttons)
            if (StandardOf(button) == result) return Answer(button);
        // Closed by its frame: the last button is the one that does least.
        Answer(buttons.empty() ? Button::OK : buttons.back());
    });
    new AnswerByLetter(message, *box);
    boxes_.push_back(box);
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
    box->activateWindow();
}

void WindowHost::MessageAnswered() {
    const QPointer<QMessageBox> box = boxes_.back();
    boxes_.pop_back();
    if (box) {
        box->disconnect();
        box->hide();
        box->deleteLater();
    }
    if (QWidget* next = WindowInFront()) next->activateWindow();
}

void WindowHost::DialogShown() {
    const screen::PathDialog& asked = *WaitingDialog();
    // Without a title the toolkit gives it one in its own language.
    const QString title = asked.prompt.isEmpty() ? QStringLiteral("ファイルの選択") : asked.prompt;
    dialog_ = new QFileDialog(WindowInFront(), title, asked.startFolder);
    dialog_->setOption(QFileDialog::DontUseNativeDialog);
    if (asked.kind == screen::PathDialog::Kind::Folder) {
        dialog_->setFileMode(QFileDialog::Directory);
        dialog_->setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog_->setFileMode(QFileDialog::ExistingFile);
        if (!asked.filters.isEmpty()) dialog_->setNameFilters(NameFilters(asked.filters));
    }
    SetWords(*dialog_, asked.kind);
    QFileDialog* dialog = dialog_;
    QObject::connect(dialog, &QFileDialog::finished, dialog, [this, dialog](int result) {
        const QStringList files = dialog->selectedFiles();
        const bool chosen = result == QDialog::Accepted && !files.isEmpty();
        AnswerPath(chosen ? std::optional(QDir::toNativeSeparators(files.front())) : std::nullopt);
    });
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->show();
}

void WindowHost::DialogAnswered() {
    if (dialog_) {
        dialog_->disconnect();
        dialog_->hide();
        dialog_->deleteLater();
        dialog_.clear();
    }
    if (QWidget* next = WindowInFront()) next->activateWindow();
}

void WindowHost::WaitingChanged() {
    const QString words = WaitingHasEnded() ? QStringLiteral("「%1」は回答せずに終了しました。Esc キーで戻ります。")
                                            : QStringLiteral("「%1」の終了を待っています。");
    const QString notice = Waiting().isEmpty() ? QString() : words.arg(Waiting());
    if (FormView* view = WindowInFront()) view->ShowOverlay(notice);
}

}  // namespace desktop
