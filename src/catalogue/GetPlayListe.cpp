#include "catalogue/GetPlayListe.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayCounts.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void GetPlayListe(Root& root, const QString& path)
{
    if (path.isEmpty())
        return;
    ensurePlaylistFolder(root);
    ListView& list = root.LListView1;
    Command command(root);
    command.wait();

    if (list.columns() == 0)
        createCatalogueColumns(list);

    const int number = list.count() + 1;
    const int count = GetPlayCounts(root, path);
    if (command.ended())
        return;
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
    if (!command.yield())
        return;
    markMissing(root, number, !exists);
    if (!exists)
        ++root.missingPlaylists;

    if (list.count() > 0) {
        selectLastRow(root);
        QString opened = path;
        GetPlayEntrys(root, opened);
    }

    list.EnsureVisible(list.selectedRow());
    command.endWait();
}

} // namespace orvantine
