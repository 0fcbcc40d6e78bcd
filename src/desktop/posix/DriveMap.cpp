#include "desktop/posix/DriveMap.h"

#include "platform/SettingsStore.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QMap<QString, QString> driveMap(const SettingsStore& settings)
{
    const QString key = u"Software\\Verdanis\\Orvant Manager\\Laufwerke"_s;
    QMap<QString, QString> drives;
    const QStringList letters = settings.names(Hive::CurrentUser, key);
    for (const QString& letter : letters)
        if (const auto folder = settings.value(Hive::CurrentUser, key, letter); folder && !folder->text.isEmpty())
            drives.insert(letter.toUpper(), folder->text);
    return drives;
}

} // namespace orvantine
