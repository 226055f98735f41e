#pragma once

#include <memory>
#include <vector>

#include "bench/statement_trace.h"
#include "store/connection.h"

namespace bench {

/// A statement, and how many rows of it were asked for.
struct Recorded {
    QString sql;
    int mostRows = store::kAllRows;
};

/// Hands everything on to another connection, and while `recording` keeps what it was given.
class RecordingConnection : public store::Connection {
  public:
    explicit RecordingConnection(std::unique_ptr<store::Connection> inner) : inner_(std::move(inner)) {}

    std::unique_ptr<store::Recordset> Query(const QString& sql, store::Fault& fault, int mostRows) override {
        if (!recording) return inner_->Query(sql, fault, mostRows);
        const Note note(*this, {sql, mostRows});
        return inner_->Query(sql, fault, mostRows);
    }
    bool Execute(const QString& sql, store::Fault& fault) override {
        if (!recording) return inner_->Execute(sql, fault);
        const Note note(*this, {sql});
        return inner_->Execute(sql, fault);
    }
    void Close() override { inner_->Close(); }

    /// Begins to record, forgetting what was recorded.
    void Begin() {
        recorded.clear();
        engineGiven.clear();
        recording = true;
    }

    bool recording = false;
    std::vector<Recorded> recorded;     ///< as the program wrote it
    std::vector<Recorded> engineGiven;  ///< as its engine got it; nothing unless StatementTrace watches

  private:
    class Note {
      public:
        Note(RecordingConnection& connection, const Recorded& statement)
            : connection_(connection), mostRows_(statement.mostRows) {
            connection_.recorded.push_back(statement);
            StatementTrace::Begin();
        }
        ~Note() {
            for (const Traced& statement : StatementTrace::End())
                connection_.engineGiven.push_back({statement.sql, mostRows_});
        }
        Note(const Note&) = delete;
        Note& operator=(const Note&) = delete;

      private:
        RecordingConnection& connection_;
        int mostRows_;
    };

    std::unique_ptr<store::Connection> inner_;
};

}  // namespace bench
