#include "playback/PlayerControl.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/PlayButtons.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "playback/PlaySingleTrack.h"
#include "playback/PlaybackState.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool isPaused(const Root& root)
{
    return root.services.mediaplayer.status() == u"Angehalten"_s;
}

void offerPause(Root& root)
{
    root.mnuSoundplayer[4].Enabled = false;
    root.mnuSoundplayer[3].Enabled = true;
}

void offerResume(Root& root)
{
    root.mnuSoundplayer[4].Enabled = true;
    root.mnuSoundplayer[3].Enabled = false;
}

void resume(Root& root)
{
    offerPause(root);
    root.services.mediaplayer.play();
    root.Timer1.Enabled = true;
}

void startList(Root& root)
{
    MediaPlayer& player = root.services.mediaplayer;
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;

    const TrackList::Hold hold = root.trackList.hold();
    const QString path = playlistPath(root, row);
    player.newPlaylist(path, list.subItem(row, CatalogueItem::Tracks));
    // The end of this list has not been seen yet, whatever became of the one before.
    root.pPausePlayer.Tag = u"0"_s;
    if (root.LListView2.count() == 1) {
        playSingleTrack(root);
        return;
    }

    root.Timer1.Enabled = true;
    root.Tag = u"1"_s;
    notePlaying(root, row);
    showRunning(root, true);
    offerPause(root);
    if (player.status() != u"Beendet"_s)
        player.close();
    player.setURL(path);
    root.Timer1.Enabled = true;
    Command command(root);
    // Another start meanwhile has set its own mark, a stop has taken this one away.
    if (!command.yield() || !root.pPausePlayer.Enabled.value() || root.sequence.playlist() != path)
        return;

    markAllFavourites(root);
    const int now = playingRow(root);
    list.setIcons(now, u"Icon_C"_s);
    // A click while events were served has opened another list: its row stays selected.
    if (hold.inSight())
        list.select(now);
}

/// The buttons are out of step: back to idle.
void setIdle(Root& root)
{
    showRunning(root, false);
    root.Tag = u"0"_s;
    root.Timer1.Enabled = false;
    root.services.mediaplayer.close();
    Command(root).lastYield();
}

} // namespace

void runPlayButton(Root& root)
{
    if (root.pPausePlayer.Enabled.value() && isPaused(root)) {
        resume(root);
    } else if (root.pPausePlayer.Enabled.value()) {
        markAllFavourites(root);
        root.tDateiname.Caption = QString();
        root.pDateiname.Tag = u"0"_s;
        stopPlaying(root);
    } else if (root.pSoundPlayer.Enabled.value()) {
        startList(root);
    } else {
        setIdle(root);
    }
    showPlayback(root);
}

void stopPlaying(Root& root)
{
    showRunning(root, false);
    root.tDateiname.Caption = QString();
    root.pDateiname.Tag = u"0"_s;
    markAllFavourites(root);
    root.Tag = u"0"_s;
    root.Timer1.Enabled = false;
    root.services.mediaplayer.stop();
    root.services.mediaplayer.close();
    showPlayback(root);
}

void pSoundPlayer_Click(Root& root)
{
    root.sequence.wish();
    runPlayButton(root);
}

void pPausePlayer_Click(Root& root)
{
    mnuSoundplayer_Click(root, root.mnuSoundplayer[4].Enabled.value() ? 4 : 3);
}

void pStopPlayer_Click(Root& root)
{
    root.sequence.wish();
    stopPlaying(root);
}

void pPlayBack_Click(Root& root)
{
    root.services.mediaplayer.previous();
}

void pPlayForward_Click(Root& root)
{
    root.services.mediaplayer.next();
}

void mnuWiedergabe_Click(Root& root)
{
    if (isPaused(root)) {
        root.sequence.wish();
        root.services.mediaplayer.play();
        showPlayback(root);
        return;
    }
    pSoundPlayer_Click(root);
}

void mnuSoundplayer_Click(Root& root, int index)
{
    switch (index) {
    case 1:
        root.services.mediaplayer.next();
        break;
    case 2:
        root.services.mediaplayer.previous();
        break;
    case 3:
        root.sequence.wish();
        root.services.mediaplayer.pause();
        break;
    case 4:
        pSoundPlayer_Click(root);
        break;
    default:
        return;
    }
    if (root.mnuSoundplayer[4].Enabled.value())
        offerPause(root);
    if (index == 3)
        offerResume(root);
    showPlayback(root);
}

void mnuSpecials_Click(Root& root, int index)
{
    if (index == 1) {
        root.sequence.wish();
        playSingleTrack(root);
    } else if (index == 2) {
        pStopPlayer_Click(root);
    }
}

} // namespace orvantine
