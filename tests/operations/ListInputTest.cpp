#include "operations/ListInput.h"

#include "playback/PlaybackWorld.h"

#include "playback/PlayerControl.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class ListInput : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    const QString missingText = u"Die folgende Wiedergabeliste ist nicht vorhanden: \n"_s;
};

} // namespace

TEST_F(ListInput, AClickOnTheRowThatIsLoadedDoesNothing)
{
    const std::string before = rows(tracks());
    desktop.disk().remove(listPath(u"Erste"_s));
    catalogue().Click();
    EXPECT_EQ("", lines(desktop.log.take()));
    EXPECT_EQ(before, rows(tracks()));
}

TEST_F(ListInput, AClickWithoutRowsOrWithoutASelectionDoesNothing)
{
    catalogue().clearSelection();
    catalogue().Tag = u"0"_s;
    forgetCalls();
    catalogue().Click();
    EXPECT_EQ("", lines(desktop.log.take()));
    catalogue().clear();
    catalogue().Click();
    EXPECT_EQ("", lines(desktop.log.take()));
}

TEST_F(ListInput, CancelOnAMissingListKeepsTagAndTracks)
{
    const std::string before = rows(tracks());
    desktop.disk().remove(listPath(u"Zweite"_s));
    desktop.messages.answer(Answer::Cancel, u" Zweite"_s, missingText + listPath(u"Zweite"_s));
    click(2);
    EXPECT_EQ("box title \" Zweite\" text \"Die folgende Wiedergabeliste ist nicht vorhanden: \\n" +
                  listPath(u"Zweite"_s).toStdString() + "\" icon exclamation buttons retry-cancel answer cancel",
              boxes());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
    EXPECT_EQ(before, rows(tracks()));
}

TEST_F(ListInput, RetryOnAMissingListLoadsIt)
{
    const QString path = listPath(u"Zweite"_s);
    desktop.disk().remove(path);
    // The stick is in when the user presses Retry.
    desktop.messages.script(
        {.answer = Answer::Retry, .entered = {}, .title = u" Zweite"_s, .text = missingText + path, .meanwhile = [&] {
             putList(u"Zweite"_s, {u"/m/Zweite 1.mp3"_s, u"/m/Zweite 2.mp3"_s});
         }});
    click(2);
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(ListInput, RetryOnAListThatStaysMissingLeavesNoTracks)
{
    desktop.disk().remove(listPath(u"Zweite"_s));
    desktop.messages.answer(Answer::Retry, u" Zweite"_s, missingText + listPath(u"Zweite"_s));
    click(2);
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
}

TEST_F(ListInput, RetryOnAListThatStaysMissingLetsTheReadAskItsOwnQuestion)
{
    root().Visible = true;
    root().mnuErrorDisplay.Checked = true;
    desktop.disk().remove(listPath(u"Zweite"_s));
    desktop.messages.answer(Answer::Retry, u" Zweite"_s, missingText + listPath(u"Zweite"_s));
    desktop.messages.answer(Answer::No, u" Songinformationen"_s,
                            u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \nMöchten Sie "
                            u"jetzt die Wiedergabeliste im Dateisystem auswählen ?"_s);
    click(2);
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ(0, tracks().count());
}

TEST_F(ListInput, TheMarkAndTheCheckOfAFavouriteFollowTheKey)
{
    for (const bool favourite : {true, false}) {
        desktop.profiles().setValue(database(), u"Index"_s, u"2g"_s, favourite ? u"1"_s : u"ja"_s);
        root().mnuFavoriten.Checked = !favourite;
        catalogue().setIcons(2, u"Icon_C"_s);
        catalogue().Tag = u"0"_s;
        click(2);
        EXPECT_EQ(favourite, root().mnuFavoriten.Checked.value());
        EXPECT_EQ(favourite ? "Icon_6 Icon_6 Icon_1 Icon_1" : "Icon_6 Icon_C Icon_1 Icon_1", marks())
            << "only the check is cleared";
    }
}

TEST_F(ListInput, ThePlayingListKeepsItsMarkWhenItIsOpenedAgain)
{
    click(2);
    catalogue().DblClick();
    click(3);
    click(2);
    EXPECT_EQ("Icon_6 Icon_C Icon_1 Icon_1", marks());
}

TEST_F(ListInput, TheCoverIsShownForARowThatHasOneAndHiddenAndClearedForOneWithout)
{
    put(data() + u"Resource/Zweite.gif"_s, "bild");
    root().xpFrame1.Width = 7200;
    root().pCoverBack.Width = 1000;
    click(2);
    EXPECT_TRUE(root().pCoverBack.Visible.value());
    EXPECT_EQ((data() + u"Resource/Zweite.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
    const Twips narrow = root().LSoundCaption.Width.value();
    click(3);
    EXPECT_FALSE(root().pCoverBack.Visible.value());
    EXPECT_EQ("", root().pCovers.Picture.value().toStdString());
    EXPECT_EQ(1000, root().LSoundCaption.Width.value() - narrow);
}

TEST_F(ListInput, AClickLetsTheHousekeepingRunAgainAndCorrectsTheTracksCell)
{
    root().Timer2.Enabled = false;
    root().mnuBearbeiten.Enabled = false;
    catalogue().setSubItem(2, 3, u"77"_s);
    const QByteArray before = bytes(database());
    click(2);
    EXPECT_TRUE(root().Timer2.Enabled.value());
    EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
    EXPECT_EQ("2", catalogue().subItem(2, 3).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(ListInput, AClickMarksTheDescriptionAsMissingUntilItIsRead)
{
    desktop.profiles().setValue(database(), u"Index"_s, u"2e"_s, u"Text"_s);
    root().LSoundCaption.Tag = u"1"_s;
    QString tag;
    desktop.events().after(std::chrono::milliseconds{0}, [&] { tag = root().LSoundCaption.Tag; });
    click(2);
    EXPECT_EQ("0", tag.toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());
}

TEST_F(ListInput, AClickOnATrackMarksTheCatalogueRowAndTheTrackRowsKeepTheirIcon)
{
    const std::string before = rows(tracks());
    catalogue().setIcons(1, u"Icon_C"_s);
    tracks().Click();
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
    desktop.profiles().setValue(database(), u"Index"_s, u"1g"_s, {});
    tracks().Click();
    EXPECT_EQ("Icon_1 Icon_1 Icon_1 Icon_1", marks());
    EXPECT_EQ(before, rows(tracks()));
}

TEST_F(ListInput, AClickOnATrackShowsItsTag)
{
    desktop.tags.tracks[u"/m/Erste 2.mp3"_s] = {.title = u"Lied"_s, .artist = u"Wir"_s};
    tracks().select(2);
    tracks().Click();
    EXPECT_EQ("Lied", root().sAnzeige[1].Caption.value().toStdString());
    EXPECT_EQ("Wir", root().sAnzeige[2].Caption.value().toStdString());
}

TEST_F(ListInput, ADoubleClickStartsTheListFromTheTop)
{
    catalogue().DblClick();
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
    EXPECT_EQ("Icon_C Icon_1 Icon_1 Icon_1", marks());
    EXPECT_TRUE(root().Timer1.Enabled.value());
}

TEST_F(ListInput, ADoubleClickWhileAListRunsStopsItAndStartsTheSelectedOne)
{
    pSoundPlayer_Click(root());
    click(2);
    forgetCalls();
    catalogue().DblClick();
    EXPECT_EQ("controls.stop\nclose\nnewPlaylist(Zweite.m3u, 2)\nclose\nURL = Zweite.m3u", told());
    EXPECT_EQ("Icon_6 Icon_C Icon_1 Icon_1", marks());
    EXPECT_EQ("play 0 pause 1 tag 1 lists 2/2 timer 1 item3 1 item4 0 Wiedergabe stoppen ", state());
}

TEST_F(ListInput, ADoubleClickEnablesTheSequenceOnlyWithAllPlaylists)
{
    // A single track leaves the timer off by itself.
    for (const bool all : {true, false}) {
        root().mnuAllesWiedergeben.Checked = all;
        root().Timer1.Enabled = false;
        click(4);
        catalogue().DblClick();
        EXPECT_EQ(all, root().Timer1.Enabled.value());
        pStopPlayer_Click(root());
    }
}

TEST_F(ListInput, ADoubleClickThatStartsNothingLeavesTheSequenceOff)
{
    root().mnuAllesWiedergeben.Checked = true;
    root().pSoundPlayer.Enabled = false;
    ASSERT_FALSE(root().pPausePlayer.Enabled.value());
    catalogue().DblClick();
    EXPECT_FALSE(root().Timer1.Enabled.value());
}

TEST_F(ListInput, ADoubleClickWhilePausedStopsAndStartsFromTheTop)
{
    catalogue().DblClick();
    root().mnuSoundplayer[3].Click();
    ASSERT_EQ("Angehalten", player().status().toStdString());
    forgetCalls();
    catalogue().DblClick();
    EXPECT_EQ(PlayState::Playing, player().playState());
    const std::string calls = told();
    EXPECT_EQ(0U, calls.find("controls.stop\nclose")) << calls;
}

TEST_F(ListInput, TheListThatWasStartedIsMarkedThoughAnotherRowWasClickedMeanwhile)
{
    click(2);
    desktop.events().after(std::chrono::milliseconds{0}, [this] { catalogue().select(3); });
    catalogue().DblClick();
    EXPECT_EQ("Icon_6 Icon_C Icon_1 Icon_1", marks());
}

TEST_F(ListInput, ADoubleClickResetsAllMarksAndSetsThatOfThePlayingList)
{
    catalogue().setIcons(2, u"Icon_C"_s);
    click(4);
    catalogue().DblClick();
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_C", marks());
}

TEST_F(ListInput, AColumnClickOfTheCatalogueWritesTheWidthsOfAllColumnsInSight)
{
    catalogue().setColumnWidth(2, 2111);
    catalogue().setColumnWidth(4, 1222);
    tracks().setColumnWidth(2, 811);
    tracks().setColumnWidth(3, 3333);
    tracks().setColumnWidth(4, 2944);
    tracks().setColumnWidth(5, 0);
    const std::string before = rows(catalogue());
    forgetCalls();
    catalogue().ColumnClick(2);
    QStringList written;
    for (const QString& line : desktop.log.linesOf({u"settings.setValue"_s}))
        written += line.section(u'"', 3);
    EXPECT_EQ("LV_1\" sz \"2111\"\nLV_2\" sz \"1222\"\nLV_4\" sz \"811\"\nLV_5\" sz \"3333\"\nLV_6\" sz \"2944\"",
              lines(written));
    EXPECT_EQ(before, rows(catalogue()));
}

TEST_F(ListInput, TheFocusTellsWhichListIsMeant)
{
    catalogue().GotFocus();
    EXPECT_EQ("1", root().mnuEditCopy.Tag.toStdString());
    tracks().GotFocus();
    EXPECT_EQ("2", root().mnuEditCopy.Tag.toStdString());
}

TEST_F(ListInput, AHeaderTextThatTwoColumnsShareSortsTwiceAndTheLaterColumnLast)
{
    tracks().clear();
    for (const auto& [name, path] :
         {std::pair{u"b"_s, u"/1"_s}, std::pair{u"a"_s, u"/2"_s}, std::pair{u"A"_s, u"/1"_s}})
        tracks().append({.Text = u"x"_s, .SubItems = {{.Text = {}}, {.Text = name}, {.Text = path}}});
    tracks().setColumnText(4, tracks().columnText(3));
    tracks().ColumnClick(3);
    QStringList order;
    for (int row = 1; row <= 3; ++row)
        order += tracks().subItem(row, 2) + tracks().subItem(row, 3);
    EXPECT_EQ("A/1 b/1 a/2", order.join(u' ').toStdString());
    EXPECT_EQ(4, tracks().sortColumn());
    EXPECT_TRUE(tracks().sorted());
}

TEST_F(ListInput, LoadPlayEntrysTmpIsTheClick)
{
    int clicks = 0;
    catalogue().Click = [&] { ++clicks; };
    LoadPlayEntrysTmp(root());
    EXPECT_EQ(1, clicks);
}

TEST_F(ListInput, AColumnClickOfTheTracksSortsAndWritesNoWidths)
{
    tracks().setColumnWidth(3, 3333);
    forgetCalls();
    tracks().ColumnClick(3);
    EXPECT_EQ(3, tracks().sortColumn());
    EXPECT_EQ("", calls({u"settings.setValue"_s}));
}

TEST_F(ListInput, AClickComparesTheTracksCellAsAText)
{
    catalogue().setSubItem(2, 3, u"02"_s);
    click(2);
    EXPECT_EQ("2", catalogue().subItem(2, 3).toStdString());
}

TEST_F(ListInput, AReadThatFailsLeavesTheNumberOfTracks)
{
    for (int read = 1; read <= 6; ++read)
        desktop.log.failNext(u"files.readPlaylist \""_s + listPath(u"Zweite"_s), read);
    for (int read = 1; read <= 6; ++read)
        desktop.log.failNext(u"files.readText \""_s + listPath(u"Zweite"_s), read);
    click(2);
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("2", catalogue().subItem(2, 3).toStdString());
}

TEST_F(ListInput, ARowWithoutAPathTakesNotTheNumberOfTheListInSight)
{
    catalogue().setSubItem(2, 2, QString());
    catalogue().setSubItem(2, 3, u"0"_s);
    desktop.messages.answer(Answer::Retry);
    click(2);
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
}

} // namespace orvantine::fake
