#include "desktop/window_host.h"

#include <QApplication>
#include <QEventLoop>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTimer>

#include "desktop/look.h"

namespace desktop {

using screen::Button;

namespace {

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
            names.append(parts[place].contains(u'(') ? parts[place]
                                                     : QStringLiteral("%1 (%2)").arg(parts[place], pattern));
        }
    }
    return names;
}

}  // namespace

WindowHost::WindowHost() {
    PrepareLook();
    // The forms say when the program ends, not their windows.
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

WindowHost::~WindowHost() {
    // The forms may be gone already, so the views let go of them first. A window deletes those that it bore.
    for (const auto& view : std::as_const(views_))
        if (view) view->Detach();
    const auto views = views_.values();
    views_.clear();
    for (const auto& view : views)
        delete view.data();
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

QWidget* WindowHost::WindowInFront() const {
    for (auto form = Shown().rbegin(); form != Shown().rend(); ++form)
        if (FormView* view = ViewOf(**form)) return view;
    return nullptr;
}

void WindowHost::FormShown(screen::Form& form, bool modal) {
    FormView* view = ViewOf(form);
    if (!view) {
        QWidget* below = WindowInFront();
        const Qt::WindowFlags flags = below ? Qt::Dialog | Qt::WindowCloseButtonHint : Qt::Window;
        view = new FormView(
            form, [this, &form] { CloseByFrame(form); }, below, flags);
        views_[&form] = view;
    }
    view->setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    view->show();
    view->raise();
    view->activateWindow();
}

void WindowHost::FormUnloaded(screen::Form& form) {
    FormView* view = views_.take(&form);
    form.watcher = nullptr;
    if (!view) return;
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
    dialog_ = new QFileDialog(WindowInFront(), asked.prompt, asked.startFolder);
    dialog_->setOption(QFileDialog::DontUseNativeDialog);
    if (asked.kind == screen::PathDialog::Kind::Folder) {
        dialog_->setFileMode(QFileDialog::Directory);
        dialog_->setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog_->setFileMode(QFileDialog::ExistingFile);
        if (!asked.filters.isEmpty()) dialog_->setNameFilters(NameFilters(asked.filters));
    }
    QFileDialog* dialog = dialog_;
    QObject::connect(dialog, &QFileDialog::finished, dialog, [this, dialog](int result) {
        const QStringList files = dialog->selectedFiles();
        AnswerPath(result == QDialog::Accepted && !files.isEmpty() ? std::optional(files.front()) : std::nullopt);
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

}  // namespace desktop
