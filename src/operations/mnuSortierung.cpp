#include "operations/mnuSortierung.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

int sortedColumn(const Root& root, int sorting)
{
    if (sorting == 1)
        return columnOf(TrackItem::Name);
    if (sorting == 2)
        return columnOf(root.mnuOrvmenu[1].Checked.value() ? TrackItem::Path : TrackItem::File);
    return columnOf(TrackItem::Number);
}

/// Gives the rows the numbers of their places. Events are served at every row; false if one of them took the list away.
bool renumber(const Root& root, Command& command, TrackList::Hold& hold)
{
    const int count = root.LListView2.count();
    for (int row = 1; row <= count; ++row)
        if (!hold.renumber(row) || !command.yield())
            return false;
    return hold.valid();
}

void saveSorted(Root& root, Command& command, const TrackList::Hold& hold)
{
    if (!hasPlace(root))
        return command.tell({.text = u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden. "_s,
                             .title = u" Wiedergabeliste speichern"_s,
                             .icon = MessageIcon::Critical});
    const QString sorted = FileDirPath::titleOf(root.trackList.path());
    if (command.ask({.text = u"Soll die geänderte Trackliste automatisch gespeichert werden ? "_s,
                     .title = u' ' + root.Caption.value(),
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNo}) != Answer::Yes)
        return;
    if (hold.valid())
        SavePlayEntrys(root);
    else
        showQuietly(root, u"„%1“ wurde nicht gespeichert: Inzwischen ist eine andere Playliste offen."_s.arg(sorted));
}

} // namespace

void mnuSortierung_Click(Root& root, int index)
{
    if (!openOwnTracks(root))
        return;
    TrackList::Hold hold = root.trackList.hold();
    Command command(root);
    showTrackCount(root, rowInSight(root));
    command.wait();
    LListView2_ColumnClick(root, sortedColumn(root, index));
    if (renumber(root, command, hold))
        saveSorted(root, command, hold);
}

void LListView2_ColumnClick(Root& root, int column)
{
    // While a list is read there is nothing to sort.
    if (!ownTracks(root))
        return;
    TrackList::Hold hold = root.trackList.hold();
    const ListView& tracks = root.LListView2;
    const QString header = tracks.columnText(column);
    for (int position = 1; position <= tracks.columns(); ++position)
        if (tracks.columnText(position) == header)
            hold.sort(position);
}

} // namespace orvantine
