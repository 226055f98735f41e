#include "setup/manual.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QtEndian>

#include "items/full_width.h"
#include "session/session_context.h"

namespace setup {
namespace {

/// Twips between the margins of an upright A4 page.
constexpr int kTextWidth = 9600;
constexpr int kTwipsPerPixel = 15;

const QByteArray kHead =
    "{\\rtf1\\ansi\\ansicpg932\\uc1\\deff0\\deflang1041{\\fonttbl{\\f0\\fswiss\\fcharset128 MS PGothic;}}"
    "{\\colortbl;\\red31\\green73\\blue125;}\\paperw11906\\paperh16838\\margl1153\\margr1153\\margt1134\\margb1134\n";

/// The text with everything beyond ASCII by its number, and the format's own signs behind a stroke.
QByteArray Escaped(const QString& text) {
    QByteArray escaped;
    for (const QChar character : text) {
        const ushort code = character.unicode();
        if (code >= 0x80)
            escaped += "\\u" + QByteArray::number(static_cast<qint16>(code)) + '?';
        else if (code == '\\' || code == '{' || code == '}')
            escaped += QByteArray("\\") + static_cast<char>(code);
        else
            escaped += static_cast<char>(code);
    }
    return escaped;
}

/// A line with its bold words.
QByteArray Inline(const QString& text) {
    QByteArray line;
    bool bold = false;
    for (const QString& part : text.split(QStringLiteral("**"))) {
        line += bold ? "{\\b " + Escaped(part) + "}" : Escaped(part);
        bold = !bold;
    }
    return line;
}

QByteArray Paragraph(const char* form, const QString& text) {
    return QByteArray("{\\pard") + form + ' ' + Inline(text) + "\\par}\n";
}

/// The picture as wide as the page, or as wide as it is when that is less.
QByteArray Picture(const QString& file) {
    QFile picture(file);
    constexpr qsizetype kSizes = 16;
    if (!picture.open(QIODevice::ReadOnly)) return {};
    const QByteArray png = picture.readAll();
    if (!png.startsWith("\x89PNG") || png.size() < kSizes + 8) return {};
    const int width = qFromBigEndian<qint32>(png.constData() + kSizes);
    const int height = qFromBigEndian<qint32>(png.constData() + kSizes + 4);
    if (width <= 0 || height <= 0) return {};
    const int goal = std::min(width * kTwipsPerPixel, kTextWidth);
    const auto number = [](const char* word, int value) { return QByteArray(word) + QByteArray::number(value); };
    return "{\\pard\\sb60\\sa160 {\\pict\\pngblip" + number("\\picw", width) + number("\\pich", height) +
           number("\\picwgoal", goal) + number("\\pichgoal", static_cast<int>(qint64(goal) * height / width)) + '\n' +
           png.toHex() + "}\\par}\n";
}

QByteArray TableRow(const QStringList& cells, bool head) {
    // The first column holds names and keys; the words need the room.
    const int first = cells.size() == 1 ? kTextWidth : kTextWidth * 3 / 10;
    QByteArray row = "\\trowd\\trgaph80";
    for (qsizetype cell = 0; cell < cells.size(); ++cell) {
        for (const char* side : {"t", "l", "b", "r"})
            row += QByteArray("\\clbrdr") + side + "\\brdrs\\brdrw10";
        const auto rest = static_cast<qsizetype>(kTextWidth - first);
        const auto right = first + (cells.size() > 1 ? rest * cell / (cells.size() - 1) : 0);
        row += "\\cellx" + QByteArray::number(right);
    }
    for (const QString& cell : cells)
        row += QByteArray("\n\\pard\\intbl\\fs20 ") + (head ? "{\\b " : "{") + Inline(cell.trimmed()) + "}\\cell";
    return row + "\\row\n";
}

/// Puts the document together line by line.
class Writer {
  public:
    explicit Writer(const QString& folder) : folder_(folder) {}

    void Take(const QString& line) {
        static const QRegularExpression picture(QStringLiteral("^!\\[.*\\]\\((.+)\\)$"));
        static const QRegularExpression rule(QStringLiteral("^\\|[-| :]+\\|$"));
        const bool row = line.startsWith(u'|');
        if (!row) EndTable();
        if (const auto match = picture.match(line); match.hasMatch())
            Put(Picture(folder_ + "/" + match.captured(1)));
        else if (line.startsWith(QLatin1String("## ")))
            Put(Paragraph("\\sb240\\sa100\\keepn\\b\\cf1\\fs28", line.mid(3)));
        else if (line.startsWith(QLatin1String("# ")))
            Put(Paragraph("\\sa200\\keepn\\b\\cf1\\fs40", line.mid(2)));
        else if (line.startsWith(QLatin1String("- ")))
            Put(Paragraph("\\sa40\\li360\\fi-240\\fs21", QStringLiteral("・") + line.mid(2)));
        else if (row && !rule.match(line).hasMatch())
            PutRow(line);
        else if (line.isEmpty() || row)
            EndParagraph();
        else
            open_ += line;
    }
    QByteArray Whole() {
        EndParagraph();
        EndTable();
        return kHead + body_ + "}\n";
    }

  private:
    void Put(const QByteArray& piece) {
        EndParagraph();
        body_ += piece;
    }
    void PutRow(const QString& line) {
        Put(TableRow(line.mid(1, line.size() - 2).split(u'|'), !inTable_));
        inTable_ = true;
    }
    void EndParagraph() {
        if (!open_.isEmpty()) body_ += Paragraph("\\sa120\\fs21", open_);
        open_.clear();
    }
    void EndTable() {
        if (inTable_) body_ += "{\\pard\\sa120\\fs12\\par}\n";
        inTable_ = false;
    }

    QString folder_;
    QByteArray body_;
    QString open_;  ///< the paragraph that is being read
    bool inTable_ = false;
};

}  // namespace

QByteArray ManualDocument(const QString& text, const QString& folder) {
    Writer writer(folder);
    for (const QString& line : text.split(u'\n'))
        writer.Take(line.trimmed());
    return writer.Whole();
}

QString WriteManual(const QString& folder, const QString& manualFolder) {
    QFile source(folder + "/manual.md");
    if (!source.open(QIODevice::ReadOnly)) return "There is no manual in " + folder + ".";
    const QString file = manualFolder + "/" + items::ToFullWidth(session::kProgramId) + ".doc";
    const QByteArray document = ManualDocument(QString::fromUtf8(source.readAll()), folder);
    QFile target(file);
    if (target.open(QIODevice::WriteOnly) && target.write(document) == document.size() && target.flush()) return {};
    return file + " can't be written.";
}

}  // namespace setup
