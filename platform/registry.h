#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <variant>

namespace platform {

/// The machine's settings registry: keys with subkeys and named values, in a hive for the machine and one for the user.
/// Keys are paths from the hive on, parted by "\".
class Registry {
  public:
    enum class Hive { Machine, User };
    virtual ~Registry() = default;

    /// True when there is such a key and it can be read.
    virtual bool HasKey(Hive hive, const QString& key) const = 0;
    /// Makes the key and those above it; one that is there already is left as it is. False when it can't be made.
    virtual bool CreateKey(Hive hive, const QString& key) = 0;
    /// A value as text; nothing when there is no such key or value.
    virtual std::optional<QString> Text(Hive hive, const QString& key, const QString& name) const = 0;
    /// Writes a value into a key that is there. False when that fails.
    virtual bool WriteText(Hive hive, const QString& key, const QString& name, const QString& text) = 0;
    virtual bool WriteNumber(Hive hive, const QString& key, const QString& name, int number) = 0;
    /// Names of the keys just below a key, in the registry's order.
    virtual QStringList Subkeys(Hive hive, const QString& key) const = 0;
};

/// A registry in memory, where what would be written into a machine's can be read. Empty at first.
class MemoryRegistry : public Registry {
  public:
    bool HasKey(Hive hive, const QString& key) const override;
    bool CreateKey(Hive hive, const QString& key) override;
    std::optional<QString> Text(Hive hive, const QString& key, const QString& name) const override;
    bool WriteText(Hive hive, const QString& key, const QString& name, const QString& text) override;
    bool WriteNumber(Hive hive, const QString& key, const QString& name, int number) override;
    QStringList Subkeys(Hive hive, const QString& key) const override;

    /// From now on nothing at or below this key can be read, made or written.
    void Close(Hive hive, const QString& key) { closed_ = Place(hive, key); }
    /// From now on no value can be written.
    void RefuseValues() { refusesValues_ = true; }

  private:
    using Value = std::variant<QString, int>;

    static QString Place(Hive hive, const QString& key);
    bool IsClosed(const QString& place) const;
    bool Write(Hive hive, const QString& key, const QString& name, const Value& value);

    QMap<QString, QMap<QString, Value>> keys_;
    QString closed_;
    bool refusesValues_ = false;
};

/// The registry of this machine; null when it has none.
std::unique_ptr<Registry> SystemRegistry();

}  // namespace platform
