#include "session/fault_reason.h"

namespace session {

using store::FaultKind;

QString FaultReason(const store::Fault& fault) {
    switch (fault.kind) {
        case FaultKind::DiskFull:
            return QStringLiteral("ディスクがいっぱいです");
        case FaultKind::NotWritable:
            return QStringLiteral("書き込みが許可されていません");
        case FaultKind::Away:
            return fault.ofFile ? QStringLiteral("データベースが見つかりません")
                                : QStringLiteral("サーバーに接続できません");
        case FaultKind::Locked:
            return QStringLiteral("ほかの利用者が使用中です");
        case FaultKind::KeyTaken:
            return QStringLiteral("その時刻はほかの人が先に登録しています");
        case FaultKind::RuleBroken:
            return QStringLiteral("表の規則に反しています");
        case FaultKind::Other:
            break;
    }
    QString words = fault.description.trimmed();
    while (words.endsWith(u'。') || words.endsWith(u'.'))
        words.chop(1);
    return words;
}

}  // namespace session
