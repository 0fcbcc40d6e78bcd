#include "catalogue/RemovePlaylists.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "operations/ListInput.h"
#include "playback/CoverArt.h"
#include "playback/PlayerControl.h"
#include "playlists/ReadPlaylists.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isSure(Root& root, const QString& name)
{
    return root.services.messages.show(
               u"Möchten Sie die Playliste ''"_s + name + u"'' wirklich aus der Datenbank löschen ?    "_s,
               u" Wiedergabeliste entfernen"_s, MessageIcon::Exclamation, MessageButtons::OkCancel) != Answer::Cancel;
}

/// Only the last row loses its keys and its given name here; behind any other one the save closes up.
void forgetLastRow(Root& root, int row)
{
    const ListView& list = root.LListView1;
    const QString database = databaseFile(root);
    if (indexValue(root, database, row, 'a') != list.text(list.count()))
        return;
    IniFiles::DeleteKey(root, database, u"Rename"_s, FileDirPath::FileNameOf(list.subItem(row, 2)));
    for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g'})
        deleteIndexValue(root, database, row, letter);
}

void removeCover(Root& root, const QString& name)
{
    // A name that would leave the folder never forms a path.
    if (FileDirPath::hasSeparator(name))
        return;
    if (const QString cover = coverFile(root, name); !cover.isEmpty())
        root.files.remove(cover);
}

/// The last other row with the same file; 0 for none.
int otherUserOf(Root& root, const QString& path, int row)
{
    const ListView& list = root.LListView1;
    int other = 0;
    for (int i = 1; i <= list.count(); ++i) {
        if (i == row || list.subItem(i, 2).toLower() != path.toLower())
            continue;
        other = i;
        root.services.events.yield();
    }
    return other;
}

QString comparedFolder(QString folder)
{
    return folder.replace(u'\\', u'/').toLower();
}

/// A playlist elsewhere on the disk stays where it is; only its reference goes.
void removeFile(Root& root, const QString& path)
{
    root.files.copy(path, FileDirPath::without(path, 3) + u"bak"_s);
    const QString own = root.tDatenbank.Text.value() + u"Playlisten/"_s;
    if (comparedFolder(FileDirPath::FolderOf(path)) == comparedFolder(own))
        root.files.remove(path);
}

void clearPanels(Root& root)
{
    root.tPlaylisteinträge.Caption = u"Einträge in der Playliste"_s;
    root.pCovers.Picture = QString();
    root.LSoundCaption.Caption = QString();
    root.sAnzeige[1].Caption = QString();
    root.sAnzeige[2].Caption = QString();
    root.tPlayliste.Text = QString();
    root.playlistInField = QString();
    // Required: the row count has fallen already, so the number is one too high until the next full update.
    root.nAnzeige.Caption = u"(%1)"_s.arg(root.LListView1.count() + 1);
}

} // namespace

void mnuL_schen(Root& root)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0 || root.loadingCatalogue)
        return;
    const QString name = list.subItem(row, 1);
    const QString path = list.subItem(row, 2);
    // Whatever is served in between may put another playlist into the row's place.
    const auto stands = [&list, row, name, path] {
        return list.subItem(row, 1) == name && list.subItem(row, 2) == path;
    };

    stopIfRunning(root);

    if (!isSure(root, name) || !stands())
        return;
    list.select(row);

    const WholeChange together(root.files);
    const QString database = databaseFile(root);
    if (Dateiexistenz::FileExists(root, database))
        root.files.copy(database, backupFile(root));

    forgetLastRow(root, row);
    removeCover(root, name);

    if (otherUserOf(root, path, row) == 0 && Dateiexistenz::FileExists(root, path))
        removeFile(root, path);

    if (!stands())
        return;
    takeTrackList(root, {});
    root.LListView2.clear();
    list.remove(row);
    clearPanels(root);
    if (list.count() == 0)
        return;

    list.select(list.count());
    list.Tag = QString::number(list.count());
    QString opened = list.subItem(list.count(), 2);
    GetPlayEntrys(root, opened);
    root.services.events.yield();
    if (root.pCoverBack.Visible.value()) {
        root.pCoverBack.Height = root.xpFrame1.Height.value();
        root.pCoverBack.Top = root.xpFrame1.Top.value();
    }
    showRowCover(root, list.selectedRow());

    root.mnuSpeichern.Click();
    root.services.events.yield();
}

} // namespace orvantine
