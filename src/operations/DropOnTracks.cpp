#include "operations/DropOnTracks.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "operations/TrackPaths.h"
#include "platform/FileDirPath.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/PlaylistText.h"
#include "playlists/SavePlayEntrys.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isAudio(const Root& root, const QString& path)
{
    return AudioTypes::isDropped(path) && !breaksLine(path) && !root.files.isFolder(path);
}

bool mayAddTo(const Root& root, Command& command, const QString& playlist)
{
    return !readSetting(root, u"ShowDialog"_s).is(1) ||
           command.ask(
               {.text = u"Möchten Sie zur Trackliste ''"_s + playlist + u"'' wirklich Audiodateien hinzufügen ? "_s,
                .title = u" Audiodateien hinzufügen"_s,
                .icon = MessageIcon::Exclamation,
                .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

bool mayAddTwice(Command& command, const QString& file)
{
    return command.ask(
               {.text = u"Die Sounddatei ''"_s + FileDirPath::FileNameOf(file) +
                        u"'' ist bereits vor\nMöchten Sie fortfahren und die doppelten Dateien trotzdem hinzufügen ?"_s,
                .title = u" Audiodateien hinzufügen"_s,
                .icon = MessageIcon::None,
                .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

/// The files in front of the first one that the list holds already, or holds by then.
qsizetype countOfNew(const QStringList& files, QSet<QString> known)
{
    const auto held = std::find_if(files.begin(), files.end(), [&known](const QString& file) {
        const QString path = FileDirPath::compared(file);
        if (known.contains(path))
            return true;
        known.insert(path);
        return false;
    });
    return held - files.begin();
}

/// False where something else has opened another list, or the program has ended.
bool addFiles(Root& root, const QStringList& files)
{
    Command command(root);
    const TrackList::Hold hold = root.trackList.hold();
    const qsizetype newOnes = countOfNew(files, pathsOf(root.LListView2));
    command.wait(Wait::Buttons);
    AddPlayEntrys(root, files.first(newOnes));
    if (hold.valid() && newOnes < files.size()) {
        // While the question is up the sequence may open another list: what was added is safe by then.
        if (newOnes > 0)
            SavePlayEntrys(root);
        command.wait(Wait::Buttons);
        // The question speaks of all doubles: its Yes counts for the rest of the drop.
        if (hold.valid() && mayAddTwice(command, files[newOnes]) && hold.valid())
            AddPlayEntrys(root, files.sliced(newOnes));
    }
    return hold.valid() && !command.ended();
}

} // namespace

void LListView2_OLEDragDrop(Root& root, const QStringList& paths)
{
    if (paths.isEmpty())
        return;
    ListView& list = root.LListView1;
    Command command(root);

    if (wholeCount(root) == 0 && command.ask({.text = u"Im Orvanten-Manager sind keine Playlisten vorhanden. \n"
                                                      u"Möchten Sie eine neue Wiedergabeliste hinzufügen ?"_s,
                                              .title = u" Keine Wiedergabeliste"_s,
                                              .icon = MessageIcon::Exclamation,
                                              .buttons = MessageButtons::YesNo}) == Answer::Yes)
        root.mnuNeu.press();
    if ((list.selectedRow() == 0 && root.trackList.path().isEmpty()) || command.ended())
        return;

    if (!std::all_of(paths.begin(), paths.end(), [&root](const QString& path) { return isAudio(root, path); }))
        return command.tell({.text = u"Es können nur Mp3-Audiodateien in die Trackliste hinzugefügt werden. "_s,
                             .title = u" Audiodateien hinzufügen"_s,
                             .icon = MessageIcon::Critical});

    if (!openOwnTracks(root))
        return;
    const TrackList::Hold hold = root.trackList.hold();
    // The filter may hide the row of the list in sight.
    const int row = rowInSight(root);
    const QString name = row > 0 ? playlistName(root, row) : root.tPlaylisteinträge.Caption.value();
    if (!mayAddTo(root, command, name) || !hold.valid() || !addFiles(root, paths))
        return;
    SavePlayEntrys(root);
    // The read of a list without entries leaves the tracks out of sight.
    if (root.LListView2.count() > 0)
        root.LListView2.Visible = true;
    if (!command.ended())
        root.mnuSpeichern.Click();
}

} // namespace orvantine
