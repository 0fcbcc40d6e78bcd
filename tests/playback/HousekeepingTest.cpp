#include "playback/PlaySingleTrack.h"
#include "playback/PlaybackWorld.h"

#include "playback/PlayerControl.h"
#include "playback/Timer2.h"
#include "shell/MainWindow.h"
#include "shell/Timer3.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Housekeeping : public PlaybackWorld
{
protected:
    void SetUp() override
    {
        startPlayback();
        root().Timer2.Enabled = false;
    }

    /// The commands that follow the catalogue.
    QList<Control*> followers()
    {
        return {&root().mnuEigenschaften,
                &root().mnuAddSounds,
                &root().mnuUmbenennen,
                &root().mnuBeschriftung,
                &root().mnuLöschen,
                &root().mnuVerschiebung[1],
                &root().mnuVerschiebung[2],
                &root().mnuVerschiebung[3],
                &root().mnuHandling[1],
                &root().mnuHandling[2],
                &root().mnuHandling[3],
                &root().mnuHandling[4],
                &root().mnuHandling[5],
                &root().mnuHandling[6],
                &root().mnuSortierung[1],
                &root().mnuSortierung[2],
                &root().mnuSortierung[3],
                &root().mnuWiedergabe,
                &root().mnuSpeichernUnter,
                &root().mnuSpeichern,
                &root().mnuLaden,
                &root().mnuSuchen,
                &root().mnuFavoriten,
                &root().mnuFavoritenShow,
                &root().mnuCheckPlaylists,
                &root().mnuFolderCheck,
                &root().mnuPackGo,
                &root().mnuDbSicherungen,
                &root().mnuOpenMediaplayerEx[1],
                &root().mnuOpenMediaplayerEx[2],
                &root().mnuEingangsordner,
                &root().mnuCopyTrack,
                &root().mnuSetTagName,
                &root().mnuMoveEntry[1],
                &root().mnuMoveEntry[2],
                &root().mnuDateiEigenschaften,
                &root().mnuGetIDTag,
                &root().mnuFileKill,
                &root().mnuFileSave,
                &root().mnuFileProperties,
                &root().mnxBearbeitenEx[1],
                &root().mnxBearbeitenEx[2],
                &root().mnxBearbeiten[1],
                &root().mnxBearbeiten[2],
                &root().mnxBearbeiten[3],
                &root().mnxBearbeiten[4],
                &root().pSymbole,
                &root().pSoundPlayer};
    }
};

} // namespace

TEST_F(Housekeeping, TheCommandsFollowTheCatalogue)
{
    for (const bool any : {true, false}) {
        SCOPED_TRACE(any ? "rows" : "no rows");
        for (Control* control : followers())
            control->Enabled = !any;
        root().pPausePlayer.Enabled = false;
        root().pHinweistext.Visible = any;
        if (!any)
            catalogue().clear();
        Timer2_Tick(root());
        for (const Control* control : followers())
            EXPECT_EQ(any, control->Enabled.value()) << control->fullName().toStdString();
        EXPECT_EQ(!any, root().pHinweistext.Visible.value());
    }
}

TEST_F(Housekeeping, AFilterThatLeavesNoRowCanStillBeTakenOff)
{
    root().mnuFavoriten.Click();
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(0, catalogue().count());
    Timer2_Tick(root());
    EXPECT_TRUE(root().mnuFavoritenShow.Enabled.value());
    EXPECT_FALSE(root().mnuFavoriten.Enabled.value());
    root().mnuFavoritenShow.Click();
    EXPECT_EQ(4, catalogue().count());
    catalogue().clear();
    Timer2_Tick(root());
    EXPECT_FALSE(root().mnuFavoritenShow.Enabled.value());
}

TEST_F(Housekeeping, CommandsWithoutTheCatalogueAreLeftAlone)
{
    catalogue().clear();
    Timer2_Tick(root());
    for (const Control* control :
         QList<Control*>{&root().mnuNeu, &root().mnuDurchsuchen, &root().mnuBeenden, &root().mnuHandling[7],
                         &root().mnuVerschiebung[4], &root().mnuSetFileName, &root().mnuHilfe, &root().mnxBearbeiten[5],
                         &root().mnxBearbeiten[6], &root().mnuOptionen})
        EXPECT_TRUE(control->Enabled.value()) << control->fullName().toStdString();
}

TEST_F(Housekeeping, ThePlayButtonStaysOffWhileThePauseButtonIsOn)
{
    pSoundPlayer_Click(root());
    Timer2_Tick(root());
    EXPECT_FALSE(root().pSoundPlayer.Enabled.value());
    EXPECT_TRUE(root().pPausePlayer.Enabled.value());
    EXPECT_TRUE(root().pPlayBack.Enabled.value());
    EXPECT_TRUE(root().pPlayForward.Enabled.value());
    pStopPlayer_Click(root());
    Timer2_Tick(root());
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
    EXPECT_FALSE(root().pPlayBack.Enabled.value());
    EXPECT_FALSE(root().pPlayForward.Enabled.value());
}

TEST_F(Housekeeping, ThePlaybackMenuShowsFromTwoItemsOn)
{
    Timer2_Tick(root());
    EXPECT_FALSE(root().mnuSoundplayerExt.Visible.value());
    pSoundPlayer_Click(root());
    Timer2_Tick(root());
    EXPECT_TRUE(root().mnuSoundplayerExt.Visible.value());
    playSingleTrack(root());
    Timer2_Tick(root());
    EXPECT_FALSE(root().mnuSoundplayerExt.Visible.value());
}

TEST_F(Housekeeping, AColumnBelow500GoesBackToItsCreationWidthAndAHiddenOneStaysHidden)
{
    struct Case
    {
        const char* name;
        bool trackCounts, paths, files;
        const char* catalogue;
        const char* tracks;
    };
    const char* const whole = "1 \"ID\" 0\n2 \"Name\" 2800\n3 \"Path\" 0\n4 \"Tracks\" 900";
    const char* const paths = "1 \"ID\" 0\n2 \"Track\" 800\n3 \"Name\" 3600\n4 \"Path\" 2900\n5 \"Datei\" 0";
    for (const Case& c : {Case{"paths", true, true, false, whole, paths},
                          Case{"file names", true, false, true, whole,
                               "1 \"ID\" 0\n2 \"Track\" 800\n3 \"Name\" 3600\n4 \"Path\" 0\n5 \"Datei\" 2200"},
                          Case{"neither", true, false, false, whole,
                               "1 \"ID\" 0\n2 \"Track\" 800\n3 \"Name\" 3600\n4 \"Path\" 0\n5 \"Datei\" 0"},
                          Case{"no track counts", false, true, false,
                               "1 \"ID\" 0\n2 \"Name\" 2800\n3 \"Path\" 0\n4 \"Tracks\" 0", paths}}) {
        root().mnuTrackShow.Checked = c.trackCounts;
        root().mnuOrvmenu[1].Checked = c.paths;
        root().mnuOrvmenu[2].Checked = c.files;
        for (const Twips drawn : {0, 15, 499}) {
            SCOPED_TRACE(std::string(c.name) + ' ' + std::to_string(drawn));
            for (int column = 1; column <= 4; ++column)
                catalogue().setColumnWidth(column, drawn);
            for (int column = 1; column <= 5; ++column)
                tracks().setColumnWidth(column, drawn);
            Timer2_Tick(root());
            EXPECT_EQ(c.catalogue, lines(columnLines(catalogue())));
            EXPECT_EQ(c.tracks, lines(columnLines(tracks())));
        }
    }
    catalogue().setColumnWidth(2, 500);
    Timer2_Tick(root());
    EXPECT_EQ(500, catalogue().columnWidth(2));
}

TEST_F(Housekeeping, ADescriptionOf161CharactersStaysAsTheReadingPutIt)
{
    for (const int length : {160, 161, 250}) {
        SCOPED_TRACE(length);
        const QString description(length, u'x');
        desktop.profiles().setValue(database(), u"Index"_s, u"2e"_s, description);
        click(1);
        click(2);
        for (int pass = 1; pass <= 10; ++pass) {
            Timer2_Tick(root());
            ASSERT_EQ(description.toStdString(), root().LSoundCaption.Caption.value().toStdString()) << pass;
            ASSERT_TRUE(root().LSoundCaption.Visible.value()) << pass;
            ASSERT_EQ("1", root().LSoundCaption.Tag.toStdString()) << pass;
        }
    }
}

TEST_F(Housekeeping, ADescriptionThatTheReadingHasNotPutIsNoneOf161Characters)
{
    for (const int length : {161, 160}) {
        desktop.profiles().setValue(database(), u"Index"_s, u"1e"_s, QString(length, u'x'));
        root().LSoundCaption.Caption = u"vorher"_s;
        Timer2_Tick(root());
        EXPECT_EQ(length == 161 ? 6 : 160, root().LSoundCaption.Caption.value().size());
    }
}

TEST_F(Housekeeping, TheMarkOfTheCaptionTellsADescriptionFromAHint)
{
    const auto mark = [this] {
        Timer2_Tick(root());
        return root().LSoundCaption.Tag.toStdString();
    };
    root().LSoundCaption.Tag = u"0"_s;
    desktop.profiles().setValue(database(), u"Index"_s, u"1e"_s, u"Für die Fahrt"_s);
    EXPECT_EQ("1", mark());
    desktop.profiles().setValue(database(), u"Index"_s, u"1e"_s, QString());
    tracks().clear();
    EXPECT_EQ("0", mark());
    root().LSoundCaption.Tag = u"1"_s;
    catalogue().clear();
    EXPECT_EQ("0", mark());
}

TEST_F(Housekeeping, AMoveKeepsTheDescriptionOfItsRow)
{
    desktop.profiles().setValue(database(), u"Index"_s, u"1e"_s, u"Für die Fahrt"_s);
    root().LSoundCaption.Caption = u"Für daheim"_s;
    for (const bool moving : {true, false}) {
        root().bMoveDown.Tag = moving ? u"1"_s : u"0"_s;
        Timer2_Tick(root());
        EXPECT_EQ(moving ? "Für daheim" : "Für die Fahrt", root().LSoundCaption.Caption.value().toStdString());
    }
}

TEST_F(Housekeeping, WithoutACatalogueTheDatabaseIsNotAskedForADescription)
{
    catalogue().clear();
    forgetCalls();
    Timer2_Tick(root());
    EXPECT_EQ("files.exists \"\"", calls({u"files."_s})) << "the ripper alone";
}

TEST_F(Housekeeping, NothingRunsBehindTheEndOfTheProgram)
{
    playSingleTrack(root());
    player().pretendEnded();
    root().LListenCaption.Caption = u"vorher"_s;
    desktop.events().after(std::chrono::milliseconds{500}, [&] {
        desktop.events().endProcess();
        forgetCalls();
    });
    Timer2_Tick(root());
    EXPECT_EQ("", calls({u"files."_s, u"Mediaplayer."_s}));
    EXPECT_EQ("vorher", root().LListenCaption.Caption.value().toStdString());
}

TEST_F(Housekeeping, TheRipperShowsOnlyWhereItsFileStands)
{
    put(u"/bin/ripper"_s, "x");
    struct Case
    {
        const char* name;
        std::optional<QString> ripper;
        const char* tag;
        bool before, after;
    };
    for (const Case& c :
         {Case{"absent", std::nullopt, "0", true, false}, Case{"missing", u"/bin/weg"_s, "0", true, false},
          Case{"there", u"/bin/ripper"_s, "0", false, true},
          Case{"there, not looked at", u"/bin/ripper"_s, "1", false, false},
          Case{"missing, not looked at", u"/bin/weg"_s, "1", true, true}}) {
        SCOPED_TRACE(c.name);
        if (c.ripper)
            setting(u"Ripper"_s, stringSetting(*c.ripper));
        root().Timer2.Tag = QString::fromLatin1(c.tag);
        root().mnuAddCDs.Visible = c.before;
        root().Trennung0X.Visible = c.before;
        Timer2_Tick(root());
        EXPECT_EQ(c.after, root().mnuAddCDs.Visible.value());
        EXPECT_EQ(c.after, root().Trennung0X.Visible.value());
    }
}

TEST_F(Housekeeping, OfAllThatTheTimersDoOnlyTheRipperTestTouchesTheDisk)
{
    put(u"/bin/ripper"_s, "x");
    setting(u"Ripper"_s, stringSetting(u"/bin/ripper"_s));
    pSoundPlayer_Click(root());
    root().Timer2.Enabled = true;
    run(3000);
    ASSERT_TRUE(root().Timer1.Enabled.value());
    forgetCalls();

    // Ten ticks of the housekeeping and fifteen of the sequence. The values of the database are remembered: whether it
    // was changed by somebody else is all that is asked.
    run(2800);
    QMap<QString, int> counted;
    const QStringList taken = desktop.log.take();
    for (const QString& line : taken)
        if (line.startsWith(u"files."_s))
            ++counted[QString(line).remove(data())];
    QStringList told;
    for (auto call = counted.cbegin(); call != counted.cend(); ++call)
        told += u"%1 %2"_s.arg(call.value()).arg(call.key());
    EXPECT_EQ(lines(told), "10 files.exists \"/bin/ripper\"\n10 files.stamp \"Orvantine.dat\"");
}

TEST_F(Housekeeping, TheCoverMarkFollowsThePane)
{
    for (const bool shown : {true, false}) {
        root().pCoverBack.Visible = shown;
        Timer2_Tick(root());
        EXPECT_EQ(shown, root().mnuCoverShow.Checked.value());
    }
}

TEST_F(Housekeeping, TheDateFollowsTheTwoMarks)
{
    struct Case
    {
        bool date, positions, shown;
    };
    for (const Case& c :
         {Case{true, false, true}, Case{true, true, false}, Case{false, false, false}, Case{false, true, false}}) {
        root().mnuDatumsanzeige.Checked = c.date;
        root().mnuPositionen.Checked = c.positions;
        Timer2_Tick(root());
        EXPECT_EQ(c.shown, root().pDatum.Visible.value()) << c.date << c.positions;
    }
}

TEST_F(Housekeeping, LabelsShowOnlyWhatIsKnown)
{
    struct Case
    {
        const char* title;
        const char* artist;
        const char* bitRate;
        const char* seen;
    };
    for (const Case& c :
         {Case{"Lied", "Wir", "128", "11111 1"}, Case{"", "Wir", "128", "01011 1"}, Case{"Lied", "", "128", "10101 1"},
          Case{"Lied", "Wir", "", "11110 0"}, Case{"", "", "", "00000 0"}}) {
        root().sAnzeige[1].Caption = QString::fromLatin1(c.title);
        root().sAnzeige[2].Caption = QString::fromLatin1(c.artist);
        root().sBitrate.Caption = QString::fromLatin1(c.bitRate);
        Timer2_Tick(root());
        std::string seen;
        for (int label = 1; label <= 5; ++label)
            seen += root().sAnzeige[label].Visible.value() ? '1' : '0';
        seen += root().pMpeg.Visible.value() ? " 1" : " 0";
        EXPECT_EQ(c.seen, seen);
        EXPECT_EQ(c.bitRate, root().sAnzeige[5].Caption.value().toStdString());
    }
}

TEST_F(Housekeeping, TheHintTellsOfTheMovingMode)
{
    root().bMoveDown.Enabled = true;
    Timer2_Tick(root());
    EXPECT_EQ("Verwenden Sie diese Cursor-Schaltflächen zum verschieben der Einträge.",
              root().LListenCaption.Caption.value().toStdString());
    root().bMoveDown.Enabled = false;
    Timer2_Tick(root());
    EXPECT_EQ("Klicken Sie das CD-Symbol um die Wiedergabe der Playliste zu starten.",
              root().LListenCaption.Caption.value().toStdString());
}

TEST_F(Housekeeping, TheDescriptionIsThatOfTheSelectedRowElseAHint)
{
    desktop.profiles().setValue(database(), u"Index"_s, u"1e"_s, u"Für die Fahrt"_s);
    Timer2_Tick(root());
    EXPECT_EQ("Für die Fahrt", root().LSoundCaption.Caption.value().toStdString());

    // The hint is compared by its first 38 characters, so another end stays.
    catalogue().select(2);
    tracks().clear();
    Timer2_Tick(root());
    EXPECT_EQ(
        "Wenn Sie der aktuellen Wiedergabeliste weitere Audiodateien hinzufügen möchten, ziehen Sie die Datei(en) "
        "einfach in die Tabelle mit den Sounddateien.",
        root().LSoundCaption.Caption.value().toStdString());
    root().LSoundCaption.Caption = u"Wenn Sie der aktuellen Wiedergabeliste etwas anderes"_s;
    Timer2_Tick(root());
    EXPECT_EQ("Wenn Sie der aktuellen Wiedergabeliste etwas anderes",
              root().LSoundCaption.Caption.value().toStdString());

    catalogue().clear();
    Timer2_Tick(root());
    EXPECT_EQ("Fügen Sie eine neue Wiedergabeliste hinzu, indem Sie die m3u-Datei in die Orvante ziehen.",
              root().LSoundCaption.Caption.value().toStdString());
}

TEST_F(Housekeeping, ASingleTrackThatEndedIsStoppedAfterASecond)
{
    playSingleTrack(root());
    player().pretendEnded();
    forgetCalls();
    const auto begin = desktop.events().elapsed();
    Timer2_Tick(root());
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_GE((desktop.events().elapsed() - begin).count(), 1000);
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
}

TEST_F(Housekeeping, TheTimersRunAtTheirPeriods)
{
    EXPECT_EQ(180, root().Timer1.Interval.count());
    EXPECT_EQ(280, root().Timer2.Interval.count());
    EXPECT_EQ(400, root().Timer3.Interval.count());
}

TEST_F(Housekeeping, TheUpdateStartsAtTheNinetiethTickAndNotBefore)
{
    const QString setup = desktop.folders.program + u"/Updates/Setup.exe"_s;
    put(setup, "x");
    root().Timer3.Enabled = true;
    run(89 * 400);
    EXPECT_EQ("89", root().Timer3.Tag.toStdString());
    EXPECT_TRUE(root().Timer3.Enabled.value());
    EXPECT_TRUE(desktop.launcher.started.empty());
    run(400);
    EXPECT_FALSE(root().Timer3.Enabled.value());
    ASSERT_EQ(1U, desktop.launcher.started.size());
    EXPECT_EQ(setup.toStdString(), desktop.launcher.started[0].target.toStdString());
    EXPECT_EQ("20.11.2026", desktop.profiles().value(database(), u"Options"_s, u"Update"_s).toStdString());
}

TEST_F(Housekeeping, TheUpdateWaitsThreeSecondsBeforeItStarts)
{
    put(desktop.folders.program + u"/Updates/Setup.exe"_s, "x");
    root().Timer3.Tag = u"89"_s;
    bool started = true;
    desktop.events().after(std::chrono::milliseconds{2990}, [&] { started = !desktop.launcher.started.empty(); });
    Timer3_Tick(root());
    EXPECT_FALSE(started);
    EXPECT_EQ(1U, desktop.launcher.started.size());
}

TEST_F(Housekeeping, WithoutASetupFileNoDateIsWritten)
{
    const QByteArray before = bytes(database());
    root().Timer3.Tag = u"89"_s;
    root().Timer3.Enabled = true;
    Timer3_Tick(root());
    EXPECT_FALSE(root().Timer3.Enabled.value());
    EXPECT_TRUE(desktop.launcher.started.empty());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(Housekeeping, AProgramThatEndsInThoseSecondsStartsNoUpdate)
{
    put(desktop.folders.program + u"/Updates/Setup.exe"_s, "x");
    const QByteArray before = bytes(database());
    root().Timer3.Tag = u"89"_s;
    desktop.events().after(std::chrono::milliseconds{1000}, [&] { desktop.events().endProcess(); });
    Timer3_Tick(root());
    EXPECT_TRUE(desktop.launcher.started.empty());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(Housekeeping, TheButtonsOfTheTransportFollowWhatStoodBeforeTheCommands)
{
    root().pSoundPlayer.Enabled = false;
    Timer2_Tick(root());
    EXPECT_TRUE(root().pPlayBack.Enabled.value());
    EXPECT_TRUE(root().pSoundPlayer.Enabled.value());
    Timer2_Tick(root());
    EXPECT_FALSE(root().pPlayBack.Enabled.value());
    EXPECT_FALSE(root().pPlayForward.Enabled.value());
}

TEST_F(Housekeeping, AHintIsTheSameIfItsFirst38CharactersAre)
{
    tracks().clear();
    for (const auto& [caption, stays] : {std::pair{u"Wenn Sie der aktuellen Wiedergabeliste"_s, true},
                                         std::pair{u"Wenn Sie der aktuellen WiedergabelistX"_s, false}}) {
        ASSERT_EQ(38, caption.size());
        root().LSoundCaption.Caption = caption;
        Timer2_Tick(root());
        EXPECT_EQ(stays, root().LSoundCaption.Caption.value() == caption) << caption.toStdString();
    }
}

} // namespace orvantine::fake
