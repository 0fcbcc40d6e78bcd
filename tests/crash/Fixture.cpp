#include "app/Registry.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuLaden.h"
#include "catalogue/mnuSpeichern.h"
#include "crash/FixtureData.h"
#include "desktop/tags/TagLibTags.h"
#include "operations/DropOnCatalogue.h"
#include "operations/DropOnTracks.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "playback/CoverArt.h"
#include "playlists/SavePlayEntrys.h"
#include "playlists/mnuSpeichernUnter.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "siblings/ResetDatabase.h"
#include "support/DiskDesktop.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>

using namespace orvantine;
using namespace orvantine::crash;
using namespace Qt::StringLiterals;

namespace {

void open(Root& root, int row)
{
    root.LListView1.select(row);
    root.LListView1.Click();
}

void removePlaylist(Machine& machine, int row)
{
    machine.root.LListView1.select(row);
    machine.answer(Answer::Ok);
    machine.root.mnuLöschen.Click();
}

void removeTrack(Machine& machine)
{
    machine.root.LListView2.select(machine.root.LListView2.count() - 5);
    machine.answer(Answer::Ok);
    machine.root.mnuFileKill.Click();
}

void closeNextModal(Machine& machine, const QString& name)
{
    machine.forms.whileModal(name, [&machine](Form& form) { machine.forms.unload(form); });
}

/// The finder takes what it finds; a run of the index comes first.
void find(Machine& machine, const QString& folder, int type)
{
    machine.root.mnuLokalePlayliste.Checked = false;
    machine.forms.whileModal(u"FindAudio"_s, [&machine, folder, type](Form&) {
        FindAudio& form = *machine.root.findAudio;
        form.TDrives.Text = folder;
        form.LFindType.ListIndex = type;
        form.Command1.Click();
        form.BReady.Click();
    });
    machine.root.mnuAddFolder.Click();
}

struct CrashCommand
{
    QByteArrayView name;
    void (*run)(Machine&);
};

constexpr CrashCommand Commands[] = {
    {"save",
     [](Machine& machine) {
         machine.root.LListView1.setSubItem(3, 1, u"Anderer Name"_s);
         machine.root.mnuSpeichern.Click();
     }},
    {"remove", [](Machine& machine) { removePlaylist(machine, 3); }},
    {"remove-last", [](Machine& machine) { removePlaylist(machine, machine.root.LListView1.count()); }},
    {"move",
     [](Machine& machine) {
         machine.root.LListView1.select(4);
         machine.root.mnuVerschiebung[1].Click();
     }},
    {"positions",
     [](Machine& machine) {
         machine.forms.whileModal(u"Positionen"_s, [&machine](Form&) {
             Positionen& form = *machine.root.positionen;
             QStringList lines = form.LSortView.List;
             std::reverse(lines.begin(), lines.end());
             form.LSortView.List = lines;
             machine.answer(Answer::Ok);
             form.BReady.Click();
         });
         machine.root.mnuVerschiebung[4].Click();
     }},
    {"rename",
     [](Machine& machine) {
         open(machine.root, 3);
         machine.messages.enter(u"Anderer Name"_s);
         machine.root.mnuUmbenennen.Click();
     }},
    {"properties",
     [](Machine& machine) {
         open(machine.root, 4);
         showEigenschaften(machine.root);
         Eigenschaften& form = *machine.root.eigenschaften;
         form.tPlaylistname.Text = u"Anderer Name"_s;
         form.tBeschreibung.Text = u"Andere Beschreibung"_s;
         form.BReady.Click();
     }},
    {"remove-track", removeTrack},
    {"remove-new-track",
     [](Machine& machine) {
         open(machine.root, 1);
         removeTrack(machine);
     }},
    {"name-by-tag",
     [](Machine& machine) {
         Root& root = machine.root;
         while (root.LListView2.count() > 1)
             root.LListView2.remove(root.LListView2.count());
         root.sAnzeige[1].Caption = u"Lied"_s;
         root.sAnzeige[2].Caption = u"Eine Band"_s;
         root.mnuSetTagName.Click();
     }},
    {"sort",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         machine.root.mnuSortierung[1].Click();
     }},
    {"add-folder",
     [](Machine& machine) {
         machine.forms.whileModal(u"Ordner"_s, [&machine](Form& form) {
             machine.root.tBrowseFolder.Text = soundFolder(machine.folder);
             machine.root.tBrowseFolder.Tag = u"1"_s;
             machine.forms.unload(form);
         });
         machine.root.mnuAddSounds.Click();
     }},
    {"paste",
     [](Machine& machine) {
         machine.root.LListView2.SetFocus();
         machine.root.mnuEditCopy.Tag = u"2"_s;
         machine.clipboard.copied = soundFiles(machine.folder);
         machine.answer(Answer::Yes);
         machine.root.mnuEditPaste.Click();
     }},
    {"drop", [](Machine& machine) { LListView2_OLEDragDrop(machine.root, soundFiles(machine.folder)); }},
    {"convert", [](Machine&) {}},
    {"convert-lf", [](Machine&) {}},
    {"nml",
     [](Machine& machine) {
         machine.choosers.open(machine.path(u"fremd/Import.nml"_s));
         machine.root.mnuDurchsuchen.Click();
     }},
    {"browse",
     [](Machine& machine) {
         machine.choosers.open(machine.path(u"fremd/Fremde Liste.m3u"_s));
         machine.root.mnuDurchsuchen.Click();
     }},
    {"new",
     [](Machine& machine) {
         machine.messages.enter(u"Ganz neu"_s);
         machine.root.mnuNeu.Click();
     }},
    {"local-save",
     [](Machine& machine) {
         Root& root = machine.root;
         root.mnuLokalePlayliste.Checked = true;
         root.LListView1.setSubItem(5, 2, machine.path(u"fremd/Fremde Liste.m3u"_s));
         open(root, 5);
         TrackList::Hold hold = root.trackList.hold();
         hold.remove(7);
         SavePlayEntrys(root);
     }},
    {"export",
     [](Machine& machine) {
         machine.choosers.save(machine.path(u"data/Playlisten/Liste 4.m3u"_s));
         mnuSpeichernUnter_Click(machine.root);
     }},
    {"cover",
     [](Machine& machine) {
         machine.choosers.open(machine.path(u"Neue Musik/Bild.jpg"_s));
         pCovers_Click(machine.root);
     }},
    {"cover-away",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         pCovers_MouseDown(machine.root, MouseButton::Right);
     }},
    {"move-track",
     [](Machine& machine) {
         machine.root.LListView2.select(40);
         machine.root.mnuMoveEntry[1].Click();
     }},
    {"tag",
     [](Machine& machine) {
         const QString track = soundFiles(machine.folder).front();
         Mp3Record record;
         machine.tags->Mp3FileInfo(track, record);
         std::copy_n("Neuer Titel", 11, record.title);
         record.trackFlagA = record.trackFlagB = 1;
         machine.tags->WriteID3V1(track, record);
     }},
    {"untag", [](Machine& machine) { machine.tags->EraseID3V2(soundFiles(machine.folder).front()); }},
    {"check-lists",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         closeNextModal(machine, u"ErrorListe"_s);
         machine.root.mnuCheckPlaylists.Click();
     }},
    {"recycle",
     [](Machine& machine) {
         machine.answer(Answer::Ok);
         machine.root.mnuRecycle.Click();
     }},
    {"remap",
     [](Machine& machine) {
         machine.root.mnuErrorDisplay.Checked = false;
         machine.forms.whileModal(u"FolderCheck"_s, [&machine](Form&) {
             FolderCheck& form = *machine.root.folderCheck;
             form.tFolderOld.Text = u"/musik"_s;
             form.tFolderNew.Text = u"/klang"_s;
             machine.answer(Answer::Yes);
             machine.answer(Answer::Ok);
             form.BReady.Click();
         });
         machine.root.mnuFolderCheck.Click();
     }},
    {"find-tracks", [](Machine& machine) { find(machine, soundFolder(machine.folder), FindAudio::NamesAndFolders); }},
    {"find-lists", [](Machine& machine) { find(machine, foreignFolder(machine.folder), FindAudio::Playlists); }},
    {"backup",
     [](Machine& machine) {
         machine.choosers.save(machine.archive());
         machine.root.mnuDbSicherungen.Click();
     }},
    {"restore",
     [](Machine& machine) {
         machine.answer(Answer::Ok);
         machine.choosers.open(machine.archive());
         machine.root.mnuDbWiederherstellung.Click();
     }},
    {"restore-copy",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         machine.root.mnuWiederherstellen.Click();
     }},
    {"reset",
     [](Machine& machine) {
         PosixFiles files({.recoveryFolder = machine.path(u"reset"_s)});
         (void)resetDatabase(files, {.dataFolder = machine.data(),
                                     .trash = machine.path(u"Trash"_s),
                                     .now = QDateTime(QDate(2026, 11, 20), QTime(12, 0))});
     }},
    {"transfer",
     [](Machine& machine) {
         machine.setStick();
         machine.answer(Answer::Ok);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.messages.enter(u"Rock"_s);
         machine.answer(Answer::Ok);
         machine.root.mnuHandling[1].Click();
     }},
    {"transfer-track",
     [](Machine& machine) {
         machine.setStick();
         machine.root.LListView2.select(1);
         machine.answer(Answer::Ok);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.answer(Answer::Ok);
         machine.root.mnuHandling[4].Click();
     }},
    {"pack-folder",
     [](Machine& machine) {
         machine.setStick();
         machine.answer(Answer::No);
         machine.answer(Answer::Cancel);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.answer(Answer::Ok);
         machine.root.mnuPackGo.Click();
     }},
    {"pack-zip",
     [](Machine& machine) {
         machine.setStick();
         machine.answer(Answer::Yes);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.answer(Answer::Ok);
         machine.root.mnuPackGo.Click();
     }},
    {"drop-folder", [](Machine& machine) { LListView1_OLEDragDrop(machine.root, {soundFolder(machine.folder)}); }},
};

} // namespace

/// orvantine-crash-fixture prepare|show|COMMAND FOLDER; without arguments the commands are told.
int main(int argc, char** argv)
{
    if (argc == 1) {
        for (const CrashCommand& command : Commands)
            std::printf("%s\n", command.name.data());
        return 0;
    }
    if (argc != 3)
        return 2;
    const QByteArrayView name(argv[1]);
    const QString folder = QFile::decodeName(argv[2]);
    if (name == "prepare") {
        prepare(folder);
        return 0;
    }
    // As a start does it.
    (void)PosixFiles({.recoveryFolder = folder + u"/reset"_s});
    Machine machine(folder);
    if (name == "show") {
        show(machine);
        return 0;
    }
    const auto* const command = std::find_if(std::begin(Commands), std::end(Commands),
                                             [name](const CrashCommand& c) { return c.name == name; });
    if (command == std::end(Commands))
        return 2;
    machine.run(command->run);
    return 0;
}
