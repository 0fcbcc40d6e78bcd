#include "playlists/mnuSpeichernUnter.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/Others.h"
#include "app/PlaylistFile.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/PlaylistTexts.h"
#include "metadata/SelectedTrack.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/TextDosConvert.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isNmlName(const QString& file)
{
    return file.right(3).toLower() == u"nml"_s;
}

QString nmlOf(const Root& root, const QString& title)
{
    QString text = u"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                   u"<NML VERSION=\"3\">\r\n"
                   u"<HEAD PROGRAM=\"Traktor\" COMPANY=\"orvanten.example\"/>\r\n"_s;
    text += u"<PLAYLIST TITLE=\""_s + title + u"\">\r\n"_s;
    const ListView& tracks = root.LListView2;
    for (int row = 1; row <= tracks.count(); ++row) {
        const QString path = trackPath(root, row);
        // Required: FILE holds the whole path, and nothing is escaped.
        text += u"<ENTRY TITLE=\""_s + tracks.subItem(row, TrackItem::Name) + u"\">\r\n"_s;
        text += u"<LOCATION FILE=\""_s + path + u"\" PATH=\""_s + FileDirPath::FolderOf(path) + u"\"/>\r\n"_s;
        text += u"</ENTRY>\r\n"_s;
    }
    return text + u"</PLAYLIST>\r\n</NML>\r\n"_s;
}

/// The rows in sight are the tracks of the playlist. Another list is opened for it.
bool showTracks(Root& root, const RowIdentity& playlist, int row)
{
    if (!root.trackList.isOf(playlist.path) || root.trackList.content() == TrackList::Content::None) {
        if (!root.LListView1.select(row))
            return false;
        openSelectedAnew(root);
    }
    // Required: what is in sight goes out, not what lies on the disk now.
    const bool own = root.trackList.content() == TrackList::Content::Own || ownTracks(root);
    return own && root.trackList.isOf(playlist.path);
}

/// True if the file was made, or a failure was told. False where the program has ended, the tracks of the list cannot
/// be shown or the file cannot be written.
bool exportTo(Root& root, Command& command, const RowIdentity& playlist, int row, const QString& target)
{
    root.trackList.clearLines();
    const ConvertedList converted = convertPlaylist(root, playlist.path);
    if (!command.yield())
        return false;
    // What an event has put into the field meanwhile is not this list.
    if (converted.lines.value_or(QString()).isEmpty())
        return command
            .ask({.text = u"Beim Einlesen oder Speichern der Playliste ist ein Fehler aufgetreten.    \n"
                          u"Die Änderungen konnten nicht erfolgreich gespeichert werden."_s,
                  .title = root.Caption.value() + u' ',
                  .icon = MessageIcon::Exclamation})
            .has_value();
    const auto write = [&root, &target](const QString& text) {
        if (!writePlaylist(root, target, text))
            return false;
        showQuietly(root, u"Gespeichert"_s);
        return true;
    };
    if (!isNmlName(target))
        return write(*converted.lines + u"\r\n"_s);
    if (!showTracks(root, playlist, row) || command.ended())
        return false;
    return write(nmlOf(root, playlist.name));
}

} // namespace

void mnuSpeichernUnter_Click(Root& root)
{
    Command command(root);
    const int row = root.LListView1.selectedRow();
    const RowIdentity playlist = identityOf(root, row);
    if (!Dateiexistenz::FileExists(root, playlist.path))
        return;

    const QString ownFolder = FileDirPath::FolderOf(playlist.path);
    const std::optional<ChosenFile> chosen =
        command.saveFile({.title = u" Wiedergabeliste speichern"_s,
                          .folder = ownFolder.isEmpty() ? SpecialFolder(root, Csidl::Documents) : ownFolder,
                          .fileName = FileDirPath::FileNameOf(playlist.path),
                          .filter = playlistFilter(),
                          .defaultExtension = u"m3u"_s});
    if (!chosen || chosen->fileName.isEmpty())
        return;
    const QString target = FileDirPath::join(chosen->folder, chosen->fileName);
    if (target.size() < 5)
        return;

    if (identityOf(root, row) != playlist || !exportTo(root, command, playlist, row, target))
        return;

    const bool otherFolder = !FileDirPath::isSameFile(FileDirPath::FolderOf(target), ownFolder);
    if (!root.mnuLokalePlayliste.Checked.value() || !otherFolder)
        return;
    const std::optional<Answer> answer =
        command.ask({.text = u"Sie haben eine vorhandene Playliste unter einer neuen Datei gespeichert.    \n"
                             u"In der Datenbank wird ein Verweiss zu dieser Wiedergabeliste gesetzt.\n \n"
                             u"Möchten Sie die Verknüpfung zur neuen Wiedergabeliste setzen ?"_s,
                     .title = u" Wiedergabeliste speichern"_s,
                     .icon = MessageIcon::Question,
                     .buttons = MessageButtons::OkCancel});
    if (!answer || answer == Answer::Cancel || identityOf(root, row) != playlist)
        return;
    setPlaylistPath(root, row, target);
    if (root.trackList.isOf(playlist.path)) {
        root.trackList.hold().follow(target);
        // What an NML holds is no lines of tracks: it is read when the list is opened the next time.
        if (isNmlName(target))
            root.trackList.doubt();
    }
    root.mnuSpeichern.Click();
}

} // namespace orvantine
