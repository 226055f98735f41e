#include "bench/window/window_fill.h"

#include <QFile>

#include "bench/no_log.h"
#include "desktop/window_host.h"
#include "lists/list_window.h"
#include "screen/user_input.h"
#include "setup/tree.h"

namespace bench {

/// What a list window stands on: a session with the tree's main store, a main screen with the items that ask.
struct WindowFill::Stage {
    explicit Stage(const QDateTime& now) : clock(now) {}

    session::SessionContext session;
    NoLog log;
    session::DataAccess data{session, log};
    desktop::WindowHost host{QString()};
    lists::PickState pick;
    screen::Form mainForm{QStringLiteral("frm")};
    platform::FixedClock clock;
    lists::ListWindows windows{{session, data, host, pick, mainForm, clock}};
    RecordingConnection* connection = nullptr;
    std::optional<ListCase> shown;

    void HideShown();
    void Prepare(const ListCase& search);
    void Enter(lists::ListWindow& window, const ListCase& search);
};

WindowFill::WindowFill(const QString& root, const QDateTime& now) : stage_(std::make_unique<Stage>(now)) {
    Stage& stage = *stage_;
    setup::OpenTree opened = setup::OpenStores({root});
    if (!opened.main) return;
    auto recording = std::make_unique<RecordingConnection>(std::move(opened.main));
    stage.connection = recording.get();
    stage.session.MainConnection = std::move(recording);
    stage.session.DbKind = opened.dbKind;
    stage.session.SiteCode = stage.session.OperatingSiteCode = QStringLiteral("000");
    stage.pick.ReturnFocusControl =
        &stage.mainForm.Add(screen::ControlKind::EntryField, QStringLiteral("相手先コード"));
    stage.pick.PendingFocusControl = stage.pick.ReturnFocusControl;
}

WindowFill::~WindowFill() = default;

void WindowFill::Stage::Enter(lists::ListWindow& window, const ListCase& search) {
    screen::Form& form = window.Form();
    for (const lists::SearchItem& item : search.list->items) {
        screen::Control& entry = form.At(item.name);
        entry.SetText(search.items.value(item.name));
        if (entry.onLostFocus) entry.onLostFocus();
    }
    for (const lists::Classification& item : search.list->classifications)
        if (search.classIndex.contains(item.item)) form.At(item.item).SetValue(search.classIndex.value(item.item));
    if (search.period >= 0) screen::UserClick(form.At(QStringLiteral("opb_期間"), search.period));
}

void WindowFill::Stage::HideShown() {
    if (shown) host.Hide(windows.Find(shown->list->name)->Form());
    shown.reset();
}

void WindowFill::Stage::Prepare(const ListCase& search) {
    if (shown && shown->list == search.list && shown->what == search.what) return;
    lists::ListWindow* window = windows.Find(search.list->name);
    if (shown && shown->list != search.list) HideShown();
    if (!window->Form().Loaded()) host.Show(window->Form());
    shown = search;
    // A cleared window forgets telephone and postcode, which keep what they had when they are emptied.
    if (search.list->canClear) window->Form().At(QStringLiteral("btn_画面クリア")).onClick();
    Enter(*window, search);
    // A clear also drops what the caller asked for.
    pick.ListCondition = search.condition;
    host.ProcessEvents();
}

namespace {

QString ButtonOf(const ListCase& search) {
    for (const lists::SearchItem& item : search.list->items)
        if (item.mode > 0 && item.mode == search.mode) return item.button;
    if (search.mode < 0) return QStringLiteral("btn_否定検索");
    // Where there is nothing to search by, clearing fills the list anew.
    return search.list->searchCaption.isEmpty() ? QStringLiteral("btn_画面クリア") : QStringLiteral("btn_複合検索");
}

}  // namespace

int WindowFill::operator()(const ListCase& search) {
    if (!stage_->session.MainConnection) return -1;
    stage_->Prepare(search);
    screen::Form& form = stage_->windows.Find(search.list->name)->Form();
    form.At(ButtonOf(search)).onClick();
    stage_->host.ProcessEvents();
    return static_cast<int>(form.At(search.list->list).Rows().size());
}

int WindowFill::Open(const Opening& opening) {
    if (!stage_->session.MainConnection) return -1;
    stage_->session.SiteCode = opening.site;
    stage_->pick.ListCondition = opening.condition;
    screen::Form& form = stage_->windows.Find(opening.list->name)->Form();
    stage_->host.Show(form);
    stage_->host.ProcessEvents();
    return static_cast<int>(form.At(opening.list->list).Rows().size());
}

void WindowFill::Close(const Opening& opening) {
    stage_->HideShown();
    screen::Form& form = stage_->windows.Find(opening.list->name)->Form();
    if (form.Loaded()) form.At(QStringLiteral("btn_戻る")).onClick();
    stage_->host.ProcessEvents();
    stage_->session.SiteCode = stage_->session.OperatingSiteCode;
}

std::vector<Recorded> WindowFill::StatementsOf(const ListCase& search) {
    if (!stage_->connection) return {};
    // What leads to the search isn't part of it, nor what a connection asks of a server before its first one.
    stage_->Prepare(search);
    (*this)(search);
    stage_->connection->Begin();
    (*this)(search);
    stage_->connection->recording = false;
    return stage_->connection->engineGiven;
}

std::vector<Recorded> WindowFill::StatementsOf(const Opening& opening) {
    if (!stage_->connection) return {};
    Close(opening);
    stage_->connection->Begin();
    Open(opening);
    stage_->connection->recording = false;
    Close(opening);
    return stage_->connection->engineGiven;
}

double ResidentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

}  // namespace bench
