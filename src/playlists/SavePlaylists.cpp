#include "playlists/SavePlaylists.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Root.h"
#include "app/SaveOptions.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "playlists/PlaylistText.h"
#include "playlists/ReadPlaylists.h"
#include "shell/WaitState.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void tellFailure(Root& root)
{
    root.services.messages.show(u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    "_s,
                                u" Wiedergabeliste speichern"_s, MessageIcon::Critical, MessageButtons::Ok);
}

void updateTrackCount(Root& root)
{
    ListView& list = root.LListView1;
    const int count = root.LListView2.count();
    if (leadingNumber(list.subItem(list.selectedRow(), 3)) != count)
        list.setSubItem(list.selectedRow(), 3, QString::number(count));
}

QString rowsAsText(const ListView& tracks)
{
    QStringList paths;
    paths.reserve(tracks.count());
    for (int row = 1; row <= tracks.count(); ++row)
        paths.append(tracks.subItem(row, 3));
    return paths.join(u"\r\n"_s) + u"\r\n"_s;
}

/// Both separators are one, and case does not count.
QString compared(QString path)
{
    return path.replace(u'\\', u'/').toLower();
}

bool isUserList(const Root& root, const QString& path)
{
    const QString own = FileDirPath::join(SpecialFolder(root, 26), u"Orvanten Manager");
    return compared(path).startsWith(compared(own));
}

/// Writes the rows of the open list to `path`, an empty one telling the failure. The caller decided where to.
void writeList(Root& root, const QString& path)
{
    enterWait(root);
    if (path.isEmpty()) {
        tellFailure(root);
        leaveWait(root);
        return;
    }
    // A file with more entries than a list can show would lose the rest: it is left alone.
    const ReadText before = root.files.readText(path);
    const bool fits = before.outcome != ReadOutcome::Failed && !exceedsCount(before.text);
    if (fits && Dateiexistenz::FileExists(root, path))
        root.files.clearAttributes(path);
    const int read = root.currentRead;
    QString text = rowsAsText(root.LListView2);
    root.services.events.yield();
    // An event in between may have changed the rows. If it opened another list, those of this one are written as they
    // were, unless its file has gone with it; one that was read anew shows what its file holds.
    const bool inSight = root.openPlaylist == path;
    if (inSight)
        text = rowsAsText(root.LListView2);
    if (fits && (inSight ? root.currentRead == read : Dateiexistenz::FileExists(root, path)))
        root.files.writeText(path, text);
    leaveWait(root);
}

void prepareSave(Root& root)
{
    saveColumnWidths(root);
    ensureDataFolder(root, u"Playlisten"_s);
    updateTrackCount(root);
}

QString nmlOf(const Root& root, const QString& title)
{
    QString text = u"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                   u"<NML VERSION=\"3\">\r\n"
                   u"<HEAD PROGRAM=\"Traktor\" COMPANY=\"orvanten.example\"/>\r\n"_s;
    text += u"<PLAYLIST TITLE=\""_s + title + u"\">\r\n"_s;
    const ListView& tracks = root.LListView2;
    for (int row = 1; row <= tracks.count(); ++row) {
        const QString path = tracks.subItem(row, 3);
        // Required: FILE holds the whole path, and nothing is escaped.
        text += u"<ENTRY TITLE=\""_s + tracks.subItem(row, 2) + u"\">\r\n"_s;
        text += u"<LOCATION FILE=\""_s + path + u"\" PATH=\""_s + FileDirPath::FolderOf(path) + u"\"/>\r\n"_s;
        text += u"</ENTRY>\r\n"_s;
    }
    return text + u"</PLAYLIST>\r\n</NML>\r\n"_s;
}

/// False where the list to export is not the one whose rows are shown any more; a failure was told.
bool exportTo(Root& root, const QString& title, const QString& path, const QString& target)
{
    root.tPlayliste.Text = QString();
    root.playlistInField = QString();
    TextDosConvert(root, path);
    root.services.events.yield();
    if (root.tPlayliste.Text.value().isEmpty()) {
        root.services.messages.show(u"Beim Einlesen oder Speichern der Playliste ist ein Fehler aufgetreten.    \n"
                                    u"Die Änderungen konnten nicht erfolgreich gespeichert werden."_s,
                                    root.Caption.value() + u' ', MessageIcon::Exclamation, MessageButtons::Ok);
        return true;
    }
    const bool nml = target.right(3).toLower() == u"nml"_s;
    // The rows of another list are not the export of this one.
    if (nml && root.openPlaylist != path)
        return false;
    root.files.writeText(target, nml ? nmlOf(root, title) : root.tPlayliste.Text.value() + u"\r\n"_s);
    return true;
}

} // namespace

bool mayWriteSelected(const Root& root)
{
    const QString path = root.LListView1.subItem(root.LListView1.selectedRow(), 2);
    return root.currentRead == root.finishedRead &&
           (path.isEmpty() || (path == root.openPlaylist && !root.foreignRows));
}

void SavePlayEntrys(Root& root)
{
    if (!mayWriteSelected(root))
        return;
    prepareSave(root);
    const QString path = root.LListView1.subItem(root.LListView1.selectedRow(), 2);
    if (root.mnuLokalePlayliste.Checked.value() && !isUserList(root, path))
        SaveLocalEntrys(root);
    else
        writeList(root, path);
}

void SaveLocalEntrys(Root& root)
{
    if (!mayWriteSelected(root))
        return;
    ensureDataFolder(root, u"Playlisten"_s);
    updateTrackCount(root);
    enterWait(root);

    ListView& list = root.LListView1;
    const QString old = list.subItem(list.selectedRow(), 2);
    const QString local =
        FileDirPath::join(root.tDatenbank.Text.value() + u"Playlisten"_s, FileDirPath::FileNameOf(old));
    const bool isLocal = old.toLower() == local.toLower();
    if (!isLocal) {
        if (old.isEmpty() || !Dateiexistenz::FileExists(root, old)) {
            tellFailure(root);
            leaveWait(root);
            return;
        }
        list.setSubItem(list.selectedRow(), 2, local);
        root.openPlaylist = local;
        root.files.copy(old, local);
    }

    // The list is a local one now, wherever the DataFolder lies: it is written and does not come back here.
    prepareSave(root);
    writeList(root, isLocal ? old : local);
    leaveWait(root);
}

void mnuSpeichernUnter_Click(Root& root)
{
    Services& services = root.services;
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    const QString title = list.subItem(row, 1);
    const QString path = list.subItem(row, 2);
    if (!Dateiexistenz::FileExists(root, path))
        return;

    const QString ownFolder = FileDirPath::FolderOf(path);
    const std::optional<ChosenFile> chosen =
        services.choosers.saveFile({.title = u" Wiedergabeliste speichern"_s,
                                    .folder = ownFolder.isEmpty() ? SpecialFolder(root, 5) : ownFolder,
                                    .filter = playlistFilter(),
                                    .defaultExtension = u"m3u"_s});
    if (!chosen || chosen->fileName.isEmpty())
        return;
    const QString target = FileDirPath::join(chosen->folder, chosen->fileName);
    if (target.size() < 5)
        return;

    // While the chooser was up the sequence may have opened another list.
    if (list.subItem(row, 2) != path || !exportTo(root, title, path, target))
        return;

    const bool otherFolder = compared(FileDirPath::FolderOf(target)) != compared(ownFolder);
    if (!root.mnuLokalePlayliste.Checked.value() || path.isEmpty() || !otherFolder)
        return;
    const Answer answer =
        services.messages.show(u"Sie haben eine vorhandene Playliste unter einer neuen Datei gespeichert.    \n"
                               u"In der Datenbank wird ein Verweiss zu dieser Wiedergabeliste gesetzt.\n \n"
                               u"Möchten Sie die Verknüpfung zur neuen Wiedergabeliste setzen ?"_s,
                               u" Wiedergabeliste speichern"_s, MessageIcon::Question, MessageButtons::OkCancel);
    if (answer == Answer::Cancel || list.subItem(row, 2) != path)
        return;
    list.setSubItem(row, 2, target);
    if (root.openPlaylist == path)
        root.openPlaylist = target;
    mnuSpeichern_Click(root);
}

} // namespace orvantine
