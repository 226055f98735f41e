#pragma once

#include <QStringList>

#include "lists/list_description.h"

// What search items have in common: how they are made, and the forms in which they are compared.
namespace lists {

/// An item for a code that is typed through a mask of zeros.
SearchItem CodeItem(const QString& name, const QString& mask);

/// An item for a text.
SearchItem TextItem(const QString& name, ValueForm value);

/// The item with a button behind it that searches by it alone: "btn_", `what`, "検索".
SearchItem SearchedBy(SearchItem item, const QString& what, const QString& caption, int mode);

// The comparisons, each with its negation. A column is a qualified name.

/// This value and later; negated, the values below it.
ItemFragments FromHereOn(const QString& column);

/// Exactly this value; negated, any other.
ItemFragments Exactly(const QString& column);

/// The text somewhere in the column; negated, nowhere in it.
ItemFragments Containing(const QString& column);

/// The text somewhere in one of the columns; negated, in none of them.
ItemFragments ContainingInAny(const QStringList& columns);

/// A classification by its number; negated, any other. It says nothing for "all".
ClassFragments Classified(const QString& column);

}  // namespace lists
