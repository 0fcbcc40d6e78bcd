#include "operations/mnuFileKill.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/PlayButtons.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/SelectedTrack.h"
#include "metadata/ShowTrackInfo.h"
#include "metadata/TrackNames.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isSure(Command& command)
{
    const std::optional<Answer> answer =
        command.ask({.text = u"Möchten Sie die Sounddatei aus der Wiedergabeliste entfernen ? "_s,
                     .title = u" Dateien entfernen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::OkCancel});
    return answer && answer != Answer::Cancel;
}

/// A new playlist has no file of its own yet: what it holds before the removal is kept in one.
void keepNewList(Root& root)
{
    const QString path = root.trackList.path();
    const int row = rowInSight(root);
    if (!isUnnamed(path) || row == 0)
        return;
    ensurePlaylistFolder(root);
    const QString name = playlistName(root, row);
    const std::optional<QString> file = playlistFile(root, name);
    if (file && FileDirPath::canBeFileName(name) && !isUsedByAnother(root, row, *file))
        root.files.copy(path, *file);
}

/// The row goes, and the name that is known of its track. False if the program has ended.
bool removeTrack(Root& root, Command& command, TrackList::Hold& hold, int row, int top)
{
    ListView& tracks = root.LListView2;
    const WholeChange together(root.files, WholeChange::Events::Served);
    keepNewList(root);
    forgetTrackName(root, namedDatabaseFile(root), trackPath(root, row));
    hold.remove(row);
    tracks.select(1);
    tracks.ShowFromRow(top);
    // A file that is too short to be read again does not bring the row back.
    hold.putRowsIntoLines();
    command.wait(Wait::Buttons);
    SavePlayEntrys(root);
    return command.yield();
}

/// The rows stay where they were on the screen, whatever was selected meanwhile.
void showFrom(ListView& tracks, int top)
{
    tracks.ShowFromRow(top);
    if (tracks.selectedRow() > 1)
        tracks.EnsureVisible(tracks.selectedRow());
}

/// Reads the list again, which numbers its rows, and selects the row above the removed one.
void readAgain(Root& root, Command& command, int back, int top)
{
    const int selected = root.LListView1.selectedRow();
    const int row = rowInSight(root);
    if (row == 0) {
        // The filter hides the row of the list in sight.
        root.trackList.doubt();
        if (ownTracks(root) && back != 0)
            root.LListView2.select(back);
        showFrom(root.LListView2, top);
        return showSelectedTrack(root);
    }
    const QString path = openRow(root, row);
    if (root.LListView1.selectedRow() == row)
        root.LListView1.select(selected);
    const TrackList::Hold hold = root.trackList.hold();
    root.LListView2.ShowFromRow(top);
    if (!command.yield())
        return;
    // A click inside the read, or behind it, has opened a list of its own.
    if (!hold.inSight() || !root.trackList.isOf(path))
        return;
    if (back != 0)
        root.LListView2.select(back);
    showFrom(root.LListView2, top);
    showSelectedTrack(root);
}

} // namespace

void mnuFileKill_Click(Root& root)
{
    ListView& tracks = root.LListView2;
    stopIfRunning(root);

    const std::optional<int> own = tracks.selectedRow() > 0 ? ownSelectedRow(root) : 0;
    if (!own)
        return;
    const int row = *own;
    const QString track = trackPath(root, row);
    const int back = row - 1;
    TrackList::Hold hold = root.trackList.hold();
    Command command(root);
    // Required: without a row the question comes, and nothing behind it.
    if (!isSure(command) || row == 0)
        return;
    // While the box was up another list may have been opened, or the row have moved.
    if (!hold.valid() || trackPath(root, row) != track)
        return;

    const int top = tracks.TopRow();
    if (!removeTrack(root, command, hold, row, top) || !command.pause(1.0))
        return;

    // A click inside the wait has opened a list of its own.
    if (hold.inSight())
        readAgain(root, command, back, top);
    if (command.ended())
        return;
    command.endWait();

    root.mnuSpeichern.Click();
    if (command.ended())
        return;
    tracks.SetFocus();
    command.lastYield();
}

} // namespace orvantine
