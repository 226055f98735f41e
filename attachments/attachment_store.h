#pragma once

#include <QString>
#include <map>
#include <optional>
#include <vector>

#include "platform/clock.h"
#include "platform/file_copy.h"
#include "session/data_access.h"

namespace attachments {

/// Owner record of a slot's attachments: date "yyyymmdd", start and end "hh:nn" and staff code, joined without the
/// colons: digits only, 21 of them for a complete key.
QString SlotIdentity(const QString& date, const QString& start, const QString& end, const QString& staff);

/// A row of `M付属書類`, as far as it is needed to find its copy.
struct Attachment {
    QString information, identity;  ///< owner program and owner record
    QString sequence;               ///< "001" upward
    QString documentName;           ///< the path that it was taken from
    QString title;
};

/// Name of its copy in the document folder.
QString CopyName(const Attachment& attachment);
/// True when it was taken from a place, so that there is to be a copy of it; a bare name is a row alone.
bool HasCopy(const Attachment& attachment);
/// The text of the number, "001" upward.
QString SequenceText(int number);

/// How an attachment stands in a list.
struct RowInfo {
    QString size;  ///< "1,234KB", or "フォルダ"; empty when its copy is gone
    QString date;  ///< "yyyy/mm/dd"
    QString name;
};

/// What became of an operation.
struct Outcome {
    bool stored = true;  ///< the rows are as they were to be
    platform::CopyOutcome files{};
};

/// The words for a user when an operation left something undone; empty when it left nothing.
QString OutcomeNotice(const Outcome& outcome);

/// Documents attached to the records of the suite's programs: the rows of `M付属書類`, and a copy of each document in
/// the company's document folder under a name joined from owner, number and the document's own name.
class AttachmentStore {
  public:
    AttachmentStore(const session::SessionContext& context, session::DataAccess& data, const platform::Clock& clock)
        : context_(context), data_(data), clock_(clock) {}

    bool AttachmentExists(const QString& information, const QString& identity);
    /// In the order of their numbers; empty also when they can't be read.
    std::vector<Attachment> Attachments(const QString& information, const QString& identity);
    /// One attachment; nothing when there is no such row.
    std::optional<Attachment> Find(const QString& information, const QString& identity, const QString& sequence);

    /// Texts of further columns by their names; a column without one stays empty, the amount 0.
    using Columns = std::map<QString, QString>;
    /// Adds a row under the next number and, when `source` names a place and not just a name, copies the file or folder
    /// there. A copy that fails leaves the row; one that is broken off takes the row back.
    Outcome AddAttachment(const QString& information, const QString& identity, const QString& source,
                          const Columns& columns, const platform::CopyProgress& progress = {});
    /// Removes the row only.
    bool DeleteAttachment(const QString& information, const QString& identity, const QString& sequence);

    /// The rows alone, for whoever brings their copies along (PaperCarrier). Attachments of one owner record become
    /// another one's: all under their numbers, or one under a number of its own; or get a row each there, column for
    /// column. True when it was done, false without a change.
    bool RekeyAttachments(const QString& information, const QString& oldIdentity, const QString& newIdentity);
    bool RekeyAttachment(const Attachment& attachment, const QString& newIdentity, const QString& newSequence);
    bool CopyRow(const Attachment& attachment, const QString& newIdentity, const QString& newSequence);

    /// Copies the file or folder at `from` into the document folder as that attachment's.
    platform::CopyOutcome CopyDocument(const QString& from, const Attachment& to,
                                       const platform::CopyProgress& progress) const;

    /// The attachments as Attachments gives them, without a trace in the run history; nothing when they can't be read.
    std::optional<std::vector<Attachment>> ReadUntold(const QString& information, const QString& identity);
    /// The highest number that a row or a copy of the owner record bears; 0 without any. A slot that was deleted leaves
    /// both.
    int HighestNumber(const QString& information, const QString& identity);

    /// Path of the attachment's copy, in the platform's own form.
    QString AttachmentFileName(const Attachment& attachment) const;
    RowInfo AttachmentRowInfo(const Attachment& attachment) const;
    /// The company's document folder; a relative setting counts from the root of the installation. Empty without one.
    QString DocumentFolder() const;

  private:
    QString NextSequence(const QString& information, const QString& identity);
    QString InsertStatement(const Attachment& row, const Columns& columns) const;

    const session::SessionContext& context_;
    session::DataAccess& data_;
    const platform::Clock& clock_;
};

}  // namespace attachments
