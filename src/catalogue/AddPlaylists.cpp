#include "catalogue/AddPlaylists.h"

#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/NewPlaylist.h"
#include "playlists/ReadPlaylists.h"
#include "search/FindAudio.h"
#include "search/IndexFiles.h"
#include "shell/FeatureTips.h"
#include "shell/MainWindow.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A row that came in the middle of a load would take the texts of the next one.
bool mayAddRow(Root& root)
{
    if (root.loadingCatalogue)
        return false;
    if (root.LListView1.count() < MostPlaylists)
        return true;
    tellLimit(root);
    return false;
}

QString startFolder(const Root& root)
{
    // Required: the flag's value is taken as it stands.
    const QString folder = readSetting(root, u"FolderView"_s).text();
    return folder.isEmpty() ? SpecialFolder(root, 5) : folder;
}

/// Path of the chosen playlist file; "" for none.
QString choosePlaylist(Root& root)
{
    constexpr int ShortestPath = 4;
    const std::optional<ChosenFile> chosen = root.services.choosers.openFile({.title = u" Wiedergabeliste hinzufügen"_s,
                                                                              .folder = startFolder(root),
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
    return given.isEmpty() ? FileDirPath::without(fileName, 4) : given;
}

/// Number of the last row with that path; 0 where something else took it away meanwhile.
int lastRowOf(const ListView& list, const QString& path)
{
    int row = list.count();
    while (row > 0 && list.subItem(row, 2) != path)
        --row;
    return row;
}

} // namespace

void mnuNeu_Click(Root& root)
{
    ShowFeatureTip(root, 111);
    if (!mayAddRow(root))
        return;
    QString path = root.tDatenbank.Text.value() + root.services.start.stem + u".tmp"_s;
    if (!NewPlayliste(root, path, {}))
        return;
    root.mnuSpeichern.Click();
    root.LListView1.Click();
}

void mnuDurchsuchen_Click(Root& root)
{
    Services& services = root.services;
    ListView& list = root.LListView1;

    ShowFeatureTip(root, 110);
    if (!mayAddRow(root))
        return;

    const QString chosen = choosePlaylist(root);
    if (chosen.isEmpty())
        return;

    DisabledButtons(root, 1);
    services.events.yield();
    Pause(root, 1.0);

    QString path = chosen;
    if (root.loadingCatalogue || !NewPlayliste(root, path, nameFor(root, FileDirPath::FileNameOf(chosen))))
        return DisabledButtons(root, 0);

    services.events.yield();
    Pause(root, 1.0);
    const int row = lastRowOf(list, path);
    if (!list.select(row))
        return DisabledButtons(root, 0);
    list.Tag = QString::number(row);
    GetPlayEntrys(root, path);
    services.events.yield();

    // What came in while events were served has opened its own list.
    if (list.selectedRow() == row && list.subItem(row, 2) == path) {
        list.setSubItem(row, 3, QString::number(root.LListView2.count()));
        root.tPlaylisteinträge.Caption = list.subItem(row, 1);
        root.tDatum.Caption = dateText(services.events.now().date());
        services.events.yield();
        showCover(root);
    }
    root.mnuSpeichern.Click();
}

void mnuAddFolder_Click(Root& root)
{
    ShowFeatureTip(root, 113);
    if (!indexIsOfToday(root))
        SetIndexFile(root);
    root.services.forms.unload(*root.findAudio);
    root.services.forms.showModal(*root.findAudio);
}

} // namespace orvantine
