#include "store/create_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "store/sqlite_file.h"

namespace store {
namespace {

bool WriteEmptyStore(const QString& path, Fault& fault) {
    const auto file = SqliteFile::Open(path, SqliteFile::Mode::Create, fault);
    // The engine leaves a file of no bytes until something is written; an empty file would be no store. "KTDT".
    return file && file->Run(QStringLiteral("PRAGMA journal_mode = DELETE"), fault) &&
           file->Run(QStringLiteral("PRAGMA application_id = 0x4B544454"), fault);
}

}  // namespace

bool CreateSqliteStore(const QString& path, Fault& fault) {
    const QString shown = QDir::toNativeSeparators(path);
    if (QFileInfo::exists(path)) {
        fault = {0, QStringLiteral("データベースファイルは既にあります: %1").arg(shown)};
        return false;
    }
    Fault engine;
    if (WriteEmptyStore(path, engine)) {
        return true;
    }
    QFile::remove(path);
    fault = {engine.number,
             QStringLiteral("データベースファイルを作成できません (%1): %2").arg(engine.description, shown)};
    return false;
}

}  // namespace store
