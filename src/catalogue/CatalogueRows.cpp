#include "catalogue/CatalogueRows.h"

#include "app/Columns.h"
#include "app/DataFolder.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Each load of the catalogue has its own keys; far fewer than that are given in one.
constexpr int KeysOfALoad = 1 << 12;

int loadOf(int key)
{
    return key / KeysOfALoad;
}

} // namespace

QString playlistName(const Root& root, int row)
{
    return root.LListView1.subItem(row, CatalogueItem::Name);
}

QString playlistPath(const Root& root, int row)
{
    return root.LListView1.subItem(row, CatalogueItem::Path);
}

void takeCells(const Root& root, int row, CatalogueEntry& entry)
{
    entry.name = playlistName(root, row);
    entry.path = playlistPath(root, row);
    entry.tracks = root.LListView1.subItem(row, CatalogueItem::Tracks);
}

RowIdentity identityOf(const Root& root, int row)
{
    return {.path = playlistPath(root, row), .name = playlistName(root, row), .key = root.LListView1.key(row)};
}

int rowOf(const Root& root, const RowIdentity& row, int hint)
{
    const ListView& list = root.LListView1;
    if (!row.key.isEmpty())
        for (int i = 1; i <= list.count(); ++i)
            if (list.key(i) == row.key)
                return i;
    // A row that has gone is replaced by none that is like it.
    if (!row.key.isEmpty() && loadOf(row.key.toInt()) == loadOf(root.lastRowKey))
        return 0;
    if (list.has(hint) && identityOf(root, hint) == row)
        return hint;
    for (int i = 1; i <= list.count(); ++i)
        if (identityOf(root, i) == row)
            return i;
    return 0;
}

void beginRowKeys(Root& root)
{
    root.lastRowKey = (loadOf(root.lastRowKey) + 1) * KeysOfALoad;
}

QString newRowKey(Root& root)
{
    return QString::number(++root.lastRowKey);
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
    const ListView& list = root.LListView1;
    const auto isOpen = [&root](int row) { return root.trackList.isOf(playlistPath(root, row)); };
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
    const int kept = root.LListView1.number(row);
    return kept > 0 ? kept : row;
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

int storedNumberOf(const Root& root, int row)
{
    const QString path = playlistPath(root, row);
    const auto isOf = [&root, &path](int number) {
        return indexValue(root, databaseFile(root), number, EntryKey::Path) == path;
    };
    if (isOf(numberOf(root, row)))
        return numberOf(root, row);
    int number = path.isEmpty() ? 0 : MostPlaylists;
    while (number > 0 && !isOf(number))
        --number;
    return number;
}

namespace {

/// No save comes behind a change under the filter.
void storeUnderFilter(Root& root, int row, char key, const QString& value)
{
    if (!isFiltered(root))
        return;
    if (const int number = storedNumberOf(root, row); number > 0)
        writeIndexValue(root, databaseFile(root), number, key, value);
}

} // namespace

void setPlaylistName(Root& root, int row, const QString& name)
{
    root.LListView1.setSubItem(row, CatalogueItem::Name, name);
    storeUnderFilter(root, row, EntryKey::Name, name);
}

void setPlaylistPath(Root& root, int row, const QString& path)
{
    if (FileDirPath::isSameFile(playlistPath(root, row), root.sequence.playlist()))
        root.sequence.setPlaylist(path, root.sequence.rowKey());
    storeUnderFilter(root, row, EntryKey::Path, path);
    root.LListView1.setSubItem(row, CatalogueItem::Path, path);
}

bool labelsTellOf(const Root& root, int row)
{
    return root.trackList.path().isEmpty() || rowInSight(root) == row;
}

void selectLastRow(Root& root)
{
    root.LListView1.select(root.LListView1.count());
    root.LListView1.Tag = QString::number(root.LListView1.count());
}

void setTrackCount(Root& root, int row)
{
    setTrackCount(root, row, root.LListView2.count());
}

void setTrackCount(Root& root, int row, int tracks)
{
    if (!root.LListView1.has(row))
        return;
    const QString text = QString::number(tracks);
    if (root.LListView1.subItem(row, CatalogueItem::Tracks) == text)
        return;
    root.LListView1.setSubItem(row, CatalogueItem::Tracks, text);
    storeUnderFilter(root, row, EntryKey::Tracks, text);
}

void showTrackCount(Root& root, int row)
{
    if (leadingNumber(root.LListView1.subItem(row, CatalogueItem::Tracks)) != root.LListView2.count())
        setTrackCount(root, row);
}

void showTrackHeading(Root& root)
{
    root.tSoundzahl.Caption = u"(%1)"_s.arg(root.LListView2.count());
}

bool isUsedByAnother(const Root& root, int row, const QString& path)
{
    for (int other = 1; other <= root.LListView1.count(); ++other)
        if (other != row && FileDirPath::isSameFile(playlistPath(root, other), path))
            return true;
    if (!isFiltered(root))
        return false;
    for (int number = 1; number <= MostPlaylists; ++number)
        if (number != numberOf(root, row) &&
            FileDirPath::isSameFile(indexValue(root, databaseFile(root), number, EntryKey::Path), path))
            return true;
    return false;
}

void markMissing(Root& root, int row, bool missing)
{
    const Color color = missing ? Color::DarkRed : Color::ButtonText;
    root.LListView1.setColor(row, CatalogueItem::Name, color);
    root.LListView1.setColor(row, CatalogueItem::Tracks, color);
}

QString favouriteIcon(bool favourite)
{
    return favourite ? u"Icon_6"_s : u"Icon_1"_s;
}

void markFavourite(Root& root, int row)
{
    root.LListView1.setIcons(row, favouriteIcon(isFavourite(root, numberOf(root, row))));
}

void markAllFavourites(Root& root)
{
    for (int row = 1; row <= root.LListView1.count(); ++row)
        markFavourite(root, row);
}

bool isWholeCatalogue(const Root& root)
{
    return root.LListView1.count() > 0 && !isFiltered(root) && !root.databaseDoubted;
}

} // namespace orvantine
