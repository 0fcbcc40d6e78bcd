#pragma once

#include "platform/SettingsStore.h"
#include "support/CallLog.h"

#include <QMap>

#include <utility>
#include <vector>

namespace orvantine::fake {

/// A settings store in memory. The machine-wide hive is read-only.
class MemorySettings final : public SettingsStore
{
public:
    explicit MemorySettings(CallLog& log) : m_log(log) {}

    [[nodiscard]] bool keyExists(Hive hive, const QString& key) const override;
    bool createKey(Hive hive, const QString& key) override;
    [[nodiscard]] std::optional<SettingValue> value(Hive hive, const QString& key, const QString& name) const override;
    bool setValue(Hive hive, const QString& key, const QString& name, const SettingValue& value) override;
    bool removeValue(Hive hive, const QString& key, const QString& name) override;
    [[nodiscard]] QStringList names(Hive hive, const QString& key) const override;

    /// For the test: puts a value, with its key, without a line in the log. Also in the machine-wide hive.
    void put(Hive hive, const QString& key, const QString& name, const SettingValue& value);
    /// For the test: takes a value away, without a line in the log.
    void drop(Hive hive, const QString& key, const QString& name);
    /// For the test: a value, without a line in the log.
    [[nodiscard]] std::optional<SettingValue> peek(Hive hive, const QString& key, const QString& name) const;

private:
    using Values = std::vector<std::pair<QString, SettingValue>>;

    [[nodiscard]] static QString place(Hive hive, const QString& key);

    CallLog& m_log;
    QMap<QString, Values> m_keys;
};

/// Values as they are written by type.
[[nodiscard]] SettingValue stringSetting(const QString& text);
[[nodiscard]] SettingValue dwordSetting(qint32 number);
/// A 32-bit integer as four bytes of binary.
[[nodiscard]] SettingValue binarySetting(qint32 number);
/// `sz "text"`, `dword 1`, `binary 05 00 00 00`, `multi-sz "a\r\nb\r\n"`.
[[nodiscard]] QString described(const SettingValue& value);

} // namespace orvantine::fake
