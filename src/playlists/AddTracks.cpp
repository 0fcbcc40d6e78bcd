#include "playlists/AddTracks.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "metadata/TrackInformation.h"
#include "playlists/PlaylistText.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"

#include <algorithm>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

enum class Existence { Known, Asked };

/// The playlist of the selected row.
QString selectedPlaylist(const Root& root)
{
    return root.LListView1.subItem(root.LListView1.selectedRow(), 2);
}

bool isEntry(const QString& file)
{
    return !file.isEmpty() && !breaksLine(file);
}

/// The rows in sight may be those of another list; without a playlist they are nobody else's.
bool takesTracks(Root& root)
{
    return takeOwnTracks(root) || selectedPlaylist(root).isEmpty();
}

/// An empty list gets its columns anew.
void beginList(Root& root)
{
    if (root.LListView2.count() > 0)
        return;
    root.LListView2.clearColumns();
    // Required: the mark goes to the last row of the catalogue, whichever is selected.
    if (root.LListView1.count() > 0)
        root.LListView1.Tag = QString::number(root.LListView1.count());
    createTrackColumns(root);
}

/// Lines go behind those of the open list, never behind what the field still holds of another one: the file would get
/// them all.
void claimField(Root& root)
{
    if (root.LListView2.count() == 0 || root.playlistInField != root.openPlaylist)
        putRowsIntoField(root);
}

/// A path shows its file name less four characters; a bare name loses them only where it ends in "mp3".
QString nameOf(const QString& file)
{
    QString name = FileDirPath::FileNameOf(file);
    if (FileDirPath::hasSeparator(file) || name.right(3).toLower() == u"mp3"_s)
        return FileDirPath::without(name, 4);
    return name;
}

ListItem rowOf(const Root& root, const QString& file, const QString& folder, Existence existence)
{
    const int number = root.LListView2.count() + 1;
    const QString icon = u"Icon_2"_s;
    const QString full = FileDirPath::hasSeparator(file) ? file : folder + file;
    const bool missing = existence == Existence::Asked && !Dateiexistenz::FileExists(root, full);

    ListItem row;
    row.Text = padded(number + 100, 3);
    row.Icon = icon;
    row.SmallIcon = icon;
    row.SubItems = {{.Text = padded(number, 2), .ReportIcon = icon},
                    {.Text = nameOf(file)},
                    {.Text = full, .ForeColor = missing ? Color::DarkRed : Color::ButtonText},
                    {.Text = FileDirPath::FileNameOf(file)}};
    return row;
}

void appendLine(TextBox& field, const QString& line)
{
    // Taken out meanwhile: a text that the field holds too would be copied whole for each line.
    QString text = field.Text.value();
    field.Text = QString();
    text += line;
    text += u"\r\n"_s;
    field.Text = std::move(text);
}

void showCount(Root& root)
{
    root.LListView1.setSubItem(root.LListView1.selectedRow(), 3, QString::number(root.LListView2.count()));
}

/// A new list stands in a ".tmp" file: it moves to its place in "Playlisten".
void moveNewList(Root& root, const QString& playlist)
{
    const int row = root.LListView1.selectedRow();
    const QString name = root.LListView1.subItem(row, 1);
    ensureDataFolder(root, u"Playlisten"_s);
    // A name that would leave the folder never forms a path.
    if (FileDirPath::hasSeparator(name) || name.contains(QChar(u'\0')))
        return;
    const QString own = FileDirPath::join(root.tDatenbank.Text.value() + u"Playlisten"_s, name + u".m3u"_s);
    // A link to a list that could not be written would lose the tracks at the next save.
    if (Dateiexistenz::FileExists(root, playlist) && !root.files.copy(playlist, own))
        return;
    root.LListView1.setSubItem(row, 2, own);
    root.openPlaylist = own;
}

void writeList(Root& root, const QString& playlist)
{
    if (!mayWriteSelected(root))
        return;
    const WholeChange together(root.files);
    // A file with more entries than a list can show would lose the rest: it is left alone.
    const ReadText before = root.files.readText(playlist);
    if (before.outcome != ReadOutcome::Failed && !exceedsCount(before.text))
        root.files.writeText(playlist, root.tPlayliste.Text.value() + u"\r\n"_s);
    if (playlist.endsWith(u"tmp"_s))
        moveNewList(root, playlist);
}

void showFirstRow(Root& root)
{
    // The heading of the tracks counts them, whoever adds and whether the catalogue is saved afterwards or not.
    root.tSoundzahl.Caption = u"(%1)"_s.arg(root.LListView2.count());
    root.services.events.yield();
    if (root.LListView2.count() > 0) {
        root.LListView2.select(1);
        ShowTrackInfo(root, 1, 1);
    }
    root.services.events.yield();
}

} // namespace

bool breaksLine(const QString& path)
{
    return path.contains(u'\r') || path.contains(u'\n');
}

void AddPlayEntrys(Root& root, const QString& file, int batch)
{
    if (!isEntry(file))
        return;
    ensureDataFolder(root, u"Playlisten"_s);
    if (!takesTracks(root))
        return;
    beginList(root);
    claimField(root);
    const QString playlist = selectedPlaylist(root);
    root.LListView2.append(rowOf(root, file, FileDirPath::FolderOf(playlist), Existence::Asked));
    appendLine(root.tPlayliste, file);
    if (batch != 0)
        showCount(root);
    else
        writeList(root, playlist);
    showFirstRow(root);
}

void AddPlayEntrys(Root& root, const QStringList& files, bool exist)
{
    constexpr qsizetype BetweenYields = 256;

    if (std::none_of(files.begin(), files.end(), isEntry))
        return;
    ensureDataFolder(root, u"Playlisten"_s);
    if (!takesTracks(root))
        return;
    const int read = root.currentRead;
    const int row = root.LListView1.selectedRow();
    {
        const QString folder = FileDirPath::FolderOf(selectedPlaylist(root));
        const Existence existence = exist ? Existence::Known : Existence::Asked;
        const ListView::Batch together(root.LListView2);
        for (qsizetype i = 0; i < files.size(); ++i) {
            if (!isEntry(files[i]))
                continue;
            beginList(root);
            claimField(root);
            root.LListView2.append(rowOf(root, files[i], folder, existence));
            appendLine(root.tPlayliste, files[i]);
            if (i % BetweenYields != BetweenYields - 1)
                continue;
            showCount(root);
            root.services.events.yield();
            if (root.currentRead != read || root.LListView1.selectedRow() != row)
                return;
        }
        showCount(root);
    }
    showFirstRow(root);
}

} // namespace orvantine
