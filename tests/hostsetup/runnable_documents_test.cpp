#include "hostsetup/runnable_documents.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

TEST(RunnableDocuments, AreKnownByTypeThenByWhatTheyAre) {
    const QTemporaryDir folder;
    const struct {
        const char* name;
        const char* head;
        bool executeBit;
        bool runs;
    } cases[] = {{"電卓.desktop", "", false, true},
                 {"一覧.EXE", "", false, true},
                 {"請求書.pdf.exe ", "", false, true},
                 {"集計.ps1", "", false, true},
                 {"手順.sh", "", false, true},
                 {"無題", "#!/bin/sh", false, true},
                 {"無題", "# 電卓\n[Desktop Entry]", false, true},
                 {"控え.dat",
                  "\x7f"
                  "ELF",
                  false, true},
                 {"控え.dat", "1,2,3", false, false},
                 {"控え.dat", "1,2,3", true, true},
                 {"見積.XLS", "", true, false},
                 {"見積.pdf", "#!", true, false},
                 {"一太郎.jtd", "", true, false},
                 {"図面 v1.2.tif", "", true, false}};
    for (const auto& c : cases) {
        QFile file(folder.filePath(QString::fromUtf8(c.name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(c.head);
        file.setPermissions(c.executeBit ? file.permissions() | QFile::ExeOwner : QFile::ReadOwner | QFile::WriteOwner);
        file.close();
        EXPECT_EQ(hostsetup::DesktopRuns(file.fileName()), c.runs) << c.name << ": " << c.head;
    }
    EXPECT_FALSE(hostsetup::DesktopRuns(folder.path())) << "a folder is shown";
}

}  // namespace
