#include "search/ErrorListe.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Help.h"
#include "app/IniFiles.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "platform/PlaylistWalk.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/PlaylistText.h"
#include "playlists/TrackRow.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

namespace FaultItem {
constexpr int Number = 1;
constexpr int Path = 3;
constexpr int Marker = 4;
} // namespace FaultItem

struct Column
{
    const char16_t* title;
    Twips width;
};
constexpr Column Columns[] = {{u"ID", 0}, {u"Track", 800}, {u"Name", 3600}, {u"Path", 4600}, {u"Playliste", 2200}};

const QString MissingList = u"PLAYLISTE"_s;
/// The key of such a line: a list may bear that very name.
const QString MissingListKey = u"1"_s;

struct Fault
{
    /// Of the catalogue, or of the entry in its list.
    int number = 0;
    QString name;
    QString path;
    QString marker;
    /// Of the catalogue.
    int list = 0;
    bool missingList = false;
};

struct Counts
{
    int lists = 0;
    int tracks = 0;
    /// A list could not be read: there may be more.
    bool doubted = false;
};

void append(ListView& lines, const Fault& fault)
{
    const QString icon = u"Icon_2"_s;
    ListItem item;
    item.Text = padded(lines.count() + 1, 3);
    item.Icon = icon;
    item.SmallIcon = icon;
    item.Extras = std::make_shared<const ListExtras>(ListExtras{
        .Key = fault.missingList ? MissingListKey : QString(), .Tag = {}, .ToolTipText = {}, .Number = fault.list});
    item.SubItems = {{.Text = padded(fault.number, 2), .ReportIcon = icon},
                     {.Text = fault.name},
                     {.Text = fault.path},
                     {.Text = fault.marker}};
    lines.append(std::move(item));
}

/// The name that the user gave the file, or else `name`.
QString givenName(const Root& root, const QString& path, const QString& name)
{
    const QString given = IniFiles::ReadValue(root, databaseFile(root), u"Rename"_s, FileDirPath::FileNameOf(path));
    return given.isEmpty() ? name : given;
}

/// The entries of a list, as they stand in the file.
QStringList entriesOf(const Root& root, const QString& path)
{
    if (!mayHoldPlaylist(root, path))
        return {};
    QString text = root.files.readText(path).text;
    if (path.endsWith(u".nml"_s, Qt::CaseInsensitive))
        text = entriesOfNml(text.chopped(std::min<qsizetype>(2, text.size()))) + u"\r\n"_s;
    QStringList entries;
    const QList<PlaylistEntry> read = playlistEntries({}, text);
    for (const PlaylistEntry& entry : read)
        entries += entry.sourceURL;
    return entries;
}

int addMissingTracks(Root& root, const CatalogueEntry& entry, int number)
{
    constexpr qsizetype ShortestEntry = 3;
    const QString folder = FileDirPath::FolderOf(entry.path);
    const ProfileStore::Steady names(root.services.profiles, databaseFile(root));
    ListView& lines = root.errorListe->LErrorView;
    const ListView::Batch together(lines);
    int position = 0;
    int found = 0;
    const QStringList tracks = entriesOf(root, entry.path);
    for (const QString& track : tracks) {
        ++position;
        const QString full = fullPath(track, folder);
        if (track.size() < ShortestEntry || Dateiexistenz::FileExists(root, full))
            continue;
        ++found;
        append(lines, {.number = position,
                       .name = givenName(root, track, displayName(root, track, full)),
                       .path = full,
                       .marker = entry.name,
                       .list = number,
                       .missingList = false});
    }
    return found;
}

/// Nothing if the program has ended.
std::optional<Counts> lookForFaults(Root& root, Command& command)
{
    Counts counts;
    for (int number = 1; number <= MostPlaylists; ++number) {
        const CatalogueEntry entry = readEntry(root, databaseFile(root), number);
        if (entry.path.isEmpty())
            continue;
        if (Dateiexistenz::FileExists(root, entry.path)) {
            counts.tracks += addMissingTracks(root, entry, number);
            counts.doubted = counts.doubted || root.files.readBytes(entry.path).outcome == ReadOutcome::Failed;
        } else {
            ++counts.lists;
            append(root.errorListe->LErrorView, {.number = number,
                                                 .name = givenName(root, entry.path, entry.name),
                                                 .path = entry.path,
                                                 .marker = MissingList,
                                                 .list = number,
                                                 .missingList = true});
        }
        if (!command.yield())
            return {};
    }
    return counts;
}

void load(Root& root)
{
    ErrorListe& form = *root.errorListe;
    ListView& lines = form.LErrorView;
    form.chosen = 0;
    form.LFehler.Caption = QString();
    form.LAnzahl.Caption = QString();
    form.LHinweis.Visible = true;
    form.LHinweis.Caption = u"Bitte warten Sie, bis der Datenüberprüfung vollständig abgeschlossen wurde."_s;
    lines.clear();
    lines.clearColumns();
    for (const Column& column : Columns)
        lines.addColumn(QString::fromUtf16(column.title), column.width);

    Command command(root);
    command.wait();
    const int failedReads = root.services.profiles.failedReads();
    const std::optional<Counts> counts = lookForFaults(root, command);
    if (!counts)
        return root.services.forms.unload(form);
    if (root.services.profiles.failedReads() != failedReads) {
        // What was found is not all that there is.
        form.LHinweis.Caption = u"Die Datenbank konnte nicht ganz gelesen werden."_s;
        return;
    }
    form.LHinweis.Caption = u"Ein Doppelklick oder Enter öffnet die Playliste an dieser Stelle."_s;
    form.LHinweis.Visible = lines.count() > 0 || counts->doubted;
    if (counts->doubted)
        form.LHinweis.Caption = u"Nicht alle Playlisten konnten gelesen werden."_s;
    form.LAnzahl.Caption = u"Es wurden "_s + QString::number(counts->lists) + u" Playlisten und "_s +
                           QString::number(counts->tracks) + u" Sounddateien gefunden."_s;
}

void LErrorView_Click(ErrorListe& form)
{
    const ListView& lines = form.LErrorView;
    const int row = lines.selectedRow();
    if (row == 0)
        return;
    form.LFehler.Caption = lines.key(row) == MissingListKey
                               ? u"DIESE DATEI IST EINE FEHLENDE WIEDERGABELISTE"_s
                               : u"FEHLERHAFTE SOUNDDATEI IN PLAYLISTE: "_s + lines.subItem(row, FaultItem::Marker);
}

void BReady_Click(Root& root, ErrorListe& form)
{
    // Required: nothing is corrected.
    Command command(root);
    if (command.ask({.text = u"Diese Funktion ist derzeit leider nicht verfügbar.   "_s,
                     .title = u" Playlisten/Sounddateien korregieren"_s}))
        root.services.forms.unload(form);
}

/// The row of the catalogue that has that number in section `Index`, or else that file.
int rowOfNumber(const Root& root, int number)
{
    const QString path = indexValue(root, databaseFile(root), number, EntryKey::Path);
    const ListView& list = root.LListView1;
    for (int row = 1; row <= list.count(); ++row)
        if (numberOf(root, row) == number && FileDirPath::isSameFile(playlistPath(root, row), path))
            return row;
    for (int row = 1; row <= list.count(); ++row)
        if (FileDirPath::isSameFile(playlistPath(root, row), path))
            return row;
    return 0;
}

/// The row of the track, the one at its place in the list first.
int rowOfTrack(const Root& root, int position, const QString& path)
{
    const ListView& tracks = root.LListView2;
    const auto isIt = [&](int row) { return FileDirPath::isSameFile(tracks.subItem(row, FaultItem::Path), path); };
    if (tracks.has(position) && isIt(position))
        return position;
    for (int row = 1; row <= tracks.count(); ++row)
        if (isIt(row))
            return row;
    return 0;
}

} // namespace

ErrorListe::ErrorListe() : Form(u"ErrorListe"_s)
{
    Caption = u" Datenüberprüfung"_s;
    BReady.Caption = u"&Korrigieren"_s;
    bAbbrechen.Caption = u"&Schließen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
}

void setUpErrorListe(Root& root)
{
    ErrorListe& form = *root.errorListe;
    form.Load = [&root] { load(root); };
    form.LErrorView.Click = [&form] { LErrorView_Click(form); };
    form.LErrorView.DblClick = [&root, &form] {
        form.chosen = form.LErrorView.selectedRow();
        if (form.chosen > 0)
            root.services.forms.unload(form);
    };
    form.BReady.Click = [&root, &form] { BReady_Click(root, form); };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/3.5 Fehlerliste.htm"); };
}

void openChosenFault(Root& root)
{
    const ErrorListe& form = *root.errorListe;
    const ListView& lines = form.LErrorView;
    if (!lines.has(form.chosen))
        return;
    const int row = rowOfNumber(root, lines.number(form.chosen));
    if (row == 0)
        return;
    Command command(root);
    const QString path = openRow(root, row);
    if (command.ended() || !root.trackList.isOf(path) || lines.key(form.chosen) == MissingListKey)
        return;
    const int track = rowOfTrack(root, lines.subItem(form.chosen, FaultItem::Number).toInt(),
                                 lines.subItem(form.chosen, FaultItem::Path));
    if (!root.LListView2.select(track))
        return;
    root.LListView2.EnsureVisible(track);
    root.LListView2.SetFocus();
}

} // namespace orvantine
