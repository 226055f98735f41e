#include "diary/attachment_page.h"

#include "attachments/copy_dialog.h"
#include "diary/slot_papers.h"
#include "hostsetup/documents.h"
#include "hostsetup/runnable_documents.h"
#include "platform/machine.h"

namespace diary {

using attachments::Attachment;
using attachments::CopyDialog;
using attachments::Outcome;
using platform::FileFault;
using screen::Button;
using session::kProgramId;

namespace {

const QStringList kFilters{
    QStringLiteral("全てのファイル (*.*)|*.*"),       QStringLiteral("ワード (*.doc)|*.doc"),
    QStringLiteral("EXCELL (*.xls)|*.xls"),           QStringLiteral("テキスト (*.txt)|*.txt"),
    QStringLiteral("一太郎 (*.jws)|*.jws"),           QStringLiteral("JPEG ファイル (*.jpg)|*.jpg"),
    QStringLiteral("GIFファイル (*.gif)|*.gif"),      QStringLiteral("メタファイル (*.wmf)|*.wmf"),
    QStringLiteral("拡張メタファイル (*.emf)|*.emf"), QStringLiteral("Bitmap ファイル (*.bmp)|*.bmp")};
constexpr int kSequenceWidth = 3;
const QString kStoreFirst = QStringLiteral("登録してから付属書類を追加してください。");

/// What the list was filled for: the papers are looked for anew when the key, or what is known of its slot, changed.
QString KeyOnScreen(DiaryContext& diary) {
    QString key;
    for (const char* item : {"営業活動日付年", "営業活動日付月", "営業活動日付日", "開始時刻時", "開始時刻分",
                             "終了時刻時", "終了時刻分", "担当者コード"})
        key += diary.Item(item).Text() + u' ';
    return key + (diary.session.NewSlotMode ? u'N' : u'S');
}

screen::Control& List(DiaryContext& diary) {
    return diary.Item("List付属書類");
}

/// The attachment of the selected row, as far as it is known without its row in the table; nothing without a row. The
/// key is "C", the identity and three digits: behind number 999 it names no attachment any more.
std::optional<Attachment> Selected(DiaryContext& diary) {
    const screen::Control& list = List(diary);
    if (list.ListIndex() < 0) return std::nullopt;
    const QString key = list.Rows()[static_cast<std::size_t>(list.ListIndex())].key;
    return diary.attachments.Find(kProgramId, key.mid(1, key.size() - 1 - kSequenceWidth), key.right(kSequenceWidth))
        .value_or(Attachment());
}

void TellNotFound(DiaryContext& diary) {
    diary.ShowNotice(QStringLiteral("該当情報がありません。"));
}

/// A file's name without its extension, or a folder's name. Empty for a path that ends in no name.
QString TitleOf(const QString& path) {
    const qsizetype place = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    const QString name = path.mid(place + 1);
    const qsizetype point = name.lastIndexOf(u'.');
    const bool folder = platform::LookAt(path).kind == platform::FileLook::Kind::Folder;
    return folder || point <= 0 ? name : name.left(point);
}

QString WithoutClosingSeparator(QString path) {
    while (path.endsWith(u'/') || path.endsWith(u'\\'))
        path.chop(1);
    return path;
}

/// Tells in the notice line what was left undone.
Outcome Add(DiaryContext& diary, const QString& chosen) {
    const auto identity = PaperIdentity(diary);
    if (!identity) {
        diary.ShowNotice(kStoreFirst);
        return {};
    }
    const QString path = WithoutClosingSeparator(chosen);
    const QString title = TitleOf(path);
    if (title.isEmpty()) return {};
    attachments::AttachmentStore::Columns columns{{QStringLiteral("タイトル"), title},
                                                  {QStringLiteral("伝票事業所コード"), diary.session.SiteCode}};
    for (const char* code : {"担当者コード", "部門コード", "セクションコード"})
        columns[QString::fromUtf8(code)] = diary.Item(code).Text();
    diary.ShowNotice(QString());
    Outcome outcome;
    {
        CopyDialog dialog(diary.host, &diary.form);
        outcome = diary.attachments.AddAttachment(kProgramId, *identity, path, columns, dialog.Progress());
    }
    if (diary.host.Ended()) return outcome;
    ShowAttachments(diary);
    diary.ShowNotice(attachments::OutcomeNotice(outcome));
    return outcome;
}

/// The notice line while something is removed; the form takes no input meanwhile, and drops what came in that time.
class RemovalNotice {
  public:
    explicit RemovalNotice(DiaryContext& diary) : diary_(diary) {
        diary_.ShowNotice(QStringLiteral("＊＊削除中です。しばらくお待ちください＊＊"));
        diary_.form.SetEnabled(false);
        diary_.host.ProcessEvents();
    }
    ~RemovalNotice() {
        diary_.host.ProcessEvents();
        diary_.form.SetEnabled(true);
    }
    RemovalNotice(const RemovalNotice&) = delete;
    RemovalNotice& operator=(const RemovalNotice&) = delete;

  private:
    DiaryContext& diary_;
};

/// Gives the words of what couldn't be done; empty when all was.
QString Remove(DiaryContext& diary, const Attachment& attachment) {
    const RemovalNotice notice(diary);
    // The document stays as long as a row tells of it.
    if (!diary.attachments.DeleteAttachment(attachment.information, attachment.identity, attachment.sequence))
        return QStringLiteral("付属書類を削除できませんでした。");
    const FileFault fault = platform::RemoveWhole(diary.attachments.AttachmentFileName(attachment));
    if (fault != FileFault::Missing) return attachments::OutcomeNotice({true, {fault}});
    // A copy that is only out of reach is there again with its folder, where no row tells of it any more.
    const bool away = HasCopy(attachment) &&
                      platform::LookAt(diary.attachments.DocumentFolder()).kind != platform::FileLook::Kind::Folder;
    return away ? attachments::OutcomeNotice({true, {FileFault::NoFolder}}) : QString();
}

}  // namespace

void ShowAttachments(DiaryContext& diary) {
    const FillingScope filling(diary.state);
    const auto identity = PaperIdentity(diary);
    std::vector<Attachment> papers;
    if (identity) papers = diary.attachments.Attachments(kProgramId, *identity);
    std::vector<screen::ListRow> rows;
    for (const Attachment& attachment : papers) {
        const attachments::RowInfo info = diary.attachments.AttachmentRowInfo(attachment);
        rows.push_back({u'C' + attachment.identity + attachment.sequence, {info.name, info.size, info.date}});
    }
    const bool stored = identity.has_value();
    diary.Item("btn_付属書類追加").SetEnabled(stored);
    diary.Item("btn_フォルダ").SetEnabled(stored);
    diary.Item("btn_付属書類削除").SetEnabled(stored && !rows.empty());
    List(diary).SetRows(std::move(rows));
    diary.state.ListedSlot = KeyOnScreen(diary);
}

void FollowSlot(DiaryContext& diary) {
    if (diary.state.ListedSlot != KeyOnScreen(diary)) ShowAttachments(diary);
}

void AddFile(DiaryContext& diary) {
    const auto path =
        diary.host.AskPath({screen::PathDialog::Kind::File, QString(), platform::UserProfileFolder(), kFilters});
    if (path) Add(diary, *path);
}

void AddFolder(DiaryContext& diary) {
    const QString start = platform::UserProfileFolder();
    const auto path =
        diary.host.AskPath({screen::PathDialog::Kind::Folder, QStringLiteral("書類を選択して下さい"), start, {}});
    // Confirming what the dialog came up with counts as no choice: nobody attaches all that he has by accident.
    if (path && WithoutClosingSeparator(*path) != WithoutClosingSeparator(start)) Add(diary, *path);
}

void AddGiven(DiaryContext& diary, const QStringList& paths) {
    if (!PaperIdentity(diary)) {
        diary.ShowNotice(kStoreFirst);
        return;
    }
    QString firstNotice;
    for (const QString& path : paths) {
        const Outcome outcome = Add(diary, path);
        if (diary.host.Ended()) return;
        if (firstNotice.isEmpty()) firstNotice = attachments::OutcomeNotice(outcome);
        if (outcome.files.fault == FileFault::Cancelled) break;
    }
    // The line holds one notice: what went wrong first mustn't vanish behind what went well after it.
    diary.ShowNotice(firstNotice);
}

void RemoveSelected(DiaryContext& diary) {
    if (List(diary).ListIndex() < 0) return;
    const Button answer = diary.host.Ask(
        {screen::kProgramTitle, QStringLiteral("付属書類から削除しますか？"), {Button::Yes, Button::No}, Button::No});
    if (answer != Button::Yes) return;
    const Attachment attachment = Selected(diary).value_or(Attachment());
    if (attachment.sequence.isEmpty())
        TellNotFound(diary);
    else
        diary.ShowNotice(Remove(diary, attachment));
    ShowAttachments(diary);
    // The button goes out with the last paper; the focus must not rest on it.
    if (!diary.Item("btn_付属書類削除").Enabled()) diary.form.SetFocus(List(diary));
}

void OpenSelected(DiaryContext& diary) {
    const auto attachment = Selected(diary);
    if (!attachment) return;
    if (attachment->sequence.isEmpty()) return TellNotFound(diary);
    const QString path = diary.attachments.AttachmentFileName(*attachment);
    diary.ShowNotice(QString());
    if (hostsetup::DesktopRuns(path))
        diary.result.TellOutcome(QStringLiteral("実行形式のため開きません。保存場所: ") + path);
    else if (!hostsetup::OpenDocument(diary.opener, path))
        diary.ShowNotice(QStringLiteral("書類を開けませんでした。"));
}

}  // namespace diary
