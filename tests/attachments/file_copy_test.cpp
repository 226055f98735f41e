#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <csignal>
#include <filesystem>

#include "platform/file_copy.h"

using platform::CopyWhole;
using platform::FileFault;

namespace {

constexpr qint64 kMegabyte = 1 << 20;

/// The process may write no file longer than this, as on a disk that is full.
class ShortOfRoom {
  public:
    explicit ShortOfRoom(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~ShortOfRoom() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

  private:
    void (*handler_)(int);
    rlimit before_{};
};

class FileCopy : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(place.mkdir("from"));
        ASSERT_TRUE(place.mkdir("to"));
    }
    // A name that is no text can't be removed by one.
    void TearDown() override { std::filesystem::remove_all(folder.path().toStdString()); }
    QString At(const QString& path) const { return place.filePath(path); }
    void Write(const QString& path, const QByteArray& content, qint64 size = -1) const {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(At(path)).path()));
        QFile file(At(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
        file.write(content);
        if (size >= 0) file.resize(size);
    }
    QByteArray Read(const QString& path) const {
        QFile file(At(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    /// All names in the target folder, hidden ones too.
    std::string Target() const {
        return QDir(At("to"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .join(u'|')
            .toStdString();
    }
    FileFault Copy(const QString& from, const QString& to) const { return CopyWhole(At(from), At(to)).fault; }

    QTemporaryDir folder;
    QDir place{folder.path()};
};

TEST_F(FileCopy, TakesAFolderWholeAndFollowsNothingOutOfIt) {
    const QString awkward = QString::fromUtf8("from/図 'A' \"B\" 50%\n\\x *?.txt");
    Write(awkward, "awkward");
    Write("from/深い/もっと/空でない.txt", QByteArray(3 * kMegabyte + 7, 'x'));
    Write("secret.txt", "secret");
    ASSERT_TRUE(place.mkdir("from/空"));
    // A name that is no text at all.
    const QByteArray raw = QFile::encodeName(At("from/")) + "\xff\xfe.bin";
    FILE* bytes = std::fopen(raw.constData(), "w");
    ASSERT_NE(bytes, nullptr);
    std::fclose(bytes);
    ASSERT_TRUE(QFile::link(At("secret.txt"), At("from/外")));
    ASSERT_TRUE(QFile::link(At("from"), At("from/深い/輪")));
    ASSERT_EQ(mkfifo(QFile::encodeName(At("from/pipe")).constData(), 0600), 0);
    QFile stamped(At(awkward));
    const QDateTime then(QDate(2020, 2, 29), QTime(12, 0));
    ASSERT_TRUE(stamped.open(QIODevice::ReadWrite) && stamped.setFileTime(then, QFileDevice::FileModificationTime));
    stamped.close();

    const platform::CopyOutcome outcome = CopyWhole(At("from"), At("to/写し"));
    EXPECT_EQ(outcome.fault, FileFault::None);
    EXPECT_EQ(outcome.leftOut, 3);
    const QString copied = "to/写し" + awkward.mid(4);
    EXPECT_EQ(Read(copied), "awkward");
    EXPECT_EQ(platform::LookAt(At(copied)).modified, then);
    EXPECT_EQ(Read("to/写し/深い/もっと/空でない.txt"), QByteArray(3 * kMegabyte + 7, 'x'));
    EXPECT_TRUE(QFileInfo(At("to/写し/空")).isDir());
    EXPECT_EQ(access((QFile::encodeName(At("to/写し/")) + "\xff\xfe.bin").constData(), F_OK), 0);
    EXPECT_FALSE(QFileInfo(At("to/写し/外")).isSymLink() || QFileInfo::exists(At("to/写し/外")));
    EXPECT_EQ(Target(), "写し");
}

TEST_F(FileCopy, BrokenOffHalfWayLeavesNothing) {
    // Two gigabytes and more: a size that a 32-bit number doesn't hold.
    Write("from/large.bin", "head", 2048 * kMegabyte + 1);
    Write("from/folder/a.bin", "head", 8 * kMegabyte);
    Write("from/folder/b.bin", "head", 8 * kMegabyte);
    qint64 told = 0;
    const auto untilHalf = [&told](qint64 limit) {
        return [&told, limit](qint64 done, qint64 total) {
            told = total;
            return done < std::min(total / 2, limit);
        };
    };
    EXPECT_EQ(CopyWhole(At("from/large.bin"), At("to/large.bin"), untilHalf(64 * kMegabyte)).fault,
              FileFault::Cancelled);
    EXPECT_EQ(told, 2048 * kMegabyte + 1);
    // Between two files: the first is complete by then.
    EXPECT_EQ(CopyWhole(At("from/folder"), At("to/folder"), untilHalf(12 * kMegabyte)).fault, FileFault::Cancelled);
    EXPECT_EQ(told, 16 * kMegabyte);
    EXPECT_EQ(Target(), "");
}

TEST_F(FileCopy, OfAFileThatIsWrittenToMeanwhileFails) {
    Write("from/folder/b.bin", "head", 8 * kMegabyte);
    const QString file = At("from/folder/b.bin");
    const std::function<void()> writers[] = {
        [&] { QFile::resize(file, 2 * kMegabyte); }, [&] { QFile::resize(file, 16 * kMegabyte); },
        [&] {
            QFile other(file);
            EXPECT_TRUE(other.open(QIODevice::ReadWrite) && other.write("HEAD") > 0);
        }};
    for (const auto& write : writers) {
        QFile::resize(file, 8 * kMegabyte);
        bool written = false;
        const auto meanwhile = [&](qint64 done, qint64) {
            if (done >= kMegabyte && !std::exchange(written, true)) write();
            return true;
        };
        EXPECT_EQ(CopyWhole(At("from/folder"), At("to/folder"), meanwhile).fault, FileFault::Changed);
        EXPECT_EQ(Target(), "");
    }
    EXPECT_EQ(Copy("from/folder", "to/folder"), FileFault::None);
}

TEST_F(FileCopy, RunningOutOfRoomLeavesNothing) {
    Write("from/folder/a.bin", "small");
    Write("from/folder/b.bin", "head", 16 * kMegabyte);
    {
        const ShortOfRoom limit(4 * kMegabyte);
        EXPECT_EQ(Copy("from/folder", "to/folder"), FileFault::DiskFull);
        EXPECT_EQ(Copy("from/folder/b.bin", "to/b.bin"), FileFault::DiskFull);
        EXPECT_EQ(Target(), "");
    }
    EXPECT_EQ(Copy("from/folder", "to/folder"), FileFault::None);
    EXPECT_EQ(Target(), "folder");
}

TEST_F(FileCopy, TellsWhatIsWrongAndTouchesNothing) {
    Write("from/a.txt", "new");
    Write("to/a.txt", "old");
    ASSERT_TRUE(QFile::link(At("gone"), At("to/dangling")));
    ASSERT_TRUE(QFile::link(At("to"), At("from/loop")));
    ASSERT_EQ(mkfifo(QFile::encodeName(At("pipe")).constData(), 0600), 0);
    const QString tooLong(300, u'x');
    const struct {
        QString from, to;
        FileFault fault;
    } cases[] = {{"from/a.txt", "to/a.txt", FileFault::TargetExists},
                 {"from", "to/a.txt", FileFault::TargetExists},
                 {"from/a.txt", "to/dangling", FileFault::TargetExists},
                 {"from/none.txt", "to/b.txt", FileFault::Missing},
                 {"from/a.txt/b", "to/b.txt", FileFault::Missing},
                 {"from/a.txt", "nowhere/b.txt", FileFault::NoFolder},
                 {"from/a.txt", "from/a.txt/b.txt", FileFault::NoFolder},
                 {"to", "to/inside", FileFault::IntoItself},
                 {".", "to/all", FileFault::IntoItself},
                 {"from/loop", "to/through", FileFault::IntoItself},
                 {"from/a.txt", "to/" + tooLong, FileFault::NameRefused},
                 {"from", "to/" + tooLong, FileFault::NameRefused},
                 {"pipe", "to/pipe", FileFault::WrongKind}};
    for (const auto& c : cases)
        EXPECT_EQ(Copy(c.from, c.to), c.fault) << qPrintable(c.from) << " to " << qPrintable(c.to);
    EXPECT_EQ(platform::MoveWhole(At("from/a.txt"), At("to/a.txt")), FileFault::TargetExists);
    EXPECT_EQ(platform::MoveWhole(At("from/none"), At("to/none")), FileFault::Missing);
    EXPECT_EQ(Read("to/a.txt"), "old");
    EXPECT_EQ(Read("from/a.txt"), "new");
    EXPECT_EQ(Target(), "a.txt|dangling");
}

TEST_F(FileCopy, RemovingALinkKeepsWhatItNames) {
    Write("from/kept.txt", "kept");
    Write("to/folder/gone.txt", "gone");
    ASSERT_TRUE(QFile::link(At("from"), At("to/folder/link")));
    ASSERT_TRUE(QFile::link(At("from"), At("to/link")));
    EXPECT_EQ(platform::RemoveWhole(At("to/folder")), FileFault::None);
    EXPECT_EQ(platform::RemoveWhole(At("to/link")), FileFault::None);
    EXPECT_EQ(platform::RemoveWhole(At("to/link")), FileFault::Missing);
    EXPECT_EQ(Target(), "");
    EXPECT_EQ(Read("from/kept.txt"), "kept");
}

}  // namespace
