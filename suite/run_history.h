#pragma once

#include <QString>

#include "platform/clock.h"
#include "session/data_access.h"
#include "session/session_context.h"

namespace suite {

/// The trail that this run leaves in `プログラム稼動履歴`: a row when it starts and ends, for each logged write and for
/// each fault. It is the program's only log. A row that can't be written is dropped: nothing is shown, the run goes on.
class RunHistory : public session::StatementLog {
  public:
    RunHistory(session::SessionContext& context, const platform::Clock& clock) : context_(context), clock_(clock) {}

    /// "開始 " and the command-line tail. Whoever calls has read the running staff member anew.
    void WriteStartHistory(const QString& tail);
    /// "終了".
    void WriteEndHistory();
    /// "出力終了 " and the statement as the program wrote it.
    void WriteOutputHistory(const QString& sql) override;
    /// "エラー " and the text.
    void WriteErrorHistory(const QString& text) override;

  private:
    void WriteRow(const QString& summary);

    session::SessionContext& context_;
    const platform::Clock& clock_;
};

}  // namespace suite
