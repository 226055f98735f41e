// The client played by a script: commands on standard input, answers on standard output, with or without real windows.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <memory>

#include "drive/headless_host.h"
#include "drive/window/driven_window_host.h"
#include "platform/kept_files.h"
#include "session/run/main.h"

namespace {

QString ProgramFolder(const QString& root) {
    const QString path = QDir(root).absolutePath();
    const bool developerTree = !QFileInfo(path + "/prgbin").isDir() && QFileInfo(path + "/prgsrc").isDir();
    return path + (developerTree ? "/prgsrc" : "/prgbin");
}

/// Runs the client on a host whose waits take commands, and answers the command under which it ended.
template <class Host>
int Play(Host& host, const session::Outside& outside) {
    session::Main(outside);
    host.Commands().TellEnded();
    return 0;
}

bool WantsWindow(int argc, char** argv) {
    for (int index = 1; index < argc; ++index)
        if (qstrcmp(argv[index], "--window") == 0) return true;
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    const platform::EndSignals endSignals;
    const std::unique_ptr<QCoreApplication> application =
        WantsWindow(argc, argv) ? std::unique_ptr<QCoreApplication>(new QApplication(argc, argv))
                                : std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("katsudo-drive"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KATSUDO_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Plays commands from standard input against the client."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({{"root", "The install tree.", "DIR"},
                       {"tail", "The command-line tail of the client.", "TEXT"},
                       {"now", "Fixes the clock.", "yyyymmdd hhnnss"},
                       {"login", "Stands in for the user's name.", "NAME"},
                       {"computer", "Stands in for the computer's name.", "NAME"},
                       {"window", "Drives the real windows."}});
    parser.process(*application);
    if (!parser.isSet("root")) {
        std::fputs("katsudo-drive: --root DIR is missing\n", stderr);
        return 2;
    }

    const platform::SystemClock systemClock;
    std::unique_ptr<platform::FixedClock> fixedClock;
    if (parser.isSet("now")) {
        const QDateTime now = QDateTime::fromString(parser.value("now"), QStringLiteral("yyyyMMdd HHmmss"));
        if (!now.isValid()) {
            std::fputs("katsudo-drive: --now takes \"yyyymmdd hhnnss\"\n", stderr);
            return 2;
        }
        fixedClock = std::make_unique<platform::FixedClock>(now);
    }
    platform::MachineNames names = platform::ReadMachineNames();
    if (parser.isSet("login")) names.login = parser.value("login");
    if (parser.isSet("computer")) names.computer = parser.value("computer");

    drive::OutsideRecord record;
    drive::RecordingStarter starter(record, fixedClock.get());
    const auto outside = [&](screen::ScreenHost& host) {
        const platform::Clock& clock = fixedClock ? static_cast<const platform::Clock&>(*fixedClock)
                                                  : static_cast<const platform::Clock&>(systemClock);
        return session::Outside{host,
                                clock,
                                starter,
                                record.opener,
                                names,
                                ProgramFolder(parser.value("root")),
                                platform::UserStateFolder(),
                                parser.value("tail")};
    };
    if (parser.isSet("window")) {
        drive::DrivenWindowHost host(fixedClock.get(), record, endSignals);
        return Play(host, outside(host));
    }
    drive::HeadlessHost host(fixedClock.get(), record, endSignals);
    return Play(host, outside(host));
}
