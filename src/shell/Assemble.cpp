#include "shell/Assemble.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/Direkthilfe.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "metadata/SelectedTrack.h"
#include "metadata/TagForms.h"
#include "metadata/frmID3.h"
#include "operations/DropOnCatalogue.h"
#include "operations/DropOnTracks.h"
#include "operations/Eigenschaften.h"
#include "operations/ListInput.h"
#include "operations/ListKeys.h"
#include "operations/Positionen.h"
#include "operations/mnuEditCopy.h"
#include "operations/mnuMoveEntry.h"
#include "operations/mnuSortierung.h"
#include "operations/mnuVerschiebung.h"
#include "playback/CoverArt.h"
#include "playback/MediaChange.h"
#include "playback/PlayerControl.h"
#include "playback/Timer1.h"
#include "playback/Timer2.h"
#include "playback/Tray.h"
#include "playback/Volume.h"
#include "search/ErrorListe.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "search/Suchen.h"
#include "search/mnuSuchen.h"
#include "shell/Design.h"
#include "shell/Dialoge.h"
#include "shell/FormLoad.h"
#include "shell/Info.h"
#include "shell/Menus.h"
#include "shell/Optionen.h"
#include "shell/Startup.h"
#include "shell/Tastatur.h"
#include "shell/Timer3.h"
#include "transfer/Datenbank.h"
#include "transfer/Fassungen.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Kopieren.h"
#include "transfer/Trackcopy.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

using Handler = void (*)(Root&);

template <class C>
void on(C& control, Root& root, Handler handler)
{
    control.Click = [&root, handler] { handler(root); };
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
    root.LListView2.ColumnClick = [&root](int column) {
        runCommand(root, Changes::Tracks, [&root, column] { LListView2_ColumnClick(root, column); });
    };
    root.LListView1.KeyDown = [&root](int shift, int code) { return LListView1_KeyDown(root, shift, code); };
    root.LListView2.KeyDown = [&root](int shift, int code) { return LListView2_KeyDown(root, shift, code); };
    root.LListView1.Drop = [&root](const QStringList& paths) {
        runCommand(
            root, Changes::Both, [&root, &paths] { LListView1_OLEDragDrop(root, paths); }, u"Ziehen und Ablegen"_s);
    };
    root.LListView2.Drop = [&root](const QStringList& paths) {
        runCommand(
            root, Changes::Both, [&root, &paths] { LListView2_OLEDragDrop(root, paths); }, u"Ziehen und Ablegen"_s);
    };
    root.LListView1.WidthDrawn = [&root](int column) { storeWidth(root, root.LListView1, column); };
    root.LListView2.WidthDrawn = [&root](int column) { storeWidth(root, root.LListView2, column); };
    root.LListView2.DragFile = [&root](int row) { return root.files.nativePath(trackPath(root, row)); };
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
    root.pCovers.Click = [&root] {
        runCommand(
            root, Changes::Catalogue, [&root] { pCovers_Click(root); }, u"CD-Cover"_s);
    };
    root.pCovers.MouseDown = [&root](MouseButton button) {
        runCommand(
            root, Changes::Catalogue, [&root, button] { pCovers_MouseDown(root, button); }, u"CD-Cover"_s);
    };
    on(root.Command1, root, Command1_Click);
    on(root.pTrayicon, root, pTrayicon_Click);
    root.tBeschreibung.DblClick = [&root] { pTrayicon_Click(root); };
    root.tPlaylisteinträge.DblClick = [&root] { tPlaylisteinträge_DblClick(root); };
    root.pMpeg.DblClick = [&root] { pMpeg_DblClick(root); };
    root.pTrayicons.MouseMove = [&root](int x) { pTrayicons_MouseMove(root, x); };
    root.services.tray.Callback = [&root](int x) { root.pTrayicons.MouseMove(x); };
    root.services.tray.Changed = [&root] { trayChanged(root); };
    root.sVolume.MouseDown = [&root] { LoadVolume(root); };
    root.sVolume.Scroll = [&root] { sVolume_Scroll(root); };
    root.sVolume.Refresh = [&root] { RefreshVolume(root); };
    root.sVolume.Click = [&root] { sVolume_Click(root); };
    root.services.mediaplayer.MediaChange = [&root] { MediaChange(root); };
    root.services.mediaInfo.MediaChange = [&root] { MediaChange(root); };
}

void wireTimers(Root& root)
{
    root.Timer1.Tick = [&root] { Timer1_Tick(root); };
    root.Timer2.Tick = [&root] { Timer2_Tick(root); };
    root.Timer3.Tick = [&root] { Timer3_Tick(root); };
    root.quietTimer.Tick = [&root] { quietTimer_Tick(root); };
    for (Timer* timer : {&root.Timer1, &root.Timer2, &root.Timer3, &root.quietTimer})
        root.services.events.attach(*timer);
}

void makeForms(Root& root)
{
    root.startup = std::make_shared<Startup>();
    root.info = std::make_shared<Info>();
    root.datenbank = std::make_shared<Datenbank>();
    root.dialoge = std::make_shared<Dialoge>();
    root.direkthilfe = std::make_shared<Direkthilfe>();
    root.optionen = std::make_shared<Optionen>();
    root.tastatur = std::make_shared<Tastatur>();
    root.positionen = std::make_shared<Positionen>();
    root.eigenschaften = std::make_shared<Eigenschaften>();
    root.errorListe = std::make_shared<ErrorListe>();
    root.findAudio = std::make_shared<FindAudio>();
    root.folderCheck = std::make_shared<FolderCheck>();
    root.suchen = std::make_shared<Suchen>();
    root.filesCopy = std::make_shared<FilesCopy>();
    root.ordner = std::make_shared<Ordner>();
    root.trackcopy = std::make_shared<Trackcopy>();
    root.kopieren = std::make_shared<Kopieren>();
    root.fassungen = std::make_shared<Fassungen>();
    root.fassung = std::make_shared<Fassung>();
    root.tagForm = std::make_shared<frmID3V1>();
    root.otherTagForm = std::make_shared<frmID3V2>();

    setUpInfo(root);
    setUpDialoge(root);
    setUpDirekthilfe(root);
    setUpOptionen(root);
    setUpTastatur(root);
    setUpPositionen(root);
    setUpTagForms(root);
    setUpEigenschaften(root);
    setUpErrorListe(root);
    setUpFolderCheck(root);
    setUpSuchen(root);
    setUpFindAudio(root);
    setUpFolderDialogs(root);
    setUpTrackcopy(root);
    setUpKopieren(root);
    setUpDatenbank(root);
    setUpFassungen(root);
}

} // namespace

void assemble(Root& root)
{
    makeForms(root);
    setUpMenus(root);
    design(root);
    wireLists(root);
    wirePlayer(root);
    wireTimers(root);
}

} // namespace orvantine
