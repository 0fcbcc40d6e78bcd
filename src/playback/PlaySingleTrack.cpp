#include "playback/PlaySingleTrack.h"

#include "app/PlayButtons.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/SelectedTrack.h"
#include "metadata/ShowTrackInfo.h"
#include "platform/FileDirPath.h"
#include "playback/PlaybackState.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Hands the selected track to the idle player.
void startTrack(Root& root)
{
    MediaPlayer& player = root.services.mediaplayer;
    showRunning(root, true);
    root.pPausePlayer.Tag = u"0"_s;
    notePlaying(root, root.LListView1.selectedRow());
    player.close();
    QString path = selectedTrackPath(root);
    if (!FileDirPath::hasSeparator(path))
        path = FileDirPath::FolderOf(selectedPlaylist(root)) + path;
    player.newMedia(path);
    player.setURL(path);
    showPlayback(root);
}

/// A single track has no sequence. False where the user has asked something else of the player meanwhile, another list
/// was opened, whose rows nobody has chosen, or the program has ended.
bool leaveSequence(Root& root)
{
    const int wish = root.sequence.wishes();
    const QString list = root.trackList.path();
    root.LListView2.Click();
    if (root.services.events.ended() || root.sequence.wishes() != wish || root.trackList.path() != list)
        return false;
    root.mnuSoundplayerExt.Visible = false;
    root.Timer1.Enabled = false;
    return true;
}

} // namespace

void playSingleTrack(Root& root)
{
    // What plays is stopped and the steps run again. Events are served in them, so something may have been started
    // meanwhile; that goes on in the end, or the two would stop one another for ever.
    constexpr int MostRounds = 3;
    for (int round = 0; round < MostRounds; ++round) {
        if (root.LListView2.count() == 0 || !leaveSequence(root))
            return;
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

} // namespace orvantine
