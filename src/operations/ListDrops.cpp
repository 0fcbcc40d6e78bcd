#include "operations/ListDrops.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/NewPlaylist.h"
#include "operations/TrackListOperations.h"
#include "playback/CoverArt.h"
#include "playlists/AddTracks.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"
#include "search/Dialogsuche.h"
#include "shell/MainWindow.h"

#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void press(const MenuItem& item)
{
    if (item.available())
        item.Click();
}

Answer ask(Root& root, const QString& text, const QString& title)
{
    return root.services.messages.show(text, title, MessageIcon::Exclamation, MessageButtons::YesNo);
}

// Tracks

bool isAudio(const Root& root, const QString& path)
{
    static const QSet<QString> extensions{u".mp3"_s, u".wma"_s, u".wav"_s};
    return extensions.contains(path.right(4).toLower()) && !breaksLine(path) && !root.files.isFolder(path);
}

/// Case, the kind of separator and the way that an umlaut is composed do not make another file.
QString compared(QString path)
{
    return path.replace(u'\\', u'/').normalized(QString::NormalizationForm_C).toCaseFolded();
}

bool mayAddTo(Root& root, const QString& playlist)
{
    return !readSetting(root, u"ShowDialog"_s).is(1) ||
           ask(root, u"Möchten Sie zur Trackliste ''"_s + playlist + u"'' wirklich Audiodateien hinzufügen ? "_s,
               u" Audiodateien hinzufügen"_s) == Answer::Yes;
}

bool mayAddTwice(Root& root, const QString& file)
{
    return root.services.messages.show(
               u"Die Sounddatei ''"_s + FileDirPath::FileNameOf(file) +
                   u"'' ist bereits vor\nMöchten Sie fortfahren und die doppelten Dateien trotzdem hinzufügen ?"_s,
               u" Audiodateien hinzufügen"_s, MessageIcon::None, MessageButtons::YesNo) == Answer::Yes;
}

/// The read of a list without entries leaves the tracks out of sight.
void showAddedTracks(Root& root)
{
    if (root.LListView2.count() > 0)
        root.LListView2.Visible = true;
}

QSet<QString> pathsOf(const ListView& tracks)
{
    QSet<QString> paths;
    paths.reserve(tracks.count());
    for (int row = 1; row <= tracks.count(); ++row)
        paths.insert(compared(tracks.subItem(row, 3)));
    return paths;
}

/// The files in front of the first one that the list holds already, or holds by then.
qsizetype countOfNew(const QStringList& files, QSet<QString> known)
{
    const auto held = std::find_if(files.begin(), files.end(), [&known](const QString& file) {
        const QString path = compared(file);
        if (known.contains(path))
            return true;
        known.insert(path);
        return false;
    });
    return held - files.begin();
}

/// False where something else has opened another list.
bool addFiles(Root& root, const QStringList& files)
{
    const int read = root.currentRead;
    const qsizetype newOnes = countOfNew(files, pathsOf(root.LListView2));
    DisabledButtons(root, 1);
    AddPlayEntrys(root, files.first(newOnes));
    if (root.currentRead == read && newOnes < files.size()) {
        // While the question is up the sequence may open another list: what was added is safe by then.
        if (newOnes > 0)
            SavePlayEntrys(root);
        DisabledButtons(root, 1);
        // The question speaks of all doubles: its Yes counts for the rest of the drop.
        if (root.currentRead == read && mayAddTwice(root, files[newOnes]) && root.currentRead == read)
            AddPlayEntrys(root, files.sliced(newOnes));
    }
    DisabledButtons(root, 0);
    return root.currentRead == read;
}

// Playlists

bool isPlaylist(const QString& path)
{
    return path.right(3).toLower() == u"m3u"_s && !breaksLine(path);
}

void tellFailure(Root& root)
{
    root.services.messages.show(u"Beim Hinzufügen der Wiedergabeliste sind Fehler aufgetreten. \n"
                                u"Die Sounddateien konnte nicht zur Datenbank hinzugefügt werden.  "_s,
                                u" Playliste hinzufügen"_s, MessageIcon::None, MessageButtons::Ok);
}

void offerNewPlaylist(Root& root)
{
    if (ask(root,
            u"Es können nur M3u-Tracklisten oder Mp3-Dateiordner hinzugefügt werden. \n\n"
            u"Erstellen Sie eine neue Playliste im Menü ''Hinzufügen'' und fügen dann \n"
            u"die Mp3-Dateien in die rechte Spalte ''Einträge in der Playliste'' hinzu.\n"
            u"Möchten Sie jetzt eine neue Playliste erstellen ?"_s,
            u" Tracklisten hinzufügen"_s) == Answer::Yes)
        press(root.mnuNeu);
}

/// Shows the tracks of the new row, the last one.
void openNewRow(Root& root, QString path)
{
    ListView& list = root.LListView1;
    const int row = list.count();
    // The sequence may have gone on to another row.
    list.select(row);
    GetPlayEntrys(root, path);
    if (list.selectedRow() == row && list.subItem(row, 2) == path)
        list.setSubItem(row, 3, QString::number(root.LListView2.count()));
}

/// Path and name of the selected row.
QStringList selectedEntry(const Root& root)
{
    const ListView& list = root.LListView1;
    return {list.subItem(list.selectedRow(), 2), list.subItem(list.selectedRow(), 1)};
}

/// The entry is selected and the rows in sight are its tracks.
bool isOpen(Root& root, const QStringList& entry)
{
    return takeOwnTracks(root) && selectedEntry(root) == entry;
}

/// The entry that was added, nothing where it failed.
std::optional<QStringList> addPlaylist(Root& root, QString path)
{
    // A new row would make an empty list of a file that has vanished.
    const QString name = FileDirPath::without(FileDirPath::FileNameOf(path), 4);
    if (!Dateiexistenz::FileExists(root, path) || !NewPlayliste(root, path, name))
        return {};
    openNewRow(root, path);
    return QStringList{path, name};
}

/// The audio files of a folder that the open list does not hold.
QStringList newAudioFilesOf(const Root& root, const QString& folder)
{
    QStringList files = root.files.list(folder, u"*.mp3;*.wma;*.wav"_s);
    for (QString& file : files)
        file = FileDirPath::join(folder, file);
    const QSet<QString> known = pathsOf(root.LListView2);
    files.removeIf([&known](const QString& file) { return known.contains(compared(file)); });
    return files;
}

/// The entry that was added, nothing where it failed.
std::optional<QStringList> addFolder(Root& root, const QString& folder)
{
    const QString name = FileDirPath::FileNameOf(folder);
    // A list of such a name would have no file, and its tracks would be gone with the next click.
    if (name.isEmpty() || !FileDirPath::canBeFileName(name) || breaksLine(folder))
        return {};
    QString path = root.tDatenbank.Text.value() + root.services.start.stem + u".tmp"_s;
    if (!NewPlayliste(root, path, name))
        return {};
    const QStringList entry{path, name};
    // The file of a list with the same name keeps its tracks. The sequence may have put those of another list in sight.
    if (!isOpen(root, entry))
        openNewRow(root, path);
    if (!isOpen(root, entry))
        return {};
    const int read = root.currentRead;
    AddPlayEntrys(root, newAudioFilesOf(root, folder), true);
    if (root.currentRead != read || !isOpen(root, entry))
        return {};
    SavePlayEntrys(root);
    showAddedTracks(root);
    return entry;
}

/// Gives the entry, nothing where it failed. A new one is stored at once, before the next item is looked at, and its
/// file comes into being with it.
std::optional<QStringList> storeItem(Root& root, const QString& item, bool folder)
{
    const WholeChange together(root.files);
    std::optional<QStringList> entry = folder ? addFolder(root, item) : addPlaylist(root, item);
    if (!entry)
        return entry;
    // Not only where the user may press it: in a catalogue that was empty it is disabled until the next pass.
    root.mnuSpeichern.Click();
    return entry;
}

void addItem(Root& root, const QString& item, bool folder)
{
    DisabledButtons(root, 1);
    const std::optional<QStringList> stored = storeItem(root, item, folder);
    DisabledButtons(root, 0);
    if (!stored)
        return tellFailure(root);
    Dialogsuche(root, false);
    // The sequence may have gone on to another row: the picture is not that one's cover.
    if (folder && selectedEntry(root) == *stored)
        FindPicture(root, item);
}

} // namespace

void LListView1_OLEDragDrop(Root& root, const QStringList& paths)
{
    if (paths.isEmpty() || !mayChangeTracks(root) || root.loadingCatalogue || root.reordering)
        return;
    const QScopedValueRollback running(root.changingTracks, true);

    bool offered = false;
    for (const QString& path : paths) {
        if (root.LListView1.count() >= MostPlaylists)
            return tellLimit(root);
        const bool folder = root.files.isFolder(path);
        const bool list = folder || isPlaylist(path);
        // Only the whole catalogue is stored: the entry would be gone with the filter.
        if (list && root.mnuFavoritenShow.Tag == u"1"_s)
            return tellFailure(root);
        if (list)
            addItem(root, path, folder);
        else if (!std::exchange(offered, true))
            offerNewPlaylist(root);
    }
}

void LListView2_OLEDragDrop(Root& root, const QStringList& paths)
{
    if (paths.isEmpty() || !mayChangeTracks(root) || root.reordering)
        return;
    const QScopedValueRollback running(root.changingTracks, true);
    ListView& list = root.LListView1;

    if (list.count() == 0 && ask(root,
                                 u"Im Orvanten-Manager sind keine Playlisten vorhanden. \n"
                                 u"Möchten Sie eine neue Wiedergabeliste hinzufügen ?"_s,
                                 u" Keine Wiedergabeliste"_s) == Answer::Yes)
        press(root.mnuNeu);
    if (list.selectedRow() == 0)
        return;

    if (!std::all_of(paths.begin(), paths.end(), [&root](const QString& path) { return isAudio(root, path); })) {
        root.services.messages.show(u"Es können nur Mp3-Audiodateien in die Trackliste hinzugefügt werden. "_s,
                                    u" Audiodateien hinzufügen"_s, MessageIcon::Critical, MessageButtons::Ok);
        return;
    }

    if (!showSelectedTracks(root))
        return;
    const int read = root.currentRead;
    if (!mayAddTo(root, list.subItem(list.selectedRow(), 1)) || root.currentRead != read)
        return;
    if (!addFiles(root, paths))
        return;
    SavePlayEntrys(root);
    showAddedTracks(root);
    root.mnuSpeichern.Click();
}

} // namespace orvantine
