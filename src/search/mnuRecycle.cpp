#include "search/mnuRecycle.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"
#include "search/FileAfterFile.h"
#include "search/UsedLists.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// False if the program has ended.
bool removeBackups(Root& root, Command& command)
{
    const std::optional<UsedLists> used = UsedLists::read(root);
    if (!used) {
        showQuietly(root, u"Nichts bereinigt: Die Datenbank konnte nicht ganz gelesen werden."_s);
        return true;
    }
    root.LMp3Files.Path = playlistFolder(root);
    root.LMp3Files.Pattern = u"*.bak"_s;
    const QStringList names = root.files.list(root.LMp3Files.Path, root.LMp3Files.Pattern);
    const QString folder = root.LMp3Files.Path;
    const WholeChange together(root.files, WholeChange::Events::Served);
    for (const QString& name : names) {
        const QString file = FileDirPath::join(folder, name);
        if (!used->contains(root, file) && Dateiexistenz::FileExists(root, file))
            (void)changeAlone(root, [&] { return root.files.remove(file); });
        if (!command.yield())
            return false;
    }
    return true;
}

} // namespace

void mnuRecycle_Click(Root& root)
{
    Command command(root);
    const std::optional<Answer> answer =
        command.ask({.text = u"Bereinigung des lokalen Playlistenordners von alten Wiedergabelisten. \n"
                             u"Möchten Sie die Sicherheitskopien geänderter Playlisten löschen ?"_s,
                     .title = u" Playlistenordner bereinigen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::OkCancel});
    if (answer != Answer::Ok)
        return;
    command.wait();
    const bool goesOn = !Dateiexistenz::FolderExists(root, playlistFolder(root)) || removeBackups(root, command);
    root.LMp3Files.Pattern = AudioTypes::Pattern.toString();
    if (goesOn)
        command.lastYield();
}

} // namespace orvantine
