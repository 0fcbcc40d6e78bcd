#include "playlists/AddPlayEntrys.h"

#include "app/AudioTypes.h"
#include "app/ColumnWidths.h"
#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/ShowTrackInfo.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/PlaylistText.h"
#include "playlists/TrackRow.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

enum class Existence { Known, Asked };

bool isEntry(const QString& file)
{
    return !file.isEmpty() && !breaksLine(file);
}

/// An empty list gets its columns anew.
void beginList(Root& root)
{
    root.LListView2.clearColumns();
    // Required: the mark goes to the last row of the catalogue, whichever is selected.
    if (root.LListView1.count() > 0)
        root.LListView1.Tag = QString::number(root.LListView1.count());
    createTrackColumns(root);
}

/// A path shows its file name less four characters; a bare name loses them only where it ends in "mp3".
QString nameOf(const QString& file)
{
    return FileDirPath::hasSeparator(file) || AudioTypes::endsInMp3(file) ? FileDirPath::titleOf(file) : file;
}

/// The list takes tracks, and its file as well.
bool mayAppend(Root& root)
{
    if (!ownTracks(root))
        return false;
    const QString& path = root.trackList.path();
    return path.isEmpty() || root.files.claimWrite(path);
}

void append(Root& root, TrackList::Hold& hold, const QString& file, Existence existence)
{
    const bool first = root.LListView2.count() == 0;
    if (first)
        beginList(root);
    // Lines go behind those of the open list, never behind what the field still holds of another one.
    if (first || !hold.linesAreOwn())
        hold.putRowsIntoLines();
    const QString full = fullPath(file, FileDirPath::FolderOf(root.trackList.path()));
    hold.append(itemOf({.number = root.LListView2.count() + 1,
                        .name = nameOf(file),
                        .path = full,
                        .missing = existence == Existence::Asked && !Dateiexistenz::FileExists(root, full)}));
    hold.appendLine(file);
}

/// A new list stands in a ".tmp" file: it moves to its place in "Playlisten".
void moveNewList(Root& root, TrackList::Hold& hold, const QString& playlist)
{
    const int row = rowInSight(root);
    ensurePlaylistFolder(root);
    const std::optional<QString> own = playlistFile(root, playlistName(root, row));
    // A link to a list that could not be written would lose the tracks at the next save.
    const bool wouldHarm = own && isUsedByAnother(root, row, *own) && root.files.size(*own) != 0;
    if (row == 0 || !own || wouldHarm ||
        (Dateiexistenz::FileExists(root, playlist) && !copyPlaylist(root, playlist, *own)))
        return;
    setPlaylistPath(root, row, *own);
    hold.follow(*own);
}

/// False if the file is as it was.
bool writeList(Root& root, TrackList::Hold& hold)
{
    const QString playlist = root.trackList.path();
    WholeChange together(root.files);
    const ReadText before = root.files.readText(playlist);
    const QString text = root.tPlayliste.Text.value() + u"\r\n"_s;
    if (before.outcome == ReadOutcome::Failed) {
        root.files.noteFault(WriteFault::Disk);
        root.files.failWhole();
    } else if (!hold.mayReplace(before.text)) {
        tellGrownList(root);
        root.files.failWhole();
    } else if (writePlaylist(root, playlist, text)) {
        hold.written(text);
    }
    if (isUnnamed(playlist))
        moveNewList(root, hold, playlist);
    return together.end();
}

/// What could not be written is not shown as if it were. Lines before that were another list's are not put back.
void takeBack(Root& root, TrackList::Hold& hold, const std::optional<QString>& linesBefore)
{
    const ListView& tracks = root.LListView2;
    int last = tracks.count();
    while (last > 1 && tracks.subItem(last, TrackItem::Number).toInt() != tracks.count())
        --last;
    hold.remove(last);
    if (linesBefore)
        root.trackList.setLines(*linesBefore, root.trackList.path());
    else
        hold.putRowsIntoLines();
}

void showFirstRow(Root& root, Command& command)
{
    // The heading of the tracks counts them, whoever adds and whether the catalogue is saved afterwards or not.
    showTrackHeading(root);
    if (!command.yield())
        return;
    if (root.LListView2.count() > 0) {
        root.LListView2.select(1);
        ShowTrackInfo(root, 1, 1);
    }
    command.lastYield();
}

} // namespace

void AddPlayEntrys(Root& root, const QString& file, int batch)
{
    Command command(root);
    if (!isEntry(file) || command.ended())
        return;
    ensurePlaylistFolder(root);
    if (!mayAppend(root))
        return;
    TrackList::Hold hold = root.trackList.hold();
    const std::optional<QString> lines =
        hold.linesAreOwn() ? std::optional(root.tPlayliste.Text.value()) : std::nullopt;
    append(root, hold, file, Existence::Asked);
    if (batch != 0)
        setTrackCount(root, rowInSight(root));
    else if (!writeList(root, hold) && !root.trackList.path().isEmpty())
        takeBack(root, hold, lines);
    showFirstRow(root, command);
}

void AddPlayEntrys(Root& root, const QStringList& files, bool exist)
{
    constexpr qsizetype BetweenYields = 256;

    QStringList entries;
    std::copy_if(files.begin(), files.end(), std::back_inserter(entries), isEntry);
    Command command(root);
    if (entries.isEmpty() || command.ended())
        return;
    ensurePlaylistFolder(root);
    if (!mayAppend(root))
        return;
    TrackList::Hold hold = root.trackList.hold();
    const Existence existence = exist ? Existence::Known : Existence::Asked;
    for (qsizetype from = 0; from < entries.size(); from += BetweenYields) {
        if (from > 0 && (!command.yield() || !hold.valid()))
            return;
        const qsizetype end = std::min(from + BetweenYields, entries.size());
        {
            const ListView::Batch together(root.LListView2);
            for (qsizetype i = from; i < end; ++i)
                append(root, hold, entries[i], existence);
        }
        setTrackCount(root, rowInSight(root));
    }
    showFirstRow(root, command);
}

} // namespace orvantine
