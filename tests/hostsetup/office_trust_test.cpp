#include <gtest/gtest.h>

#include "hostsetup/office_trust.h"

using platform::MemoryRegistry;
using Hive = platform::Registry::Hive;

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {

const QString kFolder = QStringLiteral("C:\\suite\\users\\sato\\report");

class OfficeTrust : public testing::Test {
  protected:
    void Install(const QString& path) {
        const QString key = "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\MSACCESS.EXE";
        registry.CreateKey(Hive::Machine, key);
        registry.WriteText(Hive::Machine, key, "Path", path);
        registry.CreateKey(Hive::User, kExtensions);
    }
    bool Prepare(const QString& folder = kFolder) {
        messages.clear();
        return hostsetup::PrepareOfficeTrust(registry, folder, [this](const QString& text) { messages << text; });
    }
    static QString Locations(const QString& version) {
        return "Software\\Microsoft\\Office\\" + version + "\\Access\\Security\\Trusted Locations";
    }
    QString UserText(const QString& key, const QString& name) const {
        return registry.Text(Hive::User, key, name).value_or("none");
    }

    const QString kExtensions = "Software\\Microsoft\\Windows\\CurrentVersion\\Extensions";
    MemoryRegistry registry;
    QStringList messages;
};

TEST_F(OfficeTrust, WritesWhatEachVersionReads) {
    const struct {
        const char* path;
        bool level;
        const char* locations;
    } cases[] = {{"D:\\OFFICE9\\", false, ""},
                 {"D:\\Office10\\", false, ""},
                 {"D:\\OFFICE11\\", true, ""},
                 {"D:\\Office12\\", false, "12.0"},
                 {"D:\\Office14\\", false, "14.0"},
                 {"D:\\Office15\\", false, "15.0"},
                 {"D:\\root\\OFFICE16\\", false, "16.0"},
                 {"D:\\Office17\\", false, "16.0"},
                 {"D:\\Office18\\", false, "17.0"}};
    for (const auto& c : cases) {
        registry = MemoryRegistry();
        Install(c.path);
        EXPECT_TRUE(Prepare()) << c.path;
        EXPECT_EQ(UserText(kExtensions, "mdb"), QString(c.path) + "MSACCESS.EXE");
        EXPECT_EQ(UserText("Software\\Microsoft\\Office\\11.0\\Access\\Security", "Level"), c.level ? "1" : "none");
        for (const QString version : {"12.0", "14.0", "15.0", "16.0", "17.0"}) {
            const bool written = version == c.locations;
            EXPECT_EQ(UserText(Locations(version) + "\\Location0", "Path"), written ? kFolder + "\\" : "none")
                << c.path;
            EXPECT_EQ(UserText(Locations(version) + "\\Location0", "AllowSubfolder"), written ? "1" : "none");
            EXPECT_EQ(UserText(Locations(version), "AllowNetworkLocations"), "none");
        }
    }
}

TEST_F(OfficeTrust, KnowsNoOtherVersion) {
    EXPECT_FALSE(Prepare());
    Install("D:\\oFFice16\\Office13\\");
    EXPECT_FALSE(Prepare());
    EXPECT_EQ(registry.Subkeys(Hive::User, "Software\\Microsoft"), QStringList{"Windows"});
    EXPECT_EQ(UserText(kExtensions, "mdb"), "none");
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(OfficeTrust, AddsAFolderOnceAndBehindTheGreatestName) {
    Install("D:\\Office16\\");
    const QString locations = Locations("16.0");
    for (const char* other : {"Location2", "Location10"})
        registry.CreateKey(Hive::User, locations + "\\" + other);
    registry.WriteText(Hive::User, locations + "\\Location2", "Path", "C:\\other\\");
    EXPECT_TRUE(Prepare());
    EXPECT_TRUE(Prepare());
    EXPECT_EQ(registry.Subkeys(Hive::User, locations), (QStringList{"Location10", "Location2", "Location3"}));
    EXPECT_EQ(UserText(locations + "\\Location3", "Path"), kFolder + "\\");
    // A folder whose name begins alike is another one; one that holds it isn't.
    EXPECT_TRUE(Prepare(kFolder + "2"));
    EXPECT_EQ(UserText(locations + "\\Location4", "Path"), kFolder + "2\\");
    EXPECT_TRUE(Prepare("\\\\server\\suite\\report"));
    EXPECT_EQ(UserText(locations, "AllowNetworkLocations"), "1");
    EXPECT_EQ(UserText(locations + "\\Location5", "Path"), "\\\\server\\suite\\report\\");
}

TEST_F(OfficeTrust, TellsWhatCantBeWrittenAndGoesOn) {
    Install("D:\\Office15\\");
    registry.Close(Hive::User, Locations("15.0"));
    EXPECT_FALSE(Prepare());
    EXPECT_EQ(messages, QStringList{"設定できません。"});
    EXPECT_EQ(UserText(kExtensions, "mdb"), "D:\\Office15\\MSACCESS.EXE");

    registry = MemoryRegistry();
    Install("D:\\Office14\\");
    registry.Close(Hive::User, Locations("14.0"));
    EXPECT_FALSE(Prepare());
    EXPECT_EQ(messages, (QStringList{"オープンできません。", "設定できません。"}));

    registry = MemoryRegistry();
    Install("D:\\Office12\\");
    registry.RefuseValues();
    EXPECT_FALSE(Prepare("\\\\server\\report"));
    EXPECT_EQ(messages, QStringList(4, "書き込みできません。"));
}

}  // namespace
