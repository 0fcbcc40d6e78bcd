#include "playback/Timer2.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/PlaylistTexts.h"
#include "playback/PlaybackState.h"
#include "playback/PlayerControl.h"
#include "playback/RipperFolder.h"
#include "playback/Timer1.h"

#include <algorithm>
#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void showRipper(Root& root)
{
    if (root.Timer2.Tag.toInt() != 0)
        return;
    const QString ripper = readSetting(root, u"Ripper"_s).text();
    const bool known = Dateiexistenz::FileExists(root, ripper);
    root.mnuAddCDs.Visible = known;
    root.Trennung0X.Visible = known;
}

/// A column that was drawn too narrow gets the width of its creation back, unless it is one that is hidden.
template <std::size_t Count>
void restoreColumns(const Root& root, ListView& list, const std::array<ColumnRule, Count>& rules)
{
    for (int column = 1; column <= std::min(list.columns(), static_cast<int>(Count)); ++column)
        if (list.columnWidth(column) < NarrowestColumn)
            list.setColumnWidth(column,
                                isHidden(root, list, column) ? 0 : rules[static_cast<std::size_t>(column - 1)].width);
}

void enableCommands(Root& root)
{
    const bool any = root.LListView1.count() > 0;
    root.pSoundPlayer.Enabled = any && !root.pPausePlayer.Enabled.value();
    root.pSymbole.Enabled = any;
    root.pHinweistext.Visible = !any;
    for (MenuItem* item : root.playlistCommands)
        item->Enabled = any;
    // A filter that leaves no row must still be taken off.
    const bool filtered = isFiltered(root);
    root.mnuFavoritenShow.Enabled = any || filtered;
    for (const int index : {1, 2, 3})
        root.mnuVerschiebung[index].Enabled = any && !filtered;
    root.mnuSoundplayerExt.Visible = root.services.mediaplayer.playlistCount() >= 2;
}

void showLabels(Root& root)
{
    const bool title = !root.sAnzeige[1].Caption.value().isEmpty();
    const bool artist = !root.sAnzeige[2].Caption.value().isEmpty();
    root.sAnzeige[5].Caption = root.sBitrate.Caption.value();
    const bool bitRate = !root.sAnzeige[5].Caption.value().isEmpty();
    root.sAnzeige[1].Visible = title;
    root.sAnzeige[3].Visible = title;
    root.sAnzeige[2].Visible = artist;
    root.sAnzeige[4].Visible = artist;
    root.sAnzeige[5].Visible = bitRate;
    root.pMpeg.Visible = bitRate;
}

/// What ends a playlist while Timer1 is off, and a single track. What the sequence goes on with is not stopped. False
/// where the program has ended.
bool stopAtEnd(Root& root)
{
    const auto ended = [&root] {
        return root.pPausePlayer.Enabled.value() && root.services.mediaplayer.status() == u"Beendet"_s &&
               !root.sequence.takesTurn() && !nextListFollows(root);
    };
    if (!ended())
        return true;
    Command command(root);
    if (!command.pause(1.0))
        return false;
    if (ended())
        stopPlaying(root);
    return true;
}

void showHint(Label& label, const QString& hint)
{
    if (!isSameHint(label.Caption, hint))
        label.Caption = hint;
    label.Tag = u"0"_s;
}

void showDescription(Root& root)
{
    Label& label = root.LSoundCaption;
    if (root.LListView1.count() == 0) {
        showHint(label, u"Fügen Sie eine neue Wiedergabeliste hinzu, indem Sie die m3u-Datei in die Orvante ziehen."_s);
        return;
    }
    const QString description =
        indexValue(root, databaseFile(root), numberOf(root, root.LListView1.selectedRow()), EntryKey::Description);
    // Required: a longer one stays as the reading of the list has put it.
    constexpr qsizetype TooLong = 161;
    if (!description.isEmpty() && description.size() < TooLong) {
        label.Caption = description;
        label.Tag = u"1"_s;
    } else if (description.isEmpty() && root.LListView2.count() == 0) {
        showHint(label, addTracksHint());
    }
}

} // namespace

void Timer2_Tick(Root& root)
{
    showRipper(root);
    watchRipperFolder(root);

    restoreColumns(root, root.LListView1, CatalogueColumns);
    restoreColumns(root, root.LListView2, TrackColumns);

    root.mnuCoverShow.Checked = root.pCoverBack.Visible.value();

    const bool idle = root.pSoundPlayer.Enabled.value();
    root.pPlayBack.Enabled = !idle;
    root.pPlayForward.Enabled = !idle;

    enableCommands(root);

    root.pDatum.Visible = root.mnuDatumsanzeige.Checked.value() && !root.mnuPositionen.Checked.value();

    showLabels(root);

    if (!stopAtEnd(root))
        return;
    showPlayback(root);

    root.LListenCaption.Caption = root.bMoveDown.Enabled.value()
                                      ? u"Verwenden Sie diese Cursor-Schaltflächen zum verschieben der Einträge."_s
                                      : u"Klicken Sie das CD-Symbol um die Wiedergabe der Playliste zu starten."_s;

    // A move keeps the description of its row.
    if (root.bMoveDown.Tag != u"1"_s)
        showDescription(root);
}

} // namespace orvantine
