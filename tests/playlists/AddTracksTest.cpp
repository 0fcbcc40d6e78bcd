#include "playlists/AddTracks.h"

#include "catalogue/CatalogueWorld.h"

#include "app/Registry.h"
#include "playlists/AddSounds.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"
#include "shell/MainWindow.h"
#include "transfer/FolderDialogs.h"

#include <random>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString addTitle = u" Sounddateien hinzufügen"_s;

/// Two lists: "Liste" with two tracks, open, and "Leer" without any.
class AddTracks : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        setting(u"Error"_s, dwordSetting(0));
        setting(u"Lokal"_s, dwordSetting(0));
        list = putList(u"Liste"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
        empty = listPath(u"Leer"_s);
        put(empty, "");
        putDatabase(indexRow(1, {.name = u"Liste"_s, .path = list}) +
                    indexRow(2, {.name = u"Leer"_s, .path = empty, .tracks = u"0"_s}) +
                    indexRow(3, {.name = u"Letzte"_s, .path = empty, .tracks = u"0"_s}));
        start();
        click(1);
        ASSERT_EQ(2, tracks().count());
        forgetCalls();
    }

    /// Number, track, name, path and file of each row.
    [[nodiscard]] std::string shown()
    {
        QStringList all;
        for (int row = 1; row <= tracks().count(); ++row)
            all += u"%1 %2 %3 <%4> <%5>%6"_s.arg(tracks().text(row), tracks().subItem(row, 1), tracks().subItem(row, 2),
                                                 tracks().subItem(row, 3), tracks().subItem(row, 4),
                                                 tracks().color(row, 3) == Color::DarkRed ? u" red"_s : QString());
        return withoutFolder(lines(all).c_str());
    }

    QString list;
    QString empty;
};

/// `mnuAddSounds` on these lists.
class AddSounds : public AddTracks
{
protected:
    void SetUp() override
    {
        AddTracks::SetUp();
        for (const QString& name : {u"a.mp3"_s, u"C.MP3"_s, u"d.wma"_s, u"e.wav"_s, u"f.ogg"_s, u".hidden.mp3"_s})
            put(u"/neu/"_s + name, "x");
    }

    /// The user chooses the folder in the dialog.
    void chooseFolder(const QString& folder)
    {
        desktop.forms().whileModal(u"Ordner"_s, [folder](Form& form) {
            auto& dialog = static_cast<Ordner&>(form);
            dialog.LTreeview.SelectedFolder = folder;
            dialog.LTreeview.Change();
            dialog.BReady.Click();
        });
    }
    void cancelFolder()
    {
        desktop.forms().whileModal(u"Ordner"_s, [](Form& form) { static_cast<Ordner&>(form).bAbbrechen.Click(); });
    }
    void addFolder(const QString& folder)
    {
        chooseFolder(folder);
        mnuAddSounds_Click(root());
    }

    void expectWaitOver()
    {
        EXPECT_FALSE(root().pDateiname.Visible.value());
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_TRUE(tracks().Visible.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
        EXPECT_FALSE(root().pCopyStatus.Visible.value());
        EXPECT_EQ("", root().tCopyStatus.Caption.value().toStdString());
    }

    [[nodiscard]] std::string option(const QString& key)
    {
        return desktop.profiles().value(database(), u"Options"_s, key).toStdString();
    }
};

} // namespace

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
    catalogue().setSubItem(2, 1, u"../böse"_s);
    AddPlayEntrys(root(), putTrack(u"d"_s), 0);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/c.mp3\r\n/m/d.mp3\r\n\r\n", bytes(fresh).toStdString());
}

TEST_F(AddTracks, AnotherListThanTheOneShownIsNeverWritten)
{
    const QByteArray before = bytes(empty);
    catalogue().select(2);
    const std::string rowsBefore = shown();
    AddPlayEntrys(root(), putTrack(u"c"_s), 0);
    AddPlayEntrys(root(), QStringList{u"/m/c.mp3"_s});
    EXPECT_EQ(before.toStdString(), bytes(empty).toStdString());
    EXPECT_EQ(rowsBefore, shown()) << "nor do the rows of the open one get a track";
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
        ASSERT_TRUE(root().foreignRows);
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

TEST_F(AddTracks, ManyFilesAreShownTogetherAndTheFirstRowIsReadOnce)
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
    EXPECT_EQ(1, insertions);
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

TEST_F(AddSounds, WithoutACatalogueRowTheMenuOnlyTellsWhatToDo)
{
    catalogue().clear();
    desktop.messages.answer(Answer::Ok);
    forgetCalls();
    mnuAddSounds_Click(root());
    EXPECT_EQ("box title \" Sounddateien hinzufügen\" text \"Bevor Sie Dateien einfügen können, müssen Sie eine "
              "Wiedergabeliste hinzufügen.    \\nWählen Sie im Menü den Eintrag ''Neue Playliste'' oder ''Liste "
              "hinzufügen'' aus.\" icon critical buttons ok answer ok",
              boxes());
    EXPECT_EQ("", actions());
    EXPECT_TRUE(tracks().Visible.value());
}

TEST_F(AddSounds, FolderModeAddsTheAudioFilesOfAFolderSortedAndSavesTheList)
{
    desktop.events().after(std::chrono::milliseconds{0}, [this] { root().tDateiname.Caption = u"vorher"_s; });
    addFolder(u"/neu"_s);
    EXPECT_EQ("vorher", root().tDateiname.Caption.value().toStdString());
    EXPECT_EQ("101 01 a </m/a.mp3> <a.mp3>\n"
              "102 02 b </m/b.mp3> <b.mp3>\n"
              "103 03 a </neu/a.mp3> <a.mp3>\n"
              "104 04 C </neu/C.MP3> <C.MP3>\n"
              "105 05 d </neu/d.wma> <d.wma>\n"
              "106 06 e </neu/e.wav> <e.wav>",
              shown());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(list).toStdString());
    EXPECT_EQ("6", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("/neu", option(u"Soundfiles"_s));
    EXPECT_EQ("/neu", root().LMp3Files.Path.toStdString());
    EXPECT_EQ("*.mp3;*.wma;*.wav", root().LMp3Files.Pattern.toStdString());
    EXPECT_EQ("", boxes());
    expectWaitOver();
}

TEST_F(AddSounds, AFileThatIsInTheListAlreadyIsNotAddedTwiceAndTheCountSaysSo)
{
    addFolder(u"/neu"_s);
    put(u"/neu/g.mp3"_s, "x");
    desktop.messages.answer(Answer::Ok);
    addFolder(u"/neu"_s);
    EXPECT_EQ(7, tracks().count());
    EXPECT_EQ("/neu/g.mp3", tracks().subItem(7, 3).toStdString());
    EXPECT_EQ("box title \" Sounddateien hinzufügen\" text \"Es wurden 4 vorhandene Sounddateien nicht zur Playliste "
              "hinzugefügt.   \" icon information buttons ok answer ok",
              boxes());
    expectWaitOver();
}

TEST_F(AddSounds, APathThatIsPartOfALongerPathCountsAsPresent)
{
    put(list, "/alt/neu/C.mp3.bak.mp3\r\n/m/b.mp3\r\n\r\n");
    catalogue().Tag = u"0"_s;
    click(1);
    put(u"/alt/neu/c.mp3"_s, "x");
    desktop.messages.answer(Answer::Ok);
    addFolder(u"/alt/neu"_s);
    EXPECT_EQ(2, tracks().count());
    desktop.messages.take();
}

TEST_F(AddSounds, TheLastTwoCharactersOfTheFileAreNotSearched)
{
    // Written by someone else while the list is open: without a line end the path reaches into the last two.
    put(list, "/m/b.mp3\r\n/neu/a.mp3");
    addFolder(u"/neu"_s);
    EXPECT_EQ(6, tracks().count());
    EXPECT_EQ("/neu/a.mp3", tracks().subItem(3, 3).toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(AddSounds, APathThatEndsRightInFrontOfTheLastTwoCharactersIsPresent)
{
    put(list, "/m/b.mp3\r\n/neu/A.mp3\r\n");
    desktop.messages.answer(Answer::Ok);
    addFolder(u"/neu"_s);
    EXPECT_EQ(5, tracks().count());
    EXPECT_NE(std::string::npos, boxes().find("Es wurden 1 vorhandene"));
}

TEST_F(AddSounds, OnlyOneOrNoValueOfFolderViewMeansTheFolder)
{
    for (const bool absent : {false, true}) {
        setting(u"FolderView"_s, dwordSetting(1));
        if (absent)
            desktop.settings.drop(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"FolderView"_s);
        forgetCalls();
        cancelFolder();
        mnuAddSounds_Click(root());
        EXPECT_EQ("", calls({u"choosers"_s}));
    }
    for (const int value : {0, 2}) {
        setting(u"FolderView"_s, dwordSetting(value));
        forgetCalls();
        desktop.choosers.cancel(ChooserKind::Open);
        mnuAddSounds_Click(root());
        EXPECT_NE("", calls({u"choosers"_s})) << value;
    }
}

TEST_F(AddSounds, WithoutASelectedPlaylistTheTracksAreShownAndTheSaveIsToldAsFailed)
{
    tracks().clear();
    catalogue().clearSelection();
    const QByteArray before = bytes(list);
    desktop.messages.answer(Answer::Ok, u" Wiedergabeliste speichern"_s,
                            u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    "_s);
    addFolder(u"/neu"_s);
    EXPECT_EQ(4, tracks().count());
    EXPECT_EQ(before.toStdString(), bytes(list).toStdString());
    EXPECT_EQ("2 0 0", (catalogue().subItem(1, 3) + u' ' + catalogue().subItem(2, 3) + u' ' + catalogue().subItem(3, 3))
                           .toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, TheRememberedFolderHasNoSeparatorAtItsEndAndServesAgain)
{
    const std::pair<QString, QString> cases[] = {{u"/neu/"_s, u"/neu"_s}, {u"C:\\Neu\\"_s, u"C:\\Neu"_s}};
    for (const auto& [chosen, kept] : cases) {
        put(kept + (kept.contains(u'\\') ? u"\\x.mp3"_s : u"/x.mp3"_s), "x");
        const QString track = kept + (kept.contains(u'\\') ? u"\\x.mp3"_s : u"/x.mp3"_s);
        QString first;
        addFolder(chosen);
        EXPECT_EQ(kept.toStdString(), option(u"Soundfiles"_s));
        EXPECT_EQ(kept.toStdString(), root().tBrowseFolder.Text.value().toStdString());
        EXPECT_EQ(track.toStdString(), tracks().subItem(tracks().count(), 3).toStdString());
        const int count = tracks().count();
        // The dialog begins with it, and what the list holds is found in it.
        desktop.forms().whileModal(u"Ordner"_s, [&first](Form& form) {
            auto& dialog = static_cast<Ordner&>(form);
            first = dialog.LTreeview.SelectedFolder;
            dialog.BReady.Click();
        });
        desktop.messages.answer(Answer::Ok);
        mnuAddSounds_Click(root());
        EXPECT_EQ(kept.toStdString(), first.toStdString());
        EXPECT_EQ(count, tracks().count());
        desktop.messages.take();
    }
}

TEST_F(AddSounds, AFolderThatIsKeptWithASeparatorIsTakenWithout)
{
    setting(u"FolderView"_s, dwordSetting(0));
    const std::pair<const char*, const char*> cases[] = {{"/neu/", "/neu"}, {"/", "/"}, {"C:\\", "C:\\"}};
    const QByteArray before = bytes(database());
    for (const auto& [kept, taken] : cases) {
        put(database(), before + "[Options]\r\nSoundfiles=" + kept + "\r\n");
        desktop.choosers.cancel(ChooserKind::Open);
        mnuAddSounds_Click(root());
        EXPECT_EQ(taken, root().tBrowseFolder.Text.value().toStdString());
    }
}

TEST_F(AddSounds, ABareNameBesideTheListIsNotFoundByItsPathAndIsAddedAgain)
{
    put(data() + u"Playlisten/nah.mp3"_s, "x");
    put(list, "nah.mp3\r\n/m/b.mp3\r\n\r\n");
    catalogue().Tag = u"0"_s;
    click(1);
    addFolder(data() + u"Playlisten"_s);
    EXPECT_EQ(3, tracks().count());
}

TEST_F(AddSounds, AFolderWithoutAudioFilesAddsNothingAndAsksNothing)
{
    putFolder(u"/leer"_s);
    addFolder(u"/leer"_s);
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("/leer", option(u"Soundfiles"_s));
    EXPECT_EQ("", boxes());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, CancelLeavesTheFolderAsItWasAndStillSavesTheList)
{
    cancelFolder();
    forgetCalls();
    mnuAddSounds_Click(root());
    EXPECT_EQ("", option(u"Soundfiles"_s));
    EXPECT_EQ("0", root().tBrowseFolder.Tag.toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, TheListIsOutOfSightAndThePlayerStoppedBeforeTheFolderIsChosen)
{
    bool visible = true;
    bool enabled = true;
    QString mark;
    int stops = 0;
    int stopsBefore = 0;
    root().pStopPlayer.Click = [&] { ++stops; };
    root().tBrowseFolder.Text = u"alt"_s;
    QString text;
    desktop.forms().whileModal(u"Ordner"_s, [&](Form& form) {
        visible = tracks().Visible;
        enabled = tracks().Enabled;
        mark = root().tBrowseFolder.Tag;
        text = root().tBrowseFolder.Text;
        stopsBefore = stops;
        static_cast<Ordner&>(form).bAbbrechen.Click();
    });
    mnuAddSounds_Click(root());
    EXPECT_EQ(1, stopsBefore);
    EXPECT_FALSE(visible);
    EXPECT_FALSE(enabled);
    EXPECT_EQ("0", mark.toStdString());
    EXPECT_EQ("", text.toStdString());
    EXPECT_EQ(1, stops);
}

TEST_F(AddSounds, TheCountIsToldWhenTheListIsSavedAndInSightAgain)
{
    putList(u"Liste"_s, {u"/m/a.mp3"_s, u"/neu/a.mp3"_s});
    click(2);
    click(1);
    std::string state;
    desktop.messages.script({.answer = Answer::Ok,
                             .entered = {},
                             .title = addTitle,
                             .text = u"Es wurden 1 vorhandene Sounddateien nicht zur Playliste hinzugefügt.   "_s,
                             .meanwhile = [&] {
                                 state = (tracks().Visible ? "visible " : "hidden ") +
                                         std::string(tracks().Enabled ? "on " : "off ") +
                                         (root().buttonsDisabled ? "disabled\n" : "enabled\n") +
                                         bytes(list).toStdString();
                             }});
    addFolder(u"/neu"_s);
    EXPECT_EQ("visible on enabled\n/m/a.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n", state);
}

TEST_F(AddSounds, BehindASingleRowTheFileIsWrittenAtOnce)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "/m/a-ist-lang.mp3\r\n");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    ASSERT_EQ(1, tracks().count());
    addFolder(u"/neu"_s);
    const QString own = listPath(u"Leer"_s);
    EXPECT_EQ(own.toStdString(), catalogue().subItem(2, 2).toStdString()) << "a new list gets its file with the write";
    EXPECT_EQ("/m/a-ist-lang.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(own).toStdString());
}

TEST_F(AddSounds, BehindTwoRowsTheFilesAreABatch)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "/m/a.mp3\r\n/m/b.mp3\r\n");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    ASSERT_EQ(2, tracks().count());
    addFolder(u"/neu"_s);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
}

TEST_F(AddSounds, ASecondRunInsideTheFirstDoesNothing)
{
    for (int i = 0; i < 600; ++i)
        put(u"/viele/%1.mp3"_s.arg(i), "x");
    chooseFolder(u"/viele"_s);
    bool ran = false;
    QObject::connect(&catalogue(), &QAbstractItemModel::dataChanged, &catalogue(), [&] {
        if (std::exchange(ran, true))
            return;
        // No dialog is scripted: one that opens is a failure.
        desktop.events().after(std::chrono::milliseconds{0}, [this] { mnuAddSounds_Click(root()); });
    });
    mnuAddSounds_Click(root());
    EXPECT_TRUE(ran);
    EXPECT_EQ(602, tracks().count());
}

TEST_F(AddSounds, FilesAreNotAddedToTheTracksOfAnotherList)
{
    catalogue().setSubItem(2, 2, u"/fort/Leer.m3u"_s);
    const std::string before = shown();
    for (int i = 0; i < 2; ++i)
        desktop.messages.answer(Answer::Cancel);
    click(2);
    mnuAddSounds_Click(root());
    EXPECT_EQ(before, shown());
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
}

TEST_F(AddSounds, AListThatIsOpenedWhileTheFolderIsChosenGetsNoFile)
{
    desktop.forms().whileModal(u"Ordner"_s, [this](Form& form) {
        auto& dialog = static_cast<Ordner&>(form);
        dialog.LTreeview.SelectedFolder = u"/neu"_s;
        dialog.LTreeview.Change();
        click(2);
        dialog.BReady.Click();
    });
    mnuAddSounds_Click(root());
    EXPECT_EQ("", bytes(empty).trimmed().toStdString());
    EXPECT_FALSE(bytes(list).contains("/neu/"));
    EXPECT_EQ(0, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, AListThatIsOpenedWhileTheFileIsChosenGetsNoFile)
{
    setting(u"FolderView"_s, dwordSetting(0));
    desktop.choosers.queue.push({.kind = ChooserKind::Open,
                                 .file = ChosenFile{.folder = u"/neu"_s, .fileName = u"a.mp3"_s},
                                 .folder = {},
                                 .font = {},
                                 .meanwhile = [this] { click(2); }});
    mnuAddSounds_Click(root());
    EXPECT_EQ("", bytes(empty).trimmed().toStdString());
    EXPECT_FALSE(bytes(list).contains("/neu/"));
    EXPECT_EQ(0, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, CancelInFileModeStillSavesTheList)
{
    setting(u"FolderView"_s, dwordSetting(0));
    desktop.choosers.cancel(ChooserKind::Open);
    ASSERT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n\r\n", bytes(list).toStdString());
    mnuAddSounds_Click(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, FilesWhoseNameHasALineEndAreLeftOut)
{
    desktop.memory()->put(u"/neu/x\ry.mp3"_s, "x");
    desktop.memory()->put(u"/neu/x\ny.mp3"_s, "x");
    addFolder(u"/neu"_s);
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(list).toStdString());
    EXPECT_EQ(6, tracks().count());
    setting(u"FolderView"_s, dwordSetting(0));
    desktop.choosers.open(u"/neu/x\ry.mp3"_s);
    mnuAddSounds_Click(root());
    EXPECT_EQ(6, tracks().count());
}

TEST_F(AddSounds, TheFilesGoBehindTheOwnTracksOfAShortList)
{
    put(empty, "x.mp3\r\n");
    click(2);
    addFolder(u"/neu"_s);
    EXPECT_EQ(5, tracks().count());
    EXPECT_TRUE(bytes(empty).startsWith((data() + u"Playlisten/x.mp3\r\n/neu/a.mp3\r\n"_s).toUtf8()));
}

TEST_F(AddSounds, ASelectedListThatIsNotInSightIsOpenedFirst)
{
    const QByteArray before = bytes(list);
    catalogue().select(2);
    addFolder(u"/neu"_s);
    EXPECT_EQ("/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n", bytes(empty).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(list).toStdString());
}

TEST_F(AddSounds, WithoutAnyKeptFolderTheTextStaysAsItWas)
{
    setting(u"FolderView"_s, dwordSetting(0));
    setting(u"Soundfiles"_s, stringSetting(u"/neu/a.mp3"_s));
    root().tBrowseFolder.Text = u"alt"_s;
    root().tBrowseFolder.Tag = u"0"_s;
    desktop.choosers.cancel(ChooserKind::Open);
    mnuAddSounds_Click(root());
    EXPECT_EQ("alt", root().tBrowseFolder.Text.value().toStdString()) << "a file is no folder";
    EXPECT_EQ("0", root().tBrowseFolder.Tag.toStdString());
}

TEST_F(AddSounds, TheFolderGoesToTheDatabaseAlone)
{
    setting(u"Soundfiles"_s, stringSetting(u"/m"_s));
    addFolder(u"/neu"_s);
    EXPECT_EQ("/neu", option(u"Soundfiles"_s));
    EXPECT_EQ("/m", readSetting(root(), u"Soundfiles"_s).text().toStdString());
}

TEST_F(AddSounds, ALocalListTakesTheFilesInItsOwnPlace)
{
    const QString outside = u"/k/Liste.m3u"_s;
    put(outside, "/m/a.mp3\r\n/m/b.mp3\r\n");
    catalogue().setSubItem(1, 2, outside);
    catalogue().Tag = u"0"_s;
    click(1);
    const QByteArray before = bytes(outside);
    root().mnuLokalePlayliste.Checked = true;
    addFolder(u"/neu"_s);
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(6, bytes(list).count("\r\n"));
    EXPECT_EQ(before.toStdString(), bytes(outside).toStdString());
}

TEST_F(AddSounds, TheWaitStateHoldsWhileFilesAreAdded)
{
    for (int i = 0; i < 600; ++i)
        put(u"/viele/%1.mp3"_s.arg(i), "x");
    std::string state;
    chooseFolder(u"/viele"_s);
    // The count in the catalogue grows while the files are added.
    QObject::connect(&catalogue(), &QAbstractItemModel::dataChanged, &catalogue(), [&] {
        if (catalogue().subItem(1, 3) != u"258"_s)
            return;
        state = QStringLiteral("%1 %2 %3 %4 <%5>")
                    .arg(root().Pointer.value() == MousePointer::Hourglass ? u"hourglass"_s : u"arrow"_s,
                         tracks().Enabled ? u"on"_s : u"off"_s, root().mnuBearbeiten.Enabled ? u"on"_s : u"off"_s,
                         root().pCopyStatus.Visible ? u"shown"_s : u"hidden"_s, root().tDateiname.Caption.value())
                    .toStdString();
    });
    mnuAddSounds_Click(root());
    EXPECT_EQ("hourglass off off shown </viele>", state);
    EXPECT_EQ(602, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, FileModeAddsOneFileWithoutATestAndStartsInTheFolderOfTheDatabase)
{
    setting(u"FolderView"_s, dwordSetting(0));
    setting(u"Soundfiles"_s, stringSetting(u"/m"_s));
    put(database(), bytes(database()) + "[Options]\r\nSoundfiles=/neu\r\n");
    desktop.choosers.open(u"/m/a.mp3"_s);
    mnuAddSounds_Click(root());
    EXPECT_EQ("101 01 a </m/a.mp3> <a.mp3>\n102 02 b </m/b.mp3> <b.mp3>\n103 03 a </m/a.mp3> <a.mp3>", shown());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/a.mp3\r\n", bytes(list).toStdString());
    const std::string asked = calls({u"choosers"_s});
    for (const char* part : {"\" Sounddatei hinzufügen\"", "\"/neu\"",
                             "\"Sounddateien|*.mp3; *.wma; *.wav|Alle Dateitypen|*.*\"", "\"mp3\""})
        EXPECT_NE(std::string::npos, asked.find(part)) << asked;
    EXPECT_EQ("1", root().tBrowseFolder.Tag.toStdString());
    EXPECT_EQ("", boxes());
    expectWaitOver();
}

TEST_F(AddSounds, TheStartFolderIsThatOfTheSettingsKeyWhereTheOneOfTheDatabaseIsGone)
{
    setting(u"FolderView"_s, dwordSetting(0));
    setting(u"Soundfiles"_s, stringSetting(u"/m"_s));
    put(database(), bytes(database()) + "[Options]\r\nSoundfiles=/fort\r\n");
    desktop.choosers.cancel(ChooserKind::Open);
    mnuAddSounds_Click(root());
    EXPECT_EQ("/m", root().tBrowseFolder.Text.value().toStdString());
    EXPECT_EQ(2, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, AFolderWithFiftyThousandFilesIsListedAndSaved)
{
    constexpr int Many = 50'000;
    for (int i = 0; i < Many; ++i)
        desktop.memory()->put(u"/riesig/%1.mp3"_s.arg(i, 5, 10, QLatin1Char('0')), "x");
    addFolder(u"/riesig"_s);
    EXPECT_EQ(Many + 2, tracks().count());
    EXPECT_EQ("/riesig/49999.mp3", tracks().subItem(Many + 2, 3).toStdString());
    EXPECT_EQ(Many + 2, bytes(list).count("\r\n"));
    expectWaitOver();
}

TEST_F(AddSounds, TheSearchForPresentNamesGivesWhatAPlainTextSearchGives)
{
    std::mt19937 random(7);
    const auto text = [&](int most, const QString& letters) {
        QString result;
        const int length = std::uniform_int_distribution(0, most)(random);
        for (int i = 0; i < length; ++i)
            result += letters[std::uniform_int_distribution<qsizetype>(0, letters.size() - 1)(random)];
        return result;
    };
    for (int round = 0; round < 3000; ++round) {
        const QString whole = text(60, u"aAbB/.Ää"_s);
        const QString start = text(3, u"aA/ä"_s) + u'/';
        QStringList names;
        for (int i = 0; i < 8; ++i)
            names += text(5, u"aAbB.äÄ"_s);
        QStringList plain;
        for (const QString& name : names)
            if (!whole.toLower().contains((start + name).toLower()))
                plain += name;
        ASSERT_EQ(lines(plain), lines(absentNames(whole, start, names)))
            << whole.toStdString() << " " << start.toStdString();
    }
}

} // namespace orvantine::fake
