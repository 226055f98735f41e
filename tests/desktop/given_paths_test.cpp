#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "sample_list.h"

namespace {

class GivenPaths : public ListWindow {
  protected:
    GivenPaths() {
        sample.list->onPathsGiven = [this](const QStringList& paths) { given << paths; };
        Open();
    }
    /// Drags the URLs over the table and drops them. Tells whether the table would take them.
    bool Drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        QWidget& target = *Table().viewport();
        EXPECT_TRUE(target.acceptDrops());
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &enter);
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&target, &drop);
        // The other program goes on before the work begins; it never moves its files.
        EXPECT_TRUE(given.isEmpty());
        EXPECT_NE(drop.isAccepted() ? drop.dropAction() : Qt::CopyAction, Qt::MoveAction);
        host.ProcessEvents();
        return enter.isAccepted() && drop.isAccepted();
    }

    const QList<QUrl> urls{QUrl::fromLocalFile("/机/見積 'A'.txt"), QUrl("https://example.com/a.txt"),
                           QUrl::fromLocalFile("/机/図面")};
    const QStringList paths{"/机/見積 'A'.txt", "/机/図面"};
    QStringList given;
};

TEST_F(GivenPaths, AreTakenByADrop) {
    EXPECT_TRUE(Drop(urls));
    EXPECT_EQ(given, paths);
    given.clear();
    EXPECT_FALSE(Drop({urls[1]}));
    sample.list->SetEnabled(false);
    EXPECT_FALSE(Drop(urls));
    sample.list->SetEnabled(true);
    sample.form.SetEnabled(false);
    EXPECT_FALSE(Drop(urls));
    EXPECT_TRUE(given.isEmpty());
}

TEST_F(GivenPaths, ArePastedFromTheClipboard) {
    auto* data = new QMimeData;
    data->setUrls(urls);
    QApplication::clipboard()->setMimeData(data);
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(given, paths);
    QApplication::clipboard()->setText("/机/見積.txt");
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(given, paths);
}

}  // namespace
