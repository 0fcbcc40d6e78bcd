#include "operations/mnuMoveEntry.h"

#include "app/Command.h"
#include "app/Root.h"
#include "playback/PlayResource.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Up = 1;
constexpr int Down = 2;

} // namespace

void mnuMoveEntry_Click(Root& root, int index)
{
    // A list that nobody has seen has no row that the user could have selected.
    const std::optional<int> own = ownSelectedRow(root);
    if (!own)
        return;
    const int row = *own;
    TrackList::Hold hold = root.trackList.hold();
    ListView& tracks = root.LListView2;
    // Required: at the edges the cue sounds and the command goes on.
    if (index == Up && row == 1)
        PlayResource(root, u"Play"_s);
    if (index == Down && row > 0 && row == tracks.count())
        PlayResource(root, u"Stop"_s);

    root.bMoveDown.Tag = u"1"_s;
    if (row > 0)
        hold.move(index == Up ? -1 : 1);
    root.bMoveDown.Tag = u"0"_s;

    SavePlayEntrys(root);
    Command command(root);
    if (command.ended())
        return;
    tracks.SetFocus();
    command.lastYield();
}

void bEntryUp_Click(Root& root)
{
    runCommand(root, Changes::Tracks, [&root] {
        // Required: only the way up ends the sorting.
        root.trackList.hold().endSorting();
        root.mnuMoveEntry[Up].Click();
    });
}

void bEntryDown_Click(Root& root)
{
    root.mnuMoveEntry[Down].Click();
}

} // namespace orvantine
