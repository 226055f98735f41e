#include <QCoreApplication>
#include <QTextStream>

#include "setup/command_line.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments == QStringList{"--version"}) {
        QTextStream(stdout) << "katsudo-setup " KATSUDO_VERSION "\n";
        return 0;
    }
    return setup::RunSetup(arguments, QCoreApplication::applicationDirPath());
}
