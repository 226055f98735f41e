#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <ostream>

#include "store/connection.h"
#include "store/create_store.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace store {

inline void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.number << ' ' << fault.description.toStdString();
}

/// One engine to run the storage tests on: how to make a fresh empty store in a folder, and how to name it.
struct Engine {
    const char* name;
    QString (*make)(const QString& folder);  ///< the connection string; empty on failure
};

inline QString MakeSqlite(const QString& folder) {
    Fault fault;
    const QString path = folder + QStringLiteral("/store.accdb");
    return CreateSqliteStore(path, fault)
               ? QStringLiteral("Provider=SQLite;User ID=;Password=;Data Source=%1;").arg(path)
               : QString();
}

/// A fresh store of an engine with one open connection.
class OpenStore {
  public:
    explicit OpenStore(const Engine& engine = {"sqlite", MakeSqlite}) : text_(engine.make(folder_.path())) {
        connection_ = Another();
        EXPECT_TRUE(connection_);
    }

    std::unique_ptr<Connection> Another() const {
        Fault fault;
        auto connection = OpenConnection(text_, folder_.path(), fault);
        EXPECT_TRUE(connection) << fault.description.toStdString();
        return connection;
    }

    void Do(const QString& sql) {
        Fault fault;
        EXPECT_TRUE(connection_->Execute(sql, fault)) << fault.description.toStdString();
    }

    /// The rows of a SELECT as "a,b;c,d"; Null is "-".
    QString Rows(const QString& sql) {
        Fault fault;
        const auto rows = connection_->Query(sql, fault);
        if (!rows) {
            return QStringLiteral("fault: ") + fault.description;
        }
        QStringList lines;
        for (; !rows->Eof(); rows->MoveNext()) {
            QStringList values;
            for (const QString& column : rows->Columns()) {
                values.append(rows->Value(column).value_or(QStringLiteral("-")));
            }
            lines.append(values.join(u','));
        }
        return lines.join(u';');
    }

    Connection& operator*() { return *connection_; }
    Connection* operator->() { return connection_.get(); }
    QString Folder() const { return folder_.path(); }
    QString Path() const { return folder_.path() + QStringLiteral("/store.accdb"); }

  private:
    QTemporaryDir folder_;
    QString text_;
    std::unique_ptr<Connection> connection_;
};

}  // namespace store
