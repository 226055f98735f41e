#include "bench/window/window_fill.h"

#include <QFile>

#include "desktop/window_host.h"
#include "lists/list_window.h"

namespace bench {

namespace {

/// Nobody reads the history of a measurement.
class NoLog : public session::StatementLog {
  public:
    void WriteOutputHistory(const QString&) override {}
    void WriteErrorHistory(const QString&) override {}
};

}  // namespace

/// What a list window stands on: a session with the tree's main store, a main screen with the items that ask.
struct WindowFill::Stage {
    session::SessionContext session;
    NoLog log;
    session::DataAccess data{session, log};
    desktop::WindowHost host{QString()};
    lists::PickState pick;
    screen::Form mainForm{QStringLiteral("frm")};
    platform::SystemClock clock;
    lists::ListWindows windows{{session, data, host, pick, mainForm, clock}};
    const ListCase* shown = nullptr;

    void Prepare(const ListCase& search);
    void Enter(lists::ListWindow& window, const ListCase& search);
};

WindowFill::WindowFill(const QString& root) : stage_(std::make_unique<Stage>()) {
    Stage& stage = *stage_;
    store::Fault fault;
    stage.session.MainConnection =
        store::OpenConnection(QStringLiteral("Provider=SQLite;Data Source=data/gnrdb.accdb;"), root, fault);
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
}

void WindowFill::Stage::Prepare(const ListCase& search) {
    if (shown == &search) return;
    lists::ListWindow* window = windows.Find(search.list->name);
    if (shown && shown->list != search.list) host.Hide(windows.Find(shown->list->name)->Form());
    if (!window->Form().Loaded()) host.Show(window->Form());
    shown = &search;
    // A cleared window forgets telephone and postcode, which keep what they had when they are emptied.
    window->Form().At(QStringLiteral("btn_画面クリア")).onClick();
    Enter(*window, search);
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

double ResidentMegabytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    return 0;
}

}  // namespace bench
