#pragma once

#include <map>

#include "attachments/attachment_store.h"
#include "platform/kept_files.h"

namespace attachments {

/// What is to become of the papers of an owner record whose identity changes, or that gets a copy.
struct Carry {
    enum class Kind {
        Move,     ///< the record changes its key by one statement
        Copy,     ///< a second record gets copies of them
        Replace,  ///< the record is deleted, and stored anew under another key
    };
    Kind kind = Kind::Move;
    QString information, from, to;       ///< identities as SlotIdentity makes them
    std::map<QString, QString> numbers;  ///< of each paper there, and the one that it is to bear here
    QStringList documents;               ///< the papers' copies; known to a carry that was just planned
    QString file;                        ///< where it is written down; empty as long as it isn't
    bool begun = false;                  ///< an earlier attempt may have done part of it

    bool IsMove() const { return kind != Kind::Copy; }
};

/// Brings the papers of an owner record along when its identity changes. What it is about to do is written down before,
/// in the folder of the user's unfinished work, so that a run which ends in the middle has it finished by a later one:
/// each step can be done again. Where the new identity has papers already, of a slot that was deleted, those that come
/// are numbered behind them.
class PaperCarrier {
  public:
    /// Both must outlive it. `place` tells where it is written down.
    PaperCarrier(AttachmentStore& store, const platform::KeptFiles& place) : store_(store), place_(place) {}

    /// What there is to carry. Nothing when the papers can't be read.
    std::optional<Carry> Plan(Carry::Kind kind, const QString& information, const QString& from, const QString& to);
    /// Why the document folder can't take the papers now.
    platform::FileFault FaultOfFolder(const Carry& carry) const;
    /// Notes it on the disk; a carry without papers needs no note. False when it couldn't be written.
    bool WriteDown(Carry& carry);
    /// Does it. The note goes when all is done, or what is left can't be done later either.
    Outcome CarryOut(Carry& carry, const platform::CopyProgress& progress);
    /// Takes the note away.
    void Drop(Carry& carry);

    /// What this run and runs that have ended left undone, the oldest first; it is this run's from now on.
    std::vector<Carry> Unfinished();

  private:
    QString NewFile();
    void NumberBehind(Carry& carry, const std::vector<Attachment>& papers);
    bool MoveRows(Carry& carry);
    bool HasCopies(const Carry& carry) const;
    /// Where the folder is away a copy that can't be seen isn't one that never was.
    platform::FileFault FaultOfPlace() const;
    platform::FileFault MoveCopy(const Attachment& moved, const Carry& carry) const;
    void MovePapers(Carry& carry, Outcome& outcome);
    void CopyPapers(Carry& carry, Outcome& outcome, const platform::CopyProgress& progress);

    AttachmentStore& store_;
    const platform::KeptFiles& place_;
    int written_ = 0;
};

}  // namespace attachments
