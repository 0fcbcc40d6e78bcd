#include "shell/Wiring.h"

#include "app/Root.h"
#include "app/Shutdown.h"
#include "catalogue/AddPlaylists.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/RemovePlaylists.h"
#include "metadata/TagNaming.h"
#include "metadata/TrackInformation.h"
#include "metadata/frmID3.h"
#include "operations/EditCommands.h"
#include "operations/Eigenschaften.h"
#include "operations/Favourites.h"
#include "operations/ListDrops.h"
#include "operations/ListInput.h"
#include "operations/ListKeys.h"
#include "operations/Positionen.h"
#include "operations/Properties.h"
#include "operations/Reordering.h"
#include "operations/TrackListOperations.h"
#include "playback/CoverArt.h"
#include "playback/PlayerControl.h"
#include "playback/Sequencing.h"
#include "playback/Tray.h"
#include "playback/Volume.h"
#include "playlists/AddSounds.h"
#include "playlists/SavePlaylists.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/MainWindow.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Trackcopy.h"

namespace orvantine {

namespace {

using Handler = void (*)(Root&);
using IndexedHandler = void (*)(Root&, int);

template <class C>
void on(C& control, Root& root, Handler handler)
{
    control.Click = [&root, handler] { handler(root); };
}

template <class C>
void on(C& control, Root& root, IndexedHandler handler, int index)
{
    control.Click = [&root, handler, index] { handler(root, index); };
}

void wireMenus(Root& root)
{
    for (int i : {1, 2, 4})
        on(root.mnuVerschiebung[i], root, mnuVerschiebung_Click, i);
    on(root.mnuDurchsuchen, root, mnuDurchsuchen_Click);
    on(root.mnuNeu, root, mnuNeu_Click);
    on(root.mnuEigenschaften, root, mnuEigenschaften_Click);
    on(root.mnuBeschriftung, root, mnuBeschriftung_Click);
    on(root.mnuLöschen, root, mnuL_schen);
    on(root.mnuFavoritenShow, root, mnuFavoritenShow_Click);
    on(root.mnuFavoriten, root, mnuFavoriten_Click);
    on(root.mnuAddSounds, root, mnuAddSounds_Click);
    on(root.mnuUmbenennen, root, mnuUmbenennen_Click);
    on(root.mnuWiedergabe, root, mnuWiedergabe_Click);
    for (int i = 1; i <= 4; ++i)
        on(root.mnuSoundplayer[i], root, mnuSoundplayer_Click, i);
    on(root.mnuSpeichernUnter, root, mnuSpeichernUnter_Click);
    on(root.mnuLaden, root, mnuLaden_Click);
    on(root.mnuSpeichern, root, mnuSpeichern_Click);
    on(root.mnuBeenden, root, mnuBeenden_Click);

    on(root.mnuEditCopy, root, mnuEditCopy_Click);
    on(root.mnuEditPaste, root, mnuEditPaste_Click);
    on(root.mnuEditKill, root, mnuEditKill_Click);

    on(root.mnuOrvmenu[1], root, mnuOrvmenu_Click, 1);
    on(root.mnuOrvmenu[2], root, mnuOrvmenu_Click, 2);
    on(root.mnuGridlines, root, mnuGridlines_Click);
    on(root.mnuDatumsanzeige, root, mnuDatumsanzeige_Click);
    on(root.mnuLautstärke, root, mnuLautstärke_Click);
    on(root.mnuPositionen, root, mnuPositionen_Click);
    on(root.mnuCoverShow, root, mnuCoverShow_Click);
    on(root.mnuTrackShow, root, mnuTrackShow_Click);
    on(root.mnuSchriftarten, root, mnuSchriftarten_Click);

    on(root.mnuDateiEigenschaften, root, mnuDateiEigenschaften_Click);
    on(root.mnuCopyTrack, root, mnuCopyTrack_Click);
    on(root.mnuSetFileName, root, mnuSetFileName_Click);
    on(root.mnuSetTagName, root, mnuSetTagName_Click);
    on(root.mnuGetIDTag, root, mnuGetIDTag_Click);
    on(root.mnuFileSave, root, SavePlayEntrys);
    for (int i = 1; i <= 2; ++i)
        on(root.mnuMoveEntry[i], root, mnuMoveEntry_Click, i);
    for (int i = 1; i <= 3; ++i)
        on(root.mnuSortierung[i], root, mnuSortierung_Click, i);
    on(root.mnuFileKill, root, mnuFileKill_Click);
    for (int i = 1; i <= 3; ++i)
        on(root.mnuWiederholung[i], root, mnuWiederholung_Click, i);

    on(root.mnuSpaltenReset, root, mnuSpaltenReset_Click);
    on(root.mnuAddSoundfiles, root, mnuAddSoundfiles_Click);
    on(root.mnuErrorDisplay, root, mnuErrorDisplay_Click);
    on(root.mnuLokalePlayliste, root, mnuLokalePlayliste_Click);
    on(root.mnuAllesWiedergeben, root, mnuAllesWiedergeben_Click);

    on(root.mnuHilfe, root, mnuHilfe_Click);
    on(root.mnuInfo, root, mnuInfo_Click);

    on(root.mnuSpecials[1], root, mnuSpecials_Click, 1);
    on(root.mnuSpecials[2], root, mnuSpecials_Click, 2);
    on(root.mnuFileProperties, root, mnuDateiEigenschaften_Click);
    on(root.mnxBearbeiten[2], root, mnuCopyTrack_Click);
    on(root.mnxBearbeiten[3], root, mnuSetFileName_Click);
    on(root.mnxBearbeiten[4], root, mnuSetTagName_Click);
    on(root.mnxBearbeiten[5], root, mnuGetIDTag_Click);
    on(root.mnxBearbeiten[6], root, mnuFileKill_Click);
    for (int i = 1; i <= 2; ++i)
        on(root.mnxVerschieben[i], root, mnuMoveEntry_Click, i);
    for (int i = 1; i <= 3; ++i)
        on(root.mnxSpecials[i], root, mnuSortierung_Click, i);
}

void wireLists(Root& root)
{
    on(root.LListView1, root, LListView1_Click);
    on(root.LListView2, root, LListView2_Click);
    on(root.bMoveUp, root, bMoveUp_Click);
    on(root.bMoveDown, root, bMoveDown_Click);
    on(root.bEntryUp, root, bEntryUp_Click);
    on(root.bEntryDown, root, bEntryDown_Click);
    root.LListView1.DblClick = [&root] { LListView1_DblClick(root); };
    root.LListView2.DblClick = [&root] { LListView2_DblClick(root); };
    root.LListView1.ColumnClick = [&root](int column) { LListView1_ColumnClick(root, column); };
    root.LListView2.ColumnClick = [&root](int column) { LListView2_ColumnClick(root, column); };
    root.LListView1.KeyDown = [&root](int shift, int code) { return LListView1_KeyDown(root, shift, code); };
    root.LListView2.KeyDown = [&root](int shift, int code) { return LListView2_KeyDown(root, shift, code); };
    root.LListView1.Drop = [&root](const QStringList& paths) { LListView1_OLEDragDrop(root, paths); };
    root.LListView2.Drop = [&root](const QStringList& paths) { LListView2_OLEDragDrop(root, paths); };
    root.LListView2.DragFile = [&root](int row) { return root.files.nativePath(root.LListView2.subItem(row, 3)); };
    root.LListView1.GotFocus = [&root] { noteFocus(root, 1); };
    root.LListView2.GotFocus = [&root] { noteFocus(root, 2); };
}

void wirePlayer(Root& root)
{
    on(root.pSoundPlayer, root, pSoundPlayer_Click);
    on(root.pSymbole, root, pSoundPlayer_Click);
    on(root.pPausePlayer, root, pPausePlayer_Click);
    on(root.pStopPlayer, root, pStopPlayer_Click);
    on(root.pPlayBack, root, pPlayBack_Click);
    on(root.pPlayForward, root, pPlayForward_Click);
    on(root.pCovers, root, pCovers_Click);
    root.pCovers.MouseDown = [&root](MouseButton button) { pCovers_MouseDown(root, button); };
    on(root.Command1, root, Command1_Click);
    on(root.pTrayicon, root, pTrayicon_Click);
    root.tBeschreibung.DblClick = [&root] { pTrayicon_Click(root); };
    root.tPlaylisteinträge.DblClick = [&root] { tPlaylisteinträge_DblClick(root); };
    root.pMpeg.DblClick = [&root] { pMpeg_DblClick(root); };
    root.pTrayicons.MouseMove = [&root](int x) { pTrayicons_MouseMove(root, x); };
    root.services.tray.Callback = [&root](int x) { root.pTrayicons.MouseMove(x); };
    root.sVolume.MouseDown = [&root] { LoadVolume(root); };
    root.sVolume.Scroll = [&root] { sVolume_Scroll(root); };
    root.sVolume.Click = [&root] { sVolume_Click(root); };
    root.services.mediaplayer.MediaChange = [&root] { MediaChange(root); };
    root.services.mediaInfo.MediaChange = [&root] { MediaChange(root); };
}

void wireTimers(Root& root)
{
    root.Timer1.Tick = [&root] { Timer1_Tick(root); };
    root.Timer2.Tick = [&root] { Timer2_Tick(root); };
    root.Timer3.Tick = [&root] { Timer3_Tick(root); };
    for (Timer* timer : {&root.Timer1, &root.Timer2, &root.Timer3})
        root.services.events.attach(*timer);
}

} // namespace

void wire(Root& root)
{
    wireMenus(root);
    wireLists(root);
    wirePlayer(root);
    wireTimers(root);
    setUpInfo(root);
    setUpDialoge(root);
    setUpPositionen(root);
    setUpTagForms(root);
    setUpEigenschaften(root);
    setUpFolderDialogs(root);
    setUpTrackcopy(root);
}

} // namespace orvantine
