#pragma once

#include "platform/Form.h"

namespace orvantine {

/// The commands of the main window: menu bar and the pop-up of the track list. Captions, shortcuts and start states
/// stand in the table of commands, shell/CommandTable.cpp and shell/PopupTable.cpp.
struct RootMenus : Form
{
    using Form::Form;

    MenuItem mnuVorgänge{controls, u"mnuVorgänge"};
    MenuItem mnuHinzufügen{controls, u"mnuHinzufügen"};
    MenuItem mnuDurchsuchen{controls, u"mnuDurchsuchen"};
    MenuItem mnuNeu{controls, u"mnuNeu"};
    MenuItem mnuAddFolder{controls, u"mnuAddFolder"};
    MenuItem mnuAddChanges{controls, u"mnuAddChanges"};
    MenuItem Trennung0X{controls, u"Trennung0X"};
    MenuItem mnuAddCDs{controls, u"mnuAddCDs"};
    MenuItem Trennung0{controls, u"Trennung0"};
    MenuItem mnuAddSounds{controls, u"mnuAddSounds"};
    MenuItem mnuEigenschaften{controls, u"mnuEigenschaften"};
    MenuItem mnuUmbenennen{controls, u"mnuUmbenennen"};
    MenuItem mnuBeschriftung{controls, u"mnuBeschriftung"};
    MenuItem mnuVerschieben{controls, u"mnuVerschieben"};
    ControlArray<MenuItem, 1, 4> mnuVerschiebung{controls, u"mnuVerschiebung"};
    MenuItem mnuÜbertragen{controls, u"mnuÜbertragen"};
    ControlArray<MenuItem, 1, 7> mnuHandling{controls, u"mnuHandling"};
    MenuItem mnuLöschen{controls, u"mnuLöschen"};
    MenuItem Trennung1{controls, u"Trennung1"};
    MenuItem mnuWiedergabe{controls, u"mnuWiedergabe"};
    MenuItem mnuSoundplayerExt{controls, u"mnuSoundplayerExt"};
    ControlArray<MenuItem, 1, 4> mnuSoundplayer{controls, u"mnuSoundplayer"};
    MenuItem Trennung10{controls, u"Trennung10"};
    MenuItem mnuFavoritenShow{controls, u"mnuFavoritenShow"};
    MenuItem mnuFavoriten{controls, u"mnuFavoriten"};
    MenuItem Trennung3{controls, u"Trennung3"};
    MenuItem mnuSpeichernUnter{controls, u"mnuSpeichernUnter"};
    MenuItem Trennung4{controls, u"Trennung4"};
    MenuItem mnuFolderCheck{controls, u"mnuFolderCheck"};
    MenuItem mnuCheckPlaylists{controls, u"mnuCheckPlaylists"};
    MenuItem Trennung5{controls, u"Trennung5"};
    MenuItem mnuWiederherstellen{controls, u"mnuWiederherstellen"};
    MenuItem mnuSpeichern{controls, u"mnuSpeichern"};
    MenuItem mnuLaden{controls, u"mnuLaden"};
    MenuItem Trennung6{controls, u"Trennung6"};
    MenuItem mnuPackGo{controls, u"mnuPackGo"};
    MenuItem mnuDbWiederherstellung{controls, u"mnuDbWiederherstellung"};
    MenuItem mnuDbSicherungen{controls, u"mnuDbSicherungen"};
    MenuItem Trennung7{controls, u"Trennung7"};
    MenuItem mnuBeenden{controls, u"mnuBeenden"};

    MenuItem mnuBearbeiten{controls, u"mnuBearbeiten"};
    MenuItem mnuEditCut{controls, u"mnuEditCut"};
    MenuItem mnuEditCopy{controls, u"mnuEditCopy"};
    MenuItem mnuEditPaste{controls, u"mnuEditPaste"};
    MenuItem mnuEditKill{controls, u"mnuEditKill"};
    MenuItem Trennung11{controls, u"Trennung11"};
    MenuItem mnuSuchen{controls, u"mnuSuchen"};

    MenuItem mnuAnsicht{controls, u"mnuAnsicht"};
    MenuItem TagIDs{controls, u"TagIDs"};
    MenuItem Trennung21{controls, u"Trennung21"};
    MenuItem mnuOrvantenmenu{controls, u"mnuOrvantenmenu"};
    ControlArray<MenuItem, 1, 2> mnuOrvmenu{controls, u"mnuOrvmenu"};
    MenuItem mnuGridlines{controls, u"mnuGridlines"};
    MenuItem Trennung22{controls, u"Trennung22"};
    MenuItem mnuSuchDialog{controls, u"mnuSuchDialog"};
    MenuItem mnuDatumsanzeige{controls, u"mnuDatumsanzeige"};
    MenuItem mnuLautstärke{controls, u"mnuLautstärke"};
    MenuItem mnuPositionen{controls, u"mnuPositionen"};
    MenuItem Trennung23{controls, u"Trennung23"};
    MenuItem mnuCoverShow{controls, u"mnuCoverShow"};
    MenuItem mnuTrackShow{controls, u"mnuTrackShow"};
    MenuItem Trennung24{controls, u"Trennung24"};
    MenuItem mnuSchriftarten{controls, u"mnuSchriftarten"};

    MenuItem mnuVerwaltung{controls, u"mnuVerwaltung"};
    MenuItem mnuDateiEigenschaften{controls, u"mnuDateiEigenschaften"};
    MenuItem Trennung31{controls, u"Trennung31"};
    MenuItem mnuMoveEntrys{controls, u"mnuMoveEntrys"};
    ControlArray<MenuItem, 1, 2> mnuMoveEntry{controls, u"mnuMoveEntry"};
    MenuItem mnuSortieren{controls, u"mnuSortieren"};
    ControlArray<MenuItem, 1, 3> mnuSortierung{controls, u"mnuSortierung"};
    MenuItem mnuWiederholungen{controls, u"mnuWiederholungen"};
    ControlArray<MenuItem, 1, 3> mnuWiederholung{controls, u"mnuWiederholung"};
    MenuItem Trennung32{controls, u"Trennung32"};
    MenuItem mnuOpenMediaplayer{controls, u"mnuOpenMediaplayer"};
    ControlArray<MenuItem, 1, 2> mnuOpenMediaplayerEx{controls, u"mnuOpenMediaplayerEx"};
    MenuItem mnuEingangsordner{controls, u"mnuEingangsordner"};
    MenuItem mnuCopyTrack{controls, u"mnuCopyTrack"};
    MenuItem mnuSetFileName{controls, u"mnuSetFileName"};
    MenuItem mnuSetTagName{controls, u"mnuSetTagName"};
    MenuItem mnuGetIDTag{controls, u"mnuGetIDTag"};
    MenuItem Trennung33{controls, u"Trennung33"};
    MenuItem mnuFileKill{controls, u"mnuFileKill"};
    MenuItem mnuFileSave{controls, u"mnuFileSave"};

    MenuItem mnuExtras{controls, u"mnuExtras"};
    MenuItem mnuSpaltenReset{controls, u"mnuSpaltenReset"};
    MenuItem mnuRecycle{controls, u"mnuRecycle"};
    MenuItem mnuDeleteDatabase{controls, u"mnuDeleteDatabase"};
    MenuItem Trennung41{controls, u"Trennung41"};
    MenuItem mnuSendtoInstall{controls, u"mnuSendtoInstall"};
    MenuItem mnuAddSoundfiles{controls, u"mnuAddSoundfiles"};
    MenuItem mnuErrorDisplay{controls, u"mnuErrorDisplay"};
    MenuItem mnuLokalePlayliste{controls, u"mnuLokalePlayliste"};
    MenuItem mnuAllesWiedergeben{controls, u"mnuAllesWiedergeben"};
    MenuItem Trennung42{controls, u"Trennung42"};
    MenuItem mnuDatabase{controls, u"mnuDatabase"};
    MenuItem mnuUpdates{controls, u"mnuUpdates"};
    MenuItem Trennung43{controls, u"Trennung43"};
    MenuItem mnuOptionen{controls, u"mnuOptionen"};
    MenuItem Trennung44{controls, u"Trennung44"};
    MenuItem mnuFassungen{controls, u"mnuFassungen"};

    MenuItem mnuHelp{controls, u"mnuHelp"};
    MenuItem mnuHilfe{controls, u"mnuHilfe"};
    MenuItem mnuTastenbefehle{controls, u"mnuTastenbefehle"};
    MenuItem Trennung81{controls, u"Trennung81"};
    MenuItem mnuInfo{controls, u"mnuInfo"};

    // The pop-up of the track list
    MenuItem mnuSpecial{controls, u"mnuSpecial"};
    ControlArray<MenuItem, 1, 2> mnuSpecials{controls, u"mnuSpecials"};
    MenuItem mnuFileProperties{controls, u"mnuFileProperties"};
    MenuItem mnxVerschiebung{controls, u"mnxVerschiebung"};
    ControlArray<MenuItem, 1, 2> mnxVerschieben{controls, u"mnxVerschieben"};
    MenuItem Trennung82{controls, u"Trennung82"};
    ControlArray<MenuItem, 0, 6> mnxBearbeiten{controls, u"mnxBearbeiten"};
    ControlArray<MenuItem, 1, 2> mnxBearbeitenEx{controls, u"mnxBearbeitenEx"};
    ControlArray<MenuItem, 1, 3> mnxSpecials{controls, u"mnxSpecials"};
};

} // namespace orvantine
