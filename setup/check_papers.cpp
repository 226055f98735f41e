#include "setup/check_papers.h"

#include <QDateTime>
#include <QDirIterator>
#include <QSet>

#include "attachments/attachment_store.h"
#include "platform/clock.h"
#include "session/schema.h"
#include "setup/table_rows.h"
#include "setup/tree_files.h"

namespace setup {

namespace {

constexpr qsizetype kShown = 3;

/// How many, and the names of the first few.
QString Told(const QString& what, QStringList names) {
    names.sort();
    const bool all = names.size() <= kShown;
    return what.arg(names.size()) + ": " + names.mid(0, kShown).join(", ") + (all ? "." : ", ...");
}

/// True also when the store can't tell: that is noted elsewhere.
bool SlotStands(store::Connection& main, const QString& identity) {
    store::Fault unused;
    QString staff = identity.mid(16);
    const auto row = main.Query("SELECT TOP 1 終了時刻 FROM T営業活動明細 WHERE 担当者コード = '" +
                                    staff.replace(u'\'', "''") + "' AND 日付 = '" + identity.mid(0, 8) +
                                    "' AND 開始時刻 = '" + identity.mid(8, 2) + ":" + identity.mid(10, 2) +
                                    "' AND 終了時刻 = '" + identity.mid(12, 2) + ":" + identity.mid(14, 2) + "'",
                                unused);
    return !row || !row->Eof();
}

}  // namespace

QStringList StrandedPapers(const Tree& tree, store::Connection& main) {
    const session::Table& table = *session::FindTable("M付属書類");
    TableReader reader(main, table, table.ColumnNames());
    QSet<QString> named;
    QStringList withoutSlot;
    QString identity;
    bool stands = true;
    for (auto rows = reader.Next(); !rows.empty(); rows = reader.Next()) {
        for (store::Recordset row(table.ColumnNames(), std::move(rows)); !row.Eof(); row.MoveNext()) {
            const auto text = [&row](const QString& column) { return row.Value(column).value_or(""); };
            if (text("情報名") != session::kProgramId) continue;
            const QString copy = attachments::CopyName(
                {session::kProgramId, text("情報識別ID"), text("SEQNo"), text("書類名"), text("タイトル")});
            named.insert(copy);
            // The rows come in the order of their slots.
            if (text("情報識別ID") != identity) stands = SlotStands(main, text("情報識別ID"));
            identity = text("情報識別ID");
            if (!stands) withoutSlot << copy;
        }
    }
    if (!reader.Problem().isEmpty()) return {};
    QStringList stranded, withoutRow;
    const QDateTime yesterday = platform::SystemClock().Now().addDays(-1);
    const QString folder = DocumentFolderOf(tree, main);
    for (QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
         !folder.isEmpty() && entries.hasNext();) {
        entries.next();
        const QString name = entries.fileName();
        // What a client copies just now bears such a name too.
        const bool brokenOff = name.startsWith(".katsudo-") && entries.fileInfo().lastModified() < yesterday;
        if (brokenOff || (name.startsWith(session::kProgramId + "_") && !named.contains(name))) withoutRow << name;
    }
    if (!withoutSlot.isEmpty()) stranded << Told("%1 rows of M付属書類 have a slot that is gone", withoutSlot);
    if (!withoutRow.isEmpty()) stranded << Told("%1 copies in the document folder have no row", withoutRow);
    return stranded;
}

}  // namespace setup
