#include "hostsetup/runnable_documents.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>

#include "platform/file_copy.h"

namespace hostsetup {

namespace {

const QSet<QString>& RunTypes() {
    static const QSet<QString> types{
        "desktop",  "exe",  "bat",    "cmd", "com",  "msi", "msp",  "pif", "scr", "cpl", "lnk", "url",
        "ps1",      "psm1", "vbs",    "vbe", "js",   "jse", "mjs",  "wsf", "wsh", "hta", "reg", "inf",
        "sct",      "msc",  "gadget", "jar", "jnlp", "sh",  "bash", "csh", "ksh", "zsh", "run", "command",
        "appimage", "py",   "pyw",    "pyz", "pl",   "rb",  "php",  "lua", "tcl", "awk", "ahk"};
    return types;
}

const QSet<QString>& DocumentTypes() {
    static const QSet<QString> types{
        "doc",  "docx", "docm", "dot",  "dotx", "rtf",  "odt", "ott",  "xls",  "xlsx",  "xlsm", "xlsb", "xlt",
        "xltx", "csv",  "tsv",  "ods",  "ots",  "ppt",  "pps", "pptx", "pptm", "ppsx",  "odp",  "odg",  "pdf",
        "txt",  "text", "log",  "md",   "htm",  "html", "mht", "xml",  "json", "jtd",   "jtt",  "jws",  "jbw",
        "jfw",  "juw",  "jpg",  "jpeg", "png",  "gif",  "bmp", "tif",  "tiff", "webp",  "heic", "svg",  "wmf",
        "emf",  "ico",  "psd",  "ai",   "eps",  "ps",   "dxf", "dwg",  "jww",  "sfc",   "p21",  "vsd",  "vsdx",
        "xdw",  "xbd",  "zip",  "lzh",  "7z",   "rar",  "gz",  "tar",  "tgz",  "eml",   "msg",  "vcf",  "ics",
        "mp3",  "wav",  "m4a",  "mp4",  "mov",  "avi",  "wmv", "mpg",  "mpeg", "accdb", "mdb",  "bak"};
    return types;
}

/// How a program, or a text that names the one to run it, begins.
bool BeginsAsProgram(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray head = file.read(64);
    // A starter may have a remark in front.
    if (head.contains("[Desktop Entry]")) return true;
    for (const char* mark : {"\x7f"
                             "ELF",
                             "#!", "MZ"})
        if (head.startsWith(mark)) return true;
    return false;
}

}  // namespace

bool DesktopRuns(const QString& path) {
    const platform::FileLook look = platform::LookAt(path);
    if (look.kind != platform::FileLook::Kind::File) return false;
    // A desktop looks past blanks and points at the end of a name.
    QString name = look.name.toLower();
    while (name.endsWith(u' ') || name.endsWith(u'.'))
        name.chop(1);
    const QString type = name.contains(u'.') ? name.section(u'.', -1) : QString();
    if (RunTypes().contains(type)) return true;
    if (DocumentTypes().contains(type)) return false;
    return QFileInfo(path).isExecutable() || BeginsAsProgram(path);
}

}  // namespace hostsetup
