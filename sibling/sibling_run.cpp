#include "sibling/sibling_run.h"

#include <QFileInfo>
#include <algorithm>

#include "items/display_forms.h"
#include "items/text_rules.h"

namespace sibling {

namespace {

const QString kStampForm = QStringLiteral("yyyyMMdd HHmmss");

}  // namespace

QDateTime SiblingRun::AnswerClock::Now() const {
    const QDateTime told = QDateTime::fromString(qEnvironmentVariable("KATSUDO_NOW"), kStampForm);
    const QDateTime now = told.isValid() ? told : QDateTime::currentDateTime();
    return earliest.isValid() ? std::max(now, earliest) : now;
}

SiblingRun::SiblingRun(const QString& programFile, const QString& tail, const platform::MachineNames& names)
    : program_(QFileInfo(programFile).completeBaseName()),
      folder_(QFileInfo(programFile).absolutePath()),
      tail_(items::WithoutBlanks(tail)),
      environment_(context_, data_, history_, screen_, names),
      links_(context_, data_, environment_, staff_, clock_, program_) {}

bool SiblingRun::Open() {
    if (!environment_.SYB_OPEN(folder_)) return false;
    const QString sent = links_.ReceiveStartLink(tail_, items::StampText(clock_.Now().addSecs(-60)));
    clock_.earliest = QDateTime::fromString(sent, kStampForm);
    return true;
}

void SiblingRun::Answer(const QString& text) {
    if (!context_.StartLinkKey.isEmpty()) links_.SendEndLink(text);
}

}  // namespace sibling
