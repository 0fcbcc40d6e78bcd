#include "shell/mnuOpenMediaplayer.h"

#include "app/Command.h"
#include "app/PlayButtons.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/SelectedTrack.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString programsFolder(const Root& root)
{
    SettingVariant value;
    if (!Registry::ReadValue(root, Hive::LocalMachine, u"Software\\Microsoft\\Windows\\CurrentVersion"_s,
                             u"ProgramFilesDir"_s, value))
        return u"C:\\Programme"_s;
    return Setting{.present = true, .value = value}.text();
}

} // namespace

void mnuOpenMediaplayerEx_Click(Root& root, int index)
{
    // What is selected now is meant, whatever the sequence opens while the box stands.
    const QString file = index == 1 ? selectedTrackPath(root) : selectedPlaylist(root);
    if (file.isEmpty())
        return;
    Command command(root);
    if (root.pPausePlayer.Enabled.value()) {
        root.pStopPlayer.Click();
        if (command.ended() ||
            !command.ask({.text = u"Die Wiedergabe wurde angehalten, damit sie der andere Player fortsetzen kann."_s,
                          .title = u" Wiedergabe angehalten"_s}))
            return;
    }
    OpenMediaplayer(root, file);
}

void OpenMediaplayer(Root& root, const QString& file)
{
    const QString player = programsFolder(root) + u"\\Windows Media Player\\"_s + u"wmplayer.exe"_s;
    root.services.launcher.start(
        {.kind = LaunchKind::DefaultPlayer, .command = player + u' ' + file, .target = file, .arguments = {}});
}

} // namespace orvantine
