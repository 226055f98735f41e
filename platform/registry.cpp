#include "platform/registry.h"

#ifdef Q_OS_WIN
#include <QSettings>
#endif

namespace platform {

QString MemoryRegistry::Place(Hive hive, const QString& key) {
    return (hive == Hive::Machine ? QStringLiteral("M\\") : QStringLiteral("U\\")) + key + u'\\';
}

bool MemoryRegistry::IsClosed(const QString& place) const {
    return !closed_.isEmpty() && place.startsWith(closed_);
}

bool MemoryRegistry::HasKey(Hive hive, const QString& key) const {
    const QString place = Place(hive, key);
    return !IsClosed(place) && keys_.contains(place);
}

bool MemoryRegistry::CreateKey(Hive hive, const QString& key) {
    if (IsClosed(Place(hive, key))) return false;
    const QStringList steps = key.split(u'\\');
    for (qsizetype count = 1; count <= steps.size(); ++count)
        keys_[Place(hive, steps.first(count).join(u'\\'))];
    return true;
}

std::optional<QString> MemoryRegistry::Text(Hive hive, const QString& key, const QString& name) const {
    if (!HasKey(hive, key)) return std::nullopt;
    const auto values = keys_.value(Place(hive, key));
    const auto value = values.constFind(name);
    if (value == values.cend()) return std::nullopt;
    const int* number = std::get_if<int>(&*value);
    return number ? QString::number(*number) : std::get<QString>(*value);
}

bool MemoryRegistry::Write(Hive hive, const QString& key, const QString& name, const Value& value) {
    if (refusesValues_ || !HasKey(hive, key)) return false;
    keys_[Place(hive, key)][name] = value;
    return true;
}

bool MemoryRegistry::WriteText(Hive hive, const QString& key, const QString& name, const QString& text) {
    return Write(hive, key, name, text);
}

bool MemoryRegistry::WriteNumber(Hive hive, const QString& key, const QString& name, int number) {
    return Write(hive, key, name, number);
}

QStringList MemoryRegistry::Subkeys(Hive hive, const QString& key) const {
    QStringList names;
    const QString place = Place(hive, key);
    for (auto below = keys_.lowerBound(place); below != keys_.cend() && below.key().startsWith(place); ++below) {
        const QString name = below.key().mid(place.size()).chopped(below.key() == place ? 0 : 1);
        if (!name.isEmpty() && !name.contains(u'\\')) names.append(name);
    }
    return names;
}

#ifdef Q_OS_WIN

namespace {

class WindowsRegistry : public Registry {
  public:
    bool HasKey(Hive hive, const QString& key) const override {
        const qsizetype last = key.lastIndexOf(u'\\');
        return QSettings(Root(hive) + key.left(last), QSettings::NativeFormat)
            .childGroups()
            .contains(key.mid(last + 1), Qt::CaseInsensitive);
    }
    bool CreateKey(Hive hive, const QString& key) override {
        // A key comes into being with its first value.
        QSettings settings(Root(hive) + key, QSettings::NativeFormat);
        return settings.isWritable();
    }
    std::optional<QString> Text(Hive hive, const QString& key, const QString& name) const override {
        const QVariant value = QSettings(Root(hive) + key, QSettings::NativeFormat).value(name);
        return value.isValid() ? std::optional(value.toString()) : std::nullopt;
    }
    bool WriteText(Hive hive, const QString& key, const QString& name, const QString& text) override {
        return Write(hive, key, name, text);
    }
    bool WriteNumber(Hive hive, const QString& key, const QString& name, int number) override {
        return Write(hive, key, name, number);
    }
    QStringList Subkeys(Hive hive, const QString& key) const override {
        return QSettings(Root(hive) + key, QSettings::NativeFormat).childGroups();
    }

  private:
    static QString Root(Hive hive) {
        return hive == Hive::Machine ? QStringLiteral("HKEY_LOCAL_MACHINE\\") : QStringLiteral("HKEY_CURRENT_USER\\");
    }
    static bool Write(Hive hive, const QString& key, const QString& name, const QVariant& value) {
        QSettings settings(Root(hive) + key, QSettings::NativeFormat);
        settings.setValue(name, value);
        settings.sync();
        return settings.status() == QSettings::NoError;
    }
};

}  // namespace

std::unique_ptr<Registry> SystemRegistry() {
    return std::make_unique<WindowsRegistry>();
}

#else

std::unique_ptr<Registry> SystemRegistry() {
    return nullptr;
}

#endif

}  // namespace platform
