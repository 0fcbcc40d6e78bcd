#pragma once

#include "platform/SettingsStore.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace orvantine {

struct RegValue
{
    /// "" is the key's default value.
    QString name;
    SettingValue value;
};

struct RegKey
{
    /// From the hive on: "HKEY_CURRENT_USER\Software\…".
    QString path;
    std::vector<RegValue> values;
};

/// Keys and values in the text form of a registry export.
struct RegText
{
    std::vector<RegKey> keys;
    /// A line could not be read, or the head line is missing: what is in `keys` is not all that stood there.
    bool damaged = false;

    /// UTF-8, UTF-16 with a BOM, or windows-1252.
    [[nodiscard]] static RegText parse(const QByteArray& bytes);
    /// UTF-8, lines end in CR LF.
    [[nodiscard]] QByteArray print() const;

    /// A name or path that one line can hold.
    [[nodiscard]] static bool canHold(const QString& name);

    /// Ignoring case; null if there is none.
    [[nodiscard]] RegKey* key(const QString& path);
    [[nodiscard]] const RegKey* key(const QString& path) const;
};

/// Ignoring case; null if there is none.
[[nodiscard]] RegValue* findValue(RegKey& key, const QString& name);
[[nodiscard]] const RegValue* findValue(const RegKey& key, const QString& name);

} // namespace orvantine
