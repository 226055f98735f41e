// The folders of an installation that gives each user a copy of the configuration store and of the reports.
#include <QDir>
#include <QStringList>

#include "platform/files.h"
#include "screen/wait_dialog.h"
#include "session/environment.h"

namespace session {

using platform::CopyFile;
using platform::FileExists;
using platform::FolderExists;

QString Environment::EnsureFolderPath(const QString& path) {
    const QString wanted = platform::NativePath(path.trimmed());
    if (wanted.isEmpty() || FolderExists(wanted)) return wanted;
    const QChar separator = QDir::separator();
    // A share is walked from its first folder: its server and its name can't be made.
    qsizetype place = 0;
    if (wanted.startsWith(QString(2, separator))) {
        place = wanted.indexOf(separator, 2);
        place = place < 0 ? wanted.size() : wanted.indexOf(separator, place + 1);
        if (place < 0) return wanted;
    }
    while (place < wanted.size()) {
        place = wanted.indexOf(separator, place + 1);
        if (place < 0) place = wanted.size();
        const QString step = wanted.left(place);
        if (step.endsWith(u':') || FolderExists(step)) continue;
        if (const std::error_code fault = platform::MakeFolder(step))
            host_.Tell("DIREXISTCHK ERROR" + QString::number(fault.value()) + " " +
                       QString::fromStdString(fault.message()) + "\rdirexeistchk\r" + wanted);
    }
    return wanted;
}

void Environment::CopyForUser(const QString& from, const QString& to) {
    if (CopyFile(from, to)) return;
    log_.WriteErrorHistory("ファイルをコピーできません: " + from + " User ConfF=" + context_.UserConfFolder +
                           " User Report =" + context_.UserReportFolder);
}

void Environment::PrepareUserFolders() {
    const QString store = QDir::separator() + QStringLiteral("usrcnfg") +
                          (context_.ConfigFileKind == 1 ? QStringLiteral(".accdb") : QStringLiteral(".mdb"));
    EnsureFolderPath(context_.UserConfFolder);
    if (!FileExists(context_.UserConfFolder + store))
        CopyForUser(context_.ConfFolder + store, context_.UserConfFolder + store);
    if (context_.ReportFileKind != 0) CopyReportFiles();
}

void Environment::CopyReportFiles() {
    const QStringList files = context_.ReportFileKind == 1 ? QStringList{"repdb.accdb", "repfrmdb.accdb"}
                                                           : QStringList{"repdb.mdb", "repfrmdb.mdb", "repfrmdb.accdb"};
    EnsureFolderPath(context_.UserReportFolder);
    if (FileExists(context_.UserReportFolder + QDir::separator() + files.first())) return;
    const screen::WaitDialog wait(host_, nullptr);
    // The links between the report files name the shared folder; they are reset by the host office suite, which this
    // platform doesn't have, so the copies are left as they are.
    for (const QString& file : files)
        CopyForUser(context_.ReportFolder + QDir::separator() + file,
                    context_.UserReportFolder + QDir::separator() + file);
    if (prepareOfficeTrust) prepareOfficeTrust();
}

}  // namespace session
