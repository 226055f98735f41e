#pragma once

#include <QStringList>

namespace suite {

/// The programs of the suite that the client starts, by their identifiers, which are also their file names.
namespace program {
inline const QString k社内暦編集 = QStringLiteral("社内暦編集");
/// By the kind of a counterparty, 1 to 5; the last one serves every other kind too.
inline const QStringList kPartyCards{"顧客カード", "配送先カード", "調達先カード", "製造元カード", "窓口先カード"};
inline const QStringList kContactCards{"顧客窓口カード", "配送先窓口カード", "調達先窓口カード", "製造元窓口カード",
                                       "窓口先窓口カード"};
/// In the order of the document kinds.
inline const QStringList kDocumentEditors{"支払記録",   "商談カード", "問い合わせ記録",
                                          "提案書起票", "発注書起票", "成約記録"};
}  // namespace program

/// All of them.
inline QStringList SiblingPrograms() {
    return program::kPartyCards + program::kContactCards + program::kDocumentEditors +
           QStringList{program::k社内暦編集};
}

}  // namespace suite
