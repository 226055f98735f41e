#pragma once

#include <QString>

#include "session/session_context.h"

namespace suite {

/// Which of the two messages of an exchange a row of `プログラム連携情報` is.
inline const QString kStartMessage = QStringLiteral("00");
inline const QString kEndMessage = QStringLiteral("99");

/// One exchange between two programs. Both its messages keep its direction: the sender is the one that asked.
struct LinkExchange {
    QString sender, receiver;  ///< program identifiers
    QString key;               ///< the receiver's command-line tail without the blanks at its ends
};

/// The INSERT of a message. `kind` is kStartMessage or kEndMessage, `sent` and `deadline` "yyyymmdd hhnnss", `result`
/// the text of an answer.
QString LinkRowStatement(const session::SessionContext& context, const LinkExchange& exchange, const QString& kind,
                         const QString& sent, const QString& deadline, const QString& result);

/// " AND COLUMN = 'VALUE'", quotes in the value doubled. For the conditions on messages.
QString AndLinkColumn(const QString& column, const QString& value);

}  // namespace suite
