#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QtTest/QTest>

#include "desktop/list_table.h"
#include "desktop/window_host.h"
#include "sample_screen.h"

/// Rows of staff, their codes from 00001 on.
std::vector<screen::ListRow> Rows(int count, const QString& mark = QStringLiteral("葛城"));

/// A list window with every sort of search item. It writes down the rows that are picked.
struct SampleList {
    explicit SampleList(const char* name = "wnd見本一覧");
    screen::Control& AddItem(const QString& name, const QString& button, int length);
    screen::Control& At(const char* name) { return form.At(QString::fromUtf8(name)); }

    screen::Form form;
    screen::Control* list;
    QStringList picked;
};

/// The sample list, opened on demand beside an item of another window.
class ListWindow : public testing::Test {
  protected:
    ListWindow() { host.Show(caller.form); }
    ~ListWindow() override {
        host.Unload(sample.form);
        host.Unload(caller.form);
    }
    void Open() {
        sample.form.openedBeside = &caller.At("コード");
        host.Show(sample.form);
        sample.form.SetFocus(*sample.list);
        host.ProcessEvents();
    }
    static desktop::ListTable& TableOf(desktop::WindowHost& of, SampleList& list) {
        return static_cast<desktop::ListTable&>(*of.ViewOf(list.form)->WidgetOf(*list.list)->whole);
    }
    desktop::FormView& View() { return *host.ViewOf(sample.form); }
    desktop::ListTable& Table() { return TableOf(host, sample); }
    QWidget& Whole(const char* name) { return *View().WidgetOf(sample.At(name))->whole; }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&Table(), key, modifiers);
    }
    QPoint PlaceOfRow(int row) { return {4, Table().rowViewportPosition(row) + Table().rowHeight(row) / 2}; }
    void Press(int row) { QTest::mousePress(Table().viewport(), Qt::LeftButton, {}, PlaceOfRow(row)); }

    QTemporaryDir folder;
    QString places = folder.filePath("設定/windows.ini");
    desktop::WindowHost host{places};
    SampleScreen caller;
    SampleList sample;
};
