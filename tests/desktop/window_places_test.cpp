#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QtTest/QTest>

#include "desktop/window_places.h"
#include "drive/window/window_hands.h"
#include "sample_list.h"

using screen::Control;

TEST_F(ListWindow, ComesUpAgainAsItWasLeft) {
    sample.list->SetRows(Rows(200));
    Open();
    Key(Qt::Key_End);
    Table().setColumnWidth(1, 222);
    View().resize(777, 555);
    host.ProcessEvents();
    const desktop::FormView* view = &View();
    const int scrolled = Table().verticalScrollBar()->value();
    EXPECT_GT(scrolled, 0);
    host.Hide(sample.form);
    host.ProcessEvents();
    EXPECT_FALSE(view->isVisible());
    Open();
    EXPECT_EQ(&View(), view);
    EXPECT_TRUE(view->isVisible());
    EXPECT_EQ(view->parentWidget(), host.ViewOf(caller.form));
    EXPECT_EQ(view->size(), QSize(777, 555));
    EXPECT_EQ(Table().columnWidth(1), 222);
    EXPECT_EQ(Table().SelectedRow(), 199);
    EXPECT_EQ(Table().verticalScrollBar()->value(), scrolled);
    EXPECT_EQ(drive::WindowHands(host).DrawnDifference(sample.form).toStdString(), "");
}

TEST_F(ListWindow, OutlivesTheWindowItWasOpenedOver) {
    auto outer = std::make_unique<SampleList>("wnd外側一覧");
    host.Show(outer->form);
    sample.form.openedBeside = &outer->At("コード");
    host.Show(sample.form);
    host.Hide(sample.form);
    host.Unload(outer->form);
    host.ProcessEvents();
    sample.form.openedBeside = nullptr;
    outer.reset();
    sample.list->SetRows(Rows(7));
    Open();
    EXPECT_EQ(Table().RowCount(), 7);
}

TEST_F(ListWindow, IsAModalDialogAndTakesNothingWhileHidden) {
    bool modal = false;
    QTimer::singleShot(0, host.ViewOf(caller.form), [&] {
        modal = View().windowModality() == Qt::ApplicationModal && View().windowType() == Qt::Dialog;
        host.Unload(sample.form);
    });
    host.ShowModal(sample.form);
    EXPECT_TRUE(modal);
    Open();
    host.Hide(sample.form);
    QTest::keyClicks(&Whole("名称"), "x");
    QTest::mouseClick(&Whole("chb_得意先"), Qt::LeftButton);
    EXPECT_EQ(sample.At("名称").RawText(), QString());
    EXPECT_EQ(sample.At("chb_得意先").Value(), 0);
    EXPECT_EQ(sample.form.Focused(), nullptr);
}

TEST_F(ListWindow, RemembersFromRunToRunWhatTheUserChanged) {
    Open();
    const QSize designed = View().size();
    host.Unload(sample.form);
    EXPECT_FALSE(QFile::exists(places));
    Open();
    Table().setColumnWidth(1, 222);
    host.Unload(sample.form);
    {
        desktop::WindowHost next(places);
        SampleList again;
        next.Show(again.form);
        EXPECT_EQ(next.ViewOf(again.form)->size(), designed);
        EXPECT_EQ(TableOf(next, again).columnWidth(1), 222);
        EXPECT_EQ(TableOf(next, again).columnWidth(0), 50);
        next.ViewOf(again.form)->resize(701, 480);
        next.Hide(again.form);
    }
    desktop::WindowHost last(places);
    SampleList again, other("wnd別の一覧");
    last.Show(again.form);
    EXPECT_EQ(last.ViewOf(again.form)->size(), QSize(701, 480));
    EXPECT_EQ(TableOf(last, again).columnWidth(1), 222);
    last.Show(other.form);
    EXPECT_EQ(last.ViewOf(other.form)->size(), designed);
    last.Unload(other.form);
    last.Unload(again.form);
}

TEST_F(ListWindow, OpensAsDesignedWhenWhatWasRememberedIsOfNoUse) {
    Open();
    const QSize designed = View().size();
    Table().setColumnWidth(1, 222);
    View().resize(701, 480);
    host.Unload(sample.form);
    QFile remembered(places);
    ASSERT_TRUE(remembered.open(QIODevice::ReadOnly));
    const QString good = QString::fromUtf8(remembered.readAll());
    struct Case {
        QString from, to;
        QSize size;
        int width;
    };
    const QSize room = QGuiApplication::primaryScreen()->availableSize();
    const Case cases[] = {{"701 480", "x", designed, 222},
                          {"701 480", "99999 480", QSize(room.width() - 8, 480), 222},
                          {"222, ", "", QSize(701, 480), 166},
                          {"222", "-5", QSize(701, 480), 12},
                          {"222", "999999999", QSize(701, 480), 4000},
                          {"[", "[[\n=;", designed, 166}};
    for (const Case& one : cases) {
        SCOPED_TRACE(one.to.toStdString());
        ASSERT_TRUE(good.contains(one.from));
        const QTemporaryDir other;
        QFile file(other.filePath("windows.ini"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QString(good).replace(one.from, one.to).toUtf8());
        file.close();
        desktop::WindowHost next(file.fileName());
        SampleList list;
        next.Show(list.form);
        EXPECT_EQ(next.ViewOf(list.form)->size(), one.size);
        EXPECT_EQ(TableOf(next, list).columnWidth(1), one.width);
    }
}

TEST(PlaceBeside, KeepsTheItemInSightAndTheWindowOnTheDisplay) {
    const QRect display(100, 0, 1280, 720);
    struct Case {
        QRect asker;
        QSize window;
        QPoint expected;
    };
    const Case cases[] = {{{200, 100, 60, 24}, {700, 500}, {272, 100}},  {{200, 600, 60, 24}, {700, 500}, {272, 220}},
                          {{1200, 100, 60, 24}, {700, 500}, {488, 100}}, {{700, 100, 60, 24}, {1000, 500}, {380, 136}},
                          {{700, 650, 60, 24}, {1000, 500}, {380, 138}}, {{700, 300, 60, 24}, {1000, 700}, {380, 20}},
                          {{700, 300, 60, 24}, {2000, 900}, {100, 0}},   {{-500, 900, 60, 24}, {300, 300}, {100, 420}}};
    for (const Case& one : cases)
        EXPECT_EQ(desktop::PlaceBeside(one.asker, one.window, display), one.expected)
            << one.asker.x() << ' ' << one.window.width();
}

TEST(SmallWindow, ScrollsToTheItemInFocus) {
    desktop::WindowHost host{QString()};
    screen::Form form("frm活動手帳");
    FillDiaryForm(form);
    form.SetFocus(form.At("btn_終了"));
    host.Show(form);
    desktop::FormView& view = *host.ViewOf(form);
    view.resize(500, 300);
    const auto seen = [&](const Control& control) {
        host.ProcessEvents();
        const QWidget& viewport = *view.findChild<QScrollArea*>()->viewport();
        const QWidget& widget = *view.WidgetOf(control)->whole;
        return viewport.rect().contains(QRect(widget.mapTo(&viewport, QPoint(0, 0)), widget.size()));
    };
    EXPECT_TRUE(seen(form.At("btn_終了")));
    for (const char* name : {"営業活動日付年", "相手先電話", "btn_参照営業受注", "担当者コード"}) {
        form.SetFocus(form.At(QString::fromUtf8(name)));
        EXPECT_TRUE(seen(*form.Focused())) << name;
    }
    // The window is made smaller round the item.
    form.SetFocus(form.At(QStringLiteral("btn_終了")));
    view.resize(300, 200);
    EXPECT_TRUE(seen(*form.Focused()));
    host.Unload(form);
}
