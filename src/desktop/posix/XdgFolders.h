#pragma once

#include "platform/Services.h"

#include <QMap>
#include <QString>

namespace orvantine {

/// The user's folders by the rules of the desktop, each absolute and without a trailing separator. Without a home
/// folder they lie in a folder below the temporary one, if nobody else has put one there, and there is no place for the
/// program's state.
struct XdgFolders
{
    QString home;
    QString dataHome;
    QString configHome;
    /// "" without a home folder: what is kept there must be the user's alone.
    QString stateHome;
    /// Where sockets and locks stand; "" if the session gives none.
    QString runtime;
    QString autostart;
    QString documents;
    QString music;
    QString temp;
};

/// From the environment and from `user-dirs.dirs` in the configuration folder. Makes nothing.
[[nodiscard]] XdgFolders xdgFolders(const QMap<QString, QString>& environment);
/// The process's environment.
[[nodiscard]] QMap<QString, QString> processEnvironment();

[[nodiscard]] StandardFolders standardFolders(const XdgFolders& folders, const QString& programFolder);

/// Makes the folder that stands for the system's, and in it "FONTS", a link to the user's font folder, which is made
/// too. What stands there already stays.
bool prepareWindowsFolder(const XdgFolders& folders);

} // namespace orvantine
