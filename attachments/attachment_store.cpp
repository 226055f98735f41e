#include "attachments/attachment_store.h"

#include <QDir>
#include <QDirIterator>
#include <algorithm>

#include "items/display_forms.h"
#include "items/text_rules.h"
#include "platform/files.h"
#include "session/insert_builder.h"

namespace attachments {

using platform::CopyOutcome;
using platform::FileFault;
using platform::FileLook;

namespace {

/// The columns in the order of the insert; texts in which a quote may stand are marked.
struct Column {
    const char* name;
    bool freeText = false;
};
constexpr Column kColumns[] = {
    {"情報名"},           {"情報識別ID"},       {"SEQNo"},      {"書類名", true}, {"タイトル", true}, {"伝票番号ID"},
    {"伝票事業所コード"}, {"伝票番号基準日付"}, {"伝票No"},     {"伝票日付"},     {"対応先コード"},   {"得意先コード"},
    {"納品先コード"},     {"仕入先コード"},     {"銀行コード"}, {"科目コード"},   {"社員コード"},     {"担当者コード"},
    {"部門コード"},       {"セクションコード"}, {"商品コード"}, {"メーカコード"}, {"対象金額"},       {"ユーザID"},
    {"登録日付"}};
const QString kAmount = QStringLiteral("対象金額");
constexpr int kSequenceWidth = 3;

QString OwnerCondition(const QString& information, const QString& identity) {
    return " WHERE 情報名 = '" + information + "' AND 情報識別ID = '" + identity + "'";
}

QString RowCondition(const QString& information, const QString& identity, const QString& sequence) {
    return OwnerCondition(information, identity) + " AND SEQNo = '" + sequence + "'";
}

QString TextOf(const store::Recordset& row, const QString& column) {
    return row.Value(column).value_or(QString());
}

Attachment TakeAttachment(const store::Recordset& row) {
    return {TextOf(row, QStringLiteral("情報名")), TextOf(row, QStringLiteral("情報識別ID")),
            TextOf(row, QStringLiteral("SEQNo")), TextOf(row, QStringLiteral("書類名")),
            TextOf(row, QStringLiteral("タイトル"))};
}

bool IsSeparator(QChar character) {
    return character == u'\\' || character == u'/';
}

/// True for a path that says itself where it begins, on this platform or on another one of the suite.
bool IsAbsolute(const QString& path) {
    return IsSeparator(path[0]) || (path.size() > 1 && path[1] == u':');
}

/// What stands behind the last separator, of either kind.
QString BaseName(const QString& path) {
    const auto last = std::find_if(path.rbegin(), path.rend(), IsSeparator);
    return path.right(last - path.rbegin());
}

QString WordsOf(FileFault fault) {
    switch (fault) {
        case FileFault::None:
            return {};
        case FileFault::Cancelled:
            return QStringLiteral("コピーを中止しました。");
        case FileFault::Missing:
            return QStringLiteral("書類が見つかりません。");
        case FileFault::NoFolder:
            return QStringLiteral("ドキュメントフォルダが見つかりません。");
        case FileFault::TargetExists:
            return QStringLiteral("同じ名前の書類が既にあります。コピーできませんでした。");
        case FileFault::IntoItself:
            return QStringLiteral("ドキュメントフォルダを含むフォルダはコピーできません。");
        case FileFault::DiskFull:
            return QStringLiteral("ディスクの空き容量が足りません。コピーできませんでした。");
        case FileFault::NoAccess:
            return QStringLiteral("書類またはフォルダを使用する権限がありません。");
        case FileFault::InUse:
            return QStringLiteral("書類は使用中です。");
        case FileFault::NameRefused:
            return QStringLiteral("書類の名前が長すぎるか、使用できない文字があります。");
        case FileFault::WrongKind:
            return QStringLiteral("ファイルまたはフォルダではありません。");
        case FileFault::Changed:
            return QStringLiteral("書類がコピー中に変わりました。");
        case FileFault::Other:
            break;
    }
    return QStringLiteral("書類を処理できませんでした。");
}

}  // namespace

QString SlotIdentity(const QString& date, const QString& start, const QString& end, const QString& staff) {
    QString identity = date + start + end + staff;
    return identity.remove(u':');
}

QString CopyName(const Attachment& attachment) {
    return QStringList{attachment.information, attachment.identity, attachment.sequence,
                       BaseName(attachment.documentName)}
        .join(u'_');
}

bool HasCopy(const Attachment& attachment) {
    return std::any_of(attachment.documentName.begin(), attachment.documentName.end(), IsSeparator);
}

QString SequenceText(int number) {
    return QString::number(number).rightJustified(kSequenceWidth, u'0');
}

QString OutcomeNotice(const Outcome& outcome) {
    if (!outcome.stored) return QStringLiteral("付属書類を登録できませんでした。");
    if (outcome.files.fault != FileFault::None) return WordsOf(outcome.files.fault);
    if (outcome.files.leftOut == 0) return {};
    return QStringLiteral("リンクなど%1件はコピーされません。").arg(outcome.files.leftOut);
}

bool AttachmentStore::AttachmentExists(const QString& information, const QString& identity) {
    std::unique_ptr<store::Recordset> row;
    return data_.OpenMainRecordset(row, "SELECT SEQNo FROM M付属書類" + OwnerCondition(information, identity));
}

std::vector<Attachment> AttachmentStore::Attachments(const QString& information, const QString& identity) {
    std::vector<Attachment> found;
    std::unique_ptr<store::Recordset> row;
    data_.OpenMainRecordset(row,
                            "SELECT  * FROM M付属書類" + OwnerCondition(information, identity) + " ORDER BY SEQNo");
    for (; !row->Eof(); row->MoveNext())
        found.push_back(TakeAttachment(*row));
    return found;
}

std::optional<Attachment> AttachmentStore::Find(const QString& information, const QString& identity,
                                                const QString& sequence) {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenMainRecordset(row, "SELECT  書類名 FROM M付属書類" + RowCondition(information, identity, sequence)))
        return std::nullopt;
    return Attachment{information, identity, sequence, TextOf(*row, QStringLiteral("書類名")), {}};
}

QString AttachmentStore::NextSequence(const QString& information, const QString& identity) {
    std::unique_ptr<store::Recordset> row;
    int last = 0;
    if (data_.OpenMainRecordset(
            row, "SELECT SEQNo FROM M付属書類" + OwnerCondition(information, identity) + " ORDER BY SEQNo DESC"))
        session::TakeColumn(*row, QStringLiteral("SEQNo"), last);
    return SequenceText(last + 1);
}

QString AttachmentStore::InsertStatement(const Attachment& row, const Columns& columns) const {
    Columns texts = columns;
    texts[QStringLiteral("情報名")] = row.information;
    texts[QStringLiteral("情報識別ID")] = row.identity;
    texts[QStringLiteral("SEQNo")] = row.sequence;
    texts[QStringLiteral("書類名")] = row.documentName;
    texts[QStringLiteral("ユーザID")] = session::UserStamp(context_);
    texts[QStringLiteral("登録日付")] = items::StampText(clock_.Now());
    QStringList names, values;
    for (const Column& column : kColumns) {
        const QString name = QString::fromUtf8(column.name);
        const QString text = texts[name];
        names << name;
        if (name == kAmount)
            values << QString::number(items::Val(text), 'f', 0);
        else
            values << "'" + (column.freeText ? items::EscapeSqlText(text) : text) + "'";
    }
    return "INSERT INTO M付属書類 (" + names.join(u',') + ") VALUES (" + values.join(u',') + ")";
}

Outcome AttachmentStore::AddAttachment(const QString& information, const QString& identity, const QString& source,
                                       const Columns& columns, const platform::CopyProgress& progress) {
    // The row's text loses its trailing blanks, and the copy is looked for by the row.
    QString documentName = source;
    while (documentName.endsWith(u' '))
        documentName.chop(1);
    const Attachment row{information, identity, NextSequence(information, identity), documentName, {}};
    Outcome outcome;
    outcome.stored = data_.ExecuteMain(InsertStatement(row, columns));
    if (!outcome.stored || !HasCopy(row)) return outcome;
    outcome.files = CopyDocument(source, row, progress);
    if (outcome.files.fault == FileFault::Cancelled) DeleteAttachment(information, identity, row.sequence);
    return outcome;
}

bool AttachmentStore::DeleteAttachment(const QString& information, const QString& identity, const QString& sequence) {
    return data_.ExecuteMain("DELETE FROM M付属書類" + RowCondition(information, identity, sequence));
}

bool AttachmentStore::RekeyAttachments(const QString& information, const QString& oldIdentity,
                                       const QString& newIdentity) {
    return data_.ExecuteMain("UPDATE M付属書類 SET 情報識別ID = '" + newIdentity + "'" +
                             OwnerCondition(information, oldIdentity));
}

bool AttachmentStore::RekeyAttachment(const Attachment& attachment, const QString& newIdentity,
                                      const QString& newSequence) {
    return data_.ExecuteMain("UPDATE M付属書類 SET 情報識別ID = '" + newIdentity + "', SEQNo = '" + newSequence + "'" +
                             RowCondition(attachment.information, attachment.identity, attachment.sequence));
}

bool AttachmentStore::CopyRow(const Attachment& attachment, const QString& newIdentity, const QString& newSequence) {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenMainRecordset(row,
                                 "SELECT  * FROM M付属書類" +
                                     RowCondition(attachment.information, attachment.identity, attachment.sequence)))
        return false;
    session::InsertBuilder insert(QStringLiteral("M付属書類"));
    for (const Column& column : kColumns) {
        const QString name = QString::fromUtf8(column.name);
        const QString text = name == QStringLiteral("情報識別ID") ? newIdentity
                             : name == QStringLiteral("SEQNo")    ? newSequence
                                                                  : TextOf(*row, name);
        if (name == kAmount)
            insert.Bare(name, QString::number(items::Val(text), 'f', 0));
        else if (column.freeText)
            insert.Escaped(name, text);
        else
            insert.Quoted(name, text);
    }
    return data_.ExecuteMain(insert.Statement());
}

std::optional<std::vector<Attachment>> AttachmentStore::ReadUntold(const QString& information,
                                                                   const QString& identity) {
    const auto row =
        data_.ReadMainUntold("SELECT  * FROM M付属書類" + OwnerCondition(information, identity) + " ORDER BY SEQNo");
    if (!row) return std::nullopt;
    std::vector<Attachment> found;
    for (; !row->Eof(); row->MoveNext())
        found.push_back(TakeAttachment(*row));
    return found;
}

int AttachmentStore::HighestNumber(const QString& information, const QString& identity) {
    int highest = 0;
    for (const Attachment& attachment : ReadUntold(information, identity).value_or(std::vector<Attachment>()))
        highest = std::max(highest, attachment.sequence.toInt());
    const QString before = information + "_" + identity + "_";
    for (QDirIterator entries(DocumentFolder(), QDir::AllEntries | QDir::Hidden | QDir::System); entries.hasNext();) {
        entries.next();
        if (entries.fileName().startsWith(before))
            highest = std::max(highest, entries.fileName().mid(before.size()).section(u'_', 0, 0).toInt());
    }
    return highest;
}

CopyOutcome AttachmentStore::CopyDocument(const QString& from, const Attachment& to,
                                          const platform::CopyProgress& progress) const {
    const QString target = AttachmentFileName(to);
    if (target.isEmpty()) return {FileFault::NoFolder};
    if (CopyName(to).contains(u'/')) return {FileFault::NameRefused};
    return platform::CopyWhole(from, target, progress);
}

QString AttachmentStore::DocumentFolder() const {
    QString folder = context_.Company.ドキュメントフォルダ.trimmed();
    while (folder.size() > 1 && IsSeparator(folder.back()))
        folder.chop(1);
    if (folder.isEmpty() || IsAbsolute(folder)) return platform::NativePath(folder);
    return platform::NativePath(context_.InstallRoot + "/" + folder);
}

QString AttachmentStore::AttachmentFileName(const Attachment& attachment) const {
    const QString folder = DocumentFolder();
    return folder.isEmpty() ? QString() : folder + QDir::separator() + CopyName(attachment);
}

RowInfo AttachmentStore::AttachmentRowInfo(const Attachment& attachment) const {
    const FileLook look = platform::LookAt(AttachmentFileName(attachment));
    RowInfo info;
    if (look.kind == FileLook::Kind::File) {
        info.size = items::FileSizeText(look.bytes);
        info.name = look.name;
    } else if (look.kind == FileLook::Kind::Folder) {
        info.size = QStringLiteral("フォルダ");
        // The suite's programs show a folder so; its title stands in the row.
        info.name = QStringLiteral("0");
    }
    if (!info.size.isEmpty()) info.date = look.modified.toString(QStringLiteral("yyyy/MM/dd"));
    if (info.name.isEmpty()) info.name = attachment.title;
    return info;
}

}  // namespace attachments
