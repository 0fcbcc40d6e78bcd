#include "shell/HandedFiles.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "catalogue/mnuDurchsuchen.h"
#include "platform/FileDirPath.h"
#include "playlists/PlaylistText.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isList(const Root& root, const QString& path)
{
    static const QStringList endings{u".m3u"_s, u".m3u8"_s, u".pls"_s, u".nml"_s};
    return std::any_of(endings.begin(), endings.end(),
                       [&path](const QString& ending) { return path.endsWith(ending, Qt::CaseInsensitive); }) &&
           !breaksLine(path) && !root.files.isFolder(path);
}

/// 0 for none.
int rowWith(const Root& root, const QString& path)
{
    int row = root.LListView1.count();
    while (row > 0 && !FileDirPath::isSameFile(playlistPath(root, row), path))
        --row;
    return row;
}

/// False where no row has that file.
bool selectKnown(Root& root, const QString& path)
{
    int row = rowWith(root, path);
    if (row == 0 && isFiltered(root) && isUsedByAnother(root, 0, path)) {
        // A row that the filter hides is seen without it.
        root.mnuFavoritenShow.press();
        row = rowWith(root, path);
    }
    if (row == 0)
        return false;
    root.LListView1.select(row);
    root.LListView1.EnsureVisible(row);
    root.LListView1.Click();
    return true;
}

void openList(Root& root, const QString& path)
{
    // A new row would make an empty list of a file that has vanished.
    if (!Dateiexistenz::FileExists(root, path) || selectKnown(root, path))
        return;
    runCommand(
        root, Changes::Both,
        [&root, &path] {
            Command command(root);
            if (mayAddRow(root, command))
                addChosenPlaylist(root, command, path, 0);
        },
        u"Öffnen mit"_s);
}

} // namespace

bool takesFiles(const Root& root)
{
    return root.loaded && !root.services.events.ended() && root.commands.idle();
}

void takeHandedFiles(Root& root, const QStringList& paths)
{
    if (!takesFiles(root))
        return;
    QStringList tracks;
    QStringList lists;
    QStringList others;
    for (const QString& path : paths) {
        const bool track = AudioTypes::isDropped(path) && !root.files.isFolder(path);
        (track ? tracks : isList(root, path) ? lists : others).append(path);
    }
    if (!tracks.isEmpty())
        root.LListView2.Drop(tracks);
    if (!others.isEmpty() && !root.services.events.ended())
        root.LListView1.Drop(others);
    for (const QString& list : lists)
        if (!root.services.events.ended())
            openList(root, list);
}

} // namespace orvantine
