#include "screen/screen_host.h"

#include <algorithm>

namespace screen {

QString ButtonName(Button button) {
    switch (button) {
        case Button::OK:
            return QStringLiteral("OK");
        case Button::Yes:
            return QStringLiteral("Yes");
        case Button::No:
            break;
    }
    return QStringLiteral("No");
}

void ScreenHost::Present(Form& form, bool modal) {
    if (form.onLoad) form.onLoad();
    if (ended_) return;
    std::erase(shown_, &form);
    std::erase(hidden_, &form);
    shown_.push_back(&form);
    form.SetLoaded(true);
    FormShown(form, modal);
}

void ScreenHost::Show(Form& form) {
    Present(form, false);
}

void ScreenHost::ShowModal(Form& form) {
    Present(form, true);
    if (!form.Focused()) form.FocusFirst();
    WaitUntil([this, &form] { return ended_ || !form.Loaded(); });
}

void ScreenHost::Unload(Form& form) {
    if (std::erase(shown_, &form) + std::erase(hidden_, &form) == 0) return;
    form.SetLoaded(false);
    FormUnloaded(form);
}

void ScreenHost::Hide(Form& form) {
    if (std::erase(shown_, &form) == 0) return;
    hidden_.push_back(&form);
    form.SetLoaded(false);
    FormHidden(form);
}

Button ScreenHost::Ask(const MessageBox& box) {
    const Button unanswered = box.buttons.empty() ? box.defaultButton : box.buttons.back();
    if (ended_) return unanswered;
    messages_.push_back({&box, std::nullopt});
    const std::size_t depth = messages_.size();
    MessageShown();
    WaitUntil([this, depth] { return ended_ || messages_[depth - 1].answer.has_value(); });
    const Button answer = messages_[depth - 1].answer.value_or(unanswered);
    messages_.resize(depth - 1);
    MessageAnswered();
    return answer;
}

void ScreenHost::Tell(const QString& text) {
    Ask({kProgramTitle, text, {Button::OK}, Button::OK});
}

std::optional<QString> ScreenHost::AskPath(const PathDialog& dialog) {
    if (ended_) return std::nullopt;
    dialog_ = &dialog;
    dialogAnswer_.reset();
    DialogShown();
    WaitUntil([this] { return ended_ || dialogAnswer_.has_value(); });
    dialog_ = nullptr;
    const std::optional<QString> path = dialogAnswer_.value_or(std::nullopt);
    DialogAnswered();
    return path;
}

void ScreenHost::SetWaiting(const QString& program, bool ended) {
    waiting_ = program;
    waitingHasEnded_ = ended;
    WaitingChanged();
}

void ScreenHost::CloseByFrame(Form& form) {
    if (form.onQueryClose && !form.onQueryClose()) return;
    if (!ended_) Unload(form);
}

void ScreenHost::Answer(Button button) {
    if (!messages_.empty()) messages_.back().answer = button;
}

void ScreenHost::AnswerPath(const std::optional<QString>& path) {
    if (dialog_) dialogAnswer_ = path;
}

void ScreenHost::Run() {
    WaitUntil([this] { return ended_; });
}

void ScreenHost::EndProgram() {
    ended_ = true;
}

}  // namespace screen
