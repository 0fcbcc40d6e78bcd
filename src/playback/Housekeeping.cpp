#include "playback/Sequencing.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "playback/PlayerControl.h"
#include "playlists/ReadPlaylists.h"

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

/// A column that was drawn too narrow gets the width of its creation back; one of width 0 is meant to be hidden.
template <std::size_t Columns>
void restoreColumns(ListView& list, const std::array<Twips, Columns>& widths)
{
    constexpr Twips Narrowest = 500;
    for (int column = 1; column <= list.columns() && column <= static_cast<int>(Columns); ++column) {
        const Twips width = list.columnWidth(column);
        if (width > 0 && width < Narrowest)
            list.setColumnWidth(column, widths[static_cast<std::size_t>(column - 1)]);
    }
}

void enableCommands(Root& root)
{
    const bool any = root.LListView1.count() > 0;
    root.pSoundPlayer.Enabled = any && !root.pPausePlayer.Enabled.value();
    root.pSymbole.Enabled = any;
    root.pHinweistext.Visible = !any;
    for (MenuItem* item : {&root.mnuEigenschaften,
                           &root.mnuAddSounds,
                           &root.mnuUmbenennen,
                           &root.mnuBeschriftung,
                           &root.mnuLöschen,
                           &root.mnuVerschiebung[1],
                           &root.mnuVerschiebung[2],
                           &root.mnuVerschiebung[3],
                           &root.mnuHandling[1],
                           &root.mnuHandling[2],
                           &root.mnuHandling[3],
                           &root.mnuHandling[4],
                           &root.mnuHandling[5],
                           &root.mnuHandling[6],
                           &root.mnuSortierung[1],
                           &root.mnuSortierung[2],
                           &root.mnuSortierung[3],
                           &root.mnuWiedergabe,
                           &root.mnuSpeichernUnter,
                           &root.mnuSpeichern,
                           &root.mnuLaden,
                           &root.mnuSuchen,
                           &root.mnuFavoriten,
                           &root.mnuCheckPlaylists,
                           &root.mnuFolderCheck,
                           &root.mnuPackGo,
                           &root.mnuDbSicherungen,
                           &root.mnuOpenMediaplayerEx[1],
                           &root.mnuOpenMediaplayerEx[2],
                           &root.mnuEingangsordner,
                           &root.mnuCopyTrack,
                           &root.mnuSetTagName,
                           &root.mnuMoveEntry[1],
                           &root.mnuMoveEntry[2],
                           &root.mnuDateiEigenschaften,
                           &root.mnuGetIDTag,
                           &root.mnuFileKill,
                           &root.mnuFileSave,
                           &root.mnuFileProperties,
                           &root.mnxBearbeitenEx[1],
                           &root.mnxBearbeitenEx[2],
                           &root.mnxBearbeiten[1],
                           &root.mnxBearbeiten[2],
                           &root.mnxBearbeiten[3],
                           &root.mnxBearbeiten[4]})
        item->Enabled = any;
    // A filter that leaves no row must still be taken off.
    root.mnuFavoritenShow.Enabled = any || root.mnuFavoritenShow.Tag == u"1"_s;
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
    constexpr qsizetype TooLong = 161;
    root.LSoundCaption.Visible = root.LSoundCaption.Caption.value().size() < TooLong;
}

/// What ends a playlist while Timer1 is off, and a single track.
void stopAtEnd(Root& root)
{
    const auto ended = [&root] { return root.services.mediaplayer.status() == u"Beendet"_s; };
    if (!root.pPausePlayer.Enabled.value() || !ended())
        return;
    Pause(root, 1.0);
    if (ended() && !root.services.events.ended())
        pStopPlayer_Click(root);
}

void showHint(Label& label, const QString& hint)
{
    constexpr qsizetype Compared = 38;
    if (label.Caption.value().left(Compared) != hint.left(Compared))
        label.Caption = hint;
}

void showDescription(Root& root)
{
    const QString description = indexValue(root, databaseFile(root), root.LListView1.selectedRow(), 'e');
    if (root.LListView1.count() == 0)
        showHint(root.LSoundCaption,
                 u"Fügen Sie eine neue Wiedergabeliste hinzu, indem Sie die m3u-Datei in die Orvante ziehen."_s);
    else if (!description.isEmpty())
        root.LSoundCaption.Caption = description;
    else if (root.LListView2.count() == 0)
        showHint(root.LSoundCaption, addTracksHint());
}

} // namespace

void Timer2_Tick(Root& root)
{
    showRipper(root);

    restoreColumns(root.LListView1, std::array<Twips, 4>{0, 2800, 0, 900});
    restoreColumns(root.LListView2, std::array<Twips, 5>{0, 800, 3600, 2900, 2200});

    root.mnuCoverShow.Checked = root.pCoverBack.Visible.value();

    const bool idle = root.pSoundPlayer.Enabled.value();
    root.pPlayBack.Enabled = !idle;
    root.pPlayForward.Enabled = !idle;

    enableCommands(root);

    root.pDatum.Visible = root.mnuDatumsanzeige.Checked.value() && !root.mnuPositionen.Checked.value();

    showLabels(root);

    stopAtEnd(root);

    root.LListenCaption.Caption = root.bMoveDown.Enabled.value()
                                      ? u"Verwenden Sie diese Cursor-Schaltflächen zum verschieben der Einträge."_s
                                      : u"Klicken Sie das CD-Symbol um die Wiedergabe der Playliste zu starten."_s;

    showDescription(root);
}

void Timer3_Tick(Root& root)
{
    constexpr int TicksToStart = 90;
    const int ticks = root.Timer3.Tag.toInt() + 1;
    root.Timer3.Tag = QString::number(ticks);
    if (ticks < TicksToStart)
        return;
    root.Timer3.Enabled = false;
    const QString setup = FileDirPath::join(FileDirPath::join(root.services.folders.program, u"Updates"), u"Setup.exe");
    if (!Dateiexistenz::FileExists(root, setup))
        return;
    Pause(root, 3.0);
    root.services.events.yield();
    if (root.services.events.ended())
        return;
    root.services.launcher.start({.kind = LaunchKind::Program, .command = setup, .target = setup, .arguments = {}});
    IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Update"_s,
                         dateText(root.services.events.now().date()));
}

} // namespace orvantine
