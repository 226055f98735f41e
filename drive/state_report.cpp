#include "drive/state_report.h"

#include <QJsonArray>
#include <QJsonValue>

namespace drive {

using screen::Control;
using screen::ControlKind;
using screen::Form;
using screen::ScreenHost;

namespace {

QJsonValue NumberOrNull(int index) {
    return index < 0 ? QJsonValue() : QJsonValue(index);
}

QJsonValue MessageState(const screen::MessageBox* box) {
    if (!box) return QJsonValue();
    QJsonArray buttons;
    for (const screen::Button button : box->buttons)
        buttons.append(ButtonName(button));
    return QJsonObject{
        {"title", box->title}, {"text", box->text}, {"buttons", buttons}, {"default", ButtonName(box->defaultButton)}};
}

QJsonValue DialogState(const screen::PathDialog* dialog) {
    if (!dialog) return QJsonValue();
    const bool file = dialog->kind == screen::PathDialog::Kind::File;
    return QJsonObject{{"kind", file ? "file" : "folder"},
                       {"start", dialog->startFolder},
                       {"filters", QJsonArray::fromStringList(dialog->filters)}};
}

QJsonValue WaitingState(const ScreenHost& host) {
    if (host.Waiting().isEmpty()) return QJsonValue();
    return host.Waiting() + (host.WaitingHasEnded() ? QStringLiteral("（終了）") : QString());
}

void TellList(const Control& control, QJsonObject& state) {
    QJsonArray columns;
    for (const screen::ListColumn& column : control.columns)
        columns.append(QJsonObject{{"header", column.header}, {"width", column.width}});
    QJsonArray rows;
    for (const screen::ListRow& row : control.Rows())
        rows.append(QJsonObject{{"key", row.key}, {"cells", QJsonArray::fromStringList(row.cells)}});
    state["columns"] = columns;
    state["rows"] = rows;
    state["selected"] = NumberOrNull(control.ListIndex());
    state["sorted"] = QJsonValue();
    if (const auto& sorted = control.Sorted())
        state["sorted"] = QJsonObject{{"column", sorted->column}, {"descending", sorted->descending}};
}

QJsonObject ControlState(const Control& control) {
    QJsonObject state{{"kind", KindName(control.Kind())},
                      {"enabled", control.EffectivelyEnabled()},
                      {"visible", control.EffectivelyVisible()}};
    if (control.TakesFocus()) state["tabstop"] = control.TabStop();
    if (control.IsEntry()) {
        state["text"] = control.Text();
        if (control.maxLength > 0) state["maxlength"] = control.maxLength;
    } else {
        state["caption"] = control.Caption();
    }
    switch (control.Kind()) {
        case ControlKind::SSOption:
            state["chosen"] = control.Chosen() ? 1 : 0;
            [[fallthrough]];
        case ControlKind::EntryNumber:
        case ControlKind::CheckBox:
            state["value"] = control.Value();
            break;
        case ControlKind::ComboBox:
            state["text"] = control.Entries().value(control.ListIndex());
            state["entries"] = QJsonArray::fromStringList(control.Entries());
            state["index"] = NumberOrNull(control.ListIndex());
            break;
        case ControlKind::SSTab:
            state["entries"] = QJsonArray::fromStringList(control.pages);
            state["index"] = NumberOrNull(control.ListIndex());
            break;
        case ControlKind::ListView:
            TellList(control, state);
            break;
        default:
            break;
    }
    return state;
}

}  // namespace

QJsonObject Situation(const ScreenHost& host) {
    QJsonObject answer{{"window", QJsonValue()},
                       {"focus", QJsonValue()},
                       {"message", MessageState(host.WaitingMessage())},
                       {"dialog", DialogState(host.WaitingDialog())},
                       {"waiting", WaitingState(host)}};
    if (const Form* form = host.Front()) {
        answer["window"] = form->Name();
        if (const Control* focused = form->Focused()) {
            answer["focus"] = focused->Name();
            if (focused->Index() >= 0) answer["focusIndex"] = focused->Index();
        }
    }
    return answer;
}

QJsonObject FormState(const Form& form) {
    QJsonObject items;
    for (const auto& control : form.Controls()) {
        if (control->Index() < 0) {
            items[control->Name()] = ControlState(*control);
            continue;
        }
        QJsonArray members = items[control->Name()].toArray();
        members.append(ControlState(*control));
        items[control->Name()] = members;
    }
    return {{"caption", form.Caption()}, {"items", items}};
}

}  // namespace drive
