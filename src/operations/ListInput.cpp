#include "operations/ListInput.h"

#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "app/SaveOptions.h"
#include "catalogue/CatalogueView.h"
#include "metadata/TrackInformation.h"
#include "playback/CoverArt.h"
#include "playback/PlayerControl.h"
#include "playback/Sequencing.h"
#include "playlists/ReadPlaylists.h"
#include "shell/MainWindow.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void LListView1_Click(Root& root)
{
    ListView& list = root.LListView1;
    if (list.count() == 0 || QString::number(list.selectedRow()) == list.Tag)
        return;

    const int row = list.selectedRow();
    if (row == 0)
        return;
    QString path = list.subItem(row, 2);
    if (!Dateiexistenz::FileExists(root, path) &&
        root.services.messages.show(u"Die folgende Wiedergabeliste ist nicht vorhanden: \n"_s + path,
                                    u" "_s + list.subItem(row, 1), MessageIcon::Exclamation,
                                    MessageButtons::RetryCancel) == Answer::Cancel)
        return;

    // While the box was up the sequence may have gone on to another row.
    list.select(row);
    root.LSoundCaption.Tag = u"0"_s;
    list.Tag = QString::number(row);
    GetPlayEntrys(root, path);
    // A later click inside the read has opened its own row.
    if (list.Tag != QString::number(row)) {
        DisabledButtons(root, 0);
        return;
    }

    const bool favourite = isFavourite(root, row);
    // Required: another mark, that of the playing playlist too, stays where the row is no favourite.
    if (favourite)
        list.setIcons(row, u"Icon_6"_s);
    root.mnuFavoriten.Checked = favourite;
    showRowCover(root, row);

    root.Timer2.Enabled = true;
    const QString count = QString::number(root.LListView2.count());
    if (list.subItem(row, 3) != count)
        list.setSubItem(row, 3, count);
    DisabledButtons(root, 0);
}

void LListView1_DblClick(Root& root)
{
    // Events are served inside: a click there selects another row, and this one plays.
    const int row = root.LListView1.selectedRow();
    stopIfRunning(root);
    pSoundPlayer_Click(root);

    markAllFavourites(root);
    root.LListView1.setIcons(row, u"Icon_C"_s);

    if (root.mnuAllesWiedergeben.Checked.value() && root.pPausePlayer.Enabled.value())
        root.Timer1.Enabled = true;
}

void LListView2_Click(Root& root)
{
    markFavourite(root, root.LListView1.selectedRow());
    ShowTrackInfo(root, root.LListView2.selectedRow(), 1);
}

void LListView2_DblClick(Root& root)
{
    playSingleTrack(root);
}

void LListView1_ColumnClick(Root& root, int)
{
    saveColumnWidths(root);
}

void LListView2_ColumnClick(Root& root, int column)
{
    ListView& tracks = root.LListView2;
    const QString header = tracks.columnText(column);
    for (int position = 1; position <= tracks.columns(); ++position)
        if (tracks.columnText(position) == header)
            tracks.sortBy(position);
}

void showRowCover(Root& root, int row)
{
    const QString cover = coverFile(root, root.LListView1.subItem(row, 1));
    root.pCovers.Picture = cover;
    if (root.pCoverBack.Visible.value() == cover.isEmpty())
        showCoverPane(root, !cover.isEmpty());
}

void noteFocus(Root& root, int list)
{
    root.mnuEditCopy.Tag = QString::number(list);
}

} // namespace orvantine
