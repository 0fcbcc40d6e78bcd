#include "desktop/posix/DriveMap.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/RegSettings.h"
#include "desktop/posix/ResetFolder.h"
#include "desktop/posix/XdgFolders.h"
#include "siblings/ResetDatabase.h"

#include <QDateTime>

#include <cstdio>

using namespace orvantine;
using namespace Qt::StringLiterals;

/// Resets the database of the settings. It takes no arguments, so that nobody can point it elsewhere.
int main(int argc, char**)
{
    constexpr int WrongCall = 2;
    if (argc != 1)
        return WrongCall;
    const XdgFolders folders = xdgFolders(processEnvironment());
    if (folders.stateHome.isEmpty())
        return 1;
    const RegSettings settings({.file = folders.configHome + u"/Orvanten Manager/settings.reg"_s});
    const auto folder = settings.value(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"Database"_s);
    if (!folder || folder->text.isEmpty())
        return 1;
    PosixFiles files({.drives = driveMap(settings), .recoveryFolder = resetFolder(folders)});
    const ResetPlaces places{
        .dataFolder = folder->text, .trash = folders.dataHome + u"/Trash"_s, .now = QDateTime::currentDateTime()};
    if (files.trouble() || !resetDatabase(files, places)) {
        std::fputs("Laubfeger: nothing was changed\n", stderr);
        return 1;
    }
    return 0;
}
