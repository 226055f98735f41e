#include "setup/stand_ins.h"

#include <QFile>
#include <filesystem>

#include "platform/program_starter.h"
#include "suite/sibling_programs.h"

namespace setup {
namespace {

// One file under many names where the file system can, copies where it can't.
bool PutFile(const QString& from, const QString& to) {
    QFile::remove(to);
    std::error_code fault;
    std::filesystem::create_hard_link(from.toStdString(), to.toStdString(), fault);
    return !fault || QFile::copy(from, to);
}

}  // namespace

QString InstallStandIns(const Tree& tree, const QString& standIn) {
    if (!QFile::exists(standIn)) return standIn + " is missing.";
    const QString folder = tree.Folder("prgbin");
    QString first = standIn;
    for (const QString& program : suite::SiblingPrograms()) {
        const QString file = platform::ProgramFile(folder, program);
        // The first is a copy: an installation stays as it is when the program that it came from is built anew.
        const bool done = first == standIn ? (QFile::remove(file), QFile::copy(standIn, file)) : PutFile(first, file);
        if (!done) return file + " can't be written.";
        if (first == standIn) first = file;
    }
    return {};
}

}  // namespace setup
