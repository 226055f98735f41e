#include "platform/kept_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUuid>
#include <algorithm>
#include <filesystem>
#include <map>

#include "platform/instance_guard.h"

namespace platform {

namespace {

/// Room for what people type, and how many texts can be set aside before the next one needs the disk.
constexpr qint64 kRoom = 64 << 10;
constexpr std::size_t kSpareFiles = 3;
constexpr int kRunIdLength = 36;

const QString kTyped = QStringLiteral(".typed"), kKept = QStringLiteral(".kept"), kSpare = QStringLiteral(".room"),
              kLock = QStringLiteral(".run");

/// The place of a kept text among all: the clock may have been set back between two of them.
int NumberOf(const QString& name) {
    return name.section(u'-', 1, 1).toInt();
}

/// The first line of a file: which write it was, how long its text is, and the text's mark.
QByteArray HeadLine(quint64 order, const QByteArray& text) {
    return "katsudo " + QByteArray::number(order) + ' ' + QByteArray::number(text.size()) + ' ' +
           QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex() + '\n';
}

bool Rename(const QString& from, const QString& to) {
    std::error_code fault;
    std::filesystem::rename(from.toStdString(), to.toStdString(), fault);
    return !fault;
}

bool MakePrivateFolder(const QString& folder) {
    if (!QDir().mkpath(folder)) return false;
    struct stat look {};
    const QByteArray path = QFile::encodeName(folder);
    if (stat(path.constData(), &look) != 0 || look.st_uid != geteuid()) return false;
    return (look.st_mode & 077) == 0 || chmod(path.constData(), 0700) == 0;
}

}  // namespace

RoomyFile::~RoomyFile() {
    Close();
}

RoomyFile::RoomyFile(RoomyFile&& other) noexcept {
    *this = std::move(other);
}

RoomyFile& RoomyFile::operator=(RoomyFile&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(handle_, other.handle_);
    std::swap(room_, other.room_);
    std::swap(length_, other.length_);
    return *this;
}

void RoomyFile::Close() {
    if (handle_ >= 0) close(handle_);
    handle_ = -1;
}

bool RoomyFile::Make(const QString& path) {
    path_ = path;
    handle_ = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (handle_ < 0) return false;
    if (posix_fallocate(handle_, 0, kRoom) == 0) {
        room_ = kRoom;
        return true;
    }
    Remove();
    return false;
}

bool RoomyFile::Write(quint64 order, const QByteArray& text) {
    if (!IsThere()) return false;
    const QByteArray bytes = HeadLine(order, text) + text;
    if (bytes.size() > room_) {
        const qint64 room = (bytes.size() / kRoom + 1) * kRoom;
        if (posix_fallocate(handle_, 0, room) != 0) return false;
        room_ = room;
    }
    length_ = bytes.size();
    return pwrite(handle_, bytes.constData(), static_cast<std::size_t>(length_), 0) == length_;
}

bool RoomyFile::FinishAs(const QString& path) {
    if (!IsThere() || ftruncate(handle_, length_) != 0) return false;
    Close();
    return Rename(path_, path);
}

void RoomyFile::Remove() {
    if (!IsThere()) return;
    Close();
    QFile::remove(path_);
}

std::optional<RoomyFile::Written> RoomyFile::Read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QList<QByteArray> head = file.readLine().trimmed().split(' ');
    if (head.size() != 4 || head[0] != "katsudo") return std::nullopt;
    Written written{head[1].toULongLong(), file.read(head[2].toLongLong())};
    const QByteArray mark = QCryptographicHash::hash(written.text, QCryptographicHash::Md5).toHex();
    return mark == head[3] ? std::optional(written) : std::nullopt;
}

KeptFiles::~KeptFiles() {
    Close();
}

bool KeptFiles::Open(const QString& folder) {
    folder_ = folder;
    runId_ = QUuid::createUuid().toString(QUuid::WithoutBraces);
    if (!MakePrivateFolder(folder_)) return false;
    alive_ = std::make_unique<QLockFile>(PathOf(runId_ + kLock));
    alive_->setStaleLockTime(0);
    alive_->tryLock(0);
    ClearUpBehindOthers();
    TakeRoom();
    return typed_[0].IsThere() && typed_[1].IsThere();
}

void KeptFiles::Close() {
    // What is being typed stays for the next run where this one was ended from outside.
    if (written_) typed_[order_ % 2] = RoomyFile();
    for (RoomyFile& file : typed_)
        file.Remove();
    for (RoomyFile& file : room_)
        file.Remove();
    room_.clear();
    alive_.reset();
}

void KeptFiles::TakeRoom() {
    const char* const names[] = {"-a", "-b"};
    for (int place = 0; place < 2; ++place)
        if (!typed_[place].IsThere()) typed_[place].Make(PathOf(runId_ + QLatin1String(names[place]) + kTyped));
    while (room_.size() < kSpareFiles) {
        RoomyFile file;
        if (!file.Make(NewName(kSpare))) return;
        room_.push_back(std::move(file));
    }
}

QString KeptFiles::NewName(const QString& suffix) {
    return PathOf(runId_ + QStringLiteral("-%1").arg(++made_) + suffix);
}

bool KeptFiles::Write(const QByteArray& text) {
    if (!typed_[0].IsThere() || !typed_[1].IsThere()) TakeRoom();
    // In turns, so that the text before stays whole until this one is.
    RoomyFile& file = typed_[(order_ + 1) % 2];
    if (!file.Write(order_ + 1, text)) return false;
    ++order_;
    written_ = true;
    flusher_.Flush(file.Path());
    return true;
}

void KeptFiles::Remove() {
    if (!written_) return;
    Write(QByteArray());
    written_ = false;
}

QString KeptFiles::Keep(const QString& moment, const QByteArray& text) {
    TakeRoom();
    const QString stamp = QString(moment).remove(u' ');
    const QStringList before = KeptNames();
    const int number = before.isEmpty() ? 1 : NumberOf(before.first()) + 1;
    const QString id = stamp + QStringLiteral("-%1-").arg(number, 6, 10, QLatin1Char('0')) + runId_.left(8) + kKept;
    // With no room left the older half of what is being typed still has some.
    RoomyFile file;
    if (room_.empty()) {
        file = std::move(typed_[(order_ + 1) % 2]);
    } else {
        file = std::move(room_.back());
        room_.pop_back();
    }
    if (!file.Write(0, text) || !file.FinishAs(PathOf(id))) {
        file.Remove();
        return {};
    }
    flusher_.Flush(PathOf(id));
    TakeRoom();
    return id;
}

QStringList KeptFiles::Names(const QString& suffix) const {
    return QDir(folder_).entryList({"*" + suffix}, QDir::Files, QDir::Name | QDir::Reversed);
}

QStringList KeptFiles::KeptNames() const {
    QStringList names = Names(kKept);
    std::stable_sort(names.begin(), names.end(),
                     [](const QString& a, const QString& b) { return NumberOf(a) > NumberOf(b); });
    return names;
}

std::vector<KeptFiles::Entry> KeptFiles::List() const {
    std::vector<Entry> entries;
    for (const QString& name : KeptNames())
        if (auto written = RoomyFile::Read(PathOf(name))) entries.push_back({name, written->text});
    return entries;
}

void KeptFiles::Drop(const QString& id) {
    if (!id.isEmpty()) QFile::remove(PathOf(id));
}

void KeptFiles::Prune(const QString& before, int most) {
    const QString oldest = QString(before).remove(u' ');
    int count = 0;
    for (const QString& name : KeptNames())
        if (++count > most || name < oldest) QFile::remove(PathOf(name));
}

bool KeptFiles::Lives(const QString& runId) const {
    return LockIsHeld(PathOf(runId + kLock));
}

void KeptFiles::ClearUpBehindOthers() {
    for (const QString& suffix : {kSpare, kLock})
        for (const QString& name : Names(suffix)) {
            const QString owner = name.left(kRunIdLength);
            if (owner != runId_ && !Lives(owner)) QFile::remove(PathOf(name));
        }
}

std::vector<KeptFiles::Entry> KeptFiles::TakeLeftovers(const std::function<bool(const QByteArray&)>& wanted) {
    struct Found {
        QString name;
        RoomyFile::Written written;
    };
    std::map<QString, Found> newest;  // by run and, of what a run had taken over from others, by file
    for (const QString& name : QDir(folder_).entryList({"*" + kTyped}, QDir::Files, QDir::Time)) {
        const QString owner = name.left(kRunIdLength);
        if (owner == runId_ || Lives(owner)) continue;
        const auto written = RoomyFile::Read(PathOf(name));
        const bool pair = name.endsWith("-a" + kTyped) || name.endsWith("-b" + kTyped);
        const QString key = pair ? owner : name;
        const auto known = newest.find(key);
        if (known != newest.end() && (!written || known->second.written.order > written->order)) {
            QFile::remove(PathOf(name));
            continue;
        }
        if (known != newest.end()) QFile::remove(PathOf(known->second.name));
        newest[key] = {name, written.value_or(RoomyFile::Written())};
    }
    std::vector<std::pair<QDateTime, Entry>> taken;
    for (const auto& [key, found] : newest) {
        const QString path = PathOf(found.name);
        if (found.written.text.isEmpty()) {
            QFile::remove(path);
            continue;
        }
        if (!wanted(found.written.text)) continue;
        const QDateTime when = QFileInfo(path).lastModified();
        // Of two runs that want it the one whose renaming works has it.
        const QString own = NewName(kTyped);
        if (Rename(path, own)) taken.push_back({when, {QFileInfo(own).fileName(), found.written.text}});
    }
    std::sort(taken.begin(), taken.end(), [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<Entry> entries;
    for (auto& [when, entry] : taken)
        entries.push_back(std::move(entry));
    return entries;
}

void KeptFiles::DropLeftover(const QString& id) {
    QFile::remove(PathOf(id));
}

QString UserStateFolder() {
    const QString told = qEnvironmentVariable("XDG_STATE_HOME");
    if (QDir::isAbsolutePath(told)) return told + "/katsudo-techo";
#ifdef Q_OS_UNIX
    return QDir::homePath() + "/.local/state/katsudo-techo";
#else
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/katsudo-techo";
#endif
}

}  // namespace platform
