#include "drive/hands.h"

#include "screen/user_input.h"
#include "screen/user_keys.h"

namespace drive {

void Hands::Focus(screen::Control& control) {
    screen::UserFocus(control);
}
void Hands::Type(screen::Control& control, const QString& text) {
    screen::UserType(control, text);
}
void Hands::PressKey(screen::Form& form, const screen::KeyPress& press) {
    screen::UserKey(form, press);
}
void Hands::Click(screen::Control& control) {
    screen::UserClick(control);
}
void Hands::DoubleClick(screen::Control& control) {
    screen::UserDoubleClick(control);
}
void Hands::Choose(screen::Control& control, int entry) {
    screen::UserChoose(control, entry);
}
void Hands::SetValue(screen::Control& control, int value) {
    screen::UserSetValue(control, value);
}
void Hands::SelectRow(screen::Control& control, int row) {
    screen::UserSelectRow(control, row);
}
void Hands::ClickHeader(screen::Control& control, int column) {
    screen::UserClickHeader(control, column);
}
void Hands::Drop(screen::Control& control, const QStringList& paths) {
    screen::UserGivePaths(control, paths);
}
void Hands::Answer(screen::Button button) {
    host_.Answer(button);
}
void Hands::AnswerByKey(const screen::KeyPress& press) {
    if (const auto button = screen::ButtonMeant(*host_.WaitingMessage(), press)) host_.Answer(*button);
}
void Hands::AnswerPath(const std::optional<QString>& path) {
    host_.AnswerPath(path);
}
void Hands::Close(screen::Form& form) {
    host_.CloseByFrame(form);
}

}  // namespace drive
