#include "app/Columns.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "reentrance/World.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "search/Suchen.h"
#include "shell/Dialoge.h"
#include "shell/Shutdown.h"
#include "transfer/Fassungen.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

struct Deed
{
    const char* name;
    void (*run)(World& world);
    /// The catalogue that it writes is written to its end, whatever comes in between.
    bool endsCatalogue = false;
};

void properties(World& world)
{
    Root& root = world.root();
    showEigenschaften(root);
    world.describes = true;
    root.eigenschaften->tBeschreibung.Text = u"Anders"_s;
    root.eigenschaften->BReady.Click();
}

/// The clipboard holds the new track, and the tracks are the active list.
void copyNewTrack(World& world)
{
    world.addsTrack();
    world.root().mnuEditCopy.Tag = u"2"_s;
    world.desktop.clipboard.copied = {u"/m/neu.mp3"_s};
}

void search(World& world)
{
    Root& root = world.root();
    root.mnuSuchen.Click();
    root.suchen->Text1.Text = u"nirgends"_s;
    root.suchen->Text1.Change();
    root.suchen->CSuchen.Click();
}

/// The finder over the folder of the new track, behind a run of the index.
void find(World& world, const QString& folder, int type)
{
    Root& root = world.root();
    world.desktop.forms().whileModal(u"FindAudio"_s, [&world, &root, folder, type](Form& form) {
        if (type != FindAudio::Playlists)
            world.addsTrack();
        root.findAudio->TDrives.Text = folder;
        root.findAudio->LFindType.ListIndex = type;
        root.findAudio->Command1.Click();
        root.findAudio->BReady.Click();
        if (form.Visible.value())
            root.services.forms.unload(form);
    });
    root.mnuAddFolder.Click();
}

/// The newest version of all is that of the file, with an empty line more.
void bringBack(World& world, const QString& path)
{
    MemoryFiles& disk = *world.desktop.memory();
    disk.AllKept.append({path, disk.Clock(), {}, disk.bytes(path).value_or(QByteArray()) + "\r\n"});
    world.desktop.forms().whileModal(u"Fassungen"_s, [&world](Form& form) {
        world.root().fassungen->bZurückholen.Click();
        if (form.Visible.value())
            world.desktop.forms().unload(form);
    });
    world.root().mnuFassungen.Click();
}

/// The commands that wait.
const std::vector<Deed> Commands{
    {"open", [](World& w) { w.click(2); }},
    {"save", [](World& w) { w.root().mnuSpeichern.Click(); }},
    {"save tracks", [](World& w) { w.root().mnuFileSave.Click(); }},
    {"new", [](World& w) { w.root().mnuNeu.Click(); }},
    {"import", [](World& w) { w.root().mnuDurchsuchen.Click(); }},
    {"remove",
     [](World& w) {
         w.removesList = true;
         w.root().mnuLöschen.Click();
     },
     true},
    {"rename", [](World& w) { w.root().mnuUmbenennen.Click(); }},
    {"describe",
     [](World& w) {
         w.describes = true;
         w.root().mnuBeschriftung.Click();
     }},
    {"step down", [](World& w) { w.root().mnuVerschiebung[2].Click(); }, true},
    {"order",
     [](World& w) {
         w.desktop.forms().whileModal(u"Positionen"_s, [&w](Form&) {
             Positionen& form = *w.root().positionen;
             form.LSortView.move(0, 2);
             form.BReady.Click();
             if (form.Visible.value())
                 w.desktop.forms().unload(form);
         });
         w.root().mnuVerschiebung[4].Click();
     },
     true},
    {"reload", [](World& w) { w.root().mnuLaden.Click(); }},
    {"filter",
     [](World& w) {
         w.root().mnuFavoritenShow.Click();
         w.root().mnuFavoritenShow.Click();
     }},
    {"sort", [](World& w) { w.root().mnuSortierung[1].Click(); }},
    {"move track", [](World& w) { w.root().mnuMoveEntry[2].Click(); }},
    {"remove track",
     [](World& w) {
         w.removesTrack = true;
         w.root().mnuFileKill.Click();
     }},
    {"add folder",
     [](World& w) {
         w.addsTrack();
         w.desktop.forms().whileModal(u"Ordner"_s, [&w](Form& form) {
             w.root().tBrowseFolder.Text = u"/neu"_s;
             w.root().tBrowseFolder.Tag = u"1"_s;
             w.desktop.forms().unload(form);
         });
         w.root().mnuAddSounds.Click();
     }},
    {"paste",
     [](World& w) {
         copyNewTrack(w);
         w.root().mnuEditPaste.Click();
     }},
    {"drop tracks",
     [](World& w) {
         w.addsTrack();
         w.root().LListView2.Drop({u"/m/neu.mp3"_s});
     }},
    {"drop folder", [](World& w) { w.root().LListView1.Drop({u"/neu"_s}); }},
    {"drop list", [](World& w) { w.root().LListView1.Drop({u"/fremd/Fremd.m3u"_s}); }},
    {"export",
     [](World& w) {
         w.root().mnuSpeichernUnter.Click();
         // The link goes where the user says.
         w.removesList = true;
     }},
    {"names by tag", [](World& w) { w.root().mnuSetTagName.Click(); }},
    {"names by tag behind a tip",
     [](World& w) {
         w.tip();
         w.root().mnuSetTagName.Click();
     }},
    {"name by tag", [](World& w) { w.root().mnuGetIDTag.Click(); }},
    {"check lists",
     [](World& w) {
         w.desktop.forms().whileModal(u"ErrorListe"_s, [&w](Form& form) { w.desktop.forms().unload(form); });
         w.root().mnuCheckPlaylists.Click();
     }},
    {"remap",
     [](World& w) {
         w.remaps = true;
         w.desktop.forms().whileModal(u"FolderCheck"_s, [&w](Form& shown) {
             FolderCheck& form = *w.root().folderCheck;
             form.tFolderOld.Text = u"/m/"_s;
             form.tFolderNew.Text = u"/n/"_s;
             form.BReady.Click();
             if (shown.Visible.value())
                 w.desktop.forms().unload(shown);
         });
         w.root().mnuFolderCheck.Click();
     }},
    {"recycle", [](World& w) { w.root().mnuRecycle.Click(); }},
    {"back up",
     [](World& w) {
         w.desktop.choosers.save(u"/fremd/x.zip"_s);
         w.root().mnuDbSicherungen.Click();
     }},
    {"restore",
     [](World& w) {
         QList<FakeArchive::Packed> entries;
         for (const QString& name : {u"Alpha.m3u"_s, u"Beta.m3u"_s, u"Gamma.m3u"_s, u"Orvantine.dat"_s}) {
             FakeArchive::Packed one;
             one.entry.name = name;
             const QString folder = name.endsWith(u"m3u"_s) ? u"Playlisten/"_s : QString();
             one.bytes = w.desktop.memory()->bytes(w.data() + folder + name).value_or(QByteArray());
             one.entry.size = one.entry.packedSize = one.bytes.size();
             entries.append(one);
         }
         w.desktop.memory()->put(u"/fremd/x.zip"_s, FakeArchive::packed(entries));
         w.desktop.choosers.open(u"/fremd/x.zip"_s);
         w.root().mnuDbWiederherstellung.Click();
     }},
    {"restore the copy", [](World& w) { w.root().mnuWiederherstellen.Click(); }},
    {"reset",
     [](World& w) {
         w.removesList = true;
         w.desktop.memory()->put(w.desktop.folders.program + u"/Laubfeger.dll"_s, "x");
         w.desktop.launcher.ExitCode = [&w] {
             for (const QString& name : {u"Alpha"_s, u"Beta"_s, u"Gamma"_s})
                 w.desktop.disk().remove(w.listPath(name));
             w.desktop.disk().writeBytes(w.data() + u"Orvantine.dat"_s, {});
             return std::optional(0);
         };
         w.desktop.messages.answer(Answer::Ok);
         w.desktop.messages.answer(Answer::No);
         w.root().mnuDeleteDatabase.Click();
     }},
    {"bring a list back", [](World& w) { bringBack(w, w.listPath(u"Alpha"_s)); }},
    {"bring the database back", [](World& w) { bringBack(w, w.data() + u"Orvantine.dat"_s); }},
    {"transfer list", [](World& w) { w.root().mnuHandling[1].Click(); }},
    {"transfer track", [](World& w) { w.root().mnuHandling[4].Click(); }},
    {"pack and go", [](World& w) { w.root().mnuPackGo.Click(); }},
    {"play", [](World& w) { w.root().LListView1.DblClick(); }},
    {"search", search},
    {"find tracks", [](World& w) { find(w, u"/neu"_s, FindAudio::NamesAndFolders); }},
    {"find lists", [](World& w) { find(w, u"/fremd"_s, FindAudio::Playlists); }},
    {"welcome",
     [](World& w) {
         Dialoge& form = *w.root().dialoge;
         w.desktop.forms().show(form);
         form.bButton[2].Click();
         form.tOrdner.Text = u"/neu"_s;
         form.bButton[2].Click();
         form.play.Value = false;
         form.bButton[2].Click();
     }},
    {"other player",
     [](World& w) {
         w.root().pSoundPlayer.Click();
         w.root().mnuOpenMediaplayerEx[2].Click();
     }},
    {"rip", [](World& w) { w.root().mnuAddCDs.Click(); }},
    {"update", [](World& w) { w.root().mnuUpdates.Click(); }},
};

/// What comes in meanwhile.
const std::vector<Deed> Interruptions{
    {"open another list", [](World& w) { w.click(3); }},
    {"Ctrl+S", [](World& w) { w.root().mnuSpeichern.press(); }},
    {"new list", [](World& w) { w.root().mnuNeu.press(); }},
    {"remove",
     [](World& w) {
         w.removesList = true;
         w.root().mnuLöschen.press();
     }},
    {"remove track",
     [](World& w) {
         w.removesTrack = true;
         w.root().mnuFileKill.press();
     }},
    {"move track", [](World& w) { w.root().mnuMoveEntry[2].press(); }},
    {"step down", [](World& w) { w.root().mnuVerschiebung[2].press(); }},
    {"rename", [](World& w) { w.root().mnuUmbenennen.press(); }},
    {"sort", [](World& w) { w.root().mnuSortierung[1].press(); }},
    {"reload", [](World& w) { w.root().mnuLaden.press(); }},
    {"play", [](World& w) { w.root().pSoundPlayer.Click(); }},
    {"stop", [](World& w) { w.root().pStopPlayer.Click(); }},
    {"filter",
     [](World& w) {
         w.root().mnuFavoritenShow.press();
         w.root().mnuFavoritenShow.press();
     }},
    {"properties", properties},
    {"drop",
     [](World& w) {
         w.addsTrack();
         w.root().LListView2.Drop({u"/m/neu.mp3"_s});
     }},
    {"save tracks", [](World& w) { w.root().mnuFileSave.press(); }},
    {"sort by a head", [](World& w) { w.root().LListView2.ColumnClick(3); }},
    {"paste",
     [](World& w) {
         copyNewTrack(w);
         w.root().mnuEditPaste.press();
     }},
    {"recycle", [](World& w) { w.root().mnuRecycle.press(); }},
    {"transfer", [](World& w) { w.root().mnuHandling[1].press(); }},
    {"search", search},
    {"files from a file manager",
     [](World& w) {
         w.addsTrack();
         if (w.desktop.instance.TakesFiles())
             w.desktop.instance.Handed({u"/m/neu.mp3"_s});
     }},
    {"tick", [](World& w) { w.root().Timer2.Tick(); }},
    {"close", [](World& w) { Form_QueryUnload(w.root()); }},
    {"end", [](World& w) { w.root().mnuBeenden.press(); }},
};

/// Where a command can be interrupted.
struct Points
{
    int yields = 0;
    int boxes = 0;
    bool pauses = false;
};

Points pointsOf(const Deed& command)
{
    World world;
    const int yields = world.desktop.events().yields();
    const auto start = world.desktop.events().elapsed();
    command.run(world);
    EXPECT_EQ("", world.faults().join(u'\n').toStdString()) << command.name << ", by itself";
    return {.yields = world.desktop.events().yields() - yields,
            .boxes = world.boxes(),
            .pauses = world.desktop.events().elapsed() > start};
}

/// Behind the end of the program nothing is shown, started or written, but for the catalogue of a command that brings
/// it to its end.
QStringList lateDeeds(World& world, const Deed& command)
{
    QStringList late;
    const QStringList lines = world.desktop.log.lines();
    const QStringList actions = LoggingFiles::actions();
    const qsizetype end = lines.indexOf(u"events.endProcess"_s);
    for (qsizetype i = end + 1; end >= 0 && i < lines.size(); ++i) {
        const QString& line = lines[i];
        const bool acts = std::any_of(actions.begin(), actions.end(),
                                      [&line](const QString& action) { return line.startsWith(action); });
        if (line.startsWith(u"messages.") || line.startsWith(u"choosers.") || line.startsWith(u"forms.showModal") ||
            (acts && !(command.endsCatalogue && line.contains(u"Orvantine.dat"_s))))
            late += line;
    }
    return late;
}

class Reentrance : public testing::TestWithParam<std::size_t>
{
protected:
    static void check(World& world, const Deed& command, const std::string& where)
    {
        EXPECT_EQ("", world.faults().join(u'\n').toStdString()) << where;
        EXPECT_EQ("", lateDeeds(world, command).join(u'\n').toStdString()) << where;
    }
};

} // namespace

TEST_P(Reentrance, NoInterruptionCostsAListOrLeavesAWait)
{
    const Deed& command = Commands[GetParam()];
    const Points points = pointsOf(command);
    ASSERT_GT(points.yields + points.boxes, 0) << command.name;
    // Under the sanitizers, and in a command that yields at each track, each yield is tried with some of the others
    // only.
    constexpr int ManyYields = 100;
    const int step =
        std::max(1, qEnvironmentVariableIntValue("ORVANTINE_SWEEP_STEP")) * (points.yields > ManyYields ? 5 : 1);
    int tried = 0;
    for (const Deed& other : Interruptions) {
        for (int yield = 1; yield <= points.yields; ++yield) {
            if (++tried % step != 0)
                continue;
            World world;
            world.desktop.events().atYield(yield, [&] { other.run(world); });
            command.run(world);
            check(world, command,
                  std::string(other.name) + " in yield " + std::to_string(yield) + " of " + command.name);
        }
        for (int box = 1; box <= points.boxes; ++box) {
            World world;
            world.atBox(box, [&] { other.run(world); });
            command.run(world);
            check(world, command, std::string(other.name) + " in box " + std::to_string(box) + " of " + command.name);
        }
        if (points.pauses) {
            World world;
            world.desktop.events().after(std::chrono::milliseconds{500}, [&] { other.run(world); });
            command.run(world);
            check(world, command, std::string(other.name) + " in the pause of " + command.name);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Commands, Reentrance, testing::Range(std::size_t{0}, Commands.size()),
                         [](const testing::TestParamInfo<std::size_t>& param) {
                             std::string name = Commands[param.param].name;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });

} // namespace orvantine::fake
