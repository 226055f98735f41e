#include "attachments/paper_carrier.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "platform/private_file.h"

namespace attachments {

using platform::CopyOutcome;
using platform::FileFault;
using platform::FileLook;

namespace {

const QString kSuffix = QStringLiteral(".papers");
const QString kKinds[] = {QStringLiteral("move"), QStringLiteral("copy"), QStringLiteral("replace")};

QByteArray ToJson(const Carry& carry) {
    QJsonObject numbers;
    for (const auto& [there, here] : carry.numbers)
        numbers[there] = here;
    return QJsonDocument(QJsonObject{{"kind", kKinds[static_cast<int>(carry.kind)]},
                                     {"information", carry.information},
                                     {"from", carry.from},
                                     {"to", carry.to},
                                     {"numbers", numbers}})
        .toJson(QJsonDocument::Compact);
}

std::optional<Carry> FromJson(const QByteArray& text) {
    const QJsonObject json = QJsonDocument::fromJson(text).object();
    const auto kind = std::find(std::begin(kKinds), std::end(kKinds), json["kind"].toString());
    if (kind == std::end(kKinds)) return std::nullopt;
    Carry carry;
    carry.kind = static_cast<Carry::Kind>(kind - std::begin(kKinds));
    carry.information = json["information"].toString();
    carry.from = json["from"].toString();
    carry.to = json["to"].toString();
    const QJsonObject numbers = json["numbers"].toObject();
    for (auto number = numbers.begin(); number != numbers.end(); ++number)
        carry.numbers[number.key()] = number.value().toString();
    carry.begun = true;
    return carry;
}

/// Several documents are told by the worst that befell one of them: the first fault, and all that was left out.
void Join(CopyOutcome& whole, const CopyOutcome& part) {
    if (whole.fault == FileFault::None) whole.fault = part.fault;
    whole.leftOut += part.leftOut;
}

/// What another day may be without.
bool Passes(FileFault fault) {
    return fault == FileFault::NoFolder || fault == FileFault::DiskFull || fault == FileFault::NoAccess ||
           fault == FileFault::InUse;
}

/// An earlier attempt copied the one to the other. What else lies there is somebody's paper.
bool WasCopied(const QString& from, const QString& to) {
    const FileLook there = platform::LookAt(from), here = platform::LookAt(to);
    return there.kind == here.kind && there.bytes == here.bytes;
}

bool KeepsNumbers(const Carry& carry) {
    return std::all_of(carry.numbers.begin(), carry.numbers.end(),
                       [](const auto& number) { return number.first == number.second; });
}

}  // namespace

void PaperCarrier::NumberBehind(Carry& carry, const std::vector<Attachment>& papers) {
    int last = store_.HighestNumber(carry.information, carry.to);
    for (const Attachment& paper : papers)
        carry.numbers.erase(paper.sequence);
    for (const auto& [there, here] : carry.numbers)
        last = std::max(last, here.toInt());
    for (const Attachment& paper : papers)
        carry.numbers[paper.sequence] = SequenceText(++last);
}

std::optional<Carry> PaperCarrier::Plan(Carry::Kind kind, const QString& information, const QString& from,
                                        const QString& to) {
    const auto papers = store_.ReadUntold(information, from);
    if (!papers) return std::nullopt;
    Carry carry;
    carry.kind = kind;
    carry.information = information;
    carry.from = from;
    carry.to = to;
    if (papers->empty()) return carry;
    if (store_.HighestNumber(information, to) > 0) {
        NumberBehind(carry, *papers);
    } else {
        for (const Attachment& paper : *papers)
            carry.numbers[paper.sequence] = paper.sequence;
    }
    for (const Attachment& paper : *papers)
        if (HasCopy(paper)) carry.documents << store_.AttachmentFileName(paper);
    return carry;
}

FileFault PaperCarrier::FaultOfFolder(const Carry& carry) const {
    if (carry.documents.isEmpty()) return FileFault::None;
    return platform::FaultOfTarget(store_.DocumentFolder(), carry.IsMove() ? QStringList() : carry.documents);
}

QString PaperCarrier::NewFile() {
    return place_.Folder() + "/" + place_.RunId() + QStringLiteral("-%1").arg(++written_) + kSuffix;
}

bool PaperCarrier::WriteDown(Carry& carry) {
    if (carry.numbers.empty()) return true;
    const QString file = carry.file.isEmpty() ? NewFile() : carry.file;
    if (!platform::WritePrivately(file, ToJson(carry))) return false;
    carry.file = file;
    return true;
}

void PaperCarrier::Drop(Carry& carry) {
    if (!carry.file.isEmpty()) QFile::remove(carry.file);
    carry.file.clear();
}

std::vector<Carry> PaperCarrier::Unfinished() {
    const QString own = place_.RunId();
    std::vector<Carry> unfinished;
    for (const QFileInfo& info :
         QDir(place_.Folder()).entryInfoList({"*" + kSuffix}, QDir::Files, QDir::Time | QDir::Reversed)) {
        const QString owner = info.fileName().left(own.size());
        if (owner != own && place_.Lives(owner)) continue;
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly)) continue;
        auto carry = FromJson(file.readAll());
        if (!carry) continue;
        carry->file = owner == own ? info.filePath() : NewFile();
        // Of two runs that want it the one whose renaming works has it.
        if (owner == own || QFile::rename(info.filePath(), carry->file)) unfinished.push_back(*carry);
    }
    return unfinished;
}

bool PaperCarrier::MoveRows(Carry& carry) {
    // Without numbers to change it is one statement, and a paper that a colleague added just now goes along.
    if (KeepsNumbers(carry) && store_.RekeyAttachments(carry.information, carry.from, carry.to)) return true;
    const auto papers = store_.ReadUntold(carry.information, carry.from);
    if (!papers) return false;
    if (KeepsNumbers(carry)) {
        if (store_.HighestNumber(carry.information, carry.to) == 0) return false;
        // Somebody was faster with a number.
        NumberBehind(carry, *papers);
        WriteDown(carry);
    }
    for (const Attachment& paper : *papers) {
        const auto number = carry.numbers.find(paper.sequence);
        if (number != carry.numbers.end() && store_.RekeyAttachment(paper, carry.to, number->second)) continue;
        // It came since the numbers were given, or its number was taken since.
        NumberBehind(carry, {paper});
        WriteDown(carry);
        if (!store_.RekeyAttachment(paper, carry.to, carry.numbers[paper.sequence])) return false;
    }
    return true;
}

bool PaperCarrier::HasCopies(const Carry& carry) const {
    if (carry.numbers.empty()) return false;
    for (const QString& identity : {carry.from, carry.to})
        for (const Attachment& paper :
             store_.ReadUntold(carry.information, identity).value_or(std::vector<Attachment>()))
            if (HasCopy(paper)) return true;
    return false;
}

FileFault PaperCarrier::FaultOfPlace() const {
    return platform::FaultOfTarget(store_.DocumentFolder(), {});
}

FileFault PaperCarrier::MoveCopy(const Attachment& moved, const Carry& carry) const {
    Attachment before = moved;
    before.identity = carry.from;
    const auto number = std::find_if(carry.numbers.begin(), carry.numbers.end(),
                                     [&](const auto& pair) { return pair.second == moved.sequence; });
    if (number != carry.numbers.end())
        before.sequence = number->first;
    else if (!KeepsNumbers(carry))
        return FileFault::None;
    const QString from = store_.AttachmentFileName(before), to = store_.AttachmentFileName(moved);
    FileFault fault = platform::MoveWhole(from, to);
    // One that is open elsewhere can still be copied.
    if (fault == FileFault::InUse || fault == FileFault::NoAccess) fault = platform::CopyWhole(from, to).fault;
    // Without a copy there is nothing to rename; an earlier attempt may have come as far as that.
    const bool was =
        fault == FileFault::Missing || (fault == FileFault::TargetExists && carry.begun && WasCopied(from, to));
    return was ? FileFault::None : fault;
}

void PaperCarrier::MovePapers(Carry& carry, Outcome& outcome) {
    if (carry.numbers.empty()) {
        // The first paper may have come since it was planned.
        if (const auto now = Plan(carry.kind, carry.information, carry.from, carry.to)) carry.numbers = now->numbers;
    }
    // A row whose copy can't follow stays with it.
    if (HasCopies(carry)) outcome.files.fault = FaultOfPlace();
    if (outcome.files.fault != FileFault::None) return;
    outcome.stored = MoveRows(carry);
    if (!outcome.stored || carry.numbers.empty()) return;
    const auto moved = store_.ReadUntold(carry.information, carry.to);
    outcome.stored = moved.has_value();
    if (!moved) return;
    for (const Attachment& paper : *moved)
        Join(outcome.files, {MoveCopy(paper, carry)});
}

void PaperCarrier::CopyPapers(Carry& carry, Outcome& outcome, const platform::CopyProgress& progress) {
    const auto papers = store_.ReadUntold(carry.information, carry.from);
    outcome.stored = papers.has_value();
    const FileFault away = carry.numbers.empty() ? FileFault::None : FaultOfPlace();
    for (const Attachment& from : papers.value_or(std::vector<Attachment>())) {
        const auto number = carry.numbers.find(from.sequence);
        if (number == carry.numbers.end()) continue;
        Attachment to = from;
        to.identity = carry.to;
        to.sequence = number->second;
        const bool there = carry.begun && store_.Find(to.information, to.identity, to.sequence);
        if (!there && !store_.CopyRow(from, to.identity, to.sequence)) {
            outcome.stored = false;
            continue;
        }
        if (away != FileFault::None && HasCopy(from)) {
            Join(outcome.files, {away});
            continue;
        }
        const QString document = store_.AttachmentFileName(from);
        // One that was never copied, or is gone, is listed by its row alone, here as there.
        if (platform::LookAt(document).kind == FileLook::Kind::Nothing) continue;
        CopyOutcome copied = store_.CopyDocument(document, to, progress);
        if (copied.fault == FileFault::TargetExists && carry.begun &&
            WasCopied(document, store_.AttachmentFileName(to)))
            copied.fault = FileFault::None;
        Join(outcome.files, copied);
        if (copied.fault != FileFault::Cancelled) continue;
        store_.DeleteAttachment(to.information, to.identity, to.sequence);
        break;
    }
}

Outcome PaperCarrier::CarryOut(Carry& carry, const platform::CopyProgress& progress) {
    Outcome outcome;
    if (carry.IsMove())
        MovePapers(carry, outcome);
    else
        CopyPapers(carry, outcome, progress);
    carry.begun = true;
    if (outcome.stored && !Passes(outcome.files.fault)) Drop(carry);
    return outcome;
}

}  // namespace attachments
