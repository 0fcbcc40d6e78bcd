#include "operations/DropOnCatalogue.h"

#include "app/AudioTypes.h"
#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "operations/TrackPaths.h"
#include "platform/FileDirPath.h"
#include "playback/CoverArt.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/PlaylistText.h"
#include "playlists/SavePlayEntrys.h"
#include "search/Dialogsuche.h"

#include <optional>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isPlaylist(const QString& path)
{
    return path.right(3).toLower() == u"m3u"_s && !breaksLine(path);
}

void tellFailure(Command& command)
{
    command.tell({.text = u"Beim Hinzufügen der Wiedergabeliste sind Fehler aufgetreten. \n"
                          u"Die Sounddateien konnte nicht zur Datenbank hinzugefügt werden.  "_s,
                  .title = u" Playliste hinzufügen"_s});
}

void offerNewPlaylist(Root& root, Command& command)
{
    if (command.ask({.text = u"Es können nur M3u-Tracklisten oder Mp3-Dateiordner hinzugefügt werden. \n\n"
                             u"Erstellen Sie eine neue Playliste im Menü ''Hinzufügen'' und fügen dann \n"
                             u"die Mp3-Dateien in die rechte Spalte ''Einträge in der Playliste'' hinzu.\n"
                             u"Möchten Sie jetzt eine neue Playliste erstellen ?"_s,
                     .title = u" Tracklisten hinzufügen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNo}) == Answer::Yes)
        root.mnuNeu.press();
}

/// Shows the tracks of the new row, the last one, though the sequence may have gone on to another.
void openNewRow(Root& root)
{
    const ListView& list = root.LListView1;
    const int row = list.count();
    const QString path = openRow(root, row);
    if (list.selectedRow() == row && playlistPath(root, row) == path)
        setTrackCount(root, row);
}

RowIdentity selectedEntry(const Root& root)
{
    return identityOf(root, root.LListView1.selectedRow());
}

/// The entry is selected and the rows in sight are its tracks.
bool isOpen(Root& root, const RowIdentity& entry)
{
    return selectedEntry(root) == entry && root.trackList.isOf(entry.path) && ownTracks(root);
}

/// The entry that was added, nothing where it failed.
std::optional<RowIdentity> addPlaylist(Root& root, QString path)
{
    // A new row would make an empty list of a file that has vanished.
    const QString name = FileDirPath::titleOf(path);
    if (!Dateiexistenz::FileExists(root, path) || !NewPlayliste(root, path, name))
        return {};
    openNewRow(root);
    return RowIdentity{.path = path, .name = playlistName(root, root.LListView1.count())};
}

/// The audio files of a folder that the open list does not hold.
QStringList newAudioFilesOf(const Root& root, const QString& folder)
{
    QStringList files = root.files.list(folder, AudioTypes::Pattern.toString());
    for (QString& file : files)
        file = FileDirPath::join(folder, file);
    const QSet<QString> known = pathsOf(root.LListView2);
    files.removeIf([&known](const QString& file) { return known.contains(FileDirPath::compared(file)); });
    return files;
}

/// The entry that was added, nothing where it failed.
std::optional<RowIdentity> addFolder(Root& root, const QString& folder, const QString& name)
{
    // A list of such a name would have no file, and its tracks would be gone with the next click.
    if (name.isEmpty() || !FileDirPath::canBeFileName(name) || breaksLine(folder))
        return {};
    QString path = unnamedPlaylist(root);
    if (!NewPlayliste(root, path, name))
        return {};
    const RowIdentity entry{.path = path, .name = name};
    // The file of a list with the same name keeps its tracks. The sequence may have put those of another list in sight.
    if (root.trackList.content() != TrackList::Content::Own || !isOpen(root, entry))
        openNewRow(root);
    if (!isOpen(root, entry))
        return {};
    const TrackList::Hold hold = root.trackList.hold();
    AddPlayEntrys(root, newAudioFilesOf(root, folder), true);
    if (!hold.valid() || !isOpen(root, entry))
        return {};
    SavePlayEntrys(root);
    // The read of a list without entries leaves the tracks out of sight.
    if (root.LListView2.count() > 0)
        root.LListView2.Visible = true;
    return entry;
}

/// Gives the entry, nothing where it failed. A new one is stored at once, before the next item is looked at, and its
/// file comes into being with it.
template <class Add>
std::optional<RowIdentity> storeItem(Root& root, const Command& command, Add add)
{
    const WholeChange together(root.files, WholeChange::Events::Served);
    std::optional<RowIdentity> entry = add();
    // Not only where the user may press it: in a catalogue that was empty it is disabled until the next pass.
    if (entry && !command.ended())
        root.mnuSpeichern.Click();
    return entry;
}

void addItem(Root& root, Command& command, const QString& item, bool folder)
{
    if (folder) {
        if (!addFolderPlaylist(root, command, item, FileDirPath::FileNameOf(item)) && !command.ended())
            tellFailure(command);
        return;
    }
    command.wait(Wait::Buttons);
    const std::optional<RowIdentity> stored = storeItem(root, command, [&] { return addPlaylist(root, item); });
    command.endWait();
    if (command.ended())
        return;
    if (!stored)
        return tellFailure(command);
    Dialogsuche(root, false);
}

} // namespace

bool addFolderPlaylist(Root& root, Command& command, const QString& folder, const QString& name)
{
    command.wait(Wait::Buttons);
    const std::optional<RowIdentity> stored = storeItem(root, command, [&] { return addFolder(root, folder, name); });
    command.endWait();
    if (command.ended() || !stored)
        return false;
    Dialogsuche(root, false);
    // The sequence may have gone on to another row: the picture is not that one's cover.
    if (selectedEntry(root) == *stored)
        FindPicture(root, folder);
    return true;
}

void LListView1_OLEDragDrop(Root& root, const QStringList& paths)
{
    if (isFiltered(root))
        return;
    Command command(root);
    bool offered = false;
    for (const QString& path : paths) {
        if (command.ended() || !mayAddRow(root, command))
            return;
        const bool folder = root.files.isFolder(path);
        const bool list = folder || isPlaylist(path);
        if (list)
            addItem(root, command, path, folder);
        else if (!std::exchange(offered, true))
            offerNewPlaylist(root, command);
    }
}

} // namespace orvantine
