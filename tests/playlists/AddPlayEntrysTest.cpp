
#include "playlists/AddPlayEntrys.h"
#include "playlists/AddTracksFixture.h"
#include "playlists/SavePlayEntrys.h"
#include "playlists/mnuSpeichernUnter.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(AddTracks, AnEmptyFileAddsNothing)
{
    const std::string before = shown();
    AddPlayEntrys(root(), QString(), 0);
    AddPlayEntrys(root(), QString(), 1);
    EXPECT_EQ(before, shown());
    EXPECT_EQ("", actions());
}

TEST_F(AddTracks, ATrackIsAppendedWithNumberNamePathAndFileAndTheListIsWritten)
{
    AddPlayEntrys(root(), putTrack(u"Neues Lied"_s), 0);
    EXPECT_EQ("101 01 a </m/a.mp3> <a.mp3>\n"
              "102 02 b </m/b.mp3> <b.mp3>\n"
              "103 03 Neues Lied </m/Neues Lied.mp3> <Neues Lied.mp3>",
              shown());
    EXPECT_EQ("Icon_2", tracks().item(3).SmallIcon.toStdString());
    EXPECT_EQ("Icon_2", tracks().item(3).SubItems[0].ReportIcon.toStdString());
    // The field holds CR CR LF behind each line that was read.
    EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/Neues Lied.mp3\r\n\r\n", bytes(list).toStdString());
    EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/Neues Lied.mp3\r\n", root().tPlayliste.Text.value().toStdString());
    // What was written is read back as three tracks.
    catalogue().Tag = u"0"_s;
    click(1);
    EXPECT_EQ(3, tracks().count());
}

TEST_F(AddTracks, ABareNameIsWrittenAsItStands)
{
    AddPlayEntrys(root(), u"nah.mp3"_s, 0);
    EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\nnah.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(AddTracks, TheFolderOfPlaylistsIsMadeForAFileAndNotForAnEmptyText)
{
    putFolder(u"/anders"_s);
    root().tDatenbank.Text = u"/anders/"_s;
    forgetCalls();
    AddPlayEntrys(root(), QString(), 1);
    EXPECT_EQ("", calls({u"files.makeFolder"_s}));
    AddPlayEntrys(root(), u"/m/c.mp3"_s, 1);
    EXPECT_TRUE(desktop.disk().isFolder(u"/anders/Playlisten"_s));
}

TEST_F(AddTracks, WithoutAnyCatalogueRowTheMarkStaysAsItWas)
{
    catalogue().clear();
    tracks().clear();
    catalogue().Tag = u"7"_s;
    AddPlayEntrys(root(), u"/m/c.mp3"_s, 1);
    EXPECT_EQ("7", catalogue().Tag.toStdString());
    EXPECT_EQ(1, tracks().count());
}

TEST_F(AddTracks, TheFirstRowOfAnEmptyListLeavesTheColumnsOfTheCatalogueAlone)
{
    setting(u"LV_1"_s, dwordSetting(1000));
    click(2);
    catalogue().setColumnWidth(2, 2222);
    AddPlayEntrys(root(), u"/m/c.mp3"_s, 1);
    EXPECT_EQ(2222, catalogue().columnWidth(2));
    EXPECT_EQ(5, tracks().columns());
}

TEST_F(AddTracks, WithBatchTheFileIsNotWrittenAndTheCountIsTakenFromTheList)
{
    const QByteArray before = bytes(list);
    AddPlayEntrys(root(), putTrack(u"c"_s), 1);
    AddPlayEntrys(root(), putTrack(u"d"_s), -1);
    EXPECT_EQ(before.toStdString(), bytes(list).toStdString());
    EXPECT_EQ("4", catalogue().subItem(1, 3).toStdString());
    AddPlayEntrys(root(), putTrack(u"e"_s), 0);
    EXPECT_EQ("4", catalogue().subItem(1, 3).toStdString());
}

TEST_F(AddTracks, TheNameLosesFourCharactersBehindAFolderAndElseOnlyWithMp3)
{
    const std::pair<QString, const char*> cases[] = {{u"/m/Lied.wma"_s, "Lied"},
                                                     {u"C:\\M\\Lied.WAV"_s, "Lied"},
                                                     {u"Lied.wma"_s, "Lied.wma"},
                                                     {u"Lied.MP3"_s, "Lied"},
                                                     {u"Lied.mp3"_s, "Lied"},
                                                     {u"/m/Lied.flac"_s, "Lied."},
                                                     {u"/m/abc"_s, ""},
                                                     {u"mp3"_s, ""},
                                                     {u"xmp3"_s, ""},
                                                     {u"Lied.mp3.wav"_s, "Lied.mp3.wav"}};
    for (const auto& [file, name] : cases) {
        AddPlayEntrys(root(), file, 1);
        EXPECT_EQ(name, tracks().subItem(tracks().count(), 2).toStdString()) << file.toStdString();
    }
}

TEST_F(AddTracks, ANameWithoutAFolderIsJoinedToTheFolderOfThePlaylist)
{
    put(data() + u"Playlisten/nah.mp3"_s, "x");
    AddPlayEntrys(root(), u"nah.mp3"_s, 1);
    EXPECT_EQ("103 03 nah <{data}/Playlisten/nah.mp3> <nah.mp3>", shown().substr(shown().find("103")));
    EXPECT_TRUE(root().tPlayliste.Text.value().endsWith(u"\nnah.mp3\r\n"_s));
}

TEST_F(AddTracks, ARowOfAMissingFileIsRed)
{
    AddPlayEntrys(root(), u"/m/fehlt.mp3"_s, 1);
    EXPECT_EQ(Color::DarkRed, tracks().color(3, 3));
    AddPlayEntrys(root(), QStringList{u"/m/a.mp3"_s, u"/m/fehlt.mp3"_s});
    EXPECT_EQ(Color::ButtonText, tracks().color(4, 3));
    EXPECT_EQ(Color::DarkRed, tracks().color(5, 3));
}

TEST_F(AddTracks, TheHeadingCountsTheAddedTracks)
{
    ASSERT_EQ("(2)", root().tSoundzahl.Caption.value().toStdString());
    AddPlayEntrys(root(), u"/neu/x.mp3"_s, 1);
    EXPECT_EQ("(3)", root().tSoundzahl.Caption.value().toStdString());
    AddPlayEntrys(root(), {u"/neu/y.mp3"_s, u"/neu/z.mp3"_s}, false);
    EXPECT_EQ("(5)", root().tSoundzahl.Caption.value().toStdString());
}

TEST_F(AddTracks, TheFirstRowIsSelectedAndItsInformationRead)
{
    tracks().select(2);
    forgetCalls();
    AddPlayEntrys(root(), putTrack(u"c"_s), 1);
    EXPECT_EQ(1, tracks().selectedRow());
    EXPECT_EQ("tags.Mp3FileInfo \"/m/a.mp3\"\ntags.Mp3FileInfo \"/m/a.mp3\"", calls({u"tags.Mp3FileInfo"_s}));
}

TEST_F(AddTracks, AnEmptyListGetsItsColumnsAndTheMarkGoesToTheLastRowOfTheCatalogue)
{
    click(2);
    ASSERT_EQ(0, tracks().count());
    tracks().setColumnText(1, u"veraltet"_s);
    AddPlayEntrys(root(), putTrack(u"c"_s), 1);
    EXPECT_EQ("1 \"ID\" 0\n2 \"Track\" 800\n3 \"Name\" 3600\n4 \"Path\" 2900\n5 \"Datei\" 0",
              lines(columnLines(tracks())));
    EXPECT_EQ("3", catalogue().Tag.toStdString());
    EXPECT_EQ("101 01 c </m/c.mp3> <c.mp3>", shown());
}

TEST_F(AddTracks, AListWithRowsKeepsItsColumnsAndTheMark)
{
    tracks().setColumnText(1, u"bleibt"_s);
    AddPlayEntrys(root(), putTrack(u"c"_s), 1);
    EXPECT_EQ("bleibt", tracks().columnText(1).toStdString());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
}

TEST_F(AddTracks, AnEmptyListDoesNotTakeTheLinesOfTheListThatWasOpenBefore)
{
    click(2);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(empty).toStdString());
}

TEST_F(AddTracks, ABatchOfEmptyTextsDoesNothingAtAll)
{
    tracks().select(2);
    const std::string before = rows(tracks());
    AddPlayEntrys(root(), QStringList{QString(), QString()});
    EXPECT_EQ(before, rows(tracks())) << "row 2 is still the selected one";
    click(2);
    root().LListView1.Tag = u"2"_s;
    desktop.disk().remove(list);
    desktop.disk().remove(empty);
    desktop.disk().remove(data() + u"Playlisten"_s);
    forgetCalls();
    AddPlayEntrys(root(), QStringList{QString()}, true);
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("", actions());
}

TEST_F(AddTracks, AListThatHoldsOneEmptyLineTakesTheNewTrackAlone)
{
    put(empty, "\r\n");
    root().tPlayliste.Text = QString();
    click(2);
    ASSERT_EQ(0, tracks().count());
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(empty).toStdString());
}

TEST_F(AddTracks, AListThatWasEmptiedMeanwhileDoesNotGetItsOldLinesBack)
{
    put(list, "");
    catalogue().Tag = u"0"_s;
    click(1);
    ASSERT_EQ(0, tracks().count());
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(AddTracks, AListThatIsTooShortToBeReadTakesTheNewTrackBehindItsOwn)
{
    // Its one line counts, and shows the first line of the list that was open before.
    for (const auto& [content, own] : {std::pair("\r\n", ""), std::pair("x.mp3\r\n", "x.mp3\r\n")}) {
        for (const bool batch : {false, true}) {
            put(empty, content);
            catalogue().Tag = u"0"_s;
            click(1);
            click(2);
            ASSERT_EQ("101 01 a </m/a.mp3> <a.mp3>", shown());
            if (batch)
                AddPlayEntrys(root(), QStringList{putTrack(u"c"_s)});
            else
                AddPlayEntrys(root(), putTrack(u"c"_s), 0);
            EXPECT_EQ(std::string(own) + "/m/c.mp3\r\n", root().tPlayliste.Text.value().toStdString());
            EXPECT_EQ(*own == '\0' ? 1 : 2, tracks().count());
            EXPECT_EQ(batch ? std::string(content) : std::string(own) + "/m/c.mp3\r\n\r\n", bytes(empty).toStdString());
        }
    }
}

TEST_F(AddTracks, AListOfOneRowKeepsItsOwnLineInFront)
{
    put(empty, "/m/b.mp3\r\n\r\n");
    click(2);
    ASSERT_EQ("101 01 b </m/b.mp3> <b.mp3>", shown());
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("/m/b.mp3\r\r\n/m/c.mp3\r\n\r\n", bytes(empty).toStdString());
}

TEST_F(AddTracks, AnExportThatReadNothingCostsTheListNoTrack)
{
    put(list, "x\r\n");
    desktop.choosers.save(u"/m/export.m3u"_s);
    desktop.messages.answer(Answer::Ok);
    mnuSpeichernUnter_Click(root());
    desktop.messages.take();
    ASSERT_EQ("", root().tPlayliste.Text.value().toStdString());
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(AddTracks, ANewListInATmpFileMovesIntoPlaylisten)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ(listPath(u"Leer"_s).toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(listPath(u"Leer"_s)).toStdString());
    // The list goes on from there.
    AddPlayEntrys(root(), putTrack(u"d"_s), 0);
    EXPECT_EQ("/m/c.mp3\r\n/m/d.mp3\r\n\r\n", bytes(listPath(u"Leer"_s)).toStdString());
}

TEST_F(AddTracks, AListWhoseFileEndsInTmpInCapitalsIsNoNewOne)
{
    const QString fresh = data() + u"neu.TMP"_s;
    put(fresh, "");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(fresh).toStdString());
}

TEST_F(AddTracks, ANewListStaysWhereItIsIfItCannotMove)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    desktop.log.failNext(u"files.copy"_s);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ(0, tracks().count()) << "what could not be written is not shown";
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
    catalogue().setSubItem(2, 1, u"../böse"_s);
    AddPlayEntrys(root(), putTrack(u"d"_s), 0);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/d.mp3\r\n\r\n", bytes(fresh).toStdString());
}

TEST_F(AddTracks, TracksGoToTheListInSightWhicheverRowIsSelected)
{
    const QByteArray before = bytes(empty);
    catalogue().select(2);
    const std::string rowsBefore = shown();
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ(before.toStdString(), bytes(empty).toStdString());
    EXPECT_EQ(rowsBefore + "\n103 03 c </m/c.mp3> <c.mp3>", shown());
    EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/c.mp3\r\n\r\n", bytes(list).toStdString());
    AddPlayEntrys(root(), QStringList{u"/m/c.mp3"_s});
    EXPECT_EQ(4, tracks().count());
    EXPECT_EQ("4", catalogue().subItem(1, 3).toStdString()) << "the count is that of their own row";
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
}

TEST_F(AddTracks, APathThatBreaksALineIsNoEntry)
{
    const std::string before = shown();
    const QByteArray text = bytes(list);
    for (const QString& path : {u"/m/x\r/m/c.mp3"_s, u"/m/x\nc.mp3"_s}) {
        desktop.memory()->put(path, "x");
        AddPlayEntrys(root(), path, 0);
        AddPlayEntrys(root(), path, 1);
        AddPlayEntrys(root(), QStringList{path});
        EXPECT_EQ(before, shown());
    }
    EXPECT_EQ(text.toStdString(), bytes(list).toStdString());
    AddPlayEntrys(root(), QStringList{u"/m/x\nc.mp3"_s, putTrack(u"c"_s)});
    EXPECT_EQ(before + "\n103 03 c </m/c.mp3> <c.mp3>", shown());
}

TEST_F(AddTracks, AListWhoseOnlyLineIsUnclosedTakesTheNewTrackBehindIt)
{
    for (const char* content : {"/m/a-ist-lang.mp3", "#EXTM3U\r\n/m/a-ist-lang.mp3"}) {
        put(empty, content);
        catalogue().Tag = u"0"_s;
        click(2);
        ASSERT_EQ(TrackList::Content::Stale, root().trackList.content());
        AddPlayEntrys(root(), putTrack(u"c"_s), 0);
        EXPECT_EQ("/m/a-ist-lang.mp3\r\n/m/c.mp3\r\n\r\n", bytes(empty).toStdString());
        EXPECT_EQ(2, tracks().count());
    }
}

TEST_F(AddTracks, ALineThatAlsoStandsUnclosedBehindAShortOneIsKept)
{
    put(empty, "x.mp3\r\n/m/b.mp3");
    click(2);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("x.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", bytes(empty).toStdString());
}

TEST_F(AddTracks, AListOfMoreEntriesThanAListCanShowIsNotWritten)
{
    QByteArray many;
    for (int i = 0; i < 32'768; ++i)
        many += "/m/" + QByteArray::number(i) + ".mp3\r\n";
    put(list, many);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_TRUE(many == bytes(list));
}

TEST_F(AddTracks, AListThatCannotBeReadIsNotWritten)
{
    const QByteArray before = bytes(list);
    desktop.memory()->setUnreadable(list);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    desktop.memory()->setUnreadable(list, false);
    EXPECT_EQ(before.toStdString(), bytes(list).toStdString());
}

TEST_F(AddTracks, ManyFilesAreShownInPortionsAndTheFirstRowIsReadOnce)
{
    QStringList files;
    for (int i = 0; i < 1000; ++i)
        files += u"/m/%1.mp3"_s.arg(i);
    files.insert(500, QString());
    int insertions = 0;
    QObject::connect(&tracks(), &QAbstractItemModel::rowsInserted, &tracks(), [&] { ++insertions; });
    forgetCalls();
    AddPlayEntrys(root(), files);
    EXPECT_EQ(1002, tracks().count());
    EXPECT_EQ(4, insertions) << "what was added is seen before events are served";
    EXPECT_EQ("1102", tracks().text(1002).toStdString());
    EXPECT_EQ("1002", tracks().subItem(1002, 1).toStdString());
    EXPECT_EQ("1002", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("tags.Mp3FileInfo \"/m/a.mp3\"\ntags.Mp3FileInfo \"/m/a.mp3\"", calls({u"tags.Mp3FileInfo"_s}));
    EXPECT_TRUE(root().tPlayliste.Text.value().endsWith(u"/m/998.mp3\r\n/m/999.mp3\r\n"_s));
}

TEST_F(AddTracks, TheRestIsLeftOutWhereAnotherListIsOpenedMeanwhile)
{
    QStringList files;
    for (int i = 0; i < 2000; ++i)
        files += u"/m/%1.mp3"_s.arg(i);
    desktop.events().after(std::chrono::milliseconds{0}, [&] { click(2); });
    AddPlayEntrys(root(), files);
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("", bytes(empty).toStdString());
}

TEST_F(AddTracks, AnAddedTrackIsNamedByItsFileThoughTheDatabaseKnowsAName)
{
    const QString track = putTrack(u"c"_s);
    desktop.profiles().setValue(database(), u"TagInfo"_s, track, u"Wir - Lied"_s);
    AddPlayEntrys(root(), track, 1);
    AddPlayEntrys(root(), QStringList{track});
    AddPlayEntrys(root(), track, 0);
    for (const int row : {3, 4, 5})
        EXPECT_EQ("c", tracks().subItem(row, 2).toStdString()) << row;
    catalogue().Tag = u"0"_s;
    click(1);
    EXPECT_EQ("Wir - Lied", tracks().subItem(3, 2).toStdString()) << "the next read takes it";
}

TEST_F(AddTracks, AWriteTakesTheLinesThatWereLastReadNotTheOrderOfTheRows)
{
    tracks().setSubItem(1, 2, u"z"_s);
    tracks().ColumnClick(3);
    ASSERT_EQ("/m/b.mp3", tracks().subItem(1, 3).toStdString());
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/c.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(AddTracks, TheCountGoesToTheRowAndTheDatabaseStaysByteForByte)
{
    const QByteArray before = bytes(database());
    AddPlayEntrys(root(), putTrack(u"c"_s), 1);
    AddPlayEntrys(root(), putTrack(u"d"_s), 0);
    AddPlayEntrys(root(), QStringList{putTrack(u"e"_s)});
    EXPECT_EQ("5", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(AddTracks, ATrackComesBehindWhatSomebodyElseHasAddedToTheFile)
{
    put(list, "/m/a.mp3\r\n/m/b.mp3\r\n/m/fremd.mp3\r\n");
    AddPlayEntrys(root(), putTrack(u"c"_s), 1);
    EXPECT_EQ("/m/fremd.mp3", tracks().subItem(3, 3).toStdString());
    EXPECT_EQ("/m/c.mp3", tracks().subItem(4, 3).toStdString());
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/fremd.mp3\r\n/m/c.mp3\r\n", bytes(list).toStdString());
}

TEST_F(AddTracks, AListWhoseNameNoFileCanHaveTakesNoTracks)
{
    desktop.messages.enter(u"Best of: 80s"_s);
    desktop.messages.answer(
        Answer::Cancel, u" Best of: 80s"_s,
        u"Die folgende Wiedergabeliste ist nicht vorhanden: \n%1Playlisten/Best of: 80s.m3u"_s.arg(data()));
    root().mnuNeu.Click();
    EXPECT_EQ("Best of: 80s", catalogue().subItem(catalogue().count(), 1).toStdString());
    EXPECT_EQ("Nicht gespeichert: Unter diesem Namen lässt sich keine Datei anlegen.",
              root().quietLine.Caption.value().toStdString());
    for (const int batch : {0, 1}) {
        root().quietLine.Caption = QString();
        AddPlayEntrys(root(), putTrack(u"c"_s), batch);
        EXPECT_EQ(0, tracks().count()) << batch;
        EXPECT_EQ("Nicht gespeichert: Unter diesem Namen lässt sich keine Datei anlegen.",
                  root().quietLine.Caption.value().toStdString());
    }
    AddPlayEntrys(root(), QStringList{putTrack(u"c"_s), putTrack(u"d"_s)});
    EXPECT_EQ(0, tracks().count());
}

TEST_F(AddTracks, ATrackThatCannotBeWrittenIsNotShown)
{
    click(1);
    const std::string before = rows(tracks()) + bytes(list).toStdString();
    desktop.log.failNext(u"files.write"_s);
    AddPlayEntrys(root(), putTrack(u"neu"_s), 0);
    EXPECT_EQ(before, rows(tracks()) + bytes(list).toStdString());
    AddPlayEntrys(root(), putTrack(u"neu"_s), 0);
    EXPECT_NE(before, rows(tracks()) + bytes(list).toStdString());
    EXPECT_NE(bytes(list).toStdString().find("neu.mp3"), std::string::npos);
    EXPECT_EQ(bytes(list).count("neu.mp3"), 1) << "the line of the first try is gone";
}

TEST_F(AddTracks, ANewListNeverMovesOntoTheFileOfAnotherRow)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "");
    catalogue().setSubItem(1, 2, listPath(u"Leer"_s));
    put(listPath(u"Leer"_s), "/m/a.mp3\r\n");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n", bytes(listPath(u"Leer"_s)).toStdString());
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(fresh).toStdString());
}

} // namespace orvantine::fake
