#include "operations/Properties.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "operations/Eigenschaften.h"
#include "playback/CoverArt.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"
#include "shell/FeatureTips.h"
#include "transfer/BrowseFolders2k.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isMissing(const Root& root, int track)
{
    return !Dateiexistenz::FileExists(root, root.LListView2.subItem(track, 3));
}

bool isOtherMissing(const Root& root, int track)
{
    for (int i = 1; i <= root.LListView2.count(); ++i)
        if (i != track && isMissing(root, i))
            return true;
    return false;
}

/// The folder in which the user says the file is; "" for none.
QString askForFolder(Root& root, const QString& path)
{
    const Answer answer = root.services.messages.show(
        u"Die Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner. \n"
        u"Wahrscheinlich wurde die Datei(en) im Verzeichnis gelöscht oder verschoben.\n"
        u"\n"
        u"Klicken Sie ''Wiederholen'' um den Ordner für die Sounddatei anzugeben, \n"
        u"oder klicken Sie ''Ignorieren'' um einen Netzwerkordner zu wählen.\n"_s +
            FileDirPath::FileNameOf(path),
        u" Fehlerhafte Quelldatei(en)"_s, MessageIcon::Exclamation, MessageButtons::AbortRetryIgnore);
    if (answer == Answer::Retry)
        return BrowseFolders(root, FolderRoot::Computer);
    if (answer == Answer::Ignore)
        return BrowseFolders(root, FolderRoot::Network);
    return {};
}

bool wantsAll(Root& root)
{
    return root.services.messages.show(
               u"Möchten Sie für alle dieser Liste enthalten Tracks diesen als Quellordner verwenden ?   "_s,
               u" Playlisten-Verzeichnis"_s, MessageIcon::Exclamation, MessageButtons::OkCancel) == Answer::Ok;
}

/// The track is looked for in the folder from now on, and loses the colour of a missing one.
void moveTrack(Root& root, int track, const QString& folder)
{
    ListView& tracks = root.LListView2;
    tracks.setSubItem(track, 3, FileDirPath::join(folder, FileDirPath::FileNameOf(tracks.subItem(track, 3))));
    tracks.setColor(track, 1, Color::ButtonText);
    tracks.setColor(track, 3, Color::ButtonText);
}

void repairSource(Root& root, int track)
{
    const ListView& tracks = root.LListView2;
    const QString path = tracks.subItem(track, 3);
    const QString playlist = root.openPlaylist;
    // While a box is up, something may open another list.
    const auto stands = [&root, &tracks, track](const QString& list, const QString& file) {
        return root.openPlaylist == list && tracks.subItem(track, 3) == file;
    };

    if (root.mnuErrorDisplay.Checked.value())
        ShowFeatureTip(root, 715);

    const QString folder = askForFolder(root, path);
    if (folder.isEmpty() || !Dateiexistenz::FolderExists(root, folder) || !stands(playlist, path))
        return;
    const QString candidate = FileDirPath::join(folder, FileDirPath::FileNameOf(path));
    if (!Dateiexistenz::FileExists(root, candidate))
        return;

    moveTrack(root, track, folder);
    if (tracks.count() > 1 && isOtherMissing(root, track) && wantsAll(root)) {
        if (!stands(playlist, candidate))
            return;
        // Required: the files are not looked for in the folder.
        for (int i = 1; i <= tracks.count(); ++i)
            moveTrack(root, i, folder);
    }
    if (!stands(playlist, candidate))
        return;
    SavePlayEntrys(root);
    root.services.events.yield();
}

/// Asks whether the description is to go; takes it away.
void removeDescription(Root& root, int row)
{
    if (root.services.messages.show(u"Möchten Sie die Beschreibung der Playliste wirklich löschen ?   "_s,
                                    u" Beschreibung entfernen"_s, MessageIcon::Exclamation,
                                    MessageButtons::YesNo) == Answer::No)
        return;
    deleteIndexValue(root, databaseFile(root), row, 'e');
    showHintForDescription(root);
}

} // namespace

void mnuEigenschaften_Click(Root& root)
{
    const int track = root.LListView2.selectedRow();
    if (root.Visible.value() && track > 0 && isMissing(root, track))
        repairSource(root, track);
    else
        showEigenschaften(root);
}

void mnuBeschriftung_Click(Root& root)
{
    Services& services = root.services;
    const ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;

    const QString path = list.subItem(row, 2);
    const QString present = isHint(root.LSoundCaption.Caption) ? QString() : root.LSoundCaption.Caption.value();
    const QString answer = services.messages.input(u"Geben Sie bitte eine Beschreibung für die Wiedergabeliste ein:"_s,
                                                   u" Beschreibung der Playliste"_s, present);
    // While the box was up the sequence may have gone on to another row.
    if (list.selectedRow() != row || list.subItem(row, 2) != path)
        return;

    if (answer.isEmpty() && !present.isEmpty())
        return removeDescription(root, row);
    if (answer.isEmpty())
        return showHintForDescription(root);

    writeIndexValue(root, databaseFile(root), row, 'e', answer);
    root.LSoundCaption.Caption = answer;
    root.LSoundCaption.Tag = u"1"_s;

    if (coverFile(root, list.subItem(row, 1)).isEmpty() &&
        services.messages.show(u"Möchten Sie zu dem Album ein CD-Cover hinzufügen ?   "_s,
                               u" Beschreibung der Playliste"_s, MessageIcon::Question,
                               MessageButtons::YesNo) == Answer::Yes)
        root.pCovers.Click();
}

bool isHint(const QString& text)
{
    constexpr qsizetype Compared = 38;
    return text.left(Compared) == addTracksHint().left(Compared);
}

void showHintForDescription(Root& root)
{
    root.LSoundCaption.Caption = addTracksHint();
    root.LSoundCaption.Tag = u"0"_s;
}

} // namespace orvantine
