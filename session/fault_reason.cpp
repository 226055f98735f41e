#include "session/fault_reason.h"

namespace session {

QString FaultReason(const store::Fault& fault) {
    switch (fault.kind) {
        case store::FaultKind::DiskFull:
            return QStringLiteral("ディスクがいっぱいです");
        case store::FaultKind::NotWritable:
            return QStringLiteral("書き込みが許可されていません");
        case store::FaultKind::Away:
            return QStringLiteral("サーバーに接続できません");
        case store::FaultKind::Locked:
            return QStringLiteral("ほかの利用者が使用中です");
        case store::FaultKind::KeyTaken:
            return QStringLiteral("その時刻はほかの人が先に登録しています");
        case store::FaultKind::RuleBroken:
            return QStringLiteral("表の規則に反しています");
        case store::FaultKind::Other:
            break;
    }
    return fault.description.trimmed();
}

}  // namespace session
