#include "session/insert_builder.h"

#include "items/text_rules.h"

namespace session {

void InsertBuilder::Quoted(const QString& column, const QString& value) {
    Bare(column, "'" + value + "'");
}

void InsertBuilder::Escaped(const QString& column, const QString& value) {
    Quoted(column, items::EscapeSqlText(value));
}

void InsertBuilder::Number(const QString& column, const QString& value) {
    Quoted(column, items::WithoutQuotes(value));
}

void InsertBuilder::Digit(const QString& column, int value) {
    Quoted(column, QString::number(value));
}

void InsertBuilder::Bare(const QString& column, const QString& value) {
    columns_ << "[" + column + "]";
    values_ << value;
}

QString InsertBuilder::Statement() const {
    return "INSERT INTO [" + table_ + "] (" + columns_.join(u',') + ") VALUES (" + values_.join(u',') + ")";
}

}  // namespace session
