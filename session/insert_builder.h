#pragma once

#include <QString>
#include <QStringList>

namespace session {

/// Puts an INSERT together column by column, with the names in brackets, in the order in which they are given.
class InsertBuilder {
  public:
    explicit InsertBuilder(const QString& table) : table_(table) {}

    /// A text between single quotes as it stands.
    void Quoted(const QString& column, const QString& value);
    /// A free text: its quotes doubled, its trailing blanks gone.
    void Escaped(const QString& column, const QString& value);
    /// A telephone number or a postcode: without single quotes of its own.
    void Number(const QString& column, const QString& value);
    /// A class code: a whole number between quotes.
    void Digit(const QString& column, int value);
    /// A value that needs no quotes.
    void Bare(const QString& column, const QString& value);

    QString Statement() const;

  private:
    QString table_;
    QStringList columns_, values_;
};

}  // namespace session
