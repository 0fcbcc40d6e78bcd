#include "catalogue/CatalogueView.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "playlists/ReadPlaylists.h"
#include "shell/MainWindow.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void GetPlayListe(Root& root, const QString& path)
{
    if (path.isEmpty())
        return;
    ensureDataFolder(root, u"Playlisten"_s);
    ListView& list = root.LListView1;

    root.Pointer = MousePointer::Hourglass;
    list.Enabled = false;
    root.LListView2.Enabled = false;
    DisabledButtons(root, 1);

    if (list.columns() == 0) {
        list.addColumn(u"ID"_s, 0);
        list.addColumn(u"Name"_s, 2800);
        list.addColumn(u"Path"_s, 0);
        list.addColumn(u"Tracks"_s, 900);
    }

    const int number = list.count() + 1;
    const int count = GetPlayCounts(root, path);
    list.Tag = QString::number(number);
    root.nAnzeige.Caption = u"(%1)"_s.arg(number);

    const bool exists = Dateiexistenz::FileExists(root, path);
    if (exists) {
        // Required: all four values stand in the row text, joined by commas; no sub-item is filled.
        ListItem row;
        row.Text =
            padded(number, 3) + u',' + FileDirPath::FileNameOf(path) + u',' + path + u',' + QString::number(count);
        row.Icon = root.pIconA.Picture.value();
        row.SmallIcon = row.Icon;
        list.append(std::move(row));
    }
    root.services.events.yield();
    markMissing(root, number, !exists);
    if (!exists)
        ++root.missingPlaylists;

    if (list.count() > 0) {
        list.select(list.count());
        list.Tag = QString::number(list.count());
        QString opened = path;
        GetPlayEntrys(root, opened);
    }

    list.EnsureVisible(list.selectedRow());
    root.Pointer = MousePointer::Default;
    list.Enabled = true;
    root.LListView2.Enabled = true;
    DisabledButtons(root, 0);
}

void markMissing(Root& root, int row, bool missing)
{
    const Color color = missing ? Color::DarkRed : Color::ButtonText;
    root.LListView1.setColor(row, 1, color);
    root.LListView1.setColor(row, 3, color);
}

void markFavourite(Root& root, int row)
{
    root.LListView1.setIcons(row, isFavourite(root, row) ? u"Icon_6"_s : u"Icon_1"_s);
}

void markAllFavourites(Root& root)
{
    for (int row = 1; row <= root.LListView1.count(); ++row)
        markFavourite(root, row);
}

bool isFavourite(const Root& root, int row)
{
    return indexValue(root, databaseFile(root), row, 'g') == u"1"_s;
}

} // namespace orvantine
