#include "drive/outside_record.h"

#include "items/display_forms.h"

namespace drive {

bool RecordingStarter::Start(const QString& file, const QString& argument) {
    QHash<QString, QString> environment;
    if (clock_) environment.insert(QStringLiteral("KATSUDO_NOW"), items::StampText(clock_->Now()));
    if (!platform::ProcessStarter(environment).Start(file, argument)) return false;
    record_.started.append(file + " " + argument);
    return true;
}

}  // namespace drive
