#pragma once

#include <QString>
#include <array>
#include <memory>

#include "items/text_rules.h"
#include "store/connection.h"

namespace session {

/// The company record, from `Mユーザ` and, where a site runs the program, overridden by its row of `M事業所`.
struct CompanyInformation {
    QString 名称;
    QString ドキュメントフォルダ;
    int 決算月 = 0;
    int 決算日 = 0;
    int 伝票番号管理区分 = 0;  ///< 0 numbers for the whole company, else by site
    int 更新実行区分 = 0;
    QString 総合振込ファイル, 基本読込フォルダ, 帳票イメージフォルダ, その他読込ファイル, 本支店連携フォルダ,
        テキスト出力フォルダ, BACKUPフォルダ;
};

/// What a backup of the suite goes by; this program only holds it for the suite's maintenance programs.
struct BackupSettings {
    QString date, conditionSwitchDate;  ///< first 8 characters
    int method = 0;
    int daySpec = 0;
    std::array<int, 7> weekdays{};  ///< Monday first
    QString startTime, folder;
};

/// The staff member who runs the program, with the rights of `M担当者`.
struct RunningStaff {
    QString RunningStaffCode, RunningStaffName, RunningStaffSite, RunningStaffDepartment, RunningStaffSection,
        RunningStaffPost;
    int RunningStaffEmploymentClass = 0;
    QString RunningLoginId;
    int RunningStaffAccessLevel = 0;
    /// `処理分類0操作許可` to `処理分類9操作許可`; a permit grants when it reads as 0.
    std::array<QString, 10> ClassPermit;
    /// Operate, enter, change, delete, print, preview, text output, image output.
    std::array<QString, 8> OperationPermits;
};

/// Who is running, where, on which slot key, with which connections: the one process-wide record. All texts start
/// empty; dates are "yyyymmdd", times "hh:nn", codes zero-padded.
struct SessionContext : RunningStaff {
    // Machine and login.
    QString LoginUserId;
    QString ComputerId;
    QString UserId;  ///< copy of LoginUserId

    // Display, in pixels.
    int ScreenWidth = 0;
    int ScreenHeight = 0;

    // Site, 3 characters; "000" is the head office.
    QString OperatingSiteCode;
    QString SiteCode;

    // Slot key on the screen.
    QString SlotDate;
    QString SlotYear, SlotMonth, SlotDay;  ///< 4, 2, 2
    QString StartTime, EndTime;
    QString StartHour, StartMinute, EndHour, EndMinute;  ///< 2 each; an end hour may be above 23
    QString StaffCode;                                   ///< 5

    // Modes.
    bool SlotKeyGiven = false;
    bool NewSlotMode = false;
    bool LinkWaitActive = false;

    // Link with other programs.
    QString CallerProgramId;
    QString StartLinkKey;
    QString EndLinkInfo;

    /// Rows of run history written by this process.
    double RunCounter = 0;

    // Folders and file kinds; a kind is 1 for .accdb, 2 for .mdb, 0 for absent.
    QString InstallRoot;
    QString ProgramFolder, ConfFolder, ReportFolder, ManualFolder;
    QString DataFilePath;
    int DataFileKind = 0;
    int ConfigFileKind = 0;
    int ReportFileKind = 0;
    QString UserConfFolder, UserReportFolder;
    int InstallKind = 0;  ///< 0 shared folders, 1 a folder per user
    int ClientUpdateRun = 0;

    // Definition of the main database.
    QString DbKind;  ///< "A", "S" or "O"
    QString DbMiddleware;
    QString ProviderName, DatabaseName, DriverName, ServerName, ConnectionString, DbUserId, DbPassword, DataSourceName;
    QString AccessDataSource;
    BackupSettings Backup;

    // Connections. MainConnectionOpen may be true with no connection behind it: every main read then fails.
    std::unique_ptr<store::Connection> ConfigConnection;
    std::unique_ptr<store::Connection> MainConnection;
    bool ConfigConnectionOpen = false;
    bool MainConnectionOpen = false;

    // PINs.
    int PinRequired = 0;  ///< 1 when the company uses PINs
    bool PinConfirmed = false;

    // Company and site.
    CompanyInformation Company;
    QString OperatingSiteName;
    /// The site's privilege PIN as stored; it is opened only to be compared.
    QString SitePrivilegePin;
    int SiteCount = 0;  ///< sites other than "000"
};

/// The program's own name wherever it writes or compares one, and the menu that it belongs to.
inline const QString kProgramId = QStringLiteral("活動手帳");
inline const QString kMenu = QStringLiteral("営業支援");

/// The stamp of `ユーザID` in the main database, ready to stand between single quotes in SQL: user, running staff
/// member and computer, joined.
inline QString UserStamp(const SessionContext& context) {
    return items::EscapeSqlText(context.UserId + context.RunningStaffCode + context.ComputerId);
}

}  // namespace session
