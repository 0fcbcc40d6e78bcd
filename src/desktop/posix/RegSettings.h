#pragma once

#include "desktop/posix/RegText.h"
#include "platform/SettingsStore.h"

#include <QMap>

#include <sys/stat.h>

namespace orvantine {

struct RegSettingsOptions
{
    /// Made, with its folder, at the first change.
    QString file;
    /// Where the desktop looks for what starts with it; "" for nowhere.
    QString autostartFolder;
    /// The running program, for an autostart whose text names no existing file.
    QString program;
    /// "My Music", "Personal", "AppData" and their folders.
    QMap<QString, QString> shellFolders;
};

/// The settings of the user in one file in the form of a registry export, written as a whole and at once at every
/// change. A few keys are the desktop's instead: the autostart entry and the user's folders. The machine-wide hive is
/// empty and takes nothing.
class RegSettings : public SettingsStore
{
public:
    explicit RegSettings(RegSettingsOptions options);

    [[nodiscard]] bool keyExists(Hive hive, const QString& key) const override;
    bool createKey(Hive hive, const QString& key) override;
    [[nodiscard]] std::optional<SettingValue> value(Hive hive, const QString& key, const QString& name) const override;
    bool setValue(Hive hive, const QString& key, const QString& name, const SettingValue& value) override;
    bool removeValue(Hive hive, const QString& key, const QString& name) override;
    [[nodiscard]] QStringList names(Hive hive, const QString& key) const override;

private:
    /// False if the file is there and cannot be read: then nothing may be written over it.
    bool load() const;
    bool save(const RegText& fresh);

    RegSettingsOptions m_options;
    mutable RegText m_text;
    mutable bool m_known = false;
    mutable struct stat m_stamp = {};
};

} // namespace orvantine
