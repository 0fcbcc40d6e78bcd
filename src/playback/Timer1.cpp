#include "playback/Timer1.h"

#include "app/Command.h"
#include "app/PlayButtons.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "playback/PlaySingleTrack.h"
#include "playback/PlaybackState.h"
#include "playback/PlayerControl.h"
#include "playlists/GetPlayEntrys.h"

#include <cstdlib>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool atLastTrack(const MediaPlayer& player)
{
    const int last = player.playlistCount() - 1;
    return last < 0 || player.playlistSourceURL(last) == player.currentSourceURL();
}

/// Without tracks in sight there is nothing to go on with, unless the list that plays is passed over: nothing of it
/// could be played.
bool endsAtEmptyView(const Root& root)
{
    return root.LListView2.count() == 0 && (root.services.mediaplayer.heard() || repeatOf(root) != 3);
}

/// The command for favourites turns the mark of the selected row round.
void openRowAndMark(Root& root, int row)
{
    openRow(root, row);
    root.mnuFavoriten.Checked = isFavourite(root, numberOf(root, root.LListView1.selectedRow()));
}

/// The view goes back to the row the user was on, if the option asks for it. In mode 1 there is no such row.
void returnToRow(Root& root, Command& command, int row)
{
    if (std::abs(readSetting(root, u"ShowChange"_s).number()) != 1 || !root.LListView1.has(row))
        return;
    openRowAndMark(root, row);
    command.lastYield();
}

void repeatPlaylist(Root& root, Command& command, const Sequence::Turn& turn)
{
    root.services.mediaplayer.stop();
    root.services.mediaplayer.play();
    runPlayButton(root);
    if (command.ended() || !turn.undisturbed())
        return;
    root.Timer1.Enabled = true;
    returnToRow(root, command, 0);
}

void playNextPlaylist(Root& root, Command& command, const Sequence::Turn& turn)
{
    ListView& list = root.LListView1;
    if (root.sequence.listEnded(root.services.mediaplayer.heard()) >= list.count()) {
        stopPlaying(root);
        return;
    }
    const int remembered = list.selectedRow();
    const int playing = playingRow(root);
    if (remembered != playing)
        list.select(playing);

    const int next = list.selectedRow() + 1;
    if (!command.yield() || !turn.undisturbed())
        return;
    list.select(next > list.count() ? 1 : next);
    if (!command.yield() || !turn.undisturbed() || !command.pause(1.0) || !turn.undisturbed())
        return;
    root.services.mediaplayer.close();

    openRowAndMark(root, list.selectedRow());
    if (!turn.undisturbed())
        return;
    root.pPausePlayer.Tag = u"0"_s;
    if (!command.yield() || !turn.undisturbed())
        return;
    runPlayButton(root);
    if (command.ended() || !turn.undisturbed())
        return;
    root.Timer1.Enabled = true;
    root.pPausePlayer.Tag = u"0"_s;
    if (command.pause(1.0) && turn.undisturbed())
        returnToRow(root, command, remembered);
}

} // namespace

void mnuWiederholung_Click(Root& root, int index)
{
    for (int mode = 1; mode <= 3; ++mode)
        root.mnuWiederholung[mode].Checked = mode == index;
}

void mnuAllesWiedergeben_Click(Root& root)
{
    root.mnuAllesWiedergeben.Checked = !root.mnuAllesWiedergeben.Checked.value();
    if (!root.mnuAllesWiedergeben.Checked.value())
        root.Timer1.Enabled = false;
    else if (root.pPausePlayer.Enabled.value())
        root.Timer1.Enabled = true;
}

bool nextListFollows(const Root& root)
{
    return root.Timer1.Enabled.value() && root.mnuAllesWiedergeben.Checked.value() && repeatOf(root) == 3 &&
           atLastTrack(root.services.mediaplayer) && !endsAtEmptyView(root);
}

void Timer1_Tick(Root& root)
{
    const MediaPlayer& player = root.services.mediaplayer;

    if (!root.mnuAllesWiedergeben.Checked.value()) {
        root.Timer1.Enabled = false;
        return;
    }
    if (!atLastTrack(player))
        return;
    root.pHinweistext.Visible = root.LListView2.count() == 0;
    if (endsAtEmptyView(root))
        return;
    root.mnuOrvmenu[1].Visible = true;
    root.mnuOrvmenu[2].Visible = true;

    const PlayState state = player.playState();
    if (state == PlayState::Stopped && repeatOf(root) == 2) {
        // A track that gives no sound is tried once more, and then no more.
        if (root.sequence.listEnded(player.heard()) > 1) {
            stopPlaying(root);
            return;
        }
        const int wish = root.sequence.wishes();
        playSingleTrack(root);
        if (root.sequence.wishes() == wish && !root.services.events.ended())
            root.Timer1.Enabled = true;
        return;
    }

    const bool ready =
        state == PlayState::Ready && root.pPausePlayer.Enabled.value() && root.pPausePlayer.Tag.toInt() == 0;
    if (ready || state == PlayState::Stopped)
        root.pPausePlayer.Tag = u"1"_s;
    if (root.pPausePlayer.Tag.toInt() != 1 || !root.pPausePlayer.Enabled.value())
        return;

    showRunning(root, false);
    const Sequence::Turn turn(root.sequence);
    Command command(root);
    if (!command.yield())
        return;
    if (turn.undisturbed() && repeatOf(root) == 1)
        repeatPlaylist(root, command, turn);
    else if (turn.undisturbed() && repeatOf(root) == 3)
        playNextPlaylist(root, command, turn);
    // A pause in the wait for the next list leaves nothing that could go on.
    if (!turn.undisturbed() && root.pSoundPlayer.Enabled.value())
        root.Timer1.Enabled = false;
}

} // namespace orvantine
