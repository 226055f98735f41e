#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>
#include <QString>
#include <array>
#include <functional>

#include "attachments/paper_carrier.h"
#include "diary/activity_slot.h"
#include "identity/company_loader.h"
#include "identity/permissions.h"
#include "lists/list_window.h"
#include "numbers/number_series.h"
#include "numbers/phone_directory.h"
#include "platform/clock.h"
#include "platform/document_opener.h"
#include "platform/kept_files.h"
#include "platform/program_starter.h"
#include "screen/form.h"
#include "screen/result_line.h"
#include "screen/screen_host.h"
#include "session/data_access.h"
#include "suite/sibling_calls.h"
#include "suite/viewing_log.h"

namespace diary {

/// The row that the screen was loaded from: its key, and its stamps as they were then, so that it can be told what a
/// save would replace. Stays while the key on the screen moves on, until another row is loaded or the slot is cleared.
struct LoadedRow {
    QString 担当者コード, 日付, 開始時刻, 終了時刻;  ///< empty when the screen holds no row
    QString 登録日付, 更新日付, ユーザID;
};

/// What the main screen knows beside the slot itself.
struct ScreenState {
    /// True while the program itself writes to items; every handler of the screen returns at once.
    bool ScreenFilling = false;
    /// True once a value of the slot was changed by the user or a pick since the last load, clear or save.
    bool InputHappened = false;
    /// The one-time pass over the option groups is done.
    bool SlotGroupsPrepared = false;
    /// Date of the loaded row; empty when the screen holds none.
    QString LoadedSlotDate;
    LoadedRow Loaded;
    /// Whose contact stands on the slot (PartyKey), as it was looked up or loaded.
    QString ContactOf;
    /// A contact is being picked from its list.
    bool PickingContact = false;
    /// Highest index in use in the three option groups; -1 when the table gave no row.
    int 発信区分Count = -1, 応対方法Count = -1, 要件分類Count = -1;
    /// Message of the last lookup.
    QString NoticeText;
    /// The kind of document whose list was opened last: a key that a number list left is of that kind.
    std::size_t ListedKind = 0;
    /// The key on the screen when the list of attachments was filled.
    QString ListedSlot;
    screen::Control* LastLeftControl = nullptr;
    /// Where the focus returns to after a command.
    screen::Control* FirstEntryControl = nullptr;
    /// Outcome of the last write, for whoever looks into a running client; nothing is shown of it.
    int LastSaveResult = 0;
    QString LastSaveMessage;
    /// The content as it came onto the screen: from a row, empty for a new slot.
    ActivitySlot CameAs;
    /// The texts of the party that the user typed since then, by the names of their items.
    QSet<QString> TypedTexts;
    /// The key under which the content last stood there, as the user saw it; see SettleKey.
    QJsonObject SettledKey;
    /// The rows that a save under way takes the place of; see RowToKeep.
    QJsonArray Replacing;
    /// The entry of 控え that stands on the screen; empty when none does.
    QString PickedKept;
    /// What was last written down of the unsaved content; empty when nothing is.
    QByteArray KeptContent;
    /// Writing it down failed the last time; told once.
    bool KeepingFailed = false;
};

/// What the routines of the main screen share: the session, the slot and the screen's state, the form, and the services
/// of the lower layers. One for the process, made where the client is put together.
struct DiaryContext {
    session::SessionContext& session;
    session::DataAccess& data;
    screen::ScreenHost& host;
    const platform::Clock& clock;
    identity::Permissions& permissions;
    identity::CompanyLoader& company;
    suite::ViewingLog& viewingLog;
    numbers::PhoneDirectory& phones;
    numbers::NumberSeries& series;
    lists::PickState& pick;
    suite::SiblingCalls& siblings;
    platform::ProgramStarter& starter;
    platform::KeptFiles& kept;
    session::StatementLog& log;
    attachments::AttachmentStore& attachments;
    platform::DocumentOpener& opener;
    /// Ends the session and the process, the one way out.
    std::function<void()> closeSession;

    /// Shows the move screen and waits until it is closed; it leaves a slot key in the pick state when it moved or
    /// added one. The screen lies above this layer, so whoever puts the client together gives it in.
    std::function<void()> showMoveScreen = [] {};

    attachments::PaperCarrier papers{attachments, kept};
    screen::Form form{QStringLiteral("frm活動手帳")};
    screen::ResultLine result{form};
    lists::ListWindows lists{{session, data, host, pick, form, clock}};
    ActivitySlot slot{};
    ScreenState state{};

    screen::Control& Item(const char* name, int index = -1) { return form.At(QString::fromUtf8(name), index); }
    screen::Control& Item(const QString& name, int index = -1) { return form.At(name, index); }
    void ShowNotice(const QString& text) { Item("お知らせ").SetCaption(text); }
    /// Handlers return at once while the program fills the screen or waits for another program.
    bool HandlersAsleep() const { return state.ScreenFilling || session.LinkWaitActive; }
};

/// Sets ScreenFilling for the time of a block, and clears it behind it. It doesn't bring back what was before: a paint
/// inside a longer filling ends that one too, and the screen counts on it, since the handlers must be awake when a
/// register that began at the tail of the tab order sends the focus on.
class FillingScope {
  public:
    explicit FillingScope(ScreenState& state) : state_(state) { state_.ScreenFilling = true; }
    ~FillingScope() { state_.ScreenFilling = false; }
    FillingScope(const FillingScope&) = delete;
    FillingScope& operator=(const FillingScope&) = delete;

  private:
    ScreenState& state_;
};

}  // namespace diary
