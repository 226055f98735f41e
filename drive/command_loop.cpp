#include "drive/command_loop.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>

#include "drive/state_report.h"
#include "screen/user_keys.h"

namespace drive {

using screen::Control;
using screen::ControlKind;
using screen::Form;

namespace {

void WriteLine(const QJsonObject& answer) {
    std::cout << QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString() << std::endl;
}

QString Named(const QJsonObject& command, const char* field) {
    return command.value(QLatin1String(field)).toString();
}

/// Says in words why a user can't act on the item; empty when one can.
QString OutOfReach(const Control& control) {
    if (!control.EffectivelyVisible()) return QStringLiteral("%1 is hidden").arg(control.Name());
    return control.EffectivelyEnabled() ? QString() : QStringLiteral("%1 is disabled").arg(control.Name());
}

/// The form of that name, shown or hidden; null when none is loaded.
const Form* LoadedForm(const screen::ScreenHost& host, const QString& name) {
    for (const auto& forms : {host.Shown(), host.Hidden()})
        for (const Form* form : forms)
            if (form->Name() == name) return form;
    return nullptr;
}

/// Reads a position out of `count` from a field of the command.
bool ReadPosition(const QJsonObject& command, const char* field, qsizetype count, int& position) {
    position = command.value(QLatin1String(field)).toInt(-1);
    return position >= 0 && position < count;
}

}  // namespace

void CommandLoop::RunUntil(const std::function<bool()>& done) {
    while (!done()) {
        hands_->Settle();
        if (done()) return;
        AnswerPending();
        QJsonObject command;
        takesDuringWait_ = false;
        if (!ReadCommand(command)) continue;
        // A command that opens a wait is answered down there; a refused one never gets that far.
        if (const QString refusal = CarryOut(command); !refusal.isEmpty()) refusal_ = refusal;
    }
}

void CommandLoop::TakeDuringWait() {
    if (signals_.Came()) host_.EndProgram();
    if (host_.Waiting().isEmpty() || host_.Ended()) return;
    // A wait may have no end, and then nothing else would end the program of somebody who is gone.
    if (NobodyReads()) std::_Exit(0);
    if (!takesDuringWait_ || taking_) return;
    const QScopedValueRollback<bool> taking(taking_, true);
    hands_->Settle();
    AnswerPending();
    // "wait" is answered when the wait is over, and so nothing behind it is read before.
    while (!pending_ && input_.HasLine()) {
        QJsonObject command;
        if (ReadCommand(command)) {
            if (Named(command, "do") == "wait") {
                takesDuringWait_ = false;
                return;
            }
            if (const QString refusal = CarryOut(command); !refusal.isEmpty()) refusal_ = refusal;
        }
        // A command that left the wait is answered behind it.
        if (host_.Waiting().isEmpty()) return;
        hands_->Settle();
        AnswerPending();
    }
}

bool CommandLoop::ReadCommand(QJsonObject& command) {
    std::string line;
    if (!input_.ReadLine(line)) {
        if (signals_.Came()) {
            host_.EndProgram();
            return false;
        }
        std::cout.flush();
        std::_Exit(0);
    }
    pending_ = true;
    refusal_.clear();
    tellsState_ = false;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(line), &error);
    if (!document.isObject()) {
        refusal_ = QStringLiteral("not a JSON object");
        if (error.error != QJsonParseError::NoError) refusal_ += ": " + error.errorString();
        return false;
    }
    command = document.object();
    takesDuringWait_ = takesDuringWait_ || command.value("nowait").toBool();
    return true;
}

void CommandLoop::AnswerPending() {
    if (!pending_) return;
    pending_ = false;
    QJsonObject answer = Situation(host_);
    const Form* shown = host_.Front();
    if (refusal_.isEmpty() && shown) {
        const QString difference = hands_->DrawnDifference(*shown);
        if (!difference.isEmpty()) refusal_ = QStringLiteral("drawn otherwise: %1").arg(difference);
    }
    answer["ok"] = refusal_.isEmpty();
    if (!refusal_.isEmpty()) answer["error"] = refusal_;
    if (tellsState_) {
        QJsonArray windows;
        for (const Form* form : host_.Shown())
            windows.append(form->Name());
        if (const Form* wanted = LoadedForm(host_, stateOf_)) shown = wanted;
        answer["windows"] = windows;
        const QJsonObject state = shown ? FormState(*shown) : QJsonObject{{"caption", ""}, {"items", QJsonObject()}};
        for (auto field = state.begin(); field != state.end(); ++field)
            answer[field.key()] = field.value();
        answer["opened"] = QJsonArray::fromStringList(outside_.opener.Opened());
        answer["started"] = QJsonArray::fromStringList(outside_.started);
    }
    WriteLine(answer);
}

void CommandLoop::TellEnded() {
    if (!pending_) {
        QJsonObject unused;
        ReadCommand(unused);
    }
    WriteLine({{"ok", true}, {"ended", true}});
}

QString CommandLoop::CarryOut(const QJsonObject& command) {
    const QString what = Named(command, "do");
    if (what == "state") {
        stateOf_ = Named(command, "window");
        if (!stateOf_.isEmpty()) {
            if (!LoadedForm(host_, stateOf_)) return QStringLiteral("no window %1").arg(stateOf_);
        }
        tellsState_ = true;
        return {};
    }
    if (what == "clock") {
        const QDateTime now = QDateTime::fromString(Named(command, "now"), QStringLiteral("yyyyMMdd HHmmss"));
        if (!clock_ || !now.isValid()) return QStringLiteral("the clock isn't fixed, or no such time");
        clock_->Set(now);
        return {};
    }
    if (what == "wait") return {};
    if (what == "answer") {
        const screen::MessageBox* box = host_.WaitingMessage();
        if (!box) return QStringLiteral("no message box is in front");
        for (const screen::Button button : box->buttons) {
            if (ButtonName(button) != Named(command, "button")) continue;
            hands_->Answer(button);
            return {};
        }
        return QStringLiteral("the message box has no such button");
    }
    if (const screen::MessageBox* box = host_.WaitingMessage()) {
        const auto key = what == "key" ? screen::KeyNamed(Named(command, "key")) : std::nullopt;
        if (!key || !ButtonMeant(*box, *key)) return QStringLiteral("a message box is in front");
        hands_->AnswerByKey(*key);
        return {};
    }
    if (what == "path") {
        if (!host_.WaitingDialog()) return QStringLiteral("no file or folder dialog is in front");
        const QJsonValue path = command.value("path");
        hands_->AnswerPath(path.isString() ? std::optional(path.toString()) : std::nullopt);
        return {};
    }
    if (host_.WaitingDialog()) return QStringLiteral("a file or folder dialog is in front");
    Form* form = host_.Front();
    if (!form) return QStringLiteral("no window is in front");
    return CarryOutOnForm(command, *form);
}

QString CommandLoop::CarryOutOnForm(const QJsonObject& command, Form& form) {
    const QString what = Named(command, "do");
    if (what == "close") {
        if (!form.Enabled()) return QStringLiteral("%1 is disabled").arg(form.Name());
        hands_->Close(form);
        return {};
    }
    if (what == "key") {
        const auto key = screen::KeyNamed(Named(command, "key"));
        if (!key) return QStringLiteral("no key %1").arg(Named(command, "key"));
        if (!form.Enabled() && !(*key == screen::Key::Escape && form.onEscapeDisabled))
            return QStringLiteral("%1 is disabled").arg(form.Name());
        // A refusal is kept at once: what the key does may open a wait, which answers down there.
        if (const Control* button = screen::ShortcutButton(form, *key)) refusal_ = OutOfReach(*button);
        hands_->PressKey(form, *key);
        return {};
    }
    if (what == "type") {
        Control* focused = form.Focused();
        if (!focused || !focused->IsEntry() || focused->readOnly || !focused->EffectivelyEnabled())
            return QStringLiteral("the focus is on nothing to type into");
        hands_->Type(*focused, Named(command, "text"));
        return {};
    }

    const QString name = Named(command, "item");
    Control* control = form.Find(name, command.value("index").toInt(-1));
    const QString refusal = control ? OutOfReach(*control) : QStringLiteral("no item %1 on %2").arg(name, form.Name());
    if (!refusal.isEmpty()) {
        if (what.isEmpty()) return QStringLiteral("no command");
        if (what != "click" || !control || !control->EffectivelyVisible() || !control->onRefused) return refusal;
        refusal_ = refusal;
        hands_->Click(*control);
        return {};
    }
    const ControlKind kind = control->Kind();
    int position = 0;
    if (what == "focus") {
        if (!control->TakesFocus()) return QStringLiteral("%1 takes no focus").arg(control->Name());
        hands_->Focus(*control);
    } else if (what == "click") {
        if (control->IsEntry() || kind == ControlKind::ListView || kind == ControlKind::ComboBox)
            return QStringLiteral("%1 is no button, panel, caption or option").arg(control->Name());
        hands_->Click(*control);
    } else if (what == "doubleclick") {
        if (!control->IsEntry() && kind != ControlKind::ListView)
            return QStringLiteral("%1 is no entry item or list").arg(control->Name());
        hands_->DoubleClick(*control);
    } else if (what == "choose") {
        const bool strip = kind == ControlKind::SSTab;
        if (!strip && kind != ControlKind::ComboBox)
            return QStringLiteral("%1 has nothing to choose").arg(control->Name());
        if (!ReadPosition(command, "entry", strip ? control->pages.size() : control->Entries().size(), position))
            return QStringLiteral("%1 has no such entry").arg(control->Name());
        hands_->Choose(*control, position);
    } else if (what == "set") {
        if (kind != ControlKind::EntryNumber || !command.value("value").isDouble())
            return QStringLiteral("%1 takes no number").arg(control->Name());
        const double value = command.value("value").toDouble();
        if (value != std::floor(value)) return QStringLiteral("%1 takes whole numbers only").arg(control->Name());
        const double nearest = std::clamp<double>(value, control->minimum, control->maximum);
        hands_->SetValue(*control, static_cast<int>(nearest));
    } else if (what == "select") {
        if (kind != ControlKind::ListView || !ReadPosition(command, "row", control->Rows().size(), position))
            return QStringLiteral("%1 has no such row").arg(control->Name());
        hands_->SelectRow(*control, position);
    } else if (what == "header") {
        if (kind != ControlKind::ListView || !ReadPosition(command, "column", control->columns.size(), position))
            return QStringLiteral("%1 has no such column").arg(control->Name());
        hands_->ClickHeader(*control, position);
    } else if (what == "drop") {
        if (!control->onPathsGiven) return QStringLiteral("%1 takes no files").arg(control->Name());
        hands_->Drop(*control, command.value("paths").toVariant().toStringList());
    } else {
        return QStringLiteral("no command %1").arg(what);
    }
    return {};
}

}  // namespace drive
