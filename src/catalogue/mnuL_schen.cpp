#include "catalogue/mnuL_schen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/PlayButtons.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "catalogue/mnuSpeichern.h"
#include "platform/FileDirPath.h"
#include "playback/CoverPane.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isSure(Command& command, const QString& name)
{
    const std::optional<Answer> answer = command.ask(
        {.text = u"Möchten Sie die Playliste ''"_s + name + u"'' wirklich aus der Datenbank löschen ?    "_s,
         .title = u" Wiedergabeliste entfernen"_s,
         .icon = MessageIcon::Exclamation,
         .buttons = MessageButtons::OkCancel});
    return answer && answer != Answer::Cancel;
}

/// Only the last row loses its keys and its given name here; behind any other one the save closes up. Under the filter
/// of favourites the section stays as it is.
void forgetLastRow(Root& root, int row)
{
    if (isFiltered(root))
        return;
    const ListView& list = root.LListView1;
    const QString database = databaseFile(root);
    if (indexValue(root, database, row, EntryKey::Id) != list.text(list.count()))
        return;
    IniFiles::DeleteKey(root, database, u"Rename"_s, FileDirPath::FileNameOf(playlistPath(root, row)));
    deleteEntry(root, database, row);
}

/// No save comes behind the removal of the only row. Behind a gap its entry has another number than its place.
void forgetPath(Root& root, const QString& path)
{
    const QString database = databaseFile(root);
    for (int number = 1; number <= MostPlaylists && !isFiltered(root) && !path.isEmpty(); ++number)
        if (indexValue(root, database, number, EntryKey::Path) == path)
            deleteEntry(root, database, number);
}

void removeCover(Root& root, const QString& name)
{
    if (const QString cover = coverFile(root, name); !cover.isEmpty())
        root.files.remove(cover);
}

/// Another row has the same file. Events are served at each in sight; nothing where the program has ended.
std::optional<bool> isUsedElsewhere(Root& root, Command& command, const QString& path, int row)
{
    for (int i = 1; i <= root.LListView1.count(); ++i)
        if (i != row && FileDirPath::isSameFile(playlistPath(root, i), path) && !command.yield())
            return {};
    // A path that could not be read may be that of this file.
    const int failedReads = root.services.profiles.failedReads();
    return isUsedByAnother(root, row, path) || root.services.profiles.failedReads() != failedReads;
}

/// A playlist elsewhere on the disk stays where it is; only its reference goes.
void removeFile(Root& root, const QString& path)
{
    backUp(root, path, FileDirPath::without(path, 3) + u"bak"_s);
    if (FileDirPath::isSameFile(FileDirPath::FolderOf(path), playlistFolder(root) + u'/'))
        root.files.remove(path);
}

void removeRow(Root& root, int row, const QString& path, bool usedElsewhere)
{
    backUpDatabase(root);

    forgetLastRow(root, row);
    removeCover(root, playlistName(root, row));

    if (!usedElsewhere && Dateiexistenz::FileExists(root, path))
        removeFile(root, path);

    root.trackList.close();
    root.LListView1.remove(row);
}

} // namespace

void clearPanels(Root& root)
{
    root.tPlaylisteinträge.Caption = u"Einträge in der Playliste"_s;
    root.pCovers.Picture = QString();
    root.LSoundCaption.Caption = QString();
    root.sAnzeige[1].Caption = QString();
    root.sAnzeige[2].Caption = QString();
    root.trackList.clearLines();
    // Required: the row count has fallen already, so the number is one too high until the next full update.
    root.nAnzeige.Caption = u"(%1)"_s.arg(root.LListView1.count() + 1);
}

void mnuL_schen(Root& root)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const RowIdentity playlist = identityOf(root, row);
    stopIfRunning(root);

    Command command(root);
    if (!isSure(command, playlist.name) || identityOf(root, row) != playlist)
        return;
    list.select(row);
    const std::optional<bool> usedElsewhere = isUsedElsewhere(root, command, playlist.path, row);
    if (!usedElsewhere || identityOf(root, row) != playlist)
        return;

    // Cover, file and row go together with the row's place in the database.
    const WholeChange together(root.files, WholeChange::Events::Served);
    removeRow(root, row, playlist.path, *usedElsewhere);
    clearPanels(root);
    if (list.count() == 0) {
        forgetPath(root, playlist.path);
        return showCoverPane(root, false);
    }

    openRow(root, list.count());
    if (!command.yield())
        return writeCatalogueRows(root);
    if (root.pCoverBack.Visible.value()) {
        root.pCoverBack.Height = root.xpFrame1.Height.value();
        root.pCoverBack.Top = root.xpFrame1.Top.value();
    }
    showRowCover(root, list.selectedRow());

    root.mnuSpeichern.Click();
    if (command.ended())
        return writeCatalogueRows(root);
    command.lastYield();
}

} // namespace orvantine
