#include "playback/Timer1.h"

#include "app/Command.h"
#include "app/PlayButtons.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "playback/PlaySingleTrack.h"
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

void openRow(Root& root, int row)
{
    root.LListView1.Tag = QString::number(row);
    QString path = playlistPath(root, row);
    GetPlayEntrys(root, path);
}

/// The view goes back to the row the user was on, if the option asks for it. In mode 1 there is no such row.
void returnToRow(Root& root, Command& command, int row)
{
    if (std::abs(readSetting(root, u"ShowChange"_s).number()) != 1 || !root.LListView1.select(row))
        return;
    openRow(root, row);
    command.lastYield();
}

void repeatPlaylist(Root& root, Command& command)
{
    root.services.mediaplayer.stop();
    root.services.mediaplayer.play();
    root.pSoundPlayer.Click();
    root.Timer1.Enabled = true;
    returnToRow(root, command, 0);
}

void playNextPlaylist(Root& root, Command& command)
{
    ListView& list = root.LListView1;
    const int remembered = list.selectedRow();
    const int playing = root.pSoundPlayer.Tag.toInt();
    if (remembered != playing)
        list.select(playing);

    const int next = list.selectedRow() + 1;
    if (!command.yield())
        return;
    list.select(next > list.count() ? 1 : next);
    if (!command.yield() || !command.pause(1.0))
        return;
    root.services.mediaplayer.close();

    openRow(root, list.selectedRow());
    root.pPausePlayer.Tag = u"0"_s;
    if (!command.yield())
        return;
    root.pSoundPlayer.Click();
    root.Timer1.Enabled = true;
    root.pPausePlayer.Tag = u"0"_s;
    if (command.pause(1.0))
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
    Command command(root);
    if (!command.yield())
        return;
    if (root.mnuWiederholung[1].Checked.value())
        repeatPlaylist(root, command);
    else if (root.mnuWiederholung[3].Checked.value())
        playNextPlaylist(root, command);
}

} // namespace orvantine
