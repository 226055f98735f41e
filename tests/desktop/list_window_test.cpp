#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>

#include "desktop/list_table.h"
#include "desktop/window_host.h"
#include "drive/window/window_hands.h"
#include "sample_screen.h"

using screen::Control;
using screen::ControlKind;

namespace {

std::vector<screen::ListRow> Rows(int count, const QString& mark = QStringLiteral("葛城")) {
    std::vector<screen::ListRow> rows;
    for (int row = 0; row < count; ++row) {
        const QString code = QString("%1").arg(row + 1, 5, 10, QChar('0'));
        rows.push_back({"C" + code, {code, mark + code, "本社", "営業部", "第一課"}});
    }
    return rows;
}

/// A list window with every sort of search item. It writes down the rows that are picked.
struct SampleList {
    explicit SampleList(const char* name = "wnd見本一覧") : form(QString::fromUtf8(name)) {
        form.SetCaption("見本一覧");
        form.Add(ControlKind::SSPanel, "wnd_ttl", "見本一覧");
        AddItem("コード", "btn_コード検索", 5).use = screen::EntryUse::Code;
        form.Add(ControlKind::CaptionLabel, "lab_コード", "以降");
        AddItem("名称", "btn_名称検索", 40);
        AddItem("部門コード", "btn_部門コード検索", 3);
        Control& echo = form.Add(ControlKind::EntryField, "部門名");
        echo.readOnly = true;
        echo.SetTabStop(false);
        AddItem("電話", "btn_電話番号検索", 0);
        form.Add(ControlKind::SSPanel, "itm_ttl_在籍区分", "在籍区分");
        form.Add(ControlKind::EntryNumber, "在籍区分");
        form.Add(ControlKind::ComboBox, "在籍区分名称").SetEntries({"在籍", "退職", "全て"});
        form.Add(ControlKind::CheckBox, "chb_得意先", "得意先");
        form.Add(ControlKind::CheckBox, "chb_対応先", "対応先");
        form.Add(ControlKind::SSCommand, "btn_複合検索", "検索");
        form.Add(ControlKind::SSCommand, "btn_否定検索", "否検索");
        form.Add(ControlKind::SSCommand, "btn_画面クリア", "条件ｸﾘｱ");
        list = &form.Add(ControlKind::ListView, "List見本");
        list->columns = {{"コード", 750}, {"氏名", 2500}, {"事業所", 2300}, {"部門", 2300}, {"セクション", 2300}};
        list->onDoubleClick = [this] {
            if (list->ListIndex() >= 0) picked << QString::number(list->ListIndex());
        };
        form.Add(ControlKind::SSCommand, "btn_戻る", "戻る");
        form.Add(ControlKind::CaptionLabel, "lab_注意", "一回の検索で1000件までを表示します。").SetVisible(false);
        form.Add(ControlKind::CaptionLabel, "lab_件数", "3件");
        form.Add(ControlKind::CaptionLabel, "lab_他", "どこにも属さない");
        list->SetRows(Rows(3));
    }
    Control& AddItem(const QString& name, const QString& button, int length) {
        Control& entry = form.Add(ControlKind::EntryField, name);
        entry.maxLength = length;
        form.Add(ControlKind::SSCommand, button, name + "検索");
        return entry;
    }
    Control& At(const char* name) { return form.At(QString::fromUtf8(name)); }

    screen::Form form;
    Control* list;
    QStringList picked;
};

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

/// Shortest of a few runs, in nanoseconds.
qint64 Shortest(const std::function<void()>& work) {
    qint64 shortest = std::numeric_limits<qint64>::max();
    for (int run = 0; run < 7; ++run) {
        QElapsedTimer timer;
        timer.start();
        work();
        shortest = std::min(shortest, timer.nsecsElapsed());
    }
    return shortest;
}

}  // namespace

TEST_F(ListWindow, ShowsEveryItemAndEachButtonBesideItsOwn) {
    sample.At("lab_注意").SetVisible(true);
    Open();
    EXPECT_EQ(drive::WindowHands(host).DrawnDifference(sample.form).toStdString(), "");
    const QRect room(QPoint(0, 0), View().size());
    for (const auto& control : sample.form.Controls()) {
        const QWidget& widget = *View().WidgetOf(*control)->whole;
        const QRect place(widget.mapTo(&View(), QPoint(0, 0)), widget.size());
        EXPECT_TRUE(room.contains(place)) << control->Name().toStdString();
        for (const auto& other : sample.form.Controls()) {
            const QWidget& beside = *View().WidgetOf(*other)->whole;
            if (other == control) continue;
            EXPECT_FALSE(place.intersects(QRect(beside.mapTo(&View(), QPoint(0, 0)), beside.size())))
                << control->Name().toStdString() << " over " << other->Name().toStdString();
        }
    }
    const std::pair<const char*, const char*> pairs[] = {{"コード", "btn_コード検索"},
                                                         {"電話", "btn_電話番号検索"},
                                                         {"btn_部門コード検索", "部門名"},
                                                         {"在籍区分", "在籍区分名称"}};
    for (const auto& [left, right] : pairs) {
        const QRect item = Whole(left).geometry(), button = Whole(right).geometry();
        EXPECT_LE(button.left() - item.right(), 10) << left;
        EXPECT_GT(button.left(), item.right()) << left;
        EXPECT_LE(std::abs(button.center().y() - item.center().y()), 2) << left;
    }
    EXPECT_EQ(Whole("コード").accessibleName(), QString("コード"));
}

TEST_F(ListWindow, TheListTakesTheRoomAndKeepsItWhenTheNoticeComes) {
    Open();
    const int height = Table().height();
    EXPECT_GT(height, View().height() / 2);
    sample.At("lab_注意").SetVisible(true);
    host.ProcessEvents();
    EXPECT_EQ(Table().height(), height);
    View().resize(View().size() + QSize(60, 90));
    host.ProcessEvents();
    EXPECT_EQ(Table().height(), height + 90);
    EXPECT_EQ(Table().columnWidth(0), 50);
    EXPECT_FALSE(Table().horizontalScrollBar()->isVisible());
}

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

TEST_F(ListWindow, TypedSearchedAndPickedByKeysAlone) {
    sample.At("btn_名称検索").onClick = [this] {
        sample.list->SetRows(Rows(100));
        sample.form.SetFocus(*sample.list);
    };
    Open();
    sample.form.SetFocus(sample.At("名称"));
    QTest::keyClicks(View().focusWidget(), "a");
    QTest::keyClick(View().focusWidget(), Qt::Key_Return);
    QTest::keyClick(View().focusWidget(), Qt::Key_Return);
    Key(Qt::Key_Return);
    EXPECT_EQ(Table().RowCount(), 100);
    const int page = Table().PageRows();
    EXPECT_GT(page, 5);
    struct Case {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        int row;
    };
    const Case cases[] = {{Qt::Key_Up, {}, -1},
                          {Qt::Key_Down, {}, 0},
                          {Qt::Key_Down, {}, 1},
                          {Qt::Key_PageDown, {}, 1 + page},
                          {Qt::Key_End, {}, 99},
                          {Qt::Key_Down, {}, 99},
                          {Qt::Key_PageUp, {}, 99 - page},
                          {Qt::Key_Home, {}, 0},
                          {Qt::Key_Up, {}, 0},
                          {Qt::Key_End, Qt::ControlModifier, 99},
                          {Qt::Key_5, Qt::KeypadModifier, 99},
                          {Qt::Key_A, Qt::ShiftModifier, 99},
                          {Qt::Key_Home, Qt::KeypadModifier, 0},
                          {Qt::Key_Space, Qt::ControlModifier, 0}};
    for (const Case& one : cases) {
        Key(one.key, one.modifiers);
        EXPECT_EQ(sample.list->ListIndex(), one.row) << one.key;
        EXPECT_EQ(Table().SelectedRow(), one.row) << one.key;
        const QRect seen = Table().visualRect(Table().currentIndex());
        EXPECT_TRUE(Table().viewport()->rect().contains(seen.center())) << one.key;
    }
    Key(Qt::Key_Return);
    EXPECT_EQ(sample.picked, QStringList("0"));
    bool back = false;
    sample.form.onEscape = [&] { back = true; };
    Key(Qt::Key_Escape);
    EXPECT_TRUE(back);
}

TEST_F(ListWindow, PicksOnlyWhatStandsOnTheScreen) {
    Open();
    Press(1);
    QTest::mouseMove(Table().viewport(), PlaceOfRow(2));
    QMouseEvent drag(QEvent::MouseMove, PlaceOfRow(0), Table().viewport()->mapToGlobal(PlaceOfRow(0)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(Table().viewport(), &drag);
    QTest::mouseRelease(Table().viewport(), Qt::LeftButton, {}, PlaceOfRow(0));
    EXPECT_EQ(sample.list->ListIndex(), 1);
    EXPECT_EQ(Table().SelectedRow(), 1);
    // An assistive tool selects in the table; the form hears of it.
    Table().selectRow(2);
    EXPECT_EQ(sample.list->ListIndex(), 2);
    // A click on its way while other rows come in was meant for those that stood there.
    sample.list->SetRows(Rows(50, "本田"));
    sample.list->SetListIndex(-1);
    QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, PlaceOfRow(1));
    EXPECT_EQ(sample.list->ListIndex(), -1);
    EXPECT_EQ(sample.picked, QStringList());
    // What was typed ahead finds the new rows painted.
    Key(Qt::Key_Down);
    EXPECT_FALSE(Table().Unpainted());
    EXPECT_EQ(Table().CellText(Table().SelectedRow(), 1), QString("本田00001"));
    Press(1);
    QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, PlaceOfRow(1));
    EXPECT_EQ(sample.picked, QStringList("1"));
}

TEST_F(ListWindow, KeepsACurrentRowThatCountsAsNoChoice) {
    Open();
    EXPECT_TRUE(Table().currentIndex().isValid());
    EXPECT_EQ(Table().SelectedRow(), -1);
    sample.list->SetListIndex(2);
    sample.list->SetListIndex(-1);
    EXPECT_EQ(Table().currentIndex().row(), 2);
    EXPECT_EQ(Table().SelectedRow(), -1);
    sample.list->SetRows(Rows(1));
    EXPECT_EQ(Table().currentIndex().row(), 0);
    sample.list->SetRows({});
    Key(Qt::Key_Down);
    Key(Qt::Key_PageDown);
    EXPECT_EQ(sample.list->ListIndex(), -1);
}

TEST_F(ListWindow, CopiesTheChosenRowOrAll) {
    Open();
    const auto copied = [this] {
        QApplication::clipboard()->setText("前");
        Key(Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    sample.list->SetRows({{"C1", {"1", "甲\t乙", "一\r\n二"}}, {"C2", {"2", "", "丙"}}});
    EXPECT_EQ(copied(), QString("1\t甲 乙\t一  二\n2\t\t丙\n"));
    Key(Qt::Key_End);
    EXPECT_EQ(copied(), QString("2\t\t丙"));
    sample.list->SetRows({});
    EXPECT_EQ(copied(), QString("前"));
}

TEST_F(ListWindow, AThousandRowsAreThereAtOnce) {
    Open();
    std::vector<screen::ListRow> rows;
    const qint64 making = Shortest([&] { rows = Rows(1000); });
    bool more = false;
    const qint64 filling = Shortest([&] {
        more = !more;
        sample.list->SetRows(more ? rows : Rows(1));
    });
    EXPECT_LT(filling, making);
    sample.list->SetRows(Rows(20));
    const qint64 paintingFew = Shortest([this] { Table().PaintNow(); });
    sample.list->SetRows(rows);
    EXPECT_LT(Shortest([this] { Table().PaintNow(); }), 4 * paintingFew);
}

TEST_F(ListWindow, AWaitShowsTheBusyCursorUntilItEnds) {
    for (const bool busy : {true, true, false, false}) {
        host.SetBusy(busy);
        EXPECT_EQ(QGuiApplication::overrideCursor() != nullptr, busy);
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
