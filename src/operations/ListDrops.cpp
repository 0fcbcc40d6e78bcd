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

/// A playlist holds a path in a line.
bool breaksLine(const QString& path)
{
    return path.contains(u'\r') || path.contains(u'\n');
}

// Tracks

bool isAudio(const Root& root, const QString& path)
{
    static const QSet<QString> extensions{u".mp3"_s, u".wma"_s, u".wav"_s};
    return extensions.contains(path.right(4).toLower()) && !breaksLine(path) && !root.files.isFolder(path);
}

/// Case and the kind of separator do not make another file.
QString compared(QString path)
{
    return path.replace(u'\\', u'/').toCaseFolded();
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
    // The question speaks of all doubles: its Yes counts for the rest of the drop.
    if (root.currentRead == read && newOnes < files.size() && mayAddTwice(root, files[newOnes]) &&
        root.currentRead == read)
        AddPlayEntrys(root, files.sliced(newOnes));
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
    GetPlayEntrys(root, path);
    if (list.selectedRow() == row && list.subItem(row, 2) == path)
        list.setSubItem(row, 3, QString::number(root.LListView2.count()));
}

bool addPlaylist(Root& root, QString path)
{
    // A new row would make an empty list of a file that has vanished.
    if (!Dateiexistenz::FileExists(root, path) ||
        !NewPlayliste(root, path, FileDirPath::without(FileDirPath::FileNameOf(path), 4)))
        return false;
    openNewRow(root, path);
    return true;
}

QStringList audioFilesOf(const Root& root, const QString& folder)
{
    QStringList files = root.files.list(folder, u"*.mp3;*.wma;*.wav"_s);
    for (QString& file : files)
        file = FileDirPath::join(folder, file);
    return files;
}

bool addFolder(Root& root, const QString& folder)
{
    const QString name = FileDirPath::FileNameOf(folder);
    // A list of such a name would have no file, and its tracks would be gone with the next click.
    if (name.isEmpty() || !FileDirPath::canBeFileName(name))
        return false;
    QString path = root.tDatenbank.Text.value() + root.services.start.stem + u".tmp"_s;
    const QString own = FileDirPath::join(root.tDatenbank.Text.value() + u"Playlisten"_s, name + u".m3u"_s);
    const bool shared = Dateiexistenz::FileExists(root, own);
    if (!NewPlayliste(root, path, name))
        return false;
    // The file of a list with the same name keeps its tracks.
    if (shared)
        openNewRow(root, path);
    const int read = root.currentRead;
    AddPlayEntrys(root, audioFilesOf(root, folder), true);
    if (root.currentRead == read)
        SavePlayEntrys(root);
    return true;
}

/// A new entry is stored at once, before the next item is looked at. Its file comes into being with it: a list that
/// stands there without an entry would get its tracks twice when the folder is dropped again.
bool storeItem(Root& root, const QString& item, bool folder)
{
    const WholeChange together(root.files);
    if (!(folder ? addFolder(root, item) : addPlaylist(root, item)))
        return false;
    // Not only where the user may press it: in a catalogue that was empty it is disabled until the next pass.
    root.mnuSpeichern.Click();
    return true;
}

void addItem(Root& root, const QString& item, bool folder)
{
    DisabledButtons(root, 1);
    const bool stored = storeItem(root, item, folder);
    DisabledButtons(root, 0);
    if (!stored)
        return tellFailure(root);
    Dialogsuche(root, false);
    if (folder)
        FindPicture(root, item);
}

} // namespace

void LListView1_OLEDragDrop(Root& root, const QStringList& paths)
{
    if (paths.isEmpty() || !mayChangeTracks(root) || root.loadingCatalogue)
        return;
    const QScopedValueRollback running(root.changingTracks, true);

    bool offered = false;
    for (const QString& path : paths) {
        if (root.LListView1.count() >= MostPlaylists)
            return tellLimit(root);
        const bool folder = root.files.isFolder(path);
        if (folder || isPlaylist(path))
            addItem(root, path, folder);
        else if (!std::exchange(offered, true))
            offerNewPlaylist(root);
    }
}

void LListView2_OLEDragDrop(Root& root, const QStringList& paths)
{
    if (paths.isEmpty() || !mayChangeTracks(root))
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
    root.mnuSpeichern.Click();
}

} // namespace orvantine
