#include "app/ColumnWidths.h"

#include "app/Registry.h"
#include "app/Root.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int CatalogueColumnCount = static_cast<int>(CatalogueColumns.size());
constexpr int TrackColumnCount = static_cast<int>(TrackColumns.size());

bool isCatalogue(const Root& root, const ListView& list)
{
    return &list == &root.LListView1;
}

const ColumnRule& ruleOf(const Root& root, const ListView& list, int column)
{
    const auto at = static_cast<std::size_t>(column - 1);
    return isCatalogue(root, list) ? CatalogueColumns.at(at) : TrackColumns.at(at);
}

int columnCount(const Root& root, const ListView& list)
{
    return isCatalogue(root, list) ? CatalogueColumnCount : TrackColumnCount;
}

/// The width that is stored, or 0.
Twips storedWidth(const Root& root, const ColumnRule& rule)
{
    if (rule.setting.isEmpty())
        return 0;
    const Setting stored = readSetting(root, rule.setting.toString());
    return stored.number() >= NarrowestColumn ? stored.whole() : 0;
}

template <std::size_t Count>
void create(ListView& list, const std::array<ColumnRule, Count>& rules)
{
    for (const ColumnRule& rule : rules)
        list.addColumn(rule.title.toString(), rule.width);
}

void reset(const Root& root, ListView& list)
{
    for (int column = 1; column <= columnCount(root, list); ++column)
        list.setColumnWidth(column, isHidden(root, list, column) ? 0 : ruleOf(root, list, column).width);
}

void applyStored(const Root& root, ListView& list)
{
    for (int column = 1; column <= columnCount(root, list); ++column)
        if (const Twips width = storedWidth(root, ruleOf(root, list, column));
            width > 0 && !isHidden(root, list, column))
            list.setColumnWidth(column, width);
}

} // namespace

bool isHidden(const Root& root, const ListView& list, int column)
{
    if (ruleOf(root, list, column).width == 0)
        return true;
    if (isCatalogue(root, list))
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

void resetCatalogueColumnWidths(Root& root)
{
    reset(root, root.LListView1);
}

void applyStoredCatalogueWidths(Root& root)
{
    applyStored(root, root.LListView1);
}

void createTrackColumns(Root& root)
{
    create(root.LListView2, TrackColumns);
    resetTrackColumnWidths(root);
    applyStored(root, root.LListView2);
}

void resetTrackColumnWidths(Root& root)
{
    reset(root, root.LListView2);
}

Twips shownWidth(const Root& root, const ListView& list, int column)
{
    const ColumnRule& rule = ruleOf(root, list, column);
    const Twips stored = storedWidth(root, rule);
    return stored > 0 ? stored : rule.width;
}

void noteCatalogueWidth(Root& root, Twips width)
{
    root.CatalogueWidth = width;
    writeSetting(root, u"CatalogueWidth"_s, QString::number(width));
}

void saveColumnWidths(Root& root)
{
    for (const ListView* list : {&root.LListView1, &root.LListView2})
        for (int column = 1; column <= columnCount(root, *list); ++column)
            storeWidth(root, *list, column);
}

void storeWidth(Root& root, const ListView& list, int column)
{
    if (column < 1 || column > std::min(list.columns(), columnCount(root, list)) || isHidden(root, list, column))
        return;
    // Until the view commands are restored, a column that they will show stands with no width.
    if (const Twips width = list.columnWidth(column); width > 0)
        writeSetting(root, ruleOf(root, list, column).setting.toString(), QString::number(width));
}

} // namespace orvantine
