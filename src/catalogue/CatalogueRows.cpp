#include "catalogue/CatalogueRows.h"

#include "app/Columns.h"
#include "app/DataFolder.h"
#include "app/FileDirPath.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString playlistName(const Root& root, int row)
{
    return root.LListView1.subItem(row, CatalogueItem::Name);
}

QString playlistPath(const Root& root, int row)
{
    return root.LListView1.subItem(row, CatalogueItem::Path);
}

RowIdentity identityOf(const Root& root, int row)
{
    return {.path = playlistPath(root, row), .name = playlistName(root, row)};
}

QString selectedPlaylist(const Root& root)
{
    return playlistPath(root, root.LListView1.selectedRow());
}

QString selectedName(const Root& root)
{
    return playlistName(root, root.LListView1.selectedRow());
}

int rowInSight(const Root& root)
{
    const QString& path = root.trackList.path();
    if (path.isEmpty())
        return 0;
    const ListView& list = root.LListView1;
    const auto isOpen = [&root, &path](int row) { return FileDirPath::isSameFile(playlistPath(root, row), path); };
    for (const int row : {list.selectedRow(), list.Tag.toInt()})
        if (list.has(row) && isOpen(row))
            return row;
    for (int row = 1; row <= list.count(); ++row)
        if (isOpen(row))
            return row;
    return 0;
}

bool isFiltered(const Root& root)
{
    return root.mnuFavoritenShow.Tag == u"1"_s;
}

void setFiltered(Root& root, bool on)
{
    root.mnuFavoritenShow.Tag = on ? u"1"_s : u"0"_s;
    root.mnuFavoritenShow.Checked = on;
    for (const auto& item : root.mnuVerschiebung)
        item->Enabled = !on;
    root.LListView1.AllowDrop = !on;
}

int numberOf(const Root& root, int row)
{
    const QString kept = root.LListView1.tag(row);
    return kept.isEmpty() ? row : kept.toInt();
}

int wholeCount(const Root& root)
{
    if (!isFiltered(root))
        return root.LListView1.count();
    int number = MostPlaylists;
    while (number > 0 && indexValue(root, databaseFile(root), number, EntryKey::Name).isEmpty())
        --number;
    return number;
}

void keepNumber(Root& root, int row, int number)
{
    root.LListView1.setTag(row, QString::number(number));
}

void setPlaylistName(Root& root, int row, const QString& name)
{
    root.LListView1.setSubItem(row, CatalogueItem::Name, name);
    if (isFiltered(root))
        writeIndexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Name, name);
}

void setPlaylistPath(Root& root, int row, const QString& path)
{
    root.LListView1.setSubItem(row, CatalogueItem::Path, path);
    if (isFiltered(root))
        writeIndexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Path, path);
}

void selectLastRow(Root& root)
{
    root.LListView1.select(root.LListView1.count());
    root.LListView1.Tag = QString::number(root.LListView1.count());
}

void showTrackCount(Root& root, int row)
{
    const int count = root.LListView2.count();
    if (leadingNumber(root.LListView1.subItem(row, CatalogueItem::Tracks)) != count)
        root.LListView1.setSubItem(row, CatalogueItem::Tracks, QString::number(count));
}

void markMissing(Root& root, int row, bool missing)
{
    const Color color = missing ? Color::DarkRed : Color::ButtonText;
    root.LListView1.setColor(row, CatalogueItem::Name, color);
    root.LListView1.setColor(row, CatalogueItem::Tracks, color);
}

void markFavourite(Root& root, int row)
{
    root.LListView1.setIcons(row, isFavourite(root, numberOf(root, row)) ? u"Icon_6"_s : u"Icon_1"_s);
}

void markAllFavourites(Root& root)
{
    for (int row = 1; row <= root.LListView1.count(); ++row)
        markFavourite(root, row);
}

bool isWholeCatalogue(const Root& root)
{
    return root.LListView1.count() > 0 && !isFiltered(root);
}

} // namespace orvantine
