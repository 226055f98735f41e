#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/disk_flusher.h"

namespace platform {

/// A file whose room on the disk is taken before it is needed: a text is written into it in place, so that a disk that
/// filled up meanwhile doesn't matter. A text that was written half is told from a whole one.
class RoomyFile {
  public:
    RoomyFile() = default;
    ~RoomyFile();
    RoomyFile(RoomyFile&& other) noexcept;
    RoomyFile& operator=(RoomyFile&& other) noexcept;

    /// Makes the file, for its owner alone, and takes its room. False, with nothing left behind, when there is none.
    bool Make(const QString& path);
    bool IsThere() const { return handle_ >= 0; }
    const QString& Path() const { return path_; }

    /// Puts a text in place of what is there. `order` tells which of two files was written last.
    bool Write(quint64 order, const QByteArray& text);
    /// Gives back the room that the text doesn't need, and gives the file another name. It is closed then.
    bool FinishAs(const QString& path);
    /// Takes the file away.
    void Remove();

    struct Written {
        quint64 order = 0;
        QByteArray text;
    };
    /// What a file holds; nothing when it isn't one, or was broken off within a write.
    static std::optional<Written> Read(const QString& path);

  private:
    void Close();

    QString path_;
    int handle_ = -1;
    qint64 room_ = 0, length_ = 0;
};

/// A user's unfinished work on this machine: the text that is being typed, which outlives a run that ends unexpectedly,
/// and a list of texts that were set aside. They lie in a folder of the user's own that nobody else can read.
class KeptFiles {
  public:
    ~KeptFiles();

    /// Takes a folder, which is made where it is missing, and room in it for what is to come. False when it can't be
    /// written, or isn't the user's own.
    bool Open(const QString& folder);
    /// Takes away what this run has no more use for. The list stays.
    void Close();
    /// Empty before Open.
    const QString& Folder() const { return folder_; }

    /// A name for this run that no other one has, and whether the run of a name lives: for further files in the folder.
    const QString& RunId() const { return runId_; }
    bool Lives(const QString& runId) const;

    /// Puts `text` in place of what is being typed; whole or not at all, and safe from the end of this process when it
    /// returns. It reaches the disk soon after. False when it couldn't be written.
    bool Write(const QByteArray& text);
    /// Nothing is being typed any more.
    void Remove();

    struct Entry {
        QString id;
        QByteArray text;
    };
    /// Puts a text on the list. `moment` is "yyyymmdd hhnnss". Gives its id; empty when it couldn't be written.
    QString Keep(const QString& moment, const QByteArray& text);
    /// The list, in the order in which it was kept, newest first, whatever the moments say.
    std::vector<Entry> List() const;
    void Drop(const QString& id);
    /// Takes off the list what was kept before a moment, and of the rest all but the newest `most`.
    void Prune(const QString& before, int most);

    /// What was being typed in runs that have ended, newest first, as far as it is `wanted`. Each belongs to this run
    /// from now on, and to the next one when this run ends before it says DropLeftover.
    std::vector<Entry> TakeLeftovers(const std::function<bool(const QByteArray&)>& wanted);
    void DropLeftover(const QString& id);

  private:
    QString PathOf(const QString& name) const { return folder_ + "/" + name; }
    QStringList Names(const QString& suffix) const;
    QStringList KeptNames() const;
    QString NewName(const QString& suffix);
    void TakeRoom();
    void ClearUpBehindOthers();

    QString folder_, runId_;
    std::unique_ptr<QLockFile> alive_;
    RoomyFile typed_[2];
    std::vector<RoomyFile> room_;
    quint64 order_ = 0;
    int made_ = 0;
    bool written_ = false;
    DiskFlusher flusher_;
};

/// The folder for what a program keeps of its user's unfinished work on this machine.
QString UserStateFolder();

}  // namespace platform
