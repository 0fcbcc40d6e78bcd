#include "operations/mnuFavoriten.h"

#include "app/DataFolder.h"
#include "app/DisabledButtons.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"

#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The number of the row's own entry, which behind a gap is not its place.
void keepNumber(Root& root, int row, int place)
{
    root.LListView1.setNumber(row, place);
    if (const int stored = storedNumberOf(root, row); stored > 0)
        root.LListView1.setNumber(row, stored);
}

void hideOthers(Root& root)
{
    ListView& list = root.LListView1;
    // Required: named by a constant here, whatever the program's file is called.
    const QString file = namedDatabaseFile(root);
    const int count = list.count();
    const int failedReads = root.services.profiles.failedReads();
    std::vector<bool> favourites;
    for (int number = 1; number <= count; ++number)
        favourites.push_back(indexValue(root, file, number, EntryKey::Favourite) == u"1"_s);
    if (root.services.profiles.failedReads() != failedReads) {
        setFiltered(root, false);
        return showQuietly(root, u"Die Datenbank konnte nicht gelesen werden. Es werden alle Playlisten gezeigt."_s);
    }

    int row = 1;
    for (int number = 1; number <= count; ++number) {
        if (favourites[static_cast<std::size_t>(number - 1)])
            keepNumber(root, row++, number);
        else
            list.remove(row);
    }
    root.nAnzeige.Caption = u"(%1)"_s.arg(list.count());
    list.select(1);
    // All that are left are favourites.
    root.mnuFavoriten.Checked = list.count() > 0;
    // The rows have other places now: a click on any of them reads its list.
    list.Tag = u"0"_s;
}

/// The reload asks nothing of lists with one name.
void bringBack(Root& root)
{
    const bool asks = readSetting(root, u"CheckEntrys"_s).isOrAbsent(1);
    writeSetting(root, u"CheckEntrys"_s, static_cast<qint16>(0));
    root.mnuLaden.Click();
    writeSetting(root, u"CheckEntrys"_s, static_cast<qint16>(asks ? 1 : 0));
    if (root.services.events.ended())
        return;
    DisabledButtons(root, 0);
    root.Pointer = MousePointer::Default;
}

} // namespace

void mnuFavoriten_Click(Root& root)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const bool favourite = !root.mnuFavoriten.Checked.value();
    root.mnuFavoriten.Checked = favourite;
    list.setIcons(row, favouriteIcon(favourite));
    // Required: named by a constant here, whatever the program's file is called.
    const int number = numberOf(root, row);
    if (favourite)
        writeIndexValue(root, namedDatabaseFile(root), number, EntryKey::Favourite, u"1"_s);
    else
        deleteIndexValue(root, namedDatabaseFile(root), number, EntryKey::Favourite);
}

void mnuFavoritenShow_Click(Root& root)
{
    const bool on = !isFiltered(root);
    setFiltered(root, on);
    if (on)
        hideOthers(root);
    else
        bringBack(root);
}

} // namespace orvantine
