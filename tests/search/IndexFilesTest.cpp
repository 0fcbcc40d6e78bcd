#include "search/IndexFiles.h"

#include "app/DataFolder.h"
#include "app/Registry.h"
#include "playback/PlaybackWorld.h"
#include "shell/Shutdown.h"
#include "transfer/Kopieren.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Erste", "Zweite" and "Dritte" with two tracks, "Einzeln" with one; "Zweite" is open, its second track selected.
class Index : public PlaybackWorld
{
protected:
    Index()
    {
        startPlayback();
        click(2);
        tracks().select(2);
        forgetCalls();
    }
    [[nodiscard]] std::string index()
    {
        return QString::fromUtf8(bytes(indexFile(root()))).replace(u"\r\n"_s, u"|"_s).toStdString();
    }
    [[nodiscard]] int check(const QByteArray& file, const QString& text)
    {
        put(indexFile(root()), file);
        return PlaylistIndex(root()).CheckPlaylistFile(text);
    }
    /// What is switched off meanwhile, and what is seen of it.
    [[nodiscard]] std::string frozen()
    {
        QStringList off;
        if (!catalogue().Enabled)
            off += u"catalogue"_s;
        if (!tracks().Enabled)
            off += u"tracks"_s;
        if (!root().pCovers.Enabled)
            off += u"cover"_s;
        if (!root().Timer2.Enabled)
            off += u"timer"_s;
        if (!root().mnuErrorDisplay.Checked)
            off += u"errors"_s;
        return (off.join(u' ') + u", tag "_s + root().Tag).toStdString();
    }
};

const std::string Whole =
    "/m/Erste 1.mp3|/m/Erste 2.mp3|/m/Zweite 1.mp3|/m/Zweite 2.mp3|/m/Dritte 1.mp3|/m/Dritte 2.mp3|/m/Einzeln 1.mp3|";

} // namespace

TEST_F(Index, HoldsThePathOfEachTrackInTheOrderOfTheLists)
{
    SetIndexFile(root());
    EXPECT_EQ(Whole, index());
    EXPECT_EQ("", boxes());
}

TEST_F(Index, IsMadeAnewEachTime)
{
    put(indexFile(root()), "alt\r\n");
    SetIndexFile(root());
    EXPECT_EQ(Whole, index());
    SetIndexFile(root());
    EXPECT_EQ(Whole, index());
}

TEST_F(Index, OfAnEmptyCatalogueIsNoFile)
{
    catalogue().clear();
    put(indexFile(root()), "alt\r\n");
    SetIndexFile(root());
    EXPECT_EQ("(missing)", index());
}

TEST_F(Index, KeepsAPathThatStandsSeveralTimes)
{
    putList(u"Zweite"_s, {u"/m/Erste 1.mp3"_s, u"/m/Erste 1.mp3"_s});
    SetIndexFile(root());
    EXPECT_EQ("/m/Erste 1.mp3|/m/Erste 2.mp3|/m/Erste 1.mp3|/m/Erste 1.mp3|/m/Dritte 1.mp3|/m/Dritte 2.mp3|"
              "/m/Einzeln 1.mp3|",
              index());
}

TEST_F(Index, AStopAfterTheFirstTrackLeavesAValidShortFile)
{
    // One yield in front of the first pause; the others follow the reading.
    for (int yield = 1; yield <= 30 && root().Tag != u"x"_s; ++yield) {
        bool first = false;
        desktop.events().atYield(yield, [&] {
            first = root().tPlaylisteinträge.Caption.value() == u"Erste"_s && tracks().selectedRow() == 1 &&
                    tracks().Enabled == false;
            if (first)
                root().kopieren->bAbbrechen.Click();
        });
        SetIndexFile(root());
        if (index() == "/m/Erste 1.mp3|")
            root().Tag = u"x"_s;
        else
            EXPECT_TRUE(index() == Whole || index() == "(missing)") << index();
    }
    EXPECT_EQ("x", root().Tag.toStdString());
    EXPECT_EQ(1, PlaylistIndex(root()).CheckPlaylistFile(u"/m/Erste 1.mp3"_s));
    EXPECT_EQ(0, PlaylistIndex(root()).CheckPlaylistFile(u"/m/Erste 2.mp3"_s));
    EXPECT_EQ(u"Zweite"_s, root().tPlaylisteinträge.Caption.value());
}

TEST_F(Index, SwitchesOffWhatDisturbsAndGivesItBack)
{
    root().mnuErrorDisplay.Checked = true;
    QStringList seen;
    for (int yield = 2; yield <= 14; ++yield)
        desktop.events().atYield(yield, [&] { seen += QString::fromStdString(frozen()); });
    desktop.events().atYield(15, [&] {
        EXPECT_EQ(" Katalogisierung", root().kopieren->Caption.value().toStdString());
        EXPECT_EQ("Bitte warten Sie, bis die Indexerstellung vollständig abgeschlossen wurde.",
                  root().kopieren->Label2.Caption.value().toStdString());
        EXPECT_TRUE(root().kopieren->Visible);
    });
    SetIndexFile(root());
    EXPECT_TRUE(seen.contains(u"catalogue tracks cover timer errors, tag 0"_s)) << lines(seen);
    // Inside a reading its own end is seen.
    seen.removeAll(u"cover timer errors, tag 0"_s);
    seen.removeDuplicates();
    EXPECT_EQ("catalogue tracks cover timer errors, tag 0", lines(seen));
    EXPECT_EQ(", tag 0", frozen());
    EXPECT_FALSE(root().kopieren->Visible);
    EXPECT_FALSE(root().pCopyStatus.Visible);
}

TEST_F(Index, EndsWithTheRememberedRowsSelectedAndLoaded)
{
    SetIndexFile(root());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("Zweite", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ(2, tracks().selectedRow());
}

TEST_F(Index, WaitsOneSecondAtItsBeginningAndTwoAtItsEnd)
{
    const auto start = desktop.events().elapsed();
    std::string status;
    desktop.events().after(std::chrono::milliseconds{1500}, [&] {
        status = root().tCopyStatus.Caption.value().toStdString() + (root().pCopyStatus.Visible ? " seen " : " ") +
                 (root().pDateiname.Visible ? "seen " : "") + root().Tag.toStdString();
    });
    SetIndexFile(root());
    EXPECT_EQ(3000, (desktop.events().elapsed() - start).count());
    EXPECT_EQ("Dateien werden indiziert. seen seen 1", status);
}

TEST_F(Index, AStoppedRunDoesNotWaitAtItsEnd)
{
    const auto start = desktop.events().elapsed();
    desktop.events().after(std::chrono::milliseconds{500}, [&] { root().kopieren->KeyDown(27); });
    SetIndexFile(root());
    EXPECT_EQ(1000, (desktop.events().elapsed() - start).count());
    EXPECT_EQ("(missing)", index());
}

TEST_F(Index, AListWhoseFileIsGoneAsksNothingAndAddsNothing)
{
    root().mnuErrorDisplay.Checked = true;
    desktop.disk().remove(listPath(u"Erste"_s));
    SetIndexFile(root());
    EXPECT_EQ("", boxes());
    EXPECT_EQ("/m/Zweite 1.mp3|/m/Zweite 2.mp3|/m/Dritte 1.mp3|/m/Dritte 2.mp3|/m/Einzeln 1.mp3|", index());
}

TEST_F(Index, TheEndOfTheProgramLeavesAWholeFile)
{
    for (int yield = 1; yield < 12; ++yield) {
        desktop.newProcess();
        desktop.start();
        desktop.events().atYield(yield, [&] { root().services.events.endProcess(); });
        SetIndexFile(root());
        const std::string found = index();
        EXPECT_TRUE(found == "(missing)" || (Whole.starts_with(found) && found.ends_with("|"))) << yield << found;
    }
}

TEST_F(Index, AWindowThatIsClosedMeanwhileStoresWhatTheUserHadChosen)
{
    for (int yield = 1; yield < 12; ++yield) {
        SCOPED_TRACE(yield);
        desktop.newProcess();
        setting(u"Error"_s, dwordSetting(1));
        setting(u"Index"_s, dwordSetting(2));
        desktop.start();
        desktop.events().atYield(yield, [&] { Form_QueryUnload(root()); });
        SetIndexFile(root());
        EXPECT_TRUE(desktop.events().ended());
        EXPECT_TRUE(readSetting(root(), u"Error"_s).is(1));
        EXPECT_TRUE(readSetting(root(), u"Index"_s).is(2));
    }
}

TEST_F(Index, WhatTheUserSwitchesOnMeanwhileStaysOn)
{
    root().mnuErrorDisplay.Checked = false;
    desktop.events().atYield(5, [&] { root().mnuErrorDisplay.Checked = true; });
    SetIndexFile(root());
    EXPECT_TRUE(root().mnuErrorDisplay.Checked.value());
}

TEST_F(Index, AFailedWriteIsToldAndLeavesWholeLines)
{
    desktop.log.failNext(u"files.appendBytes"_s);
    SetIndexFile(root());
    EXPECT_EQ("/m/Zweite 1.mp3|/m/Zweite 2.mp3|/m/Dritte 1.mp3|/m/Dritte 2.mp3|/m/Einzeln 1.mp3|", index());
}

TEST_F(Index, ManyTracksAreAllThere)
{
    QStringList paths;
    std::string expected;
    for (int i = 0; i < 200; ++i) {
        paths += putTrack(u"Lied %1"_s.arg(i));
        expected += paths.last().toStdString() + '|';
    }
    putList(u"Erste"_s, paths);
    SetIndexFile(root());
    EXPECT_TRUE(index().starts_with(expected));
}

TEST_F(Index, AnswersForAPathIgnoringCase)
{
    EXPECT_EQ(1, check("/m/Erste 1.mp3\r\n/m/ÄRGER.mp3\r\n", u"/M/ERSTE 1.MP3"_s));
    EXPECT_EQ(1, check("/m/Erste 1.mp3\r\n/m/ÄRGER.mp3\r\n", u"/m/ärger.mp3"_s));
    EXPECT_EQ(0, check("/m/Erste 1.mp3\r\n", u"/m/Erste 2.mp3"_s));
}

TEST_F(Index, AnswersForAPathWhateverItsSeparatorsAndItsNormalForm)
{
    EXPECT_EQ(1, check("C:\\M\\eins.mp3\r\n", u"c:/m/Eins.mp3"_s));
    EXPECT_EQ(1, check("/m/\xC3\xBC.mp3\r\n", u"/m/u\u0308.mp3"_s));
}

TEST_F(Index, AShortTextMatchesInsideALongerPath)
{
    EXPECT_EQ(1, check("/m/Erste 1.mp3\r\n", u"erste"_s));
    EXPECT_EQ(1, check("/musik/von/hier/Erste 1.mp3\r\n", u"von/hier/erste 1.mp3"_s));
    EXPECT_EQ(0, check("/musik/von/hier/Erste 1.mp3\r\n", u"von/hier/andere 1.mp3"_s));
}

TEST_F(Index, IsReadLessItsLastTwoCharacters)
{
    EXPECT_EQ(0, check("", u"x"_s));
    EXPECT_EQ(0, check("x", u"x"_s));
    EXPECT_EQ(0, check("xy", u"x"_s));
    EXPECT_EQ(1, check("xyz", u"x"_s));
    EXPECT_EQ(0, check("xyz", u"y"_s));
}

TEST_F(Index, AMissingOrUnreadableOneHoldsNothing)
{
    EXPECT_EQ(0, PlaylistIndex(root()).CheckPlaylistFile(u"/m/Erste 1.mp3"_s));
    putFolder(indexFile(root()));
    EXPECT_EQ(0, PlaylistIndex(root()).CheckPlaylistFile(u"/m/Erste 1.mp3"_s));
}

TEST_F(Index, AFolderOfItsNameStaysAndTheRunGoesOn)
{
    putFolder(indexFile(root()));
    SetIndexFile(root());
    EXPECT_TRUE(desktop.disk().isFolder(indexFile(root())));
    EXPECT_EQ(2, catalogue().selectedRow());
}

TEST_F(Index, AStopIsNotTakenBackByThePlayer)
{
    desktop.events().after(std::chrono::milliseconds{500}, [&] {
        root().kopieren->bAbbrechen.Click();
        root().Tag = u"0"_s; // as a stop of the player leaves it
    });
    SetIndexFile(root());
    EXPECT_NE(Whole, index());
}

} // namespace orvantine::fake
