#include "operations/TrackListOperations.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "operations/ListInput.h"
#include "operations/LisviewMoveEntrys.h"
#include "playback/CoverArt.h"
#include "playback/PlayResource.h"
#include "playback/PlayerControl.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"
#include "shell/MainWindow.h"
#include "shell/WaitState.h"

#include <QScopedValueRollback>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Up = 1;
constexpr int Down = 2;

int columnOf(const Root& root, int sorting)
{
    constexpr int Track = 2;
    constexpr int Name = 3;
    constexpr int Path = 4;
    constexpr int File = 5;
    if (sorting == 1)
        return Name;
    if (sorting == 2)
        return root.mnuOrvmenu[1].Checked.value() ? Path : File;
    return Track;
}

/// Gives the rows the numbers of their places. Events are served at every row; false if one of them took the list away.
bool renumber(Root& root)
{
    ListView& tracks = root.LListView2;
    const int read = root.currentRead;
    const int count = tracks.count();
    const ListView::Batch together(tracks);
    for (int row = 1; row <= count; ++row) {
        tracks.setSubItem(row, 1, padded(row, 2));
        tracks.setText(row, padded(row, 3));
        // Required: the mark goes to the row that is last, not to the one that was numbered.
        tracks.setIcons(tracks.count(), u"Icon_2"_s);
        root.services.events.yield();
        if (root.currentRead != read)
            return false;
    }
    return true;
}

void saveSorted(Root& root, const QString& path)
{
    Messages& messages = root.services.messages;
    if (path.isEmpty()) {
        messages.show(u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden. "_s,
                      u" Wiedergabeliste speichern"_s, MessageIcon::Critical, MessageButtons::Ok);
        return;
    }
    const int read = root.currentRead;
    if (messages.show(u"Soll die geänderte Trackliste automatisch gespeichert werden ? "_s, u' ' + root.Caption.value(),
                      MessageIcon::Exclamation, MessageButtons::YesNo) == Answer::Yes &&
        root.currentRead == read)
        SavePlayEntrys(root);
}

/// A new playlist has no file of its own yet: what it holds before the removal is kept in one.
void keepNewList(Root& root, const QString& path, const QString& name)
{
    if (!path.endsWith(u"tmp"_s))
        return;
    ensureDataFolder(root, u"Playlisten"_s);
    const QString file = name + u".m3u"_s;
    if (FileDirPath::canBeFileName(file))
        root.files.copy(path, FileDirPath::join(root.tDatenbank.Text.value() + u"Playlisten"_s, file));
}

void removeTrack(Root& root, int row, int top)
{
    ListView& list = root.LListView1;
    ListView& tracks = root.LListView2;
    const WholeChange together(root.files);
    keepNewList(root, list.subItem(list.selectedRow(), 2), list.subItem(list.selectedRow(), 1));
    // Required: the file's name is a constant here, whatever the program's file is called.
    IniFiles::DeleteKey(root, root.tDatenbank.Text.value() + u"Orvantine.dat"_s, u"TagInfo"_s, tracks.subItem(row, 3));

    tracks.remove(row);
    tracks.select(1);
    tracks.ShowFromRow(top);
    // A file that is too short to be read again does not bring the row back.
    putRowsIntoField(root);

    DisabledButtons(root, 1);
    SavePlayEntrys(root);
    root.services.events.yield();
}

/// The rows stay where they were on the screen, whatever was selected meanwhile.
void showFrom(ListView& tracks, int top)
{
    tracks.ShowFromRow(top);
    if (tracks.selectedRow() > 1)
        tracks.EnsureVisible(tracks.selectedRow());
}

/// Reads the list again, which numbers its rows, and selects the row above the removed one.
void readAgain(Root& root, int back, int top)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    QString path = list.subItem(row, 2);
    // A list that could not be opened in the wait has left the tracks of this one in sight: they stay.
    if (path != root.openPlaylist)
        return;
    list.Tag = QString::number(row);
    GetPlayEntrys(root, path);
    const int read = root.currentRead;
    root.LListView2.ShowFromRow(top);
    root.services.events.yield();
    DisabledButtons(root, 0);
    // A click inside the read, or behind it, has opened a list of its own.
    if (root.currentRead != read || list.selectedRow() != row || root.openPlaylist != path)
        return;
    if (back != 0)
        root.LListView2.select(back);
    showFrom(root.LListView2, top);
}

/// True if there was a picture, which now bears the new name.
bool renameCover(Root& root, const QString& old, const QString& name)
{
    constexpr int ExtensionWithPoint = 4;
    const QString cover = coverFile(root, old);
    if (cover.isEmpty())
        return false;
    const QString file = name + cover.right(ExtensionWithPoint);
    if (!FileDirPath::canBeFileName(file))
        return false;
    const QString renamed = FileDirPath::join(root.tDatenbank.Text.value() + u"Resource"_s, file);
    if (!root.files.copy(cover, renamed))
        return false;
    // Required: the picture of a playlist that gets the name that it has goes. Names that differ in case alone are
    // one file, which stays.
    if (old == name || root.files.nativePath(cover) != root.files.nativePath(renamed))
        root.files.remove(cover);
    return true;
}

} // namespace

void mnuSortierung_Click(Root& root, int index)
{
    if (!mayChangeTracks(root))
        return;
    const QScopedValueRollback running(root.changingTracks, true);
    // The rows in sight may be those of another list: neither they nor their number are this one's.
    if (!showSelectedTracks(root))
        return;

    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    const int count = root.LListView2.count();
    if (leadingNumber(list.subItem(row, 3)) != count)
        list.setSubItem(row, 3, QString::number(count));

    enterWait(root);
    LListView2_ColumnClick(root, columnOf(root, index));
    if (renumber(root))
        saveSorted(root, list.subItem(row, 2));
    leaveWait(root);
}

void mnuMoveEntry_Click(Root& root, int index)
{
    if (!mayChangeTracks(root))
        return;
    const QScopedValueRollback running(root.changingTracks, true);
    if (!showSelectedTracks(root))
        return;

    ListView& tracks = root.LListView2;
    const int row = tracks.selectedRow();
    // Required: at the edges the cue sounds and the command goes on.
    if (index == Up && row == 1)
        PlayResource(root, u"Play"_s);
    if (index == Down && row > 0 && row == tracks.count())
        PlayResource(root, u"Stop"_s);

    root.bMoveDown.Tag = u"1"_s;
    {
        const ListView::Batch together(tracks);
        if (index == Up)
            LisviewMoveEntrys::MoveUp(tracks, {}, 1, false);
        else
            LisviewMoveEntrys::MoveDown(tracks, {}, 1, false);
    }
    root.bMoveDown.Tag = u"0"_s;

    SavePlayEntrys(root);
    tracks.SetFocus();
    root.services.events.yield();
}

void bEntryUp_Click(Root& root)
{
    // Required: only the way up ends the sorting.
    root.LListView2.setSorted(false);
    mnuMoveEntry_Click(root, Up);
}

void bEntryDown_Click(Root& root)
{
    mnuMoveEntry_Click(root, Down);
}

void mnuFileKill_Click(Root& root)
{
    if (!mayChangeTracks(root))
        return;
    const QScopedValueRollback running(root.changingTracks, true);

    ListView& tracks = root.LListView2;
    stopIfRunning(root);

    // A row of another list that is still in sight would lose its name, and stay in its own file.
    if (tracks.selectedRow() > 0 && !showSelectedTracks(root))
        return;
    const int row = tracks.selectedRow();
    const int back = row - 1;
    const int read = root.currentRead;
    if (root.services.messages.show(u"Möchten Sie die Sounddatei aus der Wiedergabeliste entfernen ? "_s,
                                    u" Dateien entfernen"_s, MessageIcon::Exclamation,
                                    MessageButtons::OkCancel) == Answer::Cancel)
        return;
    // A playlist whose file is too short to be read shows no row: saving that would empty the file.
    if (row == 0)
        return;
    // While the box was up another list may have been opened, or the row have moved.
    if (root.currentRead != read || !tracks.has(row))
        return;

    const int top = tracks.TopRow();
    removeTrack(root, row, top);
    Pause(root, 1.0);

    // A click inside the wait has opened a list of its own.
    if (root.currentRead == read)
        readAgain(root, back, top);
    DisabledButtons(root, 0);

    root.mnuSpeichern.Click();
    tracks.SetFocus();
    root.services.events.yield();
}

void mnuUmbenennen_Click(Root& root)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0 || root.loadingCatalogue)
        return;
    const QString old = list.subItem(row, 1);
    const QString path = list.subItem(row, 2);
    const QString name = root.services.messages.input(u"Geben Sie einen neuen Namen für die Playliste ein:"_s,
                                                      u" Wiedergabeliste umbenennen"_s, old);
    // While the box was up another playlist may have come to the row.
    if (name.isEmpty() || list.subItem(row, 1) != old || list.subItem(row, 2) != path)
        return;

    bool covered = false;
    {
        const WholeChange together(root.files);
        list.setSubItem(row, 1, name);
        if (path == root.openPlaylist)
            root.tPlaylisteinträge.Caption = name;
        IniFiles::WriteValue(root, databaseFile(root), u"Rename"_s, FileDirPath::FileNameOf(path), name);
        root.mnuSpeichern.Click();
        covered = renameCover(root, old, name);
    }
    if (!covered)
        return;
    // The handler passes over a playlist whose tracks are loaded; its picture is another file now.
    const bool loaded = list.selectedRow() == row && list.Tag == QString::number(row);
    LListView1_Click(root);
    if (loaded)
        showRowCover(root, row);
    root.services.events.yield();
}

bool mayChangeTracks(const Root& root)
{
    return !root.changingTracks && root.currentRead == root.finishedRead;
}

} // namespace orvantine
