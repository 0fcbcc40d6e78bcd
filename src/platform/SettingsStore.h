#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvantine {

enum class Hive : quint32 { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

enum class SettingType : int { None = 0, String = 1, ExpandString = 2, Binary = 3, Dword = 4, MultiString = 7 };

/// One typed value. Texts stand in `text` without a terminator (a multi-string's parts joined by CR LF as written),
/// numbers and binary data in `bytes`, a number with its lowest byte first.
struct SettingValue
{
    SettingType type = SettingType::None;
    QString text;
    QByteArray bytes;

    bool operator==(const SettingValue&) const = default;
};

/// A store of typed values under keys ("Software\Verdanis\Orvant Manager"), both found ignoring case. Each change is
/// on disk when the call returns. A damaged store reads as far as it can be read and is never emptied by a change:
/// what was there is put aside first.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;

    [[nodiscard]] virtual bool keyExists(Hive hive, const QString& key) const = 0;
    /// True only if the key is new; missing parents are created too.
    virtual bool createKey(Hive hive, const QString& key) = 0;
    [[nodiscard]] virtual std::optional<SettingValue> value(Hive hive, const QString& key,
                                                            const QString& name) const = 0;
    /// False if the key does not exist or the store cannot be written.
    virtual bool setValue(Hive hive, const QString& key, const QString& name, const SettingValue& value) = 0;
    virtual bool removeValue(Hive hive, const QString& key, const QString& name) = 0;
    /// Names of the values of a key in the store's order.
    [[nodiscard]] virtual QStringList names(Hive hive, const QString& key) const = 0;
};

} // namespace orvantine
