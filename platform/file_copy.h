#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>

// What a program does with whole documents: look, copy, move and remove, each the same for a file and for a folder.
// Paths may have either separator. Nothing is thrown.
namespace platform {

/// Why something couldn't be done with a file or a folder.
enum class FileFault {
    None,
    Cancelled,
    Missing,       ///< what was to be copied, moved or removed isn't there
    NoFolder,      ///< the folder that it was to go into isn't there
    TargetExists,  ///< something bears the new name already; it stays as it is
    IntoItself,    ///< a folder can't be copied into itself
    DiskFull,
    NoAccess,
    InUse,
    NameRefused,  ///< too long for the file system, or with a character that it doesn't take
    WrongKind,    ///< neither a file nor a folder: a pipe, a device
    Changed,      ///< another program wrote to it while it was copied
    Other,
};

/// What lies at a path.
struct FileLook {
    enum class Kind { Nothing, File, Folder, Other };
    Kind kind = Kind::Nothing;
    QString name;        ///< last part of the path, as it is on disk
    qint64 bytes = 0;    ///< of a file
    QDateTime modified;  ///< local time; without one when it can't be told
};

/// Looks at a path, through a link to what it names. What can't be reached counts as nothing.
FileLook LookAt(const QString& path);

/// Told between two pieces of a copy what is done and what there is to do, in bytes; false breaks it off.
using CopyProgress = std::function<bool(qint64 done, qint64 total)>;

struct CopyOutcome {
    FileFault fault = FileFault::None;
    /// Links, pipes and devices within a folder: they aren't followed, and have no place in a copy.
    int leftOut = 0;
};

/// Copies a file, or a folder with all that it holds, to a path at which nothing is yet. It is written under a name of
/// its own beside the new one, which it takes when it is complete: whatever happens, nothing half-written bears the new
/// name. A fault or a break leaves nothing behind. Files keep their time stamps; one that isn't any more what it was
/// when its copy began makes the whole copy fail.
CopyOutcome CopyWhole(const QString& from, const QString& to, const CopyProgress& progress = {});

/// Why a folder can't take copies of what lies at `paths`: it isn't there, nothing can be made in it, or it hasn't the
/// room. A path at which there is nothing needs none.
FileFault FaultOfTarget(const QString& folder, const QStringList& paths);

/// Gives a file or folder another path in the same file system; nothing that is there already is overwritten.
FileFault MoveWhole(const QString& from, const QString& to);

/// Removes a file, or a folder with all that it holds. A link goes, and what it names stays.
FileFault RemoveWhole(const QString& path);

}  // namespace platform
