#pragma once

#include "app/RootMenus.h"
#include "app/RunningCommands.h"
#include "app/TooltipsClass.h"
#include "metadata/WideMp3Record.h"
#include "platform/ListView.h"
#include "platform/Services.h"
#include "playback/Sequence.h"
#include "playlists/TrackList.h"

#include <memory>
#include <vector>

namespace orvantine {

class clsVolume;
struct Datenbank;
struct Dialoge;
struct Direkthilfe;
struct Eigenschaften;
struct ErrorListe;
struct Fassung;
struct Fassungen;
struct FilesCopy;
struct FindAudio;
struct FolderCheck;
struct Info;
struct Kopieren;
struct Optionen;
struct Ordner;
struct Positionen;
struct Startup;
struct Suchen;
struct Tastatur;
struct Trackcopy;
struct frmID3V1;
struct frmID3V2;

/// The main window: every control and every named piece of state of the program, once. It has no behaviour: the
/// handlers are free functions over it, and assemble() in shell/Assemble.h makes the forms and ties all together.
///
/// Tag is the lifecycle and transfer marker: "0" idle, "1" long job or unattended play, "2" stop asked or backup step,
/// "9" ending.
struct Root : RootMenus
{
    explicit Root(Services& desktopServices) : RootMenus(QStringLiteral("Root")), services(desktopServices) {}

    Services& services;
    Files& files{services.files};

    // The two lists
    /// The catalogue. Tag: 1-based number of the row whose tracks are loaded; "0" forces a reload.
    ListView LListView1{controls, u"LListView1"};
    /// The tracks of the open playlist. Tag: catalogue row of the playlist that is playing.
    ListView LListView2{controls, u"LListView2"};

    // Heads and hints of the panes
    Label tOrvanten{controls, u"tOrvanten"};
    Label nAnzeige{controls, u"nAnzeige"};
    Label LListenCaption{controls, u"LListenCaption"};
    Label tPlaylisteinträge{controls, u"tPlaylisteinträge"};
    Label tSoundzahl{controls, u"tSoundzahl"};
    Label tBeschreibung{controls, u"tBeschreibung"};
    /// Tag: "1" while it shows a description, "0" while it shows a hint.
    Label LSoundCaption{controls, u"LSoundCaption"};
    PictureBox pHinweistext{controls, u"pHinweistext"};
    /// The frame around the information of the open playlist; the other measures follow its width.
    PictureBox xpFrame1{controls, u"xpFrame1"};

    // Player
    PictureBox pSoundPlayer{controls, u"pSoundPlayer"};
    PictureBox pPausePlayer{controls, u"pPausePlayer"};
    PictureBox pStopPlayer{controls, u"pStopPlayer"};
    PictureBox pPlayForward{controls, u"pPlayForward"};
    PictureBox pPlayBack{controls, u"pPlayBack"};
    PictureBox pSymbole{controls, u"pSymbole"};
    /// What the player does, for the views.
    QProperty<PlaybackStatus> playback{PlaybackStatus::Stopped};
    PictureBox pVolume{controls, u"pVolume"};
    Slider sVolume{controls, u"sVolume"};
    std::shared_ptr<clsVolume> volume;

    // Moving rows. bMoveDown.Tag is the move mark, "1" for the time of a move.
    Button bMoveUp{controls, u"bMoveUp"};
    Button bMoveDown{controls, u"bMoveDown"};
    Button bEntryUp{controls, u"bEntryUp"};
    Button bEntryDown{controls, u"bEntryDown"};
    Button Command1{controls, u"Command1"};

    // Cover
    PictureBox pCoverBack{controls, u"pCoverBack"};
    PictureBox pCovers{controls, u"pCovers"};

    // Track information: 0 playing time, 1 title, 2 artist, 3 "Titel:", 4 "Artist:", 5 bit rate
    ControlArray<Label, 0, 5> sAnzeige{controls, u"sAnzeige"};
    PictureBox pMpeg{controls, u"pMpeg"};
    Label sTitle{controls, u"sTitle"};
    Label sArtist{controls, u"sArtist"};
    Label sAlbum{controls, u"sAlbum"};
    Label sKommentar{controls, u"sKommentar"};
    Label sJahr{controls, u"sJahr"};
    Label sTrack{controls, u"sTrack"};
    Label sBitrate{controls, u"sBitrate"};

    // Progress and status
    PictureBox pCopyStatus{controls, u"pCopyStatus"};
    Label tCopyStatus{controls, u"tCopyStatus"};
    /// Tag: a number that grows by one half at each media change.
    PictureBox pDateiname{controls, u"pDateiname"};
    Label tDateiname{controls, u"tDateiname"};
    PictureBox pDatum{controls, u"pDatum"};
    Label tDatum{controls, u"tDatum"};
    PictureBox pAnimations{controls, u"pAnimations"};
    Animation pAnimation{controls, u"pAnimation"};
    Label Label2{controls, u"Label2"};
    Label Label3{controls, u"Label3"};

    /// The menu-hook control; Tag: the style of the menus.
    Label HookMenus{controls, u"HookMenus"};

    // Tray
    PictureBox pIconA{controls, u"pIconA"};
    PictureBox pTrayicon{controls, u"pTrayicon"};
    PictureBox pTrayicons{controls, u"pTrayicons"};

    /// Tells in passing what came of a command; see showQuietly.
    Label quietLine{controls, u"quietLine"};
    Timer quietTimer{controls, u"quietTimer", std::chrono::seconds{4}};
    /// Width of the catalogue's pane; 0 as it is designed.
    QProperty<Twips> CatalogueWidth{0};

    // Timers
    Timer Timer1{controls, u"Timer1", std::chrono::milliseconds{180}};
    Timer Timer2{controls, u"Timer2", std::chrono::milliseconds{280}};
    Timer Timer3{controls, u"Timer3", std::chrono::milliseconds{400}};

    // Hidden fields
    /// The DataFolder, with its trailing separator.
    TextBox tDatenbank{controls, u"tDatenbank"};
    /// The lines of the open playlist, or of one before it: see TrackList.
    TextBox tPlayliste{controls, u"tPlayliste"};
    /// Result of a folder dialog; Tag "1" chosen, "0" cancelled.
    TextBox tBrowseFolder{controls, u"tBrowseFolder"};
    FileList LMp3Files{controls, u"LMp3Files"};
    FileList LRipper{controls, u"LRipper"};

    /// The tracks in sight, and whose they are.
    TrackList trackList{LListView2, tPlayliste};
    /// The commands at work.
    RunningCommands commands;
    /// The lists that follow one another, and what the user wishes meanwhile.
    Sequence sequence;
    /// The commands that are off while the catalogue is empty.
    std::vector<MenuItem*> playlistCommands;

    /// The record exchanged with the tag library; never cleared between files.
    WideMp3Record mp3Record;
    /// Path of the track whose tag was read last.
    QString CurrentMp3File;
    /// The remembered start command, "/hide" replaced by "/play".
    QString startCommand;
    /// Started by "/hide": no start picture.
    bool hiddenStart = false;
    /// State of DisabledButtons.
    bool buttonsDisabled = false;
    /// Form_Load has ended.
    bool loaded = false;
    /// The end of the session has begun to end the program.
    bool ending = false;
    /// How many missing playlists the last load found.
    int missingPlaylists = 0;
    /// The catalogue came of a read that failed: it is not saved, and no key is written, until one was whole.
    bool databaseDoubted = false;
    /// There was none when the catalogue was loaded, and none has been written since: one that stands there is not
    /// ours.
    bool databaseAwaited = false;
    /// What the options hold while a command walks over the catalogue: its own number of the selected row, and the
    /// check of mnuErrorDisplay.
    std::optional<int> indexToKeep;
    std::optional<bool> errorsToKeep;
    /// Number of the last key that a row of the catalogue was given.
    int lastRowKey = 0;
    TooltipsClass TT;

    // Forms: shared for the type's sake alone, since their look is nothing that everybody has to include
    std::shared_ptr<Startup> startup;
    std::shared_ptr<Info> info;
    std::shared_ptr<Datenbank> datenbank;
    std::shared_ptr<Dialoge> dialoge;
    std::shared_ptr<Direkthilfe> direkthilfe;
    std::shared_ptr<Optionen> optionen;
    std::shared_ptr<Tastatur> tastatur;
    std::shared_ptr<Positionen> positionen;
    std::shared_ptr<Eigenschaften> eigenschaften;
    std::shared_ptr<ErrorListe> errorListe;
    std::shared_ptr<FindAudio> findAudio;
    std::shared_ptr<FolderCheck> folderCheck;
    std::shared_ptr<Suchen> suchen;
    std::shared_ptr<FilesCopy> filesCopy;
    std::shared_ptr<Ordner> ordner;
    std::shared_ptr<Trackcopy> trackcopy;
    std::shared_ptr<Kopieren> kopieren;
    std::shared_ptr<Fassungen> fassungen;
    std::shared_ptr<Fassung> fassung;
    std::shared_ptr<frmID3V1> tagForm;
    std::shared_ptr<frmID3V2> otherTagForm;
};

} // namespace orvantine
