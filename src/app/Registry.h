#pragma once

#include "platform/SettingsStore.h"

#include <optional>
#include <variant>

namespace orvantine {

struct Root;

/// A value on its way to or from the settings store: nothing, a 16-bit or a 32-bit integer, a text, or a number of a
/// kind that the store has no form for.
using SettingVariant = std::variant<std::monostate, qint16, qint32, QString, double>;

namespace Registry {

[[nodiscard]] bool KeyExists(const Root& root, Hive hive, const QString& path);
/// True only if the key is new.
bool CreateKey(Root& root, Hive hive, const QString& path);
/// False if key or value cannot be read, or if a binary value is longer than a number. A text comes with its NUL and a
/// blank behind it; numbers come as 32-bit integers; other types leave `value` as it is and still give true.
bool ReadValue(const Root& root, Hive hive, const QString& path, const QString& name, SettingVariant& value);
/// 16-bit integers become double words, 32-bit integers four bytes of binary, texts strings or, with a CR,
/// multi-strings that end in CR LF. Any other kind writes nothing and gives true.
bool WriteValue(Root& root, Hive hive, const QString& path, const QString& name, const SettingVariant& value);
bool DeleteValue(Root& root, Hive hive, const QString& path, const QString& name);

} // namespace Registry

/// What came of reading a value of the program's own settings key.
struct Setting
{
    bool present = false;
    SettingVariant value;

    /// The numeric form of the value equals `number`.
    [[nodiscard]] bool is(int number) const;
    [[nodiscard]] bool isOrAbsent(int number) const { return !present || is(number); }
    /// Cut at its first NUL; a number as its digits.
    [[nodiscard]] QString text() const;
    /// There is a value that can be compared.
    [[nodiscard]] bool hasValue() const;
    /// The number as a whole one, the nearest that an int holds.
    [[nodiscard]] int whole() const;
    /// Leading number of a text; 0 for nothing.
    [[nodiscard]] double number() const;
    /// A number, or a text that is one and nothing else.
    [[nodiscard]] bool isNumber() const;
};

/// The key under the current user that holds geometry and options.
[[nodiscard]] QString settingsKey();

[[nodiscard]] Setting readSetting(const Root& root, const QString& name);
/// Nothing where the settings cannot be read at present: what a read does not find is absent only if they can.
[[nodiscard]] std::optional<Setting> readForCertain(const Root& root, const QString& name);
void writeSetting(Root& root, const QString& name, const SettingVariant& value);

} // namespace orvantine
