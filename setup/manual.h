#pragma once

#include <QByteArray>
#include <QString>

namespace setup {

/// Makes a document that every office program opens (RTF) of a text with marks: lines with "# " and "## " in front are
/// headings, "- " begins a point of a list, "|" the row of a table whose first row is its head ("|---|" lines are left
/// out), "![…](FILE)" alone on its line is a PNG picture; other lines are joined to paragraphs by blank lines, and
/// **…** is bold. Pictures are read from `folder`; one that can't be read is left out.
QByteArray ManualDocument(const QString& text, const QString& folder);

/// Writes the manual of the client, made of `folder`/manual.md, into a manual folder under the name by which the client
/// opens it. Gives the words of what went wrong; empty on success.
QString WriteManual(const QString& folder, const QString& manualFolder);

}  // namespace setup
