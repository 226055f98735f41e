#include "attachments/copy_dialog.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTimer>

#include "drive/window/window_hands.h"
#include "sample_list.h"

namespace {

/// A long copy over the sample screen, while `meanwhile` runs between two of its pieces, once and at the earliest when
/// an eighth is done.
class CopyDialogWindow : public ListWindow {
  protected:
    platform::FileFault Copy(const std::function<void()>& meanwhile) {
        QFile large(folder.filePath("large.bin"));
        EXPECT_TRUE(large.open(QIODevice::WriteOnly) && large.resize(64 << 20));
        large.close();
        EXPECT_TRUE(QDir().mkpath(folder.filePath("to")));
        attachments::CopyDialog dialog(host, &caller.form);
        const auto progress = dialog.Progress();
        bool due = true;
        return platform::CopyWhole(large.fileName(), folder.filePath("to/large.bin"),
                                   [&](qint64 done, qint64 total) {
                                       if (due && done >= total / 8) {
                                           due = false;
                                           QTimer::singleShot(0, &timer, meanwhile);
                                       }
                                       return progress(done, total);
                                   })
            .fault;
    }
    QStringList Target() const { return QDir(folder.filePath("to")).entryList(QDir::Files | QDir::Hidden); }

    QObject timer;
};

TEST_F(CopyDialogWindow, IsBrokenOffByItsButton) {
    const auto fault = Copy([this] {
        EXPECT_EQ(host.Front()->Name(), "msgコピー中");
        drive::WindowHands hands(host);
        EXPECT_EQ(hands.DrawnDifference(*host.Front()).toStdString(), "");
        hands.Click(host.Front()->At("btn_中止"));
    });
    EXPECT_EQ(fault, platform::FileFault::Cancelled);
    EXPECT_TRUE(Target().isEmpty());
    EXPECT_EQ(host.Front(), &caller.form);
}

TEST_F(CopyDialogWindow, IsBrokenOffByItsFrameAndKeepsTheWindowBehind) {
    caller.log.clear();
    bool asked = false;
    caller.form.onQueryClose = [&asked] { return asked = true; };
    const auto fault = Copy([this] {
        drive::WindowHands hands(host);
        // What is clicked behind a copy is dropped, the closing of the window too.
        host.ViewOf(caller.form)->close();
        QTest::mouseClick(host.ViewOf(caller.form)->WidgetOf(caller.At("btn_登録"))->mouse, Qt::LeftButton);
        hands.Close(*host.Front());
    });
    EXPECT_EQ(fault, platform::FileFault::Cancelled);
    EXPECT_FALSE(asked);
    EXPECT_EQ(caller.log.join(' ').toStdString(), "");
    EXPECT_TRUE(caller.form.Loaded() && caller.form.Enabled());
}

}  // namespace
