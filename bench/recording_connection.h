#pragma once

#include <memory>
#include <vector>

#include "store/connection.h"

namespace bench {

/// A statement as the program gave it to its connection.
struct Recorded {
    QString sql;
    int mostRows = store::kAllRows;
};

/// Hands everything on to another connection, and while `recording` keeps what it was given.
class RecordingConnection : public store::Connection {
  public:
    explicit RecordingConnection(std::unique_ptr<store::Connection> inner) : inner_(std::move(inner)) {}

    std::unique_ptr<store::Recordset> Query(const QString& sql, store::Fault& fault, int mostRows) override {
        if (recording) recorded.push_back({sql, mostRows});
        return inner_->Query(sql, fault, mostRows);
    }
    bool Execute(const QString& sql, store::Fault& fault) override {
        if (recording) recorded.push_back({sql, store::kAllRows});
        return inner_->Execute(sql, fault);
    }
    void Close() override { inner_->Close(); }

    bool recording = false;
    std::vector<Recorded> recorded;

  private:
    std::unique_ptr<store::Connection> inner_;
};

}  // namespace bench
