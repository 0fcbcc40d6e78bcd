#include "playlists/SavePlayEntrys.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "playlists/TrackRow.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void tellFailure(Command& command)
{
    command.tell({.text = u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    "_s,
                  .title = u" Wiedergabeliste speichern"_s,
                  .icon = MessageIcon::Critical});
}

bool isUserList(const Root& root, const QString& path)
{
    const QString own = userFolder(root);
    return FileDirPath::compared(path).startsWith(FileDirPath::compared(own));
}

void prepareSave(Root& root)
{
    saveColumnWidths(root);
    ensurePlaylistFolder(root);
    showTrackCount(root, rowInSight(root));
}

void writeList(Root& root, Command& command)
{
    TrackList::Hold hold = root.trackList.hold();
    const QString path = root.trackList.path();
    command.wait();
    const ReadText before = root.files.readText(path);
    const bool readable = before.outcome != ReadOutcome::Failed;
    if (readable && Dateiexistenz::FileExists(root, path))
        root.files.clearAttributes(path);
    std::optional<QString> text = readable ? hold.textFor(before.text) : std::nullopt;
    if (!command.yield())
        return;
    // An event in between may have changed the rows. If it opened another list, those of this one are written as they
    // were, unless its file has gone with it; one that was read anew shows what its file holds.
    if (hold.inSight() && text)
        text = hold.textFor(before.text);
    else if (root.trackList.isOf(path) || !Dateiexistenz::FileExists(root, path))
        text.reset();
    if (!readable)
        root.files.noteFault(WriteFault::Disk);
    else if (hold.valid() && !text && !hold.mayReplace(before.text))
        tellGrownList(root);
    if (text && writePlaylist(root, path, *text))
        hold.written(*text);
    command.endWait();
}

/// Rows that nobody vouched for are not saved. Where the playlist has no path there is nowhere to write them, which is
/// told.
bool maySave(Root& root, Command& command)
{
    if (command.ended())
        return false;
    if (!hasPlace(root)) {
        prepareSave(root);
        command.wait();
        tellFailure(command);
        return false;
    }
    return root.trackList.content() == TrackList::Content::Own;
}

/// Copies the list to `local`, points its row there and writes the tracks: all of it or nothing. False where it could
/// not be copied: such a list stays, and is saved, where it lies.
bool saveAsLocal(Root& root, Command& command, int row, const QString& local)
{
    const QString old = root.trackList.path();
    WholeChange together(root.files, WholeChange::Events::Served);
    if (!root.files.copy(old, local))
        return false;
    const RowIdentity before = identityOf(root, row);
    setPlaylistPath(root, row, local);
    root.trackList.hold().follow(local);
    prepareSave(root);
    writeList(root, command);
    if (together.end() || command.ended())
        return true;
    // The copy has gone again.
    if (const int now = rowOf(root, before, row); now > 0 && FileDirPath::isSameFile(playlistPath(root, now), local)) {
        setPlaylistPath(root, now, old);
        if (root.trackList.isOf(local))
            root.trackList.hold().follow(old);
    }
    return true;
}

void saveLocally(Root& root, Command& command)
{
    ensurePlaylistFolder(root);
    const int row = rowInSight(root);
    showTrackCount(root, row);
    command.wait();

    const QString old = root.trackList.path();
    const QString local = FileDirPath::join(playlistFolder(root), FileDirPath::FileNameOf(old));
    if (!FileDirPath::isSameFile(old, local) && !isUsedByAnother(root, row, local) && mayHoldPlaylist(root, local)) {
        if (!Dateiexistenz::FileExists(root, old))
            return tellFailure(command);
        if (saveAsLocal(root, command, row, local))
            return;
    }

    // The list is a local one now, wherever the DataFolder lies: it is written and does not come back here.
    prepareSave(root);
    writeList(root, command);
}

} // namespace

bool hasPlace(const Root& root)
{
    return rowInSight(root) > 0 || !selectedPlaylist(root).isEmpty() ||
           (isFiltered(root) && !root.trackList.path().isEmpty());
}

void SavePlayEntrys(Root& root)
{
    Command command(root);
    if (!maySave(root, command))
        return;
    prepareSave(root);
    // A list without a row in sight has none that could point to a copy: it is saved where it lies.
    if (root.mnuLokalePlayliste.Checked.value() && rowInSight(root) > 0 && !isUserList(root, root.trackList.path()))
        saveLocally(root, command);
    else
        writeList(root, command);
}

void SaveLocalEntrys(Root& root)
{
    Command command(root);
    if (maySave(root, command))
        saveLocally(root, command);
}

} // namespace orvantine
