#include "shell/Design.h"

#include "app/ColumnWidths.h"
#include "app/Root.h"
#include "catalogue/PlaylistTexts.h"
#include "playback/CoverPane.h"

namespace orvantine {

using namespace Qt::StringLiterals;

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
    showHintForDescription(root);
    root.sAnzeige[3].Caption = u"Titel:"_s;
    root.sAnzeige[4].Caption = u"Artist:"_s;
    root.sAnzeige[5].Caption = u"0 kBit (VBR)"_s;
    root.Label2.Caption = u"Die Dateiordner und der Unterverzeichnisse werden nach Wiedergabelisten durchsucht. Bitte "
                          u"haben Sie noch einen Moment Geduld, bis der Vorgang abgeschlossen wurde."_s;

    createCatalogueColumns(root.LListView1);
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
             &root.LMp3Files,    &root.LRipper,    &root.Label3,     &root.quietLine})
        hidden->Visible = false;
    fitDescription(root);
}

} // namespace orvantine
