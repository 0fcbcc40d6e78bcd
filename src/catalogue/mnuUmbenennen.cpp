#include "catalogue/mnuUmbenennen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "platform/FileDirPath.h"
#include "playback/CoverPane.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void mnuUmbenennen_Click(Root& root)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const RowIdentity playlist = identityOf(root, row);
    Command command(root);
    const QString name = withoutControls(command
                                             .enter(u"Geben Sie einen neuen Namen für die Playliste ein:"_s,
                                                    u" Wiedergabeliste umbenennen"_s, playlist.name)
                                             .value_or(QString()));
    // While the box was up another playlist may have come to the row.
    if (readsAsEmpty(name) || identityOf(root, row) != playlist)
        return;

    {
        const WholeChange together(root.files, WholeChange::Events::Served);
        setPlaylistName(root, row, name);
        if (root.trackList.isOf(playlist.path))
            root.tPlaylisteinträge.Caption = name;
        IniFiles::WriteValue(root, databaseFile(root), u"Rename"_s, FileDirPath::FileNameOf(playlist.path), name);
        root.mnuSpeichern.Click();
        if (command.ended() || !renameCover(root, playlist.name, name))
            return;
    }
    // The handler passes over a playlist whose tracks are loaded; its picture is another file now.
    const bool loaded = list.selectedRow() == row && list.Tag == QString::number(row);
    list.Click();
    if (command.ended())
        return;
    if (loaded)
        showRowCover(root, row);
    command.lastYield();
}

} // namespace orvantine
