#include "desktop/control_widget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVariant>
#include <algorithm>

#include "desktop/entry_widgets.h"
#include "desktop/list_layout.h"
#include "desktop/list_table.h"
#include "desktop/result_label.h"
#include "screen/form.h"
#include "screen/result_line.h"

namespace desktop {

using screen::Control;
using screen::ControlKind;

namespace {

const char* const kHeading = "heading";
constexpr QColor kPaleMark(0xc3, 0xcc, 0xd5);

/// Wide enough for a short code, so that its length can be seen; longer texts take what the layout gives.
void FitWidth(QWidget& widget, const Control& control) {
    constexpr int kLongestCode = 14;
    if (control.maxLength <= 0 || control.maxLength > kLongestCode) return;
    widget.setFixedWidth(widget.fontMetrics().horizontalAdvance(u'0') * std::max(control.maxLength, 2) + 18);
}

QLineEdit* MakeLine(const Control& control, QWidget* parent) {
    QLineEdit* line = nullptr;
    if (control.Kind() == ControlKind::EntryNumber) {
        line = new NumberEntry(parent);
        line->setFixedWidth(line->fontMetrics().horizontalAdvance(u'0') * 3 + 30);
    } else {
        line = new LineEntry(ComposesText(control), parent);
        FitWidth(*line, control);
    }
    if (control.Kind() == ControlKind::EntrySecret) line->setEchoMode(QLineEdit::Password);
    if (control.Kind() == ControlKind::EntryPhone) line->setMinimumWidth(110);
    if (control.Kind() == ControlKind::EntryPostcode)
        line->setFixedWidth(line->fontMetrics().horizontalAdvance(u'0') * 8 + 18);
    line->setReadOnly(control.readOnly);
    line->setAcceptDrops(false);
    return line;
}

QLabel* MakeLabel(const Control& control, QWidget* parent) {
    if (control.Name() == screen::kResultItem) return new ResultLabel(parent);
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    if (control.Kind() == ControlKind::SSPanel && control.onClick) label->setCursor(Qt::PointingHandCursor);
    return label;
}

ControlWidget MakeStrip(Control& control, QWidget* parent) {
    auto* strip = new QTabWidget(parent);
    for (const QString& page : control.pages)
        strip->addTab(new QWidget(strip), page);
    return {&control, strip, strip->tabBar(), strip->tabBar()};
}

ControlWidget MakeBare(Control& control, QWidget* parent) {
    QWidget* widget = nullptr;
    switch (control.Kind()) {
        case ControlKind::CommandButton:
        case ControlKind::SSCommand: {
            auto* button = new QPushButton(parent);
            button->setAutoDefault(false);
            widget = button;
            break;
        }
        case ControlKind::SSOption: {
            auto* option = new QRadioButton(parent);
            // The control releases the others of its group; left to itself, the toolkit would join two groups.
            option->setAutoExclusive(false);
            widget = option;
            break;
        }
        case ControlKind::CheckBox:
            widget = new QCheckBox(parent);
            break;
        case ControlKind::ComboBox: {
            auto* list = new QComboBox(parent);
            list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
            list->setMinimumContentsLength(7);
            widget = list;
            break;
        }
        case ControlKind::ListView: {
            auto* table = new ListTable(control, parent);
            table->viewport()->setAcceptDrops(static_cast<bool>(control.onPathsGiven));
            return {&control, table, table, table->viewport()};
        }
        case ControlKind::SSTab:
            return MakeStrip(control, parent);
        case ControlKind::EntryMemo: {
            auto* memo = new MemoEntry(ComposesText(control), parent);
            memo->setReadOnly(control.readOnly);
            memo->setAcceptDrops(false);
            return {&control, memo, memo, memo->viewport()};
        }
        case ControlKind::SSPanel:
        case ControlKind::CaptionLabel:
            widget = MakeLabel(control, parent);
            break;
        default:
            widget = MakeLine(control, parent);
            break;
    }
    return {&control, widget, widget, widget};
}

QString WithoutMnemonic(QString caption) {
    return caption.replace(u'&', QStringLiteral("&&"));
}

void DrawLine(QLineEdit& line, const Control& control, const QString& text) {
    if (line.text() == text) return;
    const int cursor = line.cursorPosition();
    line.setText(text);
    line.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
    if (control.Owner().Focused() == &control && control.Owner().WholeTextSelected()) line.selectAll();
}

void DrawMemo(MemoEntry& memo, const QString& text) {
    if (memo.TypedText() == text) return;
    const int cursor = memo.textCursor().position();
    const bool atEnd = memo.textCursor().atEnd();
    memo.setPlainText(text);
    QTextCursor moved = memo.textCursor();
    if (atEnd)
        moved.movePosition(QTextCursor::End);
    else
        moved.setPosition(std::min(cursor, static_cast<int>(text.size())));
    memo.setTextCursor(moved);
}

void DrawList(QComboBox& list, const Control& control) {
    QStringList drawn;
    for (int entry = 0; entry < list.count(); ++entry)
        drawn.append(list.itemText(entry));
    if (drawn != control.Entries()) {
        list.clear();
        list.addItems(control.Entries());
    }
    list.setCurrentIndex(control.ListIndex());
}

/// The chosen option stands out; one that is only drawn pressed has a pale mark, and a screen reader says so.
void DrawChosen(QAbstractButton& option, const Control& control) {
    const bool onlyPressed = control.Value() != 0 && !control.Chosen();
    if (QFont font = option.font(); font.bold() != control.Chosen()) {
        font.setBold(control.Chosen());
        option.setFont(font);
    }
    const QString words = onlyPressed ? QStringLiteral("未選択") : QString();
    if (option.accessibleDescription() == words) return;
    option.setAccessibleDescription(words);
    option.setAccessibleName(words.isEmpty() ? SpokenName(control) : SpokenName(control) + u'、' + words);
    QPalette colours;
    if (onlyPressed) colours.setColor(QPalette::Text, kPaleMark);
    option.setPalette(colours);
}

void DrawContent(const ControlWidget& widget) {
    const Control& control = *widget.control;
    if (auto* button = qobject_cast<QAbstractButton*>(widget.whole)) {
        button->setText(WithoutMnemonic(TextToDraw(widget)));
        if (button->isCheckable()) button->setChecked(control.Value() != 0);
        if (control.Kind() == ControlKind::SSOption) DrawChosen(*button, control);
    } else if (auto* result = dynamic_cast<ResultLabel*>(widget.whole)) {
        result->Tell(TextToDraw(widget));
    } else if (auto* label = qobject_cast<QLabel*>(widget.whole)) {
        label->setText(TextToDraw(widget));
    } else if (auto* line = qobject_cast<QLineEdit*>(widget.whole)) {
        DrawLine(*line, control, TextToDraw(widget));
    } else if (control.Kind() == ControlKind::EntryMemo) {
        DrawMemo(static_cast<MemoEntry&>(*widget.whole), TextToDraw(widget));
    } else if (control.Kind() == ControlKind::ListView) {
        static_cast<ListTable&>(*widget.whole).Draw(control);
    } else if (auto* list = qobject_cast<QComboBox*>(widget.whole)) {
        DrawList(*list, control);
    } else if (auto* strip = qobject_cast<QTabWidget*>(widget.whole)) {
        strip->setCurrentIndex(control.ListIndex());
    }
}

}  // namespace

ControlWidget MakeControlWidget(Control& control, QWidget* parent) {
    const ControlWidget widget = MakeBare(control, parent);
    QString name = control.Name();
    if (control.Index() >= 0) name += u'_' + QString::number(control.Index());
    widget.whole->setObjectName(name);
    widget.whole->setAccessibleName(SpokenName(control));
    // The mouse gives no focus by itself: the control is asked first, and the widget follows.
    const Qt::FocusPolicy policy = control.TakesFocus() ? Qt::TabFocus : Qt::NoFocus;
    widget.whole->setFocusPolicy(Qt::NoFocus);
    widget.keys->setFocusPolicy(policy);
    if (control.foreColor) {
        const int colour = *control.foreColor;
        const QColor text(colour & 0xff, (colour >> 8) & 0xff, (colour >> 16) & 0xff);
        widget.whole->setStyleSheet(QStringLiteral("color: %1;").arg(text.name()));
    }
    return widget;
}

void DrawControl(const ControlWidget& widget) {
    DrawContent(widget);
    widget.whole->setEnabled(EnabledToDraw(*widget.control));
    // A widget that was never told is left out when its parent is shown, so say it also when nothing seems to change.
    widget.whole->setVisible(widget.control->Visible());
}

bool DrawnChosen(const ControlWidget& widget) {
    const auto* option = qobject_cast<QAbstractButton*>(widget.whole);
    return option && option->isChecked() && option->font().bold() &&
           option->palette().color(QPalette::Text) != kPaleMark;
}

QString TextToDraw(const ControlWidget& widget) {
    const Control& control = *widget.control;
    if (control.Kind() == ControlKind::EntryMemo)
        return QString(control.RawText()).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    if (control.Kind() == ControlKind::EntryPostcode && control.Owner().Focused() == &control) return control.RawText();
    if (control.IsEntry()) return control.Text();
    return control.Caption().isEmpty() ? widget.whole->property(kHeading).toString() : control.Caption();
}

QString DrawnText(const ControlWidget& widget) {
    if (auto* button = qobject_cast<QAbstractButton*>(widget.whole))
        return button->text().replace(QStringLiteral("&&"), QStringLiteral("&"));
    if (auto* label = qobject_cast<QLabel*>(widget.whole)) return label->text();
    if (auto* line = qobject_cast<QLineEdit*>(widget.whole)) return line->text();
    if (widget.control->Kind() == ControlKind::EntryMemo) return static_cast<MemoEntry*>(widget.whole)->TypedText();
    return TextToDraw(widget);
}

bool EnabledToDraw(const Control& control) {
    return control.Enabled() && (!control.container || EnabledToDraw(*control.container));
}

void SetHeading(QWidget& whole, const QString& heading) {
    whole.setProperty(kHeading, heading);
}

QString SpokenName(const Control& control) {
    if (!control.Caption().isEmpty()) return control.Caption();
    QString bare = control.Name();
    for (const char* ornament : {"btn_", "itm_ttl_", "lab_", "Lab_", "opb_", "bak_", "tab_", "chb_", "List"})
        if (bare.startsWith(QLatin1String(ornament))) bare.remove(0, static_cast<int>(qstrlen(ornament)));
    if (control.Index() >= 0) return bare + u' ' + QString::number(control.Index() + 1);
    // On a list window the items' own names say it; the labels there tell how they search.
    if (!control.IsEntry() || IsListWindow(control.Owner())) return bare;
    for (const char* ornament : {"itm_ttl_", "lab_", "Lab_", "btn_"}) {
        const Control* title = control.Owner().Find(QLatin1String(ornament) + bare);
        // A one-letter caption such as 年 stands behind its item and says too little alone.
        if (title && title->Caption().size() > 1) return title->Caption();
    }
    return bare;
}

}  // namespace desktop
