#pragma once

#include <QString>
#include <functional>

#include "platform/machine.h"
#include "screen/screen_host.h"
#include "session/data_access.h"

namespace session {

/// Finds everything from the folder in which the program runs: the install root, the configuration store and, from it,
/// the definition of the main database.
class Environment {
  public:
    Environment(SessionContext& context, DataAccess& data, StatementLog& log, screen::ScreenHost& host,
                platform::MachineNames names)
        : context_(context), data_(data), log_(log), host_(host), names_(std::move(names)) {}

    /// Finds the folders, opens the configuration store and loads both definition tables. `programFolder` is the folder
    /// of the running program; "prgbin" or "prgsrc" in it marks the install root. False, with ConfigConnectionOpen
    /// false, when there is no such folder, no store, or it can't be opened; only the last is told in a message.
    bool SYB_OPEN(const QString& programFolder);

    /// Closes and opens the configuration store anew, so that rows of other processes are seen; `patience` is how long
    /// its statements wait for another process's lock, in milliseconds. The result is ConfigConnectionOpen.
    bool DB_CLOSEOPEN(int patience = store::kPatience);

    /// Makes the host office suite trust the user's report folder, where there is one; runs when reports were copied
    /// there. An empty one does nothing.
    std::function<bool()> prepareOfficeTrust;

    /// True unless the configuration store is surely as it was at the last call. Now and then it says true all the
    /// same.
    bool ConfigStoreMayHaveChanged();

    /// Makes each missing folder along a path; a fault shows a message and the walk goes on. Returns the path.
    QString EnsureFolderPath(const QString& path);

  private:
    bool FindFolders(const QString& programFolder);
    bool OpenStore(const QString& connectionString, store::Fault& fault, int patience = store::kPatience);
    QString UserStoreConnectionString() const;
    void LoadDatabaseDefinition();
    /// The row that was read; null when there is none.
    std::unique_ptr<store::Recordset> LoadOperatingEnvironment();
    void LoadBackupSettings(const store::Recordset& row);
    void ChooseUserFolders();

    // The folders of an installation with a folder per user (user_folders.cpp).
    void PrepareUserFolders();
    void CopyReportFiles();
    void CopyForUser(const QString& from, const QString& to);

    SessionContext& context_;
    DataAccess& data_;
    StatementLog& log_;
    screen::ScreenHost& host_;
    platform::MachineNames names_;
    QString changeMark_;
    int unchangedLooks_ = 0;
    QString prefix_;  ///< install root with its trailing separator
};

/// The row of the operating environment, in either of its readers.
inline const QString kEnvironmentRowSql = QStringLiteral("SELECT * FROM 動作環境定義 WHERE 動作環境定義ID = '001'");

}  // namespace session
