#include "playlists/GetPlayEntrys.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/DisabledButtons.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/PlaylistTexts.h"
#include "metadata/SelectedTrack.h"
#include "metadata/ShowTrackInfo.h"
#include "platform/FileDirPath.h"
#include "playback/CoverPane.h"
#include "playlists/GetPlayCounts.h"
#include "playlists/PlaylistText.h"
#include "playlists/TextDosConvert.h"
#include "playlists/TrackRow.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

enum class Companion { None, Missing, Backup };

bool isNml(const QString& path)
{
    return path.right(3).toLower() == u"nml"_s;
}

/// The M3U list in "Playlisten" that an NML list is converted to.
QString convertedPlace(const Root& root, const QString& path)
{
    return FileDirPath::join(playlistFolder(root), FileDirPath::without(FileDirPath::FileNameOf(path), 3) + u"m3u"_s);
}

/// Turns the NML list of a row into an M3U list in "Playlisten", unless that stands already; gives the new path.
/// Nothing where that list could not be made. One that is missing stays so, unless it was converted before.
std::optional<QString> convertNml(Root& root, int row, const QString& path)
{
    const QString converted = convertedPlace(root, path);
    // One that was changed since is not converted anew because a look at it has failed.
    if (Dateiexistenz::IsMissing(root, converted)) {
        if (!Dateiexistenz::FileExists(root, path))
            return path;
        const ReadText read = readPlaylist(root, path);
        const QString result = entriesOfNml(read.text.chopped(std::min<qsizetype>(2, read.text.size())));
        if (!read.done() || !writePlaylist(root, converted, result + u"\r\n"_s))
            return {};
    }
    setPlaylistPath(root, row, converted);
    return converted;
}

Companion companionOf(const Root& root, QString& path)
{
    if (Dateiexistenz::FileExists(root, path))
        return Companion::None;
    path.clear();
    // Required: the path is empty by now, so a file named "bak" in the current folder is asked for.
    return Dateiexistenz::FileExists(root, path + u"bak"_s) ? Companion::Backup : Companion::Missing;
}

bool mayAsk(const Root& root)
{
    return root.Visible.value() && root.mnuErrorDisplay.Checked.value();
}

/// Where the chosen file brings the list back to: its old place, or that of an M3U list where an NML list was missing
/// and another kind was chosen.
QString restoredPlace(const Root& root, const QString& path, const QString& chosen)
{
    return isNml(path) && !isNml(chosen) ? convertedPlace(root, path) : path;
}

/// Offers to choose the list that was moved away and brings it back to its old place.
void offerOtherFile(Root& root, Command& command, QString& path)
{
    const int row = root.LListView1.selectedRow();
    const RowIdentity playlist = identityOf(root, row);
    if (command.ask({.text = u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \n"
                             u"Möchten Sie jetzt die Wiedergabeliste im Dateisystem auswählen ?"_s,
                     .title = u" Songinformationen"_s,
                     .icon = MessageIcon::Question,
                     .buttons = MessageButtons::YesNo}) != Answer::Yes)
        return;

    const std::optional<ChosenFile> chosen = command.openFile({.title = u"Datei öffnen"_s,
                                                               .folder = FileDirPath::FolderOf(path),
                                                               .fileName = FileDirPath::FileNameOf(path),
                                                               .filter = playlistFilter(),
                                                               .defaultExtension = u"m3u"_s});
    // The folder of a file at the top of the file system is "".
    if (!chosen || chosen->fileName.isEmpty())
        return;
    const QString file = FileDirPath::join(chosen->folder, chosen->fileName);
    if (file.size() < 4)
        return;

    // While the box was up the row may have gone, or its list come back.
    const int place = rowOf(root, playlist, row);
    if (place == 0)
        return;
    const QString restored = restoredPlace(root, path, file);
    // What could not be copied is not asked for again.
    if (!FileDirPath::isSameFile(file, restored) && !Dateiexistenz::FileExists(root, restored) &&
        !copyPlaylist(root, file, restored))
        return;
    if (restored != path)
        setPlaylistPath(root, place, restored);
    path = restored;
    if (!command.yield())
        return;
    root.LListView1.select(place);
    root.LListView1.Tag = QString::number(place);
    GetPlayEntrys(root, path);
    if (!command.ended() && root.trackList.isOf(path))
        markMissing(root, place, !Dateiexistenz::FileExists(root, path));
    command.lastYield();
}

/// True if the list stands. The backup goes only then.
bool restoreBackup(Root& root, const QString& path)
{
    WholeChange together(root.files);
    if (!copyPlaylist(root, path + u"bak"_s, path + u"m3u"_s))
        return false;
    root.files.remove(path + u"bak"_s);
    return together.end();
}

void offerBackup(Root& root, Command& command, QString& path)
{
    if (mayAsk(root) &&
        command.ask({.text = u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \n"
                             u"Eine Sicherungsdatei der Playliste ist im Ordner jedoch vorhanden.\n \n"
                             u"Möchten Sie diese Backupdatei der Playliste wiederherstellen ?"_s,
                     .title = u" Songinformationen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNo}) == Answer::Yes) {
        if (restoreBackup(root, path) && command.yield())
            GetPlayEntrys(root, path);
        return;
    }
    command.endWait();
    DisabledButtons(root, 0);
}

/// Rows of the first `count` lines; an empty one leaves its number out.
std::vector<ListItem> rowsOf(const Root& root, const QString& path, const TextLines& lines, int count)
{
    const QString folder = FileDirPath::FolderOf(path);
    const ProfileStore::Steady names(root.services.profiles, databaseFile(root));
    std::vector<ListItem> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const QString line = lines.GetTextZeile(i);
        if (line.isEmpty())
            continue;
        const QString full = fullPath(line, folder);
        rows.push_back(itemOf({.number = i + 1,
                               .name = displayName(root, line, full),
                               .path = full,
                               .missing = !Dateiexistenz::FileExists(root, full)}));
    }
    return rows;
}

void showDescription(Root& root, int number, const QString& hint)
{
    const QString description = indexValue(root, databaseFile(root), number, EntryKey::Description);
    root.LSoundCaption.Tag = description.isEmpty() ? u"0"_s : u"1"_s;
    if (!description.isEmpty())
        root.LSoundCaption.Caption = description;
    else if (!hint.isEmpty())
        root.LSoundCaption.Caption = hint;
}

/// A list without a date takes that of its last track.
void showDate(Root& root, int number)
{
    const QString database = databaseFile(root);
    const int failedReads = root.services.profiles.failedReads();
    QString date = indexValue(root, database, number, EntryKey::Date);
    // What cannot be read is no missing date.
    if (root.services.profiles.failedReads() != failedReads)
        return;
    root.tDatum.Caption = date;
    // A command that waits with the catalogue half written has the last word.
    if (!date.isEmpty() || !root.commands.admits(Changes::Catalogue))
        return;
    const std::optional<QDateTime> changed = root.files.modified(trackPath(root, root.LListView2.count()));
    if (!changed)
        return;
    date = dateText(changed->date());
    const PartChange alone(root.files);
    writeIndexValue(root, database, number, EntryKey::Date, date);
    root.tDatum.Caption = date;
}

/// What is known of a list that has no tracks to show. The labels never stay those of the list before.
void showEntry(Root& root, int row)
{
    if (row == 0)
        return;
    root.tPlaylisteinträge.Caption = playlistName(root, row);
    showDescription(root, numberOf(root, row), addTracksHint());
    root.tDatum.Caption = indexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Date);
}

/// The list of the entries in the file, where a read could not show it: one that is too short, one that could not be
/// read then. It stays in sight as it is where it cannot be read whole now.
void readInPlace(Root& root)
{
    const QString path = root.trackList.path();
    // The lines of an NML list are no entries.
    const std::optional<QString> entries = isNml(path) ? std::nullopt : entriesOfFile(root, path);
    if (!entries)
        return;
    const TextLines lines(*entries);
    const int count = countEntries(*entries);
    if (!showsAll(lines, count, *entries))
        return;
    const int selected = root.LListView2.selectedRow();
    if (root.LListView2.columns() == 0)
        createTrackColumns(root);
    root.trackList.takeOwn(rowsOf(root, path, lines, count), *entries, count);
    root.LListView2.Visible = true;
    showTrackHeading(root);
    if (!root.LListView2.select(selected))
        root.LListView2.select(1);
}

bool hasGrown(Root& root)
{
    const QString& path = root.trackList.path();
    if (path.isEmpty() || !Dateiexistenz::FileExists(root, path))
        return false;
    const ReadText file = root.files.readText(path);
    return file.outcome != ReadOutcome::Failed && !root.trackList.hold().mayReplace(file.text);
}

} // namespace

void GetPlayEntrys(Root& root, QString& path)
{
    Command command(root);
    if (path.isEmpty() || command.ended())
        return;
    ensurePlaylistFolder(root);

    const int number = root.LListView1.selectedRow();
    root.LListView2.clearColumns();
    TrackList::Reading reading = root.trackList.open(path);
    root.tSoundzahl.Caption = u"0"_s;
    command.wait(Wait::Lists);
    root.LListView2.Visible = false;
    createTrackColumns(root);
    applyStoredCatalogueWidths(root);

    if (isNml(path)) {
        const std::optional<QString> converted = [&] {
            const PartChange alone(root.files);
            return convertNml(root, number, path);
        }();
        if (!converted)
            return showEntry(root, number);
        path = *converted;
    }

    const Companion companion = companionOf(root, path);
    if (path.isEmpty())
        path = playlistPath(root, number);

    const RowIdentity playlist = identityOf(root, number);
    // Events are served from here on, and one of them may move the row.
    const auto row = [&root, &playlist, number] { return number > 0 ? rowOf(root, playlist, number) : 0; };
    const int count = GetPlayCounts(root, path);
    if (reading.overtaken() || command.ended())
        return;
    const ConvertedList converted = convertPlaylist(root, path);
    if (reading.overtaken() || command.ended())
        return;
    reading.follow(path);

    if (companion != Companion::None || count == 0) {
        reading.take({}, converted.entries && entryLines(*converted.entries) == 0);
        reading.finish();
        showEntry(root, row());
        // The tracks stay out of sight until the next read.
        if (companion == Companion::Missing && mayAsk(root))
            offerOtherFile(root, command, path);
        else if (companion == Companion::Backup)
            offerBackup(root, command, path);
        return;
    }

    reading.endSorting();

    {
        const TextLines lines(root.tPlayliste.Text);
        std::vector<ListItem> rows = rowsOf(root, path, lines, count);
        // A list that is too short shows rows of the list before, or none; a line that is not the entry is not its row.
        const bool whole = converted.entries && (converted.lines ? showsAll(lines, count, *converted.entries)
                                                                 : rows.empty() && converted.entries->isEmpty());
        reading.take(std::move(rows), whole);
    }
    // Required: row 1 is selected after every load.
    root.LListView2.select(1);

    root.tPlaylisteinträge.Caption = playlistName(root, row());
    if (!command.yield() || reading.overtaken())
        return;
    showCover(root);
    showDescription(root, numberOf(root, row()), {});
    // Of one list with the description: an event may ask for both.
    root.tDatum.Caption = indexValue(root, databaseFile(root), numberOf(root, row()), EntryKey::Date);

    command.endWait();
    root.LListView2.Visible = true;
    reading.finish();
    if (!command.yield() || reading.overtaken())
        return;

    if (row() > 0)
        showDate(root, numberOf(root, row()));
    showDescription(root, numberOf(root, row()), addTracksHint());

    if (root.LListView2.count() > 0) {
        showTrackHeading(root);
        if (root.mnuPositionen.Checked.value())
            root.tSoundzahl.Visible = true;
        ShowTrackInfo(root, root.LListView2.selectedRow(), 1);
    }
    command.lastYield();
}

void convertRow(Root& root, int row)
{
    const QString path = playlistPath(root, row);
    // What is no text is shown as a list without entries.
    if (isNml(path) && !convertNml(root, row, path) && mayHoldPlaylist(root, path))
        root.files.failWhole();
}

QString openRow(Root& root, int row)
{
    root.LListView1.Tag = QString::number(root.LListView1.select(row) ? row : 0);
    QString path = playlistPath(root, row);
    GetPlayEntrys(root, path);
    return path;
}

bool isPlaylistThere(const Root& root, const QString& path)
{
    return Dateiexistenz::FileExists(root, path) ||
           (isNml(path) && Dateiexistenz::FileExists(root, convertedPlace(root, path)));
}

void LoadPlayEntrysTmp(Root& root)
{
    root.LListView1.Click();
}

void openSelectedAnew(Root& root)
{
    root.LListView1.Tag = u"0"_s;
    LoadPlayEntrysTmp(root);
}

bool ownTracks(Root& root)
{
    // A file that somebody else has added to since holds more than is in sight.
    if (root.trackList.content() == TrackList::Content::Own && hasGrown(root))
        root.trackList.doubt();
    if (root.trackList.content() == TrackList::Content::Stale)
        readInPlace(root);
    if (root.trackList.content() == TrackList::Content::None && selectedPlaylist(root).isEmpty())
        root.trackList.begin({});
    return root.trackList.content() == TrackList::Content::Own;
}

std::optional<int> ownSelectedRow(Root& root)
{
    const QString track = selectedTrackPath(root);
    if (!ownTracks(root))
        return {};
    return selectedTrackPath(root) == track ? root.LListView2.selectedRow() : 0;
}

bool openOwnTracks(Root& root)
{
    if (root.trackList.content() == TrackList::Content::None && !selectedPlaylist(root).isEmpty()) {
        // Which row a command on the catalogue leaves selected is not for the user to know while it waits.
        if (!root.commands.admits(Changes::Catalogue))
            return false;
        openSelectedAnew(root);
    }
    return ownTracks(root);
}

} // namespace orvantine
