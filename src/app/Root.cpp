#include "app/Root.h"

#include "metadata/frmID3.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "playback/CoverArt.h"
#include "playback/Volume.h"
#include "playlists/ReadPlaylists.h"
#include "search/FindAudio.h"
#include "search/Suchen.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/Menus.h"
#include "shell/Startup.h"
#include "shell/Wiring.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Trackcopy.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The window as it is designed, before anything ran.
void design(Root& root)
{
    root.Caption = u"Orvanten Manager"_s;
    root.Width = 12600;
    root.Height = 9600;
    root.xpFrame1.Width = 7200;
    root.pCoverBack.Width = 1560;

    root.tOrvanten.Caption = u"Orvantinen"_s;
    root.nAnzeige.Caption = u"(0)"_s;
    root.LListenCaption.Caption = u"Klicken Sie das CD-Symbol um die Wiedergabe der Playliste zu starten."_s;
    root.tPlaylisteinträge.Caption = u"Einträge in der Playliste"_s;
    root.tSoundzahl.Caption = u"(0)"_s;
    root.tBeschreibung.Caption = u"Informationen zur Playliste"_s;
    root.LSoundCaption.Caption = addTracksHint();
    root.LSoundCaption.Tag = u"0"_s;
    root.sAnzeige[3].Caption = u"Titel:"_s;
    root.sAnzeige[4].Caption = u"Artist:"_s;
    root.sAnzeige[5].Caption = u"0 kBit (VBR)"_s;
    root.Label2.Caption = u"Die Dateiordner und der Unterverzeichnisse werden nach Wiedergabelisten durchsucht. Bitte "
                          u"haben Sie noch einen Moment Geduld, bis der Vorgang abgeschlossen wurde."_s;

    root.LListView1.addColumn(u"ID"_s, 0);
    root.LListView1.addColumn(u"Name"_s, 2800);
    root.LListView1.addColumn(u"Path"_s, 0);
    root.LListView1.addColumn(u"Tracks"_s, 900);
    root.LListView1.GridLines = true;
    root.LListView2.GridLines = true;

    root.pIconA.Picture = u"Icon_1"_s;
    root.sVolume.Max = 8;
    for (Control* off : std::initializer_list<Control*>{&root.pPausePlayer, &root.bMoveUp, &root.bMoveDown,
                                                        &root.bEntryUp, &root.bEntryDown})
        off->Enabled = false;
    root.pPausePlayer.Tag = u"0"_s;
    root.pDateiname.Tag = u"0"_s;
    root.Timer2.Tag = u"0"_s;
    root.Timer2.Enabled = true;

    for (Control* hidden : std::initializer_list<Control*>{
             &root.pHinweistext, &root.pVolume,    &root.bMoveUp,    &root.bMoveDown,  &root.bEntryUp,
             &root.bEntryDown,   &root.Command1,   &root.pIconA,     &root.HookMenus,  &root.pCoverBack,
             &root.pCopyStatus,  &root.pDateiname, &root.pDatum,     &root.tSoundzahl, &root.pAnimations,
             &root.sTitle,       &root.sArtist,    &root.sAlbum,     &root.sKommentar, &root.sJahr,
             &root.sTrack,       &root.sBitrate,   &root.tDatenbank, &root.tPlayliste, &root.tBrowseFolder,
             &root.LMp3Files,    &root.LRipper,    &root.Label3})
        hidden->Visible = false;
    fitDescription(root);
}

} // namespace

Root::Root(Services& desktopServices)
    : RootMenus(u"Root"_s),
      services(desktopServices),
      startup(std::make_unique<Startup>()),
      info(std::make_unique<Info>()),
      dialoge(std::make_unique<Dialoge>()),
      positionen(std::make_unique<Positionen>()),
      eigenschaften(std::make_unique<Eigenschaften>()),
      findAudio(std::make_unique<FindAudio>()),
      suchen(std::make_unique<Suchen>()),
      filesCopy(std::make_unique<FilesCopy>()),
      ordner(std::make_unique<Ordner>()),
      trackcopy(std::make_unique<Trackcopy>()),
      tagForm(std::make_unique<frmID3V1>()),
      otherTagForm(std::make_unique<frmID3V2>())
{
    setUpMenus(*this);
    design(*this);
    wire(*this);
}

Root::~Root() = default;

QString databaseFile(const Root& root)
{
    return root.tDatenbank.Text.value() + root.services.start.stem + u".dat"_s;
}

} // namespace orvantine
