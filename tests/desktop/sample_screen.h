#pragma once

#include <QStringList>

#include "screen/form.h"

/// A screen with one of everything. It writes down what happens to it, in order.
struct SampleScreen {
    SampleScreen();
    screen::Control& Add(screen::ControlKind kind, const QString& name, const QString& caption = QString(),
                         int index = -1);
    screen::Control& At(const char* name, int index = -1) { return form.At(QString::fromUtf8(name), index); }
    /// State of all items and the focus, as text.
    QString State() const;

    screen::Form form{QStringLiteral("frm見本")};
    QStringList log;
};

/// The main screen's items by their names and kinds, without what they do.
void FillDiaryForm(screen::Form& form);
