#include "session/environment.h"

#include <QDir>

#include "platform/files.h"

namespace session {

using platform::FileExists;

namespace {

const QString kAccdbProvider = QStringLiteral("Provider=Microsoft.ACE.OLEDB.12.0;");
const QString kJetProvider = QStringLiteral("Provider=Microsoft.Jet.OLEDB.4.0;");

/// Which of the two file forms is there: 1 ".accdb", which always wins, 2 ".mdb", 0 neither.
int ProbeFileKind(const QString& pathWithoutExtension) {
    if (FileExists(pathWithoutExtension + ".accdb")) return 1;
    return FileExists(pathWithoutExtension + ".mdb") ? 2 : 0;
}

QString StoreExtension(int fileKind) {
    return fileKind == 1 ? QStringLiteral(".accdb") : QStringLiteral(".mdb");
}

QString Separator() {
    return QString(QDir::separator());
}

QString FileConnectionString(int fileKind, const QString& dataSource) {
    return (fileKind == 1 ? kAccdbProvider : kJetProvider) + "User ID=;Password=;Data Source=" + dataSource;
}

QString Trimmed(const store::Recordset& row, const QString& column) {
    return row.Value(column).value_or(QString()).trimmed();
}

}  // namespace

bool Environment::SYB_OPEN(const QString& programFolder) {
    context_.LoginUserId = names_.login;
    context_.ComputerId = names_.computer;
    context_.UserId = context_.LoginUserId;
    context_.ConfigConnectionOpen = false;
    if (!FindFolders(programFolder) || context_.ConfigFileKind == 0) return false;

    store::Fault fault;
    const QString shared = context_.ConfFolder + Separator() + "usrcnfg" + StoreExtension(context_.ConfigFileKind);
    if (!OpenStore(FileConnectionString(context_.ConfigFileKind, shared), fault)) {
        host_.Tell("SYB_OPEN ERROR" + QString::number(fault.number) + " " + fault.description + "\rsysopen error");
        return false;
    }
    LoadDatabaseDefinition();
    LoadOperatingEnvironment();
    context_.ConfigConnection->Close();
    context_.ConfigConnection.reset();

    ChooseUserFolders();
    if (!OpenStore(UserStoreConnectionString(), fault)) return false;
    if (const auto row = LoadOperatingEnvironment()) LoadBackupSettings(*row);
    context_.SiteCode = context_.OperatingSiteCode;
    return true;
}

bool Environment::FindFolders(const QString& programFolder) {
    const QString folder = platform::NativePath(programFolder);
    qsizetype place = folder.indexOf(QLatin1String("prgbin"), 0, Qt::CaseInsensitive);
    if (place < 0) place = folder.indexOf(QLatin1String("prgsrc"), 0, Qt::CaseInsensitive);
    if (place < 0) return false;
    prefix_ = folder.left(place);
    context_.InstallRoot = prefix_.left(prefix_.size() - 1);
    context_.ProgramFolder = prefix_ + "prgbin";
    context_.ConfFolder = prefix_ + "conf";
    context_.ReportFolder = prefix_ + "report";
    context_.ManualFolder = prefix_ + "manual";

    const QString dataFile = prefix_ + "data" + Separator() + "gnrdb";
    context_.DataFileKind = ProbeFileKind(dataFile);
    context_.DataFilePath = context_.DataFileKind == 0 ? QString() : dataFile + StoreExtension(context_.DataFileKind);
    context_.ConfigFileKind = ProbeFileKind(context_.ConfFolder + Separator() + "usrcnfg");
    context_.ReportFileKind = ProbeFileKind(context_.ReportFolder + Separator() + "repdb");
    return true;
}

bool Environment::OpenStore(const QString& connectionString, store::Fault& fault, int patience) {
    context_.ConfigConnection = store::OpenConnection(connectionString, context_.InstallRoot, fault, patience);
    context_.ConfigConnectionOpen = context_.ConfigConnection != nullptr;
    return context_.ConfigConnectionOpen;
}

QString Environment::UserStoreConnectionString() const {
    const QString file = Separator() + "usrcnfg" + StoreExtension(context_.ConfigFileKind) + ";";
    return FileConnectionString(context_.ConfigFileKind, context_.UserConfFolder + file);
}

void Environment::LoadDatabaseDefinition() {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenConfigRecordset(row, QStringLiteral("SELECT * FROM データベース定義 WHERE 情報種類 = 'GNR'")))
        return;
    TakeColumn(*row, QStringLiteral("db"), context_.DbKind);
    TakeColumn(*row, QStringLiteral("dbmw"), context_.DbMiddleware);
    context_.DriverName = Trimmed(*row, QStringLiteral("ドライバ名"));
    context_.DatabaseName = Trimmed(*row, QStringLiteral("データベース名"));
    context_.ServerName = Trimmed(*row, QStringLiteral("サーバー名"));
    context_.ConnectionString = Trimmed(*row, QStringLiteral("接続文字列"));
    context_.DbUserId = Trimmed(*row, QStringLiteral("ユーザーID"));
    context_.DbPassword = Trimmed(*row, QStringLiteral("パスワード"));
    context_.ProviderName = Trimmed(*row, QStringLiteral("プロバイダ名"));
    context_.DataSourceName = Trimmed(*row, QStringLiteral("データソース名"));
}

std::unique_ptr<store::Recordset> Environment::LoadOperatingEnvironment() {
    std::unique_ptr<store::Recordset> row;
    if (!data_.OpenConfigRecordset(row, kEnvironmentRowSql)) return nullptr;
    context_.OperatingSiteCode = row->Value(QStringLiteral("運用事業所コード")).value_or(QStringLiteral("000"));
    context_.InstallKind = NumberColumn(*row, QStringLiteral("インストール区分")).value_or(0);
    context_.ClientUpdateRun = NumberColumn(*row, QStringLiteral("CL更新実行区分")).value_or(0);
    return row;
}

void Environment::LoadBackupSettings(const store::Recordset& row) {
    const auto text = [&row](const char* column) { return row.Value(column).value_or(QString()); };
    const auto number = [&row](const char* column) { return NumberColumn(row, column).value_or(0); };
    BackupSettings& backup = context_.Backup;
    backup.date = text("バックアップ日付").left(8);
    backup.conditionSwitchDate = text("運用条件切替日付").left(8);
    backup.method = number("バックアップ方法");
    backup.daySpec = number("バックアップ日指定");
    static const char* const weekdays[] = {"月曜バックアップ", "火曜バックアップ", "水曜バックアップ",
                                           "木曜バックアップ", "金曜バックアップ", "土曜バックアップ",
                                           "日曜バックアップ"};
    for (std::size_t day = 0; day < backup.weekdays.size(); ++day)
        backup.weekdays[day] = number(weekdays[day]);
    backup.startTime = text("バックアップ開始時刻");
    backup.folder = text("バックアップフォルダ");
}

void Environment::ChooseUserFolders() {
    context_.UserConfFolder.clear();
    context_.UserReportFolder.clear();
    if (context_.InstallKind == 0) {
        context_.UserConfFolder = prefix_ + "conf";
        context_.UserReportFolder = prefix_ + "report";
    } else if (context_.InstallKind == 1) {
        const QString own = prefix_ + "users" + Separator() + context_.LoginUserId + Separator();
        context_.UserConfFolder = own + "conf";
        context_.UserReportFolder = own + "report";
        PrepareUserFolders();
    }
}

bool Environment::DB_CLOSEOPEN(int patience) {
    if (context_.ConfigConnectionOpen) {
        context_.ConfigConnection->Close();
        context_.ConfigConnection.reset();
        context_.ConfigConnectionOpen = false;
    }
    store::Fault untold;
    return OpenStore(UserStoreConnectionString(), untold, patience);
}

bool Environment::ConfigStoreMayHaveChanged() {
    // Two changes may share a mark, and a look between them sees the first only.
    constexpr int kMostUnchangedLooks = 10;
    const QString mark = store::ChangeMark(UserStoreConnectionString(), context_.InstallRoot);
    if (!mark.isEmpty() && mark == changeMark_ && ++unchangedLooks_ < kMostUnchangedLooks) return false;
    changeMark_ = mark;
    unchangedLooks_ = 0;
    return true;
}

}  // namespace session
