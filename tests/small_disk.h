#pragma once

#include <sched.h>
#include <sys/mount.h>

#include <QFile>
#include <QString>

/// A disk of few bytes in a folder, which only this thread and the processes that it starts see.
class SmallDisk {
  public:
    /// Needs the right to mount; without it there is none.
    SmallDisk(const QString& folder, int kilobytes) : folder_(QFile::encodeName(folder)) {
        const QByteArray size = "size=" + QByteArray::number(kilobytes) + "k";
        there_ = unshare(CLONE_NEWNS) == 0 && mount("", "/", "", MS_REC | MS_PRIVATE, nullptr) == 0 &&
                 mount("katsudo", folder_.constData(), "tmpfs", 0, size.constData()) == 0;
    }
    ~SmallDisk() {
        if (there_) umount2(folder_.constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    explicit operator bool() const { return there_; }

    /// Leaves not a byte, or all that was taken so again.
    void Fill() const {
        QFile filler(Filler());
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) return;
        for (const QByteArray block(4096, 'x'); filler.write(block) == block.size();) {
        }
    }
    void Free() const { QFile::remove(Filler()); }

  private:
    QString Filler() const { return QFile::decodeName(folder_) + "/filler"; }

    QByteArray folder_;
    bool there_ = false;
};
