#include "session/run/session_frame.h"

#include <utility>

#include "items/display_forms.h"

namespace session {

bool SessionFrame::OpenSession() {
    const QSize display = outside_.host.DisplaySize();
    context_.ScreenWidth = display.width();
    context_.ScreenHeight = display.height();
    context_.RunCounter = 0;
    if (!environment_.SYB_OPEN(outside_.programFolder)) return false;
    // The start row bears the identity that the store holds now; it may be another program's doing.
    staff_.ReadRunningStaffCode();
    history_.WriteStartHistory(Tail());
    links_.ReceiveStartLink(Tail(), items::StampText(outside_.clock.Now().addSecs(-60)));
    return DB_OPEN();
}

QString SessionFrame::MainConnectionString() {
    const SessionContext& c = context_;
    QString text = "Provider=" + c.ProviderName + ";User ID=" + c.DbUserId + ";Password=" + c.DbPassword + ";";
    if (c.DbKind == QLatin1String("S"))
        return text + "Data Source=" + c.ServerName + ";Initial Catalog=" + c.DatabaseName + ";";
    return text + "Data Source=" + c.DataSourceName + ";";
}

bool SessionFrame::OpenMainConnection() {
    context_.MainConnectionOpen = true;
    static const QStringList kinds{"A", "S", "O"};
    // Another kind counts as open with nothing behind it: every read of the main database then fails.
    if (!kinds.contains(context_.DbKind)) return true;
    if (context_.DbKind == QLatin1String("A")) context_.AccessDataSource = context_.DataSourceName;
    store::Fault fault;
    context_.MainConnection = store::OpenConnection(MainConnectionString(), context_.InstallRoot, fault);
    if (context_.MainConnection) return true;
    context_.MainConnectionOpen = false;
    history_.WriteErrorHistory("DB_OPEN ERROR" + QString::number(fault.number) + " " + fault.description);
    return false;
}

bool SessionFrame::DB_OPEN() {
    if (!OpenMainConnection()) return false;
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenConfigRecordset(row, kEnvironmentRowSql)) {
        outside_.host.Tell(QStringLiteral("動作環境に問題があります。"));
        CloseSession();
        outside_.host.EndProgram();
        return false;
    }
    if (staff_.ReadRunningStaffCode()) staff_.LoadRunningStaff(context_.RunningStaffCode);
    return true;
}

void SessionFrame::CloseSession() {
    if (std::exchange(closed_, true)) return;
    const bool owed = !context_.StartLinkKey.isEmpty() && !links_.SendEndLink(context_.EndLinkInfo);
    history_.WriteEndHistory();
    // The caller waits for as long as it takes: an answer that met a locked store gets another chance.
    if (owed) links_.SendEndLink(context_.EndLinkInfo);
    if (context_.ConfigConnection) context_.ConfigConnection->Close();
    if (context_.MainConnection) context_.MainConnection->Close();
    context_.ConfigConnection.reset();
    context_.MainConnection.reset();
}

}  // namespace session
