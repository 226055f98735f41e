#include "drive/outside_record.h"

#include "items/display_forms.h"

namespace drive {

std::unique_ptr<platform::StartedProgram> RecordingStarter::Start(const QString& file, const QString& argument) {
    QHash<QString, QString> environment;
    if (clock_) environment.insert(QStringLiteral("KATSUDO_NOW"), items::StampText(clock_->Now()));
    auto program = platform::ProcessStarter(environment).Start(file, argument);
    if (program) record_.started.append(file + " " + argument);
    return program;
}

}  // namespace drive
