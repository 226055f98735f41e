// The client: 活動手帳.
#include <QApplication>
#include <cstdio>

#include "desktop/document_opener.h"
#include "desktop/window_host.h"
#include "platform/kept_files.h"
#include "session/run/main.h"

namespace {

/// Answers what can be answered without a display. Returns false when the client is to start.
bool AnswerWithoutDisplay(int argc, char** argv) {
    if (argc != 2) return false;
    if (qstrcmp(argv[1], "--version") == 0) {
        std::puts("katsudo-techo " KATSUDO_VERSION);
        return true;
    }
    if (qstrcmp(argv[1], "--help") == 0) {
        std::puts(
            "Usage: katsudo-techo [KEY]\n"
            "Opens the activity diary of the install tree whose prgbin folder holds this program.\n"
            "KEY is a slot: site (3), date yyyymmdd (8), start hh:nn (5), end hh:nn (5), staff (5), with nothing\n"
            "between them. The program then ends after one save or delete.");
        return true;
    }
    return false;
}

/// The command line behind the program's name, as one text.
QString CommandLineTail(int argc, char** argv) {
    QStringList parts;
    for (int index = 1; index < argc; ++index)
        parts.append(QString::fromLocal8Bit(argv[index]));
    return parts.join(u' ');
}

}  // namespace

int main(int argc, char** argv) {
    if (AnswerWithoutDisplay(argc, argv)) return 0;
    const platform::EndSignals endSignals;
    // The tail is the suite's own: the toolkit must not read options out of it.
    int ownArgc = 1;
    QApplication application(ownArgc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("katsudo-techo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KATSUDO_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    desktop::WindowHost host;
    host.EndBy(endSignals);
    const platform::SystemClock clock;
    platform::ProcessStarter starter;
    desktop::DesktopOpener opener;
    const auto registry = platform::SystemRegistry();
    session::Main({host, clock, starter, opener, platform::ReadMachineNames(), QCoreApplication::applicationDirPath(),
                   platform::UserStateFolder(), CommandLineTail(argc, argv), registry.get()});
    return 0;
}
