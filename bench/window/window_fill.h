#pragma once

#include <QDateTime>
#include <QString>
#include <memory>

#include "bench/document_cases.h"
#include "bench/recording_connection.h"

namespace bench {

/// Searches in the real list windows, drawn on the platform that the application runs on: a fill presses the search
/// button and returns when the filled list is painted.
class WindowFill {
  public:
    /// `root` is the install tree; `now` is the day on which the windows believe to be. The windows are made when they
    /// are first searched in.
    WindowFill(const QString& root, const QDateTime& now);
    ~WindowFill();

    /// Rows of the filled list; -1 when the store can't be opened.
    int operator()(const ListCase& search);

    /// Opens a number list as the main screen does, and returns when it is painted with its first search. Rows of the
    /// list; -1 when the store can't be opened.
    int Open(const Opening& opening);
    /// Closes it again, as going back does.
    void Close(const Opening& opening);

    /// What the engine gets at a search or an opening, which are carried out for it. StatementTrace has to watch.
    std::vector<Recorded> StatementsOf(const ListCase& search);
    std::vector<Recorded> StatementsOf(const Opening& opening);

  private:
    struct Stage;
    std::unique_ptr<Stage> stage_;
};

/// Memory that this process holds, in megabytes; 0 where the system doesn't tell.
double ResidentMegabytes();

}  // namespace bench
