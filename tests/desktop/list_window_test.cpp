#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QtTest/QTest>

#include "drive/window/window_hands.h"
#include "sample_list.h"
#include "screen/user_keys.h"

namespace {

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
    // The last column takes what is left, and no less than it was designed for.
    EXPECT_EQ(Table().horizontalHeader()->length(), Table().viewport()->width());
    View().resize(500, View().height());
    host.ProcessEvents();
    EXPECT_EQ(Table().columnWidth(4), 153);
    // The eye stays at the columns to which the list was scrolled.
    Table().horizontalScrollBar()->setValue(Table().horizontalScrollBar()->maximum());
    const int scrolled = Table().horizontalScrollBar()->value();
    ASSERT_GT(scrolled, 0);
    Key(Qt::Key_Down);
    Key(Qt::Key_Down);
    EXPECT_EQ(Table().horizontalScrollBar()->value(), scrolled);
}

TEST_F(ListWindow, AmountsStandUnderOneAnotherUncut) {
    sample.list->columns[1] = {"金額", 1700, true};
    sample.list->SetRows({{"C1", {"1", "9,999,999,999"}}, {"C2", {"2", "    1,111,111"}}});
    Open();
    const QModelIndex cell = Table().model()->index(0, 1);
    const QFontMetrics metrics(cell.data(Qt::FontRole).value<QFont>());
    for (const QChar character : QString("0123456789, -"))
        EXPECT_EQ(metrics.horizontalAdvance(character), metrics.horizontalAdvance(u'8')) << int(character.unicode());
    EXPECT_LE(Table().itemDelegate()->sizeHint({}, cell).width(), Table().columnWidth(1));
    EXPECT_TRUE(cell.data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
}

TEST_F(ListWindow, AColumnMayGrowAndKeepTheEndsOfItsTexts) {
    for (screen::ListColumn& column : sample.list->columns)
        column.width = 1000;
    sample.list->columns[1].stretches = true;
    sample.list->columns[1].elideStart = true;
    const QString name = QString("葛城精機株式会社").repeated(20);
    sample.list->SetRows({{"1", {"", name + "1.xls", name + "1"}}, {"2", {}}, {"3", {"", name + "2.xls", name + "2"}}});
    Open();
    const int width = Table().columnWidth(1);
    View().resize(View().size() + QSize(60, 0));
    host.ProcessEvents();
    EXPECT_EQ(Table().columnWidth(1), width + 60);
    EXPECT_EQ(Table().columnWidth(4), Table().columnWidth(2));
    // Two rows of one colour: what differs at the end only can be seen in that column alone.
    const auto picture = [this](int row, int column) {
        return Table().viewport()->grab(Table().visualRect(Table().model()->index(row, column))).toImage();
    };
    EXPECT_NE(picture(0, 1), picture(2, 1));
    EXPECT_EQ(picture(0, 2), picture(2, 2));
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
    const int page = screen::kPageStep;
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
    Press(1);
    EXPECT_EQ(sample.list->ListIndex(), -1);
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
