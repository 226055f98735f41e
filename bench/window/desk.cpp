#include "bench/window/desk.h"

#include <QTemporaryDir>
#include <algorithm>

#include "desktop/window_host.h"
#include "diary/painting.h"
#include "items/display_forms.h"
#include "screen/user_input.h"
#include "screen/user_keys.h"
#include "session/run/modules.h"
#include "session/schema.h"
#include "setup/tree.h"

namespace bench {

const QString Desk::kViewer = QStringLiteral("BENCH");

/// The modules of the client that the main screen stands on.
struct Desk::Furniture {
    explicit Furniture(const QDateTime& now) : clock(now) {}

    desktop::WindowHost host{QString()};
    platform::FixedClock clock;
    platform::ProcessStarter starter;
    platform::RecordingOpener opener;
    QTemporaryDir state;
    session::Outside outside{host, clock, starter, opener, {}, QString(), state.path(), QString()};
    session::Modules modules{outside, [] {}};
    RecordingConnection* connection = nullptr;
    QString problem;
};

std::vector<TypedNumbers> NumbersToType(store::Connection& store, int count) {
    std::vector<TypedNumbers> all;
    for (const QString& kind : session::DocumentKinds()) {
        store::Fault fault;
        const auto first = store.Query(QString("SELECT T%1.* FROM T%1 INNER JOIN T営業活動明細 ON T営業活動明細.%1No = "
                                               "T%1.%1No AND T営業活動明細.%1事業所コード = T%1.事業所コード AND "
                                               "T営業活動明細.%1番号基準日付 = T%1.番号基準日付 WHERE T%1.%1No > '%2'")
                                           .arg(kind, "00000100"),
                                       fault, 1);
        if (!first || first->Eof()) continue;
        const auto value = [&first](const QString& column) { return first->Value(column).value_or(QString()); };
        TypedNumbers numbers{kind, value("事業所コード"), QDate::fromString(value(kind + "日付"), "yyyyMMdd"), {}};
        const auto rows = store.Query(
            QString("SELECT DISTINCT %1No FROM T営業活動明細 WHERE %1事業所コード = '%2' AND %1番号基準日付 "
                    "= '%3' AND %1No > '00000100' ORDER BY %1No")
                .arg(kind, numbers.site, value("番号基準日付")),
            fault, count);
        for (; rows && !rows->Eof(); rows->MoveNext())
            numbers.numbers << rows->Value(kind + "No").value_or(QString());
        all.push_back(numbers);
    }
    return all;
}

Desk::Desk(const QString& root, const QDateTime& now) : furniture_(std::make_unique<Furniture>(now)) {
    Furniture& desk = *furniture_;
    setup::OpenTree opened = setup::OpenStores({root});
    if (!opened.main) {
        desk.problem = opened.problem;
        return;
    }
    auto recording = std::make_unique<RecordingConnection>(std::move(opened.main));
    desk.connection = recording.get();
    session::SessionContext& session = desk.modules.context;
    session.MainConnection = std::move(recording);
    session.MainConnectionOpen = true;
    session.DbKind = opened.dbKind;
    session.SiteCode = session.OperatingSiteCode = QStringLiteral("000");
    session.RunningStaffCode = session.RunningStaffName = kViewer;
    session.NewSlotMode = true;
    // A series that is missing would be told to a user, and there is none.
    if (!desk.modules.company.LoadCompanyInformation() ||
        desk.modules.series.ResolveNumberDate(QStringLiteral("01110"), items::DateText(now)).isEmpty()) {
        desk.problem = QStringLiteral("The store has no company or no number series.");
        return;
    }
    desk.host.Show(desk.modules.diary.form);
    desk.modules.screen.FocusAfterShow();
    desk.host.ProcessEvents();
}

Desk::~Desk() = default;

QString Desk::Problem() const {
    return furniture_->problem;
}

RecordingConnection* Desk::Connection() {
    return furniture_->connection;
}

void Desk::BeginSlot(const TypedNumbers& numbers) {
    Furniture& desk = *furniture_;
    session::SessionContext& key = desk.modules.context;
    key.SiteCode = numbers.site;
    desk.modules.diary.slot = diary::ActivitySlot();
    desk.modules.diary.slot.部門コード = desk.modules.diary.slot.セクションコード = QStringLiteral("001");
    key.SlotDate = items::DateText(numbers.day.startOfDay());
    key.SlotYear = key.SlotDate.left(4);
    key.SlotMonth = key.SlotDate.mid(4, 2);
    key.SlotDay = key.SlotDate.right(2);
    key.StartHour = QStringLiteral("07");
    key.EndHour = QStringLiteral("08");
    key.StartMinute = key.EndMinute = QStringLiteral("05");
    key.StartTime = QStringLiteral("07:05");
    key.EndTime = QStringLiteral("08:05");
    key.StaffCode = QStringLiteral("00001");
    diary::PaintScreen(desk.modules.diary);
}

void Desk::Type(const QString& kind, const QString& number) {
    screen::Control& item = furniture_->modules.diary.Item(kind + "No");
    screen::UserFocus(item);
    screen::UserType(item, number);
    furniture_->host.ProcessEvents();
}

void Desk::Leave() {
    screen::UserKey(furniture_->modules.diary.form, screen::Key::Tab);
    furniture_->host.ProcessEvents();
}

bool Desk::Holds(const QString& kind, const QString& number) const {
    const screen::Control& item = furniture_->modules.diary.Item(kind + "No");
    const auto& kinds = session::DocumentKinds();
    const auto place = std::find(kinds.begin(), kinds.end(), kind) - kinds.begin();
    return item.Text() == number && furniture_->modules.diary.slot.documents[std::size_t(place)].No == number;
}

}  // namespace bench
