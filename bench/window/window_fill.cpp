#include "bench/window/window_fill.h"

#include <QFile>

#include "bench/no_log.h"
#include "desktop/window_host.h"
#include "lists/list_window.h"
#include "screen/user_input.h"

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
    const ListCase* shown = nullptr;

    void HideShown();
    void Prepare(const ListCase& search);
    void Enter(lists::ListWindow& window, const ListCase& search);
};

WindowFill::WindowFill(const QString& root, const QDateTime& now) : stage_(std::make_unique<Stage>(now)) {
    Stage& stage = *stage_;
    store::Fault fault;
    auto opened = store::OpenConnection(QStringLiteral("Provider=SQLite;Data Source=data/gnrdb.accdb;"), root, fault);
    if (!opened) return;
    auto recording = std::make_unique<RecordingConnection>(std::move(opened));
    stage.connection = recording.get();
    stage.session.MainConnection = std::move(recording);
    stage.session.DbKind = QStringLiteral("A");
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
        entry.SetText(search.values.items.value(item.name));
        if (entry.onLostFocus) entry.onLostFocus();
    }
    for (const lists::Classification& item : search.list->classifications)
        form.At(item.item).SetValue(search.values.classIndex.value(item.item));
    if (search.period >= 0) screen::UserClick(form.At(QStringLiteral("opb_期間"), search.period));
}

void WindowFill::Stage::HideShown() {
    if (shown) host.Hide(windows.Find(shown->list->name)->Form());
    shown = nullptr;
}

void WindowFill::Stage::Prepare(const ListCase& search) {
    if (shown == &search) return;
    lists::ListWindow* window = windows.Find(search.list->name);
    if (shown && shown->list != search.list) HideShown();
    if (!window->Form().Loaded()) host.Show(window->Form());
    shown = &search;
    // A cleared window forgets telephone and postcode, which keep what they had when they are emptied.
    window->Form().At(QStringLiteral("btn_画面クリア")).onClick();
    Enter(*window, search);
    // A clear also drops what the caller asked for.
    pick.ListCondition = search.values.condition;
    host.ProcessEvents();
}

int WindowFill::operator()(const ListCase& search) {
    if (!stage_->session.MainConnection) return -1;
    stage_->Prepare(search);
    screen::Form& form = stage_->windows.Find(search.list->name)->Form();
    QString button = search.mode == -1 ? QStringLiteral("btn_否定検索") : QStringLiteral("btn_複合検索");
    for (const lists::SearchItem& item : search.list->items)
        if (item.mode > 0 && item.mode == search.mode) button = item.button;
    form.At(button).onClick();
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

std::vector<Recorded> WindowFill::StatementsOf(const Opening& opening) {
    if (!stage_->connection) return {};
    Close(opening);
    stage_->connection->recorded.clear();
    stage_->connection->recording = true;
    Open(opening);
    stage_->connection->recording = false;
    Close(opening);
    return stage_->connection->recorded;
}

double ResidentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

}  // namespace bench
