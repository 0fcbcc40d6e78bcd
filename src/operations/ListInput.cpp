#include "operations/ListInput.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/DisabledButtons.h"
#include "app/PlayButtons.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/ShowTrackInfo.h"
#include "playback/CoverPane.h"
#include "playback/PlaySingleTrack.h"
#include "playback/PlaybackState.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The tracks in sight are those of the list that was opened there, and no read that failed left them out.
bool knowsTracks(const Root& root, const QString& list)
{
    return root.trackList.isOf(list) &&
           (root.LListView2.count() > 0 || root.trackList.content() == TrackList::Content::Own ||
            root.files.readText(list).outcome != ReadOutcome::Failed);
}

} // namespace

void LListView1_Click(Root& root)
{
    ListView& list = root.LListView1;
    if (list.count() == 0 || QString::number(list.selectedRow()) == list.Tag)
        return;

    const int row = list.selectedRow();
    if (row == 0)
        return;
    const QString path = playlistPath(root, row);
    Command command(root);
    if (!isPlaylistThere(root, path)) {
        const std::optional<Answer> answer =
            command.ask({.text = u"Die folgende Wiedergabeliste ist nicht vorhanden: \n"_s + path,
                         .title = u" "_s + playlistName(root, row),
                         .icon = MessageIcon::Exclamation,
                         .buttons = MessageButtons::RetryCancel});
        if (!answer || answer == Answer::Cancel)
            return;
    }

    // While the box was up the sequence may have gone on to another row.
    root.LSoundCaption.Tag = u"0"_s;
    const QString opened = openRow(root, row);
    if (command.ended())
        return;
    // A later click inside the read has opened its own row.
    if (list.Tag != QString::number(row)) {
        DisabledButtons(root, 0);
        return;
    }

    const bool favourite = isFavourite(root, numberOf(root, row));
    // Required: another mark, that of the playing playlist too, stays where the row is no favourite.
    if (favourite)
        list.setIcons(row, u"Icon_6"_s);
    root.mnuFavoriten.Checked = favourite;
    showRowCover(root, row);

    root.Timer2.Enabled = true;
    if (knowsTracks(root, opened))
        setTrackCount(root, row);
    DisabledButtons(root, 0);
}

void LListView1_DblClick(Root& root)
{
    stopIfRunning(root);
    root.pSoundPlayer.Click();
    if (root.services.events.ended())
        return;

    // Events are served inside: a click there selects another row, moves rows, or plays something else.
    markAllFavourites(root);
    if (root.pPausePlayer.Enabled.value())
        root.LListView1.setIcons(playingRow(root), u"Icon_C"_s);

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
    root.sequence.wish();
    playSingleTrack(root);
}

void LListView1_ColumnClick(Root& root, int)
{
    saveColumnWidths(root);
}

} // namespace orvantine
