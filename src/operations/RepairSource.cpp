#include "operations/RepairSource.h"

#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/FeatureTips.h"
#include "app/Root.h"
#include "metadata/SelectedTrack.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlayEntrys.h"
#include "transfer/BrowseFolders2k.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isOtherMissing(const Root& root, int track)
{
    for (int i = 1; i <= root.LListView2.count(); ++i)
        if (i != track && isTrackMissing(root, i))
            return true;
    return false;
}

/// The folder in which the user says the file is; "" for none.
QString askForFolder(Root& root, Command& command, const QString& path)
{
    const std::optional<Answer> answer =
        command.ask({.text = u"Die Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner. \n"
                             u"Wahrscheinlich wurde die Datei(en) im Verzeichnis gelöscht oder verschoben.\n"
                             u"\n"
                             u"Klicken Sie ''Wiederholen'' um den Ordner für die Sounddatei anzugeben, \n"
                             u"oder klicken Sie ''Ignorieren'' um einen Netzwerkordner zu wählen.\n"_s +
                             FileDirPath::FileNameOf(path),
                     .title = u" Fehlerhafte Quelldatei(en)"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::AbortRetryIgnore});
    if (answer == Answer::Retry)
        return BrowseFolders(root, FolderRoot::Computer);
    if (answer == Answer::Ignore)
        return BrowseFolders(root, FolderRoot::Network);
    return {};
}

bool wantsAll(Command& command)
{
    return command.ask(
               {.text = u"Möchten Sie für alle dieser Liste enthalten Tracks diesen als Quellordner verwenden ?   "_s,
                .title = u" Playlisten-Verzeichnis"_s,
                .icon = MessageIcon::Exclamation,
                .buttons = MessageButtons::OkCancel}) == Answer::Ok;
}

/// The track is looked for in the folder from now on, and loses the colour of a missing one.
void moveTrack(const Root& root, TrackList::Hold& hold, int track, const QString& folder)
{
    hold.setPath(track, FileDirPath::join(folder, FileDirPath::FileNameOf(trackPath(root, track))));
}

} // namespace

bool isTrackMissing(const Root& root, int track)
{
    return !Dateiexistenz::FileExists(root, trackPath(root, track));
}

void repairSource(Root& root, int track)
{
    const QString path = trackPath(root, track);
    if (root.mnuErrorDisplay.Checked.value() && !ShowFeatureTip(root, 715))
        return;

    // Rows that are not the list's own are read again, and may be others then. Nothing can be put right in those that
    // cannot be read.
    if (!ownTracks(root) || trackPath(root, track) != path)
        return;
    TrackList::Hold hold = root.trackList.hold();
    Command command(root);
    const QString folder = askForFolder(root, command, path);
    if (folder.isEmpty() || !Dateiexistenz::FolderExists(root, folder) || !hold.valid() ||
        trackPath(root, track) != path)
        return;
    if (!Dateiexistenz::FileExists(root, FileDirPath::join(folder, FileDirPath::FileNameOf(path))))
        return;

    moveTrack(root, hold, track, folder);
    const int count = root.LListView2.count();
    if (count > 1 && isOtherMissing(root, track) && wantsAll(command)) {
        // Required: the files are not looked for in the folder.
        for (int i = 1; i <= count; ++i)
            moveTrack(root, hold, i, folder);
    }
    if (!hold.valid() || command.ended())
        return;
    SavePlayEntrys(root);
    command.lastYield();
}

} // namespace orvantine
