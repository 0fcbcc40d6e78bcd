#include "playback/Sequencing.h"

#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "metadata/TrackInformation.h"
#include "operations/ListInput.h"
#include "playback/PlayerControl.h"
#include "playlists/ReadPlaylists.h"
#include "shell/FeatureTips.h"

#include <cstdlib>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool atLastTrack(const MediaPlayer& player)
{
    const int last = player.playlistCount() - 1;
    return last < 0 || player.playlistSourceURL(last) == player.currentSourceURL();
}

/// Hands the selected track to the idle player.
void startTrack(Root& root)
{
    MediaPlayer& player = root.services.mediaplayer;
    const ListView& list = root.LListView1;
    showRunning(root, true);
    root.pPausePlayer.Tag = u"0"_s;
    root.pSoundPlayer.Tag = QString::number(list.selectedRow());
    player.close();
    QString path = root.LListView2.subItem(root.LListView2.selectedRow(), 3);
    if (!FileDirPath::hasSeparator(path))
        path = FileDirPath::FolderOf(list.subItem(list.selectedRow(), 2)) + path;
    player.newMedia(path);
    player.setURL(path);
    root.LListView2.Tag = QString::number(list.selectedRow());
}

/// A single track has no sequence.
void leaveSequence(Root& root)
{
    LListView2_Click(root);
    root.mnuSoundplayerExt.Visible = false;
    root.Timer1.Enabled = false;
}

void openRow(Root& root, int row)
{
    root.LListView1.Tag = QString::number(row);
    QString path = root.LListView1.subItem(row, 2);
    GetPlayEntrys(root, path);
}

/// The view goes back to the row the user was on, if the option asks for it. In mode 1 there is no such row.
void returnToRow(Root& root, int row)
{
    if (std::abs(readSetting(root, u"ShowChange"_s).number()) != 1 || !root.LListView1.select(row))
        return;
    openRow(root, row);
    root.services.events.yield();
}

void repeatPlaylist(Root& root)
{
    root.services.mediaplayer.stop();
    root.services.mediaplayer.play();
    pSoundPlayer_Click(root);
    root.Timer1.Enabled = true;
    returnToRow(root, 0);
}

void playNextPlaylist(Root& root)
{
    ListView& list = root.LListView1;
    const int remembered = list.selectedRow();
    const int playing = root.pSoundPlayer.Tag.toInt();
    if (remembered != playing)
        list.select(playing);

    const int next = list.selectedRow() + 1;
    root.services.events.yield();
    list.select(next > list.count() ? 1 : next);
    root.services.events.yield();
    Pause(root, 1.0);
    if (root.services.events.ended())
        return;
    root.services.mediaplayer.close();

    openRow(root, list.selectedRow());
    root.pPausePlayer.Tag = u"0"_s;
    root.services.events.yield();
    pSoundPlayer_Click(root);
    root.Timer1.Enabled = true;
    root.pPausePlayer.Tag = u"0"_s;
    Pause(root, 1.0);
    if (root.services.events.ended())
        return;
    returnToRow(root, remembered);
}

} // namespace

void playSingleTrack(Root& root)
{
    // What plays is stopped and the steps run again. Events are served in them, so something may have been started
    // meanwhile; that goes on in the end, or the two would stop one another for ever.
    constexpr int MostRounds = 3;
    for (int round = 0; round < MostRounds; ++round) {
        if (root.LListView2.count() == 0)
            return;
        leaveSequence(root);
        if (root.pSoundPlayer.Enabled.value()) {
            startTrack(root);
            LoadMp3Info(root);
            return;
        }
        if (round + 1 < MostRounds) {
            showRunning(root, false);
            root.services.mediaplayer.close();
        }
    }
}

void mnuWiederholung_Click(Root& root, int index)
{
    for (int mode = 1; mode <= 3; ++mode)
        root.mnuWiederholung[mode].Checked = mode == index;
}

void mnuAllesWiedergeben_Click(Root& root)
{
    ShowFeatureTip(root, 515);
    root.mnuAllesWiedergeben.Checked = !root.mnuAllesWiedergeben.Checked.value();
    if (!root.mnuAllesWiedergeben.Checked.value())
        root.Timer1.Enabled = false;
    else if (root.pPausePlayer.Enabled.value())
        root.Timer1.Enabled = true;
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
    if (root.LListView2.count() == 0) {
        root.pHinweistext.Visible = true;
        return;
    }
    root.mnuOrvmenu[1].Visible = true;
    root.mnuOrvmenu[2].Visible = true;
    root.pHinweistext.Visible = false;

    const PlayState state = player.playState();
    if (state == PlayState::Stopped && root.mnuWiederholung[2].Checked.value()) {
        playSingleTrack(root);
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
    root.services.events.yield();
    if (root.mnuWiederholung[1].Checked.value())
        repeatPlaylist(root);
    else if (root.mnuWiederholung[3].Checked.value())
        playNextPlaylist(root);
}

} // namespace orvantine
