#include "platform/file_copy.h"

#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <vector>

#include "platform/files.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace platform {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPiece = 1 << 20;
/// A share tells of a full disk only when it must write, so it is made to from time to time.
constexpr qint64 kSyncEvery = 32 << 20;

fs::path PathOf(const QString& path) {
#ifdef Q_OS_UNIX
    return fs::path(QFile::encodeName(path).toStdString());
#else
    return fs::path(path.toStdWString());
#endif
}

/// The path as it stands where something lies there: a name may hold what is a separator elsewhere.
fs::path ExistingPath(const QString& path) {
    std::error_code unseen;
    const fs::path asGiven = PathOf(path);
    return fs::exists(fs::symlink_status(asGiven, unseen)) ? asGiven : PathOf(NativePath(path));
}

FileFault FaultOf(const std::error_code& error) {
    if (!error) return FileFault::None;
    static const std::pair<std::errc, FileFault> faults[] = {
        {std::errc::no_such_file_or_directory, FileFault::Missing},
        {std::errc::not_a_directory, FileFault::Missing},
        {std::errc::file_exists, FileFault::TargetExists},
        {std::errc::directory_not_empty, FileFault::TargetExists},
        {std::errc::no_space_on_device, FileFault::DiskFull},
        {std::errc::file_too_large, FileFault::DiskFull},
        {std::errc::permission_denied, FileFault::NoAccess},
        {std::errc::operation_not_permitted, FileFault::NoAccess},
        {std::errc::read_only_file_system, FileFault::NoAccess},
        {std::errc::device_or_resource_busy, FileFault::InUse},
        {std::errc::text_file_busy, FileFault::InUse},
        {std::errc::filename_too_long, FileFault::NameRefused},
        {std::errc::invalid_argument, FileFault::NameRefused},
        {std::errc::illegal_byte_sequence, FileFault::NameRefused}};
    for (const auto& [code, fault] : faults)
        if (error == code) return fault;
#ifdef EDQUOT
    if (error.value() == EDQUOT) return FileFault::DiskFull;
#endif
    return FileFault::Other;
}

/// The fault of the stream operation that just failed.
FileFault LastFault() {
    const FileFault fault = FaultOf(std::error_code(errno, std::generic_category()));
    return fault == FileFault::None ? FileFault::Other : fault;
}

FileFault Sync([[maybe_unused]] const fs::path& file) {
#ifdef Q_OS_UNIX
    const int handle = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0) return LastFault();
    // A file system that can't be told to write is left to do it when it likes.
    const FileFault fault = ::fsync(handle) == 0 || errno == EINVAL ? FileFault::None : LastFault();
    ::close(handle);
    return fault;
#else
    return FileFault::None;
#endif
}

/// What a copy has to do, and how far it is.
struct Work {
    struct Part {
        fs::path inside;  ///< below the folder that is copied; empty for the whole
        bool folder = false;
    };
    std::vector<Part> parts;
    qint64 done = 0;
    qint64 total = 0;
    int leftOut = 0;
    const CopyProgress& progress;

    bool GoesOn() const { return !progress || progress(done, total); }
};

FileFault CopyPieces(std::filebuf& in, std::filebuf& out, const fs::path& to, Work& work) {
    std::vector<char> piece(kPiece);
    qint64 unsynced = 0;
    for (;;) {
        if (!work.GoesOn()) return FileFault::Cancelled;
        errno = 0;
        const std::streamsize read = in.sgetn(piece.data(), static_cast<std::streamsize>(kPiece));
        if (read <= 0) return errno == 0 ? FileFault::None : LastFault();
        errno = 0;
        if (out.sputn(piece.data(), read) != read) return LastFault();
        work.done += read;
        unsynced += read;
        if (unsynced < kSyncEvery) continue;
        unsynced = 0;
        if (const FileFault fault = Sync(to); fault != FileFault::None) return fault;
    }
}

/// What tells that a file was written to.
struct Version {
    std::uintmax_t bytes = 0;
    fs::file_time_type written{};
    bool operator==(const Version&) const = default;
};

Version VersionOf(const fs::path& file) {
    std::error_code gone;
    return {fs::file_size(file, gone), fs::last_write_time(file, gone)};
}

FileFault CopyFileTo(const fs::path& from, const fs::path& to, Work& work) {
    const Version before = VersionOf(from);
    const qint64 doneBefore = work.done;
    std::filebuf in, out;
    // Whole pieces go through; a buffer between would only copy them once more.
    in.pubsetbuf(nullptr, 0);
    out.pubsetbuf(nullptr, 0);
    errno = 0;
    if (!in.open(from, std::ios::in | std::ios::binary)) return LastFault();
    if (!out.open(to, std::ios::out | std::ios::binary | std::ios::trunc)) return LastFault();
    const FileFault fault = CopyPieces(in, out, to, work);
    errno = 0;
    const bool closed = out.close() != nullptr;
    if (fault != FileFault::None) return fault;
    if (!closed) return LastFault();
    // A file that is being written as it is read gives a mixture of its two states, or its head alone.
    if (work.done - doneBefore < static_cast<qint64>(before.bytes) || VersionOf(from) != before)
        return FileFault::Changed;
    if (const FileFault unwritten = Sync(to); unwritten != FileFault::None) return unwritten;
    std::error_code unstamped;
    fs::last_write_time(to, before.written, unstamped);
    return FileFault::None;
}

/// Lists what a folder holds, the folders before what is in them.
FileFault ListFolder(const fs::path& folder, Work& work) {
    std::error_code error;
    fs::recursive_directory_iterator entries(folder, error);
    for (; !error && entries != fs::recursive_directory_iterator(); entries.increment(error)) {
        const fs::file_status status = entries->symlink_status(error);
        if (error) break;
        if (!fs::is_directory(status) && !fs::is_regular_file(status)) {
            ++work.leftOut;
            continue;
        }
        work.parts.push_back({entries->path().lexically_relative(folder), fs::is_directory(status)});
        if (fs::is_regular_file(status)) work.total += static_cast<qint64>(entries->file_size(error));
        if (error) break;
        if (!work.GoesOn()) return FileFault::Cancelled;
    }
    return FaultOf(error);
}

/// True when `path` is the folder or lies in it, however the two are written.
bool LiesIn(const fs::path& folder, const fs::path& path) {
    std::error_code error;
    const fs::path outer = fs::canonical(folder, error);
    const fs::path inner = fs::canonical(path, error);
    if (error) return false;
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

FileFault CheckPlaces(const fs::path& from, const fs::path& to) {
    std::error_code error;
    const fs::file_status source = fs::status(from, error);
    if (!fs::exists(source)) return error ? FaultOf(error) : FileFault::Missing;
    if (!fs::is_directory(source) && !fs::is_regular_file(source)) return FileFault::WrongKind;
    const fs::path folder = to.parent_path();
    if (!fs::is_directory(folder, error)) return FileFault::NoFolder;
    if (fs::exists(fs::symlink_status(to, error))) return FileFault::TargetExists;
    if (error && error != std::errc::no_such_file_or_directory) return FaultOf(error);
    return fs::is_directory(source) && LiesIn(from, folder) ? FileFault::IntoItself : FileFault::None;
}

FileFault CopyParts(const fs::path& from, const fs::path& to, Work& work) {
    for (const Work::Part& part : work.parts) {
        const fs::path target = part.inside.empty() ? to : to / part.inside;
        const fs::path source = part.inside.empty() ? from : from / part.inside;
        std::error_code error;
        FileFault fault = FileFault::None;
        if (part.folder) {
            fs::create_directory(target, error);
            fault = work.GoesOn() ? FaultOf(error) : FileFault::Cancelled;
        } else {
            fault = CopyFileTo(source, target, work);
        }
        if (fault != FileFault::None) return fault;
    }
    return FileFault::None;
}

/// Shorter than any name that it may stand for, so that it fits wherever that one does.
fs::path PassingName() {
    return PathOf(QStringLiteral(".katsudo-") + QUuid::createUuid().toString(QUuid::Id128).left(12));
}

FileFault MeasureParts(const fs::path& from, Work& work) {
    std::error_code error;
    const bool folder = fs::is_directory(from, error);
    work.parts.push_back({{}, folder});
    if (folder) return ListFolder(from, work);
    work.total += static_cast<qint64>(fs::file_size(from, error));
    return FileFault::None;
}

FileFault Rename(const fs::path& from, const fs::path& to) {
    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error))) return FileFault::TargetExists;
    error.clear();
    fs::rename(from, to, error);
    return FaultOf(error);
}

}  // namespace

FileLook LookAt(const QString& path) {
    FileLook look;
    const fs::path place = ExistingPath(path);
    std::error_code error;
    const fs::file_status status = fs::status(place, error);
    if (!fs::exists(status)) return look;
    look.kind = fs::is_directory(status)      ? FileLook::Kind::Folder
                : fs::is_regular_file(status) ? FileLook::Kind::File
                                              : FileLook::Kind::Other;
    const QFileInfo info(place);
    look.name = info.fileName();
    look.bytes = look.kind == FileLook::Kind::File ? info.size() : 0;
    look.modified = info.lastModified();
    return look;
}

CopyOutcome CopyWhole(const QString& from, const QString& to, const CopyProgress& progress) {
    const fs::path source = ExistingPath(from);
    const fs::path target = PathOf(NativePath(to));
    CopyOutcome outcome{CheckPlaces(source, target)};
    if (outcome.fault != FileFault::None) return outcome;
    Work work{{}, 0, 0, 0, progress};
    outcome.fault = MeasureParts(source, work);
    const fs::path unfinished = target.parent_path() / PassingName();
    std::error_code error;
    if (outcome.fault == FileFault::None) outcome.fault = CopyParts(source, unfinished, work);
    if (outcome.fault == FileFault::None) outcome.fault = Rename(unfinished, target);
    if (outcome.fault != FileFault::None) fs::remove_all(unfinished, error);
    outcome.leftOut = work.leftOut;
    return outcome;
}

FileFault FaultOfTarget(const QString& folder, const QStringList& paths) {
    const fs::path place = ExistingPath(folder);
    std::error_code error;
    if (folder.isEmpty() || !fs::is_directory(place, error)) return FileFault::NoFolder;
    const fs::path probe = place / PassingName();
    errno = 0;
    if (!std::filebuf().open(probe, std::ios::out | std::ios::binary)) return LastFault();
    fs::remove(probe, error);
    const CopyProgress toTheEnd;
    Work work{{}, 0, 0, 0, toTheEnd};
    for (const QString& path : paths)
        if (LookAt(path).kind != FileLook::Kind::Nothing) MeasureParts(ExistingPath(path), work);
    const fs::space_info room = fs::space(place, error);
    // A share that can't tell how big it is tells nothing of its room either.
    const bool told = !error && room.capacity > 0;
    return told && work.total > static_cast<qint64>(room.available) ? FileFault::DiskFull : FileFault::None;
}

FileFault MoveWhole(const QString& from, const QString& to) {
    const fs::path source = ExistingPath(from);
    std::error_code error;
    if (!fs::exists(fs::symlink_status(source, error))) return FileFault::Missing;
    return Rename(source, PathOf(NativePath(to)));
}

FileFault RemoveWhole(const QString& path) {
    const fs::path place = ExistingPath(path);
    std::error_code error;
    if (!fs::exists(fs::symlink_status(place, error))) return FileFault::Missing;
    fs::remove_all(place, error);
    return FaultOf(error);
}

}  // namespace platform
