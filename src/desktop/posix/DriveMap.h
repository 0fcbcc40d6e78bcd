#pragma once

#include <QMap>
#include <QString>

namespace orvantine {

class SettingsStore;

/// Folders of the host by drive letter, as the user's settings name them: "C:" -> "/media/user/windows".
[[nodiscard]] QMap<QString, QString> driveMap(const SettingsStore& settings);

} // namespace orvantine
