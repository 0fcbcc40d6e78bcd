#include "app/ColumnWidths.h"

#include "app/Registry.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

template <std::size_t Count>
void create(ListView& list, const std::array<ColumnRule, Count>& rules)
{
    for (const ColumnRule& rule : rules)
        list.addColumn(rule.title.toString(), rule.width);
}

template <std::size_t Count>
void applyStored(Root& root, ListView& list, const std::array<ColumnRule, Count>& rules)
{
    for (int column = 1; column <= static_cast<int>(Count); ++column) {
        const ColumnRule& rule = rules[static_cast<std::size_t>(column - 1)];
        if (const Twips width = storedWidth(root, rule.setting, 0); width > 0)
            list.setColumnWidth(column, width);
    }
}

template <std::size_t Count>
void store(Root& root, const ListView& list, const std::array<ColumnRule, Count>& rules)
{
    for (int column = 1; column <= static_cast<int>(Count); ++column)
        storeWidth(root, rules[static_cast<std::size_t>(column - 1)].setting, list, column);
}

} // namespace

bool isHidden(const Root& root, const ListView& list, int column)
{
    const auto at = static_cast<std::size_t>(column - 1);
    const bool catalogue = &list == &root.LListView1;
    if ((catalogue ? CatalogueColumns.at(at) : TrackColumns.at(at)).width == 0)
        return true;
    if (catalogue)
        return column == columnOf(CatalogueItem::Tracks) && !root.mnuTrackShow.Checked.value();
    const bool paths = root.mnuOrvmenu[1].Checked.value();
    const bool files = root.mnuOrvmenu[2].Checked.value();
    // Of path and file name one is seen at most.
    if (column == columnOf(TrackItem::Path))
        return !paths || files;
    return column == columnOf(TrackItem::File) && (!files || paths);
}

void createCatalogueColumns(ListView& list)
{
    create(list, CatalogueColumns);
}

void resetCatalogueColumnWidths(ListView& list)
{
    for (int column = 1; column <= static_cast<int>(CatalogueColumns.size()); ++column)
        list.setColumnWidth(column, CatalogueColumns[static_cast<std::size_t>(column - 1)].width);
}

void applyStoredCatalogueWidths(Root& root)
{
    applyStored(root, root.LListView1, CatalogueColumns);
}

void createTrackColumns(Root& root)
{
    ListView& tracks = root.LListView2;
    create(tracks, TrackColumns);
    resetTrackColumnWidths(root);
    applyStored(root, tracks, TrackColumns);
    if (root.mnuOrvmenu[1].Checked.value())
        tracks.setColumnWidth(columnOf(TrackItem::File), 0);
    if (root.mnuOrvmenu[2].Checked.value())
        tracks.setColumnWidth(columnOf(TrackItem::Path), 0);
}

void resetTrackColumnWidths(Root& root)
{
    ListView& tracks = root.LListView2;
    for (int column = 1; column <= static_cast<int>(TrackColumns.size()); ++column)
        tracks.setColumnWidth(column, TrackColumns[static_cast<std::size_t>(column - 1)].width);
    if (!root.mnuOrvmenu[1].Checked.value())
        tracks.setColumnWidth(columnOf(TrackItem::Path), 0);
    if (!root.mnuOrvmenu[2].Checked.value())
        tracks.setColumnWidth(columnOf(TrackItem::File), 0);
}

void saveColumnWidths(Root& root)
{
    store(root, root.LListView1, CatalogueColumns);
    store(root, root.LListView2, TrackColumns);
}

Twips storedWidth(const Root& root, QStringView setting, Twips otherwise)
{
    if (setting.isEmpty())
        return otherwise;
    const Setting stored = readSetting(root, setting.toString());
    return stored.number() >= NarrowestColumn ? stored.whole() : otherwise;
}

void storeWidth(Root& root, QStringView setting, const ListView& list, int column)
{
    if (!setting.isEmpty() && column <= list.columns())
        writeSetting(root, setting.toString(), QString::number(list.columnWidth(column)));
}

} // namespace orvantine
