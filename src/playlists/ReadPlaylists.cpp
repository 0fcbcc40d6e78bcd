#include "playlists/ReadPlaylists.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueView.h"
#include "metadata/TrackInformation.h"
#include "playback/CoverArt.h"
#include "playlists/PlaylistText.h"
#include "playlists/SavePlaylists.h"
#include "shell/MainWindow.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

enum class Companion { None, Missing, Backup };

/// One read of a playlist. Events are served inside it, and one of them may begin another read: the later one then owns
/// the track list, and the earlier has nothing more to do.
class ReadGuard
{
public:
    explicit ReadGuard(Root& root) : m_root(root), m_number(++root.currentRead) {}
    ~ReadGuard() { release(); }
    ReadGuard(const ReadGuard&) = delete;
    ReadGuard& operator=(const ReadGuard&) = delete;

    [[nodiscard]] bool overtaken() const { return m_root.currentRead != m_number; }
    /// The rows stand: they may be saved from now on.
    void release()
    {
        if (!overtaken())
            m_root.finishedRead = m_number;
    }

private:
    Root& m_root;
    int m_number;
};

/// The wait state of a read: the lists are out of reach and the tracks out of sight until it has ended.
void enterRead(Root& root)
{
    root.LListView2.clearColumns();
    root.LListView2.clear();
    root.LListView2.setSorted(false);
    root.tSoundzahl.Caption = u"0"_s;
    root.Pointer = MousePointer::Hourglass;
    root.LListView1.Enabled = false;
    root.LListView2.Enabled = false;
    root.LListView2.Visible = false;
}

/// The track list stays out of sight where nothing was read.
void leaveRead(Root& root)
{
    root.Pointer = MousePointer::Default;
    root.LListView1.Enabled = true;
    root.LListView2.Enabled = true;
}

void applyStoredWidth(Root& root, const QString& name, ListView& list, int column)
{
    constexpr double Narrowest = 500;
    const Setting stored = readSetting(root, name);
    if (stored.number() >= Narrowest)
        list.setColumnWidth(column, stored.whole());
}

/// Turns an NML list into an M3U list in "Playlisten", unless that stands already; gives the new path.
QString convertNml(Root& root, const QString& path)
{
    const ReadText read = root.files.readPlaylist(path);
    const QString result = entriesOfNml(read.text.chopped(std::min<qsizetype>(2, read.text.size())));
    const QString name = FileDirPath::without(FileDirPath::FileNameOf(path), 3) + u"m3u"_s;
    QString converted = FileDirPath::join(root.tDatenbank.Text.value() + u"Playlisten"_s, name);
    if (read.outcome == ReadOutcome::Failed)
        return path;
    if (!Dateiexistenz::FileExists(root, converted))
        root.files.writeText(converted, result + u"\r\n"_s);
    // A link to a list that could not be written would be stored at the next save.
    if (!Dateiexistenz::FileExists(root, converted))
        return path;
    root.LListView1.setSubItem(root.LListView1.selectedRow(), 2, converted);
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

/// Offers to choose the list that was moved away and brings it back to its old place.
void offerOtherFile(Root& root, QString& path)
{
    Services& services = root.services;
    const int row = root.LListView1.selectedRow();
    const Answer answer =
        services.messages.show(u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \n"
                               u"Möchten Sie jetzt die Wiedergabeliste im Dateisystem auswählen ?"_s,
                               u" Songinformationen"_s, MessageIcon::Question, MessageButtons::YesNo);
    if (answer != Answer::Yes)
        return leaveRead(root);

    const std::optional<ChosenFile> chosen = services.choosers.openFile({.title = u"Datei öffnen"_s,
                                                                         .folder = FileDirPath::FolderOf(path),
                                                                         .fileName = FileDirPath::FileNameOf(path),
                                                                         .filter = playlistFilter(),
                                                                         .defaultExtension = u"m3u"_s});
    // The folder of a file at the top of the file system is "".
    if (!chosen || chosen->fileName.isEmpty())
        return leaveRead(root);
    const QString file = FileDirPath::join(chosen->folder, chosen->fileName);
    if (file.size() < 4)
        return leaveRead(root);

    if (file.toLower() != path.toLower())
        root.files.copy(file, path);
    services.events.yield();
    // While the box was up the sequence may have gone on to another row.
    root.LListView1.select(row);
    GetPlayEntrys(root, path);
    markMissing(root, row, false);
    services.events.yield();
}

void offerBackup(Root& root, QString& path)
{
    Services& services = root.services;
    if (mayAsk(root) && services.messages.show(
                            u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \n"
                            u"Eine Sicherungsdatei der Playliste ist im Ordner jedoch vorhanden.\n \n"
                            u"Möchten Sie diese Backupdatei der Playliste wiederherstellen ?"_s,
                            u" Songinformationen"_s, MessageIcon::Exclamation, MessageButtons::YesNo) == Answer::Yes) {
        root.files.copy(path + u"bak"_s, path + u"m3u"_s);
        root.files.remove(path + u"bak"_s);
        services.events.yield();
        GetPlayEntrys(root, path);
        return;
    }
    leaveRead(root);
    DisabledButtons(root, 0);
}

void appendRows(Root& root, const QString& path, int count)
{
    const TextLines lines(root.tPlayliste.Text);
    const QString folder = FileDirPath::FolderOf(path);
    const QString icon = u"Icon_2"_s;
    const ProfileStore::Steady names(root.services.profiles, databaseFile(root));
    const ListView::Batch together(root.LListView2);
    for (int i = 0; i < count; ++i) {
        const QString line = lines.line(i);
        if (line.isEmpty())
            continue;
        const int number = i + 1;
        const QString full = FileDirPath::hasSeparator(line) ? line : folder + line;
        const bool missing = !Dateiexistenz::FileExists(root, full);

        ListItem row;
        row.Text = padded(number + 100, 3);
        row.Icon = icon;
        row.SmallIcon = icon;
        row.SubItems = {{.Text = padded(number, 2), .ReportIcon = icon},
                        {.Text = displayName(root, line, full)},
                        {.Text = full, .ForeColor = missing ? Color::DarkRed : Color::ButtonText},
                        {.Text = FileDirPath::FileNameOf(full)}};
        root.LListView2.append(std::move(row));
    }
}

void showDescription(Root& root, int number, const QString& hint)
{
    const QString description = indexValue(root, databaseFile(root), number, 'e');
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
    QString date = indexValue(root, database, number, 'f');
    root.tDatum.Caption = date;
    if (!date.isEmpty())
        return;
    const ListView& tracks = root.LListView2;
    const std::optional<QDateTime> changed = root.files.modified(tracks.subItem(tracks.count(), 3));
    if (!changed)
        return;
    date = dateText(changed->date());
    writeIndexValue(root, database, number, 'f', date);
    root.tDatum.Caption = date;
}

/// Entries as they go to the disk: those that lie beside the playlist by their name alone.
QString ownEntries(const Root& root, const QString& path, const QString& text)
{
    const auto isNeighbour = root.files.namesIn(FileDirPath::FolderOf(path) + FileDirPath::separatorOf(path));
    return normalisedEntries(text, [&](const QString& line) {
        const QString name = FileDirPath::FileNameOf(line);
        return isNeighbour(name) ? name : line;
    });
}

/// Whether a text of which no entry could be taken has something to lose.
bool holdsLines(const QString& text)
{
    const QStringList lines = QString(text).replace(u'\r', u'\n').split(u'\n');
    return std::any_of(lines.begin(), lines.end(),
                       [](const QString& line) { return !line.trimmed().isEmpty() && !line.startsWith(u'#'); });
}

enum class Conversion { Missing, Empty, OldTextKept, Taken };

/// Empty and OldTextKept leave the field with the text of the list before.
Conversion convert(Root& root, const QString& path)
{
    constexpr int ShortestList = 10;

    if (!Dateiexistenz::FileExists(root, path))
        return Conversion::Missing;
    const ReadText read = root.files.readPlaylist(path);
    if (!read.done())
        return Conversion::OldTextKept;
    const QString out = ownEntries(root, path, read.text);
    if (out.size() < ShortestList)
        return holdsLines(read.text) ? Conversion::OldTextKept : Conversion::Empty;

    root.files.writeText(path, out + u"\r\n"_s);
    root.services.events.yield();

    const ReadText again = root.files.readPlaylist(path);
    if (!again.done())
        return Conversion::OldTextKept;
    const QStringView kept = QStringView(again.text).chopped(std::min<qsizetype>(2, again.text.size()));
    root.tPlayliste.Text = linesForField(kept, GetPlayCounts(root, path));
    root.playlistInField = path;
    root.services.events.yield();
    return Conversion::Taken;
}

/// The text with its last line closed. One that holds line feeds of its own is several lines, and stays unclosed.
QString closed(const QString& text)
{
    const qsizetype start = text.lastIndexOf(u'\r') + 1;
    const bool lineFeedFirst = start > 0 && text.mid(start, 1) == u"\n"_s;
    const QString tail = text.mid(lineFeedFirst ? start + 1 : start);
    return tail.isEmpty() || tail.contains(u'\n') ? text : text + u"\r\n"_s;
}

/// Puts the entries of the open list in the place of those that it shows of the list before.
void takeShortList(Root& root)
{
    const QString path = root.openPlaylist;
    const ReadText read = root.files.readPlaylist(path);
    // Nothing of the file is to be lost with the next write, so an unclosed last line is an entry here.
    const QString out = read.done() ? ownEntries(root, path, closed(read.text)) : QString();
    if (!read.done() || (out.isEmpty() && holdsLines(read.text)))
        return;
    root.LListView2.clear();
    root.tPlayliste.Text = out;
    root.playlistInField = path;
    root.foreignRows = false;
    appendRows(root, path, countEntries(out));
    root.LListView2.select(1);
}

} // namespace

void GetPlayEntrys(Root& root, QString& path)
{
    if (path.isEmpty())
        return;
    ensureDataFolder(root, u"Playlisten"_s);
    Services& services = root.services;

    ReadGuard guard(root);
    const int number = root.LListView1.selectedRow();
    enterRead(root);
    createTrackColumns(root);
    applyStoredWidth(root, u"LV_1"_s, root.LListView1, 2);
    applyStoredWidth(root, u"LV_2"_s, root.LListView1, 4);

    if (path.right(3).toLower() == u"nml"_s && Dateiexistenz::FileExists(root, path))
        path = convertNml(root, path);

    const Companion companion = companionOf(root, path);
    if (path.isEmpty())
        path = root.LListView1.subItem(number, 2);

    const int count = GetPlayCounts(root, path);
    const Conversion conversion = convert(root, path);
    if (guard.overtaken())
        return;
    root.openPlaylist = path;
    // What the file holds was not taken: rows of another list, or none, are not to be saved over it.
    root.foreignRows = conversion == Conversion::OldTextKept;

    if (companion != Companion::None)
        guard.release();
    if (companion == Companion::Missing && mayAsk(root))
        return offerOtherFile(root, path);
    if (companion == Companion::Backup)
        return offerBackup(root, path);
    if (count == 0)
        return leaveRead(root);

    root.LListView2.ColumnClick(1);
    root.LListView2.setSorted(false);

    appendRows(root, path, count);
    if (conversion == Conversion::Empty)
        root.foreignRows = root.LListView2.count() > 0;
    // Required: row 1 is selected after every load.
    root.LListView2.select(1);

    root.tPlaylisteinträge.Caption = root.LListView1.subItem(number, 1);
    services.events.yield();
    if (guard.overtaken())
        return;
    showCover(root);
    showDescription(root, number, {});

    leaveRead(root);
    root.LListView2.Visible = true;
    guard.release();
    services.events.yield();
    if (guard.overtaken())
        return;

    showDate(root, number);
    showDescription(root, number, addTracksHint());

    if (root.LListView2.count() > 0) {
        root.tSoundzahl.Caption = u"(%1)"_s.arg(root.LListView2.count());
        if (root.mnuPositionen.Checked.value())
            root.tSoundzahl.Visible = true;
        ShowTrackInfo(root, root.LListView2.selectedRow(), 1);
    }
    services.events.yield();
}

int GetPlayCounts(Root& root, const QString& path)
{
    if (!Dateiexistenz::FileExists(root, path))
        return 0;
    const int count = countEntries(root.files.readPlaylist(path).text);
    root.services.events.yield();
    return count;
}

bool TextDosConvert(Root& root, const QString& path)
{
    return convert(root, path) != Conversion::Missing;
}

void takeTrackList(Root& root, const QString& path)
{
    root.finishedRead = ++root.currentRead;
    root.openPlaylist = path;
    root.foreignRows = false;
    root.LListView2.setSorted(false);
}

void putRowsIntoField(Root& root)
{
    const ListView& tracks = root.LListView2;
    QString lines;
    for (int row = 1; row <= tracks.count(); ++row)
        lines += tracks.subItem(row, 3) + u"\r\n"_s;
    root.tPlayliste.Text = lines;
    root.playlistInField = root.openPlaylist;
}

void showCover(Root& root)
{
    const QString cover = coverFile(root, root.tPlaylisteinträge.Caption);
    root.pCovers.Picture = QString();
    if (cover.isEmpty())
        return;
    root.pCovers.Picture = cover;
    if (!root.mnuCoverShow.Checked.value())
        root.mnuCoverShow.Click();
}

void LoadPlayEntrysTmp(Root& root)
{
    root.LListView1.Click();
}

bool takeOwnTracks(Root& root)
{
    if (!mayWriteSelected(root) && root.foreignRows && root.currentRead == root.finishedRead &&
        root.LListView1.subItem(root.LListView1.selectedRow(), 2) == root.openPlaylist)
        takeShortList(root);
    return mayWriteSelected(root);
}

bool showSelectedTracks(Root& root)
{
    if (takeOwnTracks(root))
        return true;
    // The mark may stand on a row whose tracks are not the ones shown.
    root.LListView1.Tag = u"0"_s;
    LoadPlayEntrysTmp(root);
    return takeOwnTracks(root);
}

void createTrackColumns(Root& root)
{
    ListView& tracks = root.LListView2;
    tracks.addColumn(u"ID"_s, 0);
    tracks.addColumn(u"Track"_s, 0);
    tracks.addColumn(u"Name"_s, 0);
    tracks.addColumn(u"Path"_s, 0);
    tracks.addColumn(u"Datei"_s, 0);
    resetTrackColumnWidths(root);

    applyStoredWidth(root, u"LV_4"_s, tracks, 2);
    applyStoredWidth(root, u"LV_5"_s, tracks, 3);
    applyStoredWidth(root, u"LV_6"_s, tracks, 4);
    applyStoredWidth(root, u"LV_7"_s, tracks, 5);
    if (root.mnuOrvmenu[1].Checked.value())
        tracks.setColumnWidth(5, 0);
    if (root.mnuOrvmenu[2].Checked.value())
        tracks.setColumnWidth(4, 0);
}

void resetTrackColumnWidths(Root& root)
{
    ListView& tracks = root.LListView2;
    tracks.setColumnWidth(1, 0);
    tracks.setColumnWidth(2, 800);
    tracks.setColumnWidth(3, 3600);
    tracks.setColumnWidth(4, root.mnuOrvmenu[1].Checked.value() ? 2900 : 0);
    tracks.setColumnWidth(5, root.mnuOrvmenu[2].Checked.value() ? 2200 : 0);
}

QString displayName(const Root& root, const QString& entry, const QString& fullPath)
{
    QString known = IniFiles::ReadValue(root, databaseFile(root), u"TagInfo"_s, fullPath);
    if (!known.isEmpty())
        return known;
    return FileDirPath::hasSeparator(entry) ? FileDirPath::without(FileDirPath::FileNameOf(entry), 4) : entry;
}

QString addTracksHint()
{
    return u"Wenn Sie der aktuellen Wiedergabeliste weitere Audiodateien hinzufügen möchten, ziehen Sie die Datei(en) "
           u"einfach in die Tabelle mit den Sounddateien."_s;
}

QString playlistFilter()
{
    return u"Mp3-Wiedergabeliste|*.m3u; *.pls; *.nml|Mp3 Playliste|*.m3u|Winamp Wiedergabeliste|*.pls|Traktor "
           u"Playliste|*.nml|Alle Dateitypen|*.*"_s;
}

} // namespace orvantine
