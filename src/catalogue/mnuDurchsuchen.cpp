#include "catalogue/mnuDurchsuchen.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "catalogue/PlaylistTexts.h"
#include "platform/FileDirPath.h"
#include "playback/CoverPane.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Path of the chosen playlist file; "" for none.
QString choosePlaylist(Root& root, Command& command)
{
    constexpr int ShortestPath = 4;
    const std::optional<ChosenFile> chosen = command.openFile({.title = u" Wiedergabeliste hinzufügen"_s,
                                                               .folder = chooserFolder(root),
                                                               .fileName = {},
                                                               .filter = playlistFilter(),
                                                               .defaultExtension = u"m3u"_s});
    if (!chosen || chosen->fileName.isEmpty())
        return {};
    const QString path = FileDirPath::join(chosen->folder, chosen->fileName);
    return path.size() < ShortestPath ? QString() : path;
}

/// The name that the user once gave to the list of that file; else the file's own.
QString nameFor(const Root& root, const QString& fileName)
{
    const QString given = IniFiles::ReadValue(root, databaseFile(root), u"Rename"_s, fileName);
    return given.isEmpty() ? FileDirPath::titleOf(fileName) : given;
}

/// Number of the last row with that path; 0 where something else took it away meanwhile.
int lastRowOf(const Root& root, const QString& path)
{
    int row = root.LListView1.count();
    while (row > 0 && playlistPath(root, row) != path)
        --row;
    return row;
}

/// Takes the list at `path` in, opens and stores it; `path` is that of the row then.
void addAndStore(Root& root, Command& command, QString& path, const QString& name, double seconds)
{
    ListView& list = root.LListView1;
    if (!NewPlayliste(root, path, name))
        return;

    if (!command.yield() || !command.pause(seconds))
        return;
    const int row = lastRowOf(root, path);
    if (row == 0)
        return;
    convertRow(root, row);
    path = openRow(root, row);
    if (!command.yield())
        return;

    // What came in while events were served has opened its own list.
    if (list.selectedRow() == row && playlistPath(root, row) == path) {
        setTrackCount(root, row);
        root.tPlaylisteinträge.Caption = playlistName(root, row);
        root.tDatum.Caption = dateText(root.services.events.now().date());
        if (!command.yield())
            return;
        showCover(root);
    }
    root.mnuSpeichern.Click();
}

} // namespace

void mnuDurchsuchen_Click(Root& root)
{
    Command command(root);
    if (!mayAddRow(root, command))
        return;

    const QString chosen = choosePlaylist(root, command);
    if (!chosen.isEmpty())
        addChosenPlaylist(root, command, chosen, 1.0);
}

void addChosenPlaylist(Root& root, Command& command, const QString& chosen, double seconds)
{
    command.wait(Wait::Buttons);
    if (!command.yield() || !command.pause(seconds))
        return;

    QString path = chosen;
    WholeChange together(root.files, WholeChange::Events::Served);
    addAndStore(root, command, path, nameFor(root, FileDirPath::FileNameOf(chosen)), seconds);
    // The list that it was converted to has gone again; under the filter the row's entry has, too.
    if (const int row = lastRowOf(root, path); !together.end() && row > 0 && !isFiltered(root))
        setPlaylistPath(root, row, chosen);
}

} // namespace orvantine
