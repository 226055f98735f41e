#include "hostsetup/office_trust.h"

#include <algorithm>

#include "items/text_rules.h"

namespace hostsetup {

using platform::Registry;
using Hive = Registry::Hive;

namespace {

const QString kInstalled = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\MSACCESS.EXE");
const QString kExtensions = QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Extensions");
const QString kUnwritten = QStringLiteral("書き込みできません。");
const QString kNotSet = QStringLiteral("設定できません。");
const QString kNotOpened = QStringLiteral("オープンできません。");
/// What stands in front of the number in the name of a trusted location.
constexpr int kLocationPrefix = 8;

enum class Action { Extension, Level, Location };

/// What a version takes, found by its name in the path of its programs. The last two names write under the number of
/// another version: that is where those programs look.
struct Version {
    const char* name;
    Action action;
    const char* number;
};
constexpr Version kVersions[] = {{"Office9", Action::Extension, ""},     {"Office10", Action::Extension, ""},
                                 {"Office11", Action::Level, "11.0"},    {"Office12", Action::Location, "12.0"},
                                 {"Office14", Action::Location, "14.0"}, {"Office15", Action::Location, "15.0"},
                                 {"Office16", Action::Location, "16.0"}, {"Office17", Action::Location, "16.0"},
                                 {"Office18", Action::Location, "17.0"}};

const Version* FindVersion(const QString& path) {
    for (const Version& version : kVersions) {
        const QString name = QString::fromLatin1(version.name);
        if (path.contains(name) || path.contains(name.toUpper())) return &version;
    }
    return nullptr;
}

/// The settings of one user for one installed version.
class TrustSettings {
  public:
    TrustSettings(Registry& registry, QString programs, QString version,
                  const std::function<void(const QString&)>& tell)
        : registry_(registry), programs_(std::move(programs)), version_(std::move(version)), tell_(tell) {}

    void SetMdbExtension();
    void SetLevel();
    void TrustFolder(const QString& folder);
    bool Done() const { return done_; }

  private:
    void Fail(const QString& message) {
        tell_(message);
        done_ = false;
    }
    void Check(bool written) {
        if (!written) Fail(kUnwritten);
    }
    QString LocationOf(const QString& locations, const QString& folder) const;
    QString SecurityKey() const { return "Software\\Microsoft\\Office\\" + version_ + "\\Access\\Security"; }

    Registry& registry_;
    QString programs_;
    QString version_;
    const std::function<void(const QString&)>& tell_;
    bool done_ = true;
};

void TrustSettings::SetMdbExtension() {
    if (!registry_.HasKey(Hive::User, kExtensions)) {
        done_ = false;
        return;
    }
    const QString program = programs_ + "MSACCESS.EXE";
    if (registry_.Text(Hive::User, kExtensions, QStringLiteral("mdb")) != program)
        Check(registry_.WriteText(Hive::User, kExtensions, QStringLiteral("mdb"), program));
}

void TrustSettings::SetLevel() {
    registry_.CreateKey(Hive::User, SecurityKey());
    Check(registry_.WriteNumber(Hive::User, SecurityKey(), QStringLiteral("Level"), 1));
}

/// The subkey that trusts the folder already, or a new one: numbered behind the greatest name as a text, so that behind
/// "Location9" stands "Location10", whether that is there or not.
QString TrustSettings::LocationOf(const QString& locations, const QString& folder) const {
    QString greatest;
    for (const QString& name : registry_.Subkeys(Hive::User, locations)) {
        const auto path = registry_.Text(Hive::User, locations + "\\" + name, QStringLiteral("Path"));
        if (path && path->contains(folder + "\\")) return name;
        greatest = std::max(greatest, name);
    }
    if (greatest.isEmpty()) return QStringLiteral("Location0");
    return "Location" + QString::number(items::Val(greatest.mid(kLocationPrefix)) + 1, 'f', 0);
}

void TrustSettings::TrustFolder(const QString& folder) {
    const QString locations = SecurityKey() + "\\Trusted Locations";
    const bool opened = registry_.HasKey(Hive::User, locations) || registry_.CreateKey(Hive::User, locations);
    // The other versions have always gone on without a word.
    if (!opened && version_ == QLatin1String("14.0")) Fail(kNotOpened);
    if (folder.startsWith(QLatin1String("\\\\")))
        Check(registry_.WriteNumber(Hive::User, locations, QStringLiteral("AllowNetworkLocations"), 1));
    const QString location = locations + "\\" + LocationOf(locations, folder);
    if (!registry_.CreateKey(Hive::User, location)) return Fail(kNotSet);
    Check(registry_.WriteText(Hive::User, location, QStringLiteral("Path"), folder + "\\"));
    Check(registry_.WriteNumber(Hive::User, location, QStringLiteral("AllowSubfolder"), 1));
}

}  // namespace

bool PrepareOfficeTrust(Registry& registry, const QString& reportFolder,
                        const std::function<void(const QString&)>& tell) {
    const auto programs = registry.Text(Hive::Machine, kInstalled, QStringLiteral("Path"));
    const Version* version = programs ? FindVersion(*programs) : nullptr;
    if (!version) return false;
    TrustSettings settings(registry, *programs, QString::fromLatin1(version->number), tell);
    settings.SetMdbExtension();
    if (version->action == Action::Level) settings.SetLevel();
    if (version->action == Action::Location) settings.TrustFolder(reportFolder);
    return settings.Done();
}

}  // namespace hostsetup
