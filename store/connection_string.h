#pragma once

#include <QHash>
#include <QString>

namespace store {

/// The parts of a connection string. Keys are kept in lower case, so that they are found however they were spelled.
class ConnectionString {
  public:
    /// Reads "Key=Value;Key=Value;". Blanks around keys and values don't count, a value may hold "=", and one that
    /// starts with a quote runs to its closing quote (doubled inside), so that it may hold ";". Of a key given twice
    /// the last counts; a part without "=" is passed over.
    explicit ConnectionString(const QString& text);

    /// The value of the key in any case; empty when it isn't given.
    QString Value(const QString& key) const;

  private:
    QHash<QString, QString> values_;
};

}  // namespace store
