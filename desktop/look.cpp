#include "desktop/look.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

namespace desktop {

namespace {

constexpr double kPoints = 10;

/// `font` in the first family that is installed; as it stands where none of them is.
QFont InFirstOf(const QStringList& families, QFont font) {
    const QStringList installed = QFontDatabase::families();
    for (const QString& family : families)
        if (installed.contains(family)) {
            font.setFamily(family);
            break;
        }
    font.setPointSizeF(kPoints);
    return font;
}

/// A font that has every Japanese glyph; the platform's own choice where none of them is installed.
QFont ScreenFont() {
    return InFirstOf({"Noto Sans CJK JP", "Noto Sans JP", "Yu Gothic UI", "Meiryo UI", "Hiragino Sans", "IPAexGothic"},
                     QApplication::font());
}

QPalette ScreenColours() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xe9edf1));
    palette.setColor(QPalette::WindowText, QColor(0x1f2933));
    palette.setColor(QPalette::Base, QColor(0xffffff));
    palette.setColor(QPalette::AlternateBase, QColor(0xf4f7fa));
    palette.setColor(QPalette::Text, QColor(0x14202b));
    palette.setColor(QPalette::Button, QColor(0xf6f8fa));
    palette.setColor(QPalette::ButtonText, QColor(0x1f2933));
    palette.setColor(QPalette::Highlight, QColor(0x2f6fb4));
    palette.setColor(QPalette::HighlightedText, QColor(0xffffff));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8b96a1));
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(0xe4e8ec));
    palette.setColor(QPalette::Disabled, QPalette::Button, QColor(0xe4e8ec));
    return palette;
}

const char* const kStyleSheet = R"(
QLineEdit, QPlainTextEdit { background: #ffffff; border: 1px solid #aab6c2; border-radius: 3px; padding: 1px 3px; }
QLineEdit:focus, QPlainTextEdit:focus { background: #fffbe6; border-color: #2f6fb4; }
QLineEdit:disabled, QPlainTextEdit:disabled { background: #e4e8ec; border-color: #c9d1d9; color: #77828d; }
QLineEdit:read-only, QPlainTextEdit:read-only { background: #f1f4f6; }
QPushButton { background: #f8fafb; border: 1px solid #a3b0bd; border-radius: 4px; padding: 2px 6px; min-height: 18px; }
QPushButton:hover { background: #ffffff; border-color: #2f6fb4; }
QPushButton:pressed { background: #d5e3f2; }
QPushButton:disabled { background: #e4e8ec; border-color: #cfd6dd; color: #98a3ae; }
QPushButton[role="main"] { font-weight: bold; min-width: 76px; min-height: 22px; }
QPushButton[role="main"]:enabled { background: #dbe8f6; }
QPushButton[role="catcher"] { border: none; background: transparent; padding: 0; min-width: 0; min-height: 0; }
QFrame[role="group"] { background: #f3f6f8; border: 1px solid #d3dae1; border-radius: 5px; }
QLabel[role="heading"] { color: #3d5a78; font-weight: bold; background: transparent; border: none; }
QLabel[role="heading"]:hover { color: #1c57a0; }
QLabel[role="title"] { font-weight: bold; font-size: 13pt; color: #24415f; }
QLabel[role="notice"] { color: #b3261e; font-weight: bold; background: #ffffff; border: 1px solid #d3dae1;
    border-radius: 3px; padding: 1px 8px; }
QLabel[role="result"] { color: #14202b; background: #ffffff; border: 1px solid #d3dae1; border-radius: 3px;
    padding: 1px 8px; }
QLabel#overlay { background: #fff4c2; border: 1px solid #c9a227; border-radius: 5px; color: #5c4500; font-weight: bold; }
QLabel[role="limit"] { color: #8a4b00; }
QLabel[role="count"] { color: #3d5a78; }
QHeaderView::section { background: #e3e9ef; border: none; border-right: 1px solid #c3ccd5;
    border-bottom: 1px solid #aab6c2; padding: 2px 4px; }
QLabel[role="panel"] { background: #ffffff; border: 1px solid #b8c3ce; border-radius: 3px; padding: 2px 8px; }
QLabel[role="panel"]:hover { border-color: #2f6fb4; }
QScrollBar { background: #dfe5ea; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: #a3b1bf; border-radius: 4px; min-height: 24px; min-width: 24px; margin: 2px; }
QScrollBar::handle:hover { background: #7f92a5; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
)";

}  // namespace

void PrepareLook() {
    static bool prepared = false;
    if (prepared) return;
    prepared = true;
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(ScreenFont());
    QApplication::setPalette(ScreenColours());
    qApp->setStyleSheet(QString::fromLatin1(kStyleSheet));
}

const QFont& AmountFont() {
    static const QFont font = InFirstOf({"Noto Sans Mono CJK JP", "BIZ UDGothic", "MS Gothic", "IPAGothic"},
                                        QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return font;
}

}  // namespace desktop
