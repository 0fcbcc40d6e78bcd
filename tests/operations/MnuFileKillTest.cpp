
#include "operations/TrackListOperationsFixture.h"
#include "platform/FileDirPath.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

TEST_F(TrackListOperations, ARemovedTrackLeavesListFileAndNames)
{
    databaseNames = "/m/a.mp3=Band - A\r\n/m/c.mp3=Band - C\r\n";
    open();
    tracks().select(2);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("*Band - C B", names());
    EXPECT_EQ("101 102", column(0)) << "the reload numbers the rows";
    EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n", file());
    EXPECT_EQ("", IniFiles::ReadValue(root(), database(), u"TagInfo"_s, u"/m/a.mp3"_s).toStdString());
    EXPECT_EQ("Band - C", IniFiles::ReadValue(root(), database(), u"TagInfo"_s, u"/m/c.mp3"_s).toStdString());
    EXPECT_EQ("2", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1d"_s).toStdString());
    EXPECT_EQ("mp3", bytes(u"/m/a.mp3"_s).toStdString()) << "no audio file is touched";
    EXPECT_EQ("box title \" Dateien entfernen\" text \"Möchten Sie die Sounddatei aus der Wiedergabeliste entfernen ? "
              "\" icon exclamation buttons ok-cancel answer ok",
              boxes());
}

TEST_F(TrackListOperations, CancelRemovesNothing)
{
    open();
    answerRemove(Answer::Cancel);
    root().mnuFileKill.Click();
    EXPECT_EQ("*c a B", names());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, TheRowAboveTheRemovedOneIsSelected)
{
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    tracks().select(3);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("a *b d", names());
}

TEST_F(TrackListOperations, ARemovalLeavesTheRowsWhereTheyStandOnTheScreen)
{
    QStringList shown;
    tracks().TopRow = [] { return 2; };
    tracks().ShowFromRow = [&](int row) { shown += u"from %1"_s.arg(row); };
    tracks().EnsureVisible = [&](int row) { shown += u"in sight %1"_s.arg(row); };
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    tracks().select(3);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("from 2, from 2, from 2, in sight 2", shown.join(u", "_s).toStdString());
}

TEST_F(TrackListOperations, BehindARemovalTheTitleIsThatOfTheSelectedTrack)
{
    for (const char16_t track : {u'a', u'b', u'c', u'd'})
        desktop.tags.tracks[u"/m/"_s + track + u".mp3"_s] = {.title = u"Titel "_s + track, .artist = u"Wir"_s};
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    const auto remove = [this](int row) {
        tracks().select(row);
        answerRemove(Answer::Ok);
        root().mnuFileKill.Click();
        return (root().sAnzeige[1].Caption.value() + u'|' + root().sAnzeige[2].Caption.value()).toStdString();
    };
    EXPECT_EQ("Titel c|Wir", remove(4));
    desktop.disk().remove(u"/m/b.mp3"_s);
    EXPECT_EQ("|", remove(3)) << "b is missing, and nobody asks about it";
    EXPECT_EQ("Titel a|Wir", remove(2));
    EXPECT_EQ("|", remove(1)) << "nothing is left";
    EXPECT_EQ("", root().sBitrate.Caption.value().toStdString());
    EXPECT_EQ("", root().sAnzeige[0].Caption.value().toStdString());
}

TEST_F(TrackListOperations, RemovingRowOneLeavesRowOneSelected)
{
    open();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("*a B", names());
}

TEST_F(TrackListOperations, RemovingTheLastRemainingRowLeavesTheListEmpty)
{
    open({u"a"_s});
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ(0, tracks().selectedRow());
    EXPECT_EQ("\r\n", file());
    EXPECT_EQ("", root().tPlayliste.Text.value().toStdString());
    EXPECT_EQ("0", catalogue().subItem(1, 3).toStdString());
    catalogue().Tag = u"0"_s;
    catalogue().Click();
    EXPECT_EQ(0, tracks().count()) << "the row does not come back";
}

TEST_F(TrackListOperations, AShortNeighbourDoesNotBringTheRemovedOneBack)
{
    open();
    root().mnuLokalePlayliste.Checked = false;
    put(u"/k/b.mp3"_s, "mp3");
    put(u"/k/a.mp3"_s, "mp3");
    put(u"/k/L.m3u"_s, "b.mp3\r\na.mp3\r\n");
    catalogue().setSubItem(2, 2, u"/k/L.m3u"_s);
    click(2);
    ASSERT_EQ("*b.mp3 a.mp3", names());
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("/k/a.mp3", column(3));
    EXPECT_EQ("/k/a.mp3\r\n", bytes(u"/k/L.m3u"_s).toStdString());
}

TEST_F(TrackListOperations, ARunningPlayerIsStoppedBeforeTheQuestion)
{
    open();
    root().pSoundPlayer.Click();
    desktop.messages.script({.answer = Answer::Cancel, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] {
                                 EXPECT_FALSE(root().pPausePlayer.Enabled.value());
                             }});
    root().mnuFileKill.Click();
}

TEST_F(TrackListOperations, APlayerThatDoesNotRunIsNotStopped)
{
    open();
    int stopped = 0;
    root().pStopPlayer.Click = [&stopped] { ++stopped; };
    answerRemove(Answer::Cancel);
    root().mnuFileKill.Click();
    EXPECT_EQ(0, stopped);
}

TEST_F(TrackListOperations, AListThatIsOpenedWhileTheQuestionIsUpLosesNothing)
{
    open();
    const std::string before = file();
    const std::string other = file(u"Andere"_s);
    desktop.messages.script(
        {.answer = Answer::Ok, .entered = {}, .title = u" Dateien entfernen"_s, .text = {}, .meanwhile = [this] {
             click(2);
         }});
    root().mnuFileKill.Click();
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ(before, file());
    EXPECT_EQ(other, file(u"Andere"_s));
}

TEST_F(TrackListOperations, ATrackOfTheListInSightIsRemovedWhicheverRowIsSelected)
{
    databaseNames = "/m/c.mp3=Band - C\r\n";
    open();
    clickMissing();
    ASSERT_EQ("*Band - C a B", names());
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("*a B", names());
    EXPECT_EQ("", nameOf(u"/m/c.mp3"_s));
    EXPECT_EQ("/m/a.mp3\r\n/m/B.mp3\r\n", file());
    EXPECT_EQ("(missing)", file(u"Andere"_s));
    EXPECT_EQ("2", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("2", catalogue().subItem(2, 3).toStdString());
    desktop.messages.take();
}

TEST_F(TrackListOperations, TheTrackThatAnEmptiedListShowsOfAnotherOneKeepsItsName)
{
    databaseNames = "/m/c.mp3=Band - C\r\n";
    open();
    const std::string before = file();
    clickEmptied();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("", names());
    EXPECT_EQ("Band - C", nameOf(u"/m/c.mp3"_s));
    EXPECT_EQ(before, file());
    EXPECT_EQ("\r\n", file(u"Andere"_s));
}

TEST_F(TrackListOperations, AMissingListThatIsClickedInTheWaitIsNotReadInThePlaceOfTheOpenOne)
{
    open();
    tracks().select(2);
    answerRemove(Answer::Ok);
    answerMissing();
    desktop.events().after(500ms, [&] {
        desktop.disk().remove(listPath(u"Andere"_s));
        click(2);
    });
    root().mnuFileKill.Click();
    EXPECT_EQ("*c B", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n", file());
    EXPECT_EQ("(missing)", file(u"Andere"_s));
    EXPECT_TRUE(outOfWait());
    desktop.messages.take();
}

TEST_F(TrackListOperations, TheListThatIsReadAgainIsMarkedAsTheOneWhoseTracksAreShown)
{
    open();
    click(2);
    // The save of the database takes the mark away: seen before it.
    const auto save = root().mnuSpeichern.Click;
    QString mark;
    root().mnuSpeichern.Click = [&] { mark = catalogue().Tag; };
    catalogue().Tag = u"7"_s;
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    root().mnuSpeichern.Click = save;
    EXPECT_EQ("2", mark.toStdString());
}

TEST_F(TrackListOperations, ANewListWhoseNameCannotBeThatOfAFileIsNotKept)
{
    open({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    const QString path = data() + u"Neu.tmp"_s;
    put(path, "/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n/m/d.mp3\r\n");
    catalogue().setSubItem(2, 2, path);
    root().mnuLokalePlayliste.Checked = false;
    for (const QString& name : {u"../x"_s, u"a/b"_s, u"was?"_s}) {
        catalogue().setSubItem(2, 1, name);
        catalogue().Tag = u"0"_s;
        click(2);
        forgetCalls();
        answerRemove(Answer::Ok);
        root().mnuFileKill.Click();
        EXPECT_EQ("", calls({u"files.copy \""_s + path}));
        EXPECT_EQ("(missing)", bytes(data() + u"x.m3u"_s).toStdString());
    }
    EXPECT_EQ("/m/d.mp3", column(3));
}

TEST_F(TrackListOperations, ANewListIsKeptUnderItsNameBeforeTheRemoval)
{
    open();
    const QString path = data() + u"Neu.tmp"_s;
    put(path, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, path);
    click(2);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n\r\n", file(u"Andere"_s));
    EXPECT_EQ(path.toStdString(), catalogue().subItem(2, 2).toStdString()) << "path and row are left as they are";
    EXPECT_EQ("/m/a.mp3\r\n", bytes(path).toStdString());
}

TEST_F(TrackListOperations, TheReloadComesASecondBehindTheSave)
{
    open();
    const auto begin = desktop.events().elapsed();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(1000, (desktop.events().elapsed() - begin).count() / 10 * 10);
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, AnotherListThatIsOpenedInTheWaitStaysOpen)
{
    open();
    tracks().select(3);
    answerRemove(Answer::Ok);
    Timer meanwhile(root().controls, u"meanwhile", std::chrono::milliseconds{300});
    meanwhile.Tick = [&] {
        meanwhile.Enabled = false;
        click(2);
        tracks().select(1);
    };
    desktop.events().attach(meanwhile);
    meanwhile.Enabled = true;
    root().mnuFileKill.Click();
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n", file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, AnotherListThatIsOpenedInsideTheReloadKeepsItsSelection)
{
    open();
    removeLastWhileTheReload([this] { click(2); });
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n", file());
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, TheRowsOfAnotherListKeepTheirSelectionThoughItsRowIsLeft)
{
    open();
    removeLastWhileTheReload([this] {
        click(2);
        catalogue().select(1);
    });
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n", file());
}

TEST_F(TrackListOperations, UntilTheReloadRowOneIsSelectedAndNoNumberIsNew)
{
    open();
    tracks().select(2);
    catalogue().Tag = u"7"_s;
    answerRemove(Answer::Ok);
    bool looked = false;
    desktop.events().after(500ms, [&] {
        looked = true;
        EXPECT_EQ("*c B", names());
        EXPECT_EQ("101 103", column(0));
        EXPECT_EQ("01 03", column(1));
        EXPECT_EQ("7", catalogue().Tag.toStdString());
        EXPECT_EQ("/m/c.mp3\r\n/m/B.mp3\r\n", file());
    });
    root().mnuFileKill.Click();
    EXPECT_TRUE(looked);
    EXPECT_EQ("101 102", column(0));
}

TEST_F(TrackListOperations, TheTracksGetTheFocusOnceTheDatabaseIsSaved)
{
    open();
    int focused = 0;
    tracks().SetFocus = [&] {
        ++focused;
        EXPECT_EQ("2", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1d"_s).toStdString());
        EXPECT_EQ("0", catalogue().Tag.toStdString());
    };
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(1, focused);
    tracks().SetFocus = [] {};
}

TEST_F(TrackListOperations, AListThatComesToPlaylistenIsReadAgainFromThere)
{
    open();
    ASSERT_TRUE(root().mnuLokalePlayliste.Checked.value());
    const QString outside = u"/k/L.m3u"_s;
    const QString local = data() + u"Playlisten/L.m3u"_s;
    put(outside, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, outside);
    click(2);
    const std::string before = bytes(outside).toStdString();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(local.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ(local.toStdString(), root().trackList.path().toStdString());
    EXPECT_EQ("*a", names());
    EXPECT_EQ("/m/a.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(before, bytes(outside).toStdString());
}

TEST_F(TrackListOperations, TheMarkOfANewListRespectsCase)
{
    open();
    root().mnuLokalePlayliste.Checked = false;
    put(u"/k/L.TMP"_s, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, u"/k/L.TMP"_s);
    click(2);
    const std::string other = file(u"Andere"_s);
    forgetCalls();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("/m/a.mp3\r\n\r\n", bytes(u"/k/L.TMP"_s).toStdString());
    EXPECT_EQ(other, file(u"Andere"_s));
    EXPECT_EQ("", calls({u"files.copy \"/k/L.TMP\""_s}));
}

TEST_F(TrackListOperations, TheFolderForANewListIsMadeBeforeItIsKept)
{
    open();
    const QString path = u"/k/Neu.tmp"_s;
    put(path, "/m/c.mp3\r\n/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, path);
    click(2);
    // Another DataFolder, in which nothing stands.
    root().tDatenbank.Text = u"/leer/"_s;
    putFolder(u"/leer"_s);
    answerRemove(Answer::Ok);
    root().mnuLokalePlayliste.Checked = false;
    forgetCalls();
    root().mnuFileKill.Click();
    const std::string made = calls({u"files.makeFolder"_s, u"files.copy"_s});
    EXPECT_TRUE(made.starts_with("files.makeFolder \"/leer/Playlisten\"")) << made;
    EXPECT_EQ("/m/c.mp3\r\n/m/a.mp3\r\n\r\n", bytes(u"/leer/Playlisten/Andere.m3u"_s).toStdString());
}

TEST_F(TrackListOperations, AListTooShortToBeShownKeepsItsFile)
{
    open();
    put(listPath(u"Andere"_s), "a.mp3\r\n");
    root().tPlayliste.Text = QString();
    click(2);
    ASSERT_EQ(0, tracks().count());
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("a.mp3\r\n", file(u"Andere"_s));
}

TEST_F(TrackListOperations, ARemovalWithoutASelectedRowRemovesNothing)
{
    open();
    tracks().clearSelection();
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(3, tracks().count());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, ThePopUpRemovesToo)
{
    open();
    answerRemove(Answer::Ok);
    root().mnxBearbeiten[6].Click();
    EXPECT_EQ("*a B", names());
}

TEST_F(TrackListOperations, AFailingStepOfARemovalIsPassedOver)
{
    open();
    answerRemove(Answer::Ok);
    desktop.log.failNext(u"files.writeText"_s);
    root().mnuFileKill.Click();
    EXPECT_EQ(3, tracks().count()) << "the reload shows what the file holds";
    EXPECT_TRUE(outOfWait());
}

TEST_F(TrackListOperations, TheTrackNameGoesFromTheFileOfTheConstantName)
{
    desktop.context.stem = u"Meine"_s;
    desktop.newProcess();
    const QString own = data() + u"Meine.dat"_s;
    put(u"/m/a.mp3"_s, "mp3");
    put(own, "[TagInfo]\r\n/m/a.mp3=Name\r\n[Index]\r\n" +
                 indexRow(1, {.name = u"Liste"_s, .path = putList(u"Liste"_s, {u"/m/a.mp3"_s}), .tracks = u"1"_s}));
    put(database(), "[TagInfo]\r\n/m/a.mp3=Name\r\n");
    setting(u"Error"_s, dwordSetting(0));
    start();
    click(1);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ("", IniFiles::ReadValue(root(), database(), u"TagInfo"_s, u"/m/a.mp3"_s).toStdString());
    EXPECT_EQ("Name", IniFiles::ReadValue(root(), own, u"TagInfo"_s, u"/m/a.mp3"_s).toStdString());
}

TEST_F(TrackListOperations, ANewListIsNotKeptInTheFileOfAnotherRow)
{
    open();
    const QString path = data() + u"Neu.tmp"_s;
    put(path, "/m/c.mp3\r\n/m/a.mp3\r\n");
    const QString first = catalogue().subItem(1, 2);
    const QByteArray before = bytes(first);
    catalogue().setSubItem(2, 2, path);
    catalogue().setSubItem(2, 1, FileDirPath::titleOf(FileDirPath::FileNameOf(first)));
    click(2);
    answerRemove(Answer::Ok);
    root().mnuFileKill.Click();
    EXPECT_EQ(before.toStdString(), bytes(first).toStdString());
}

} // namespace orvantine::fake
