
#include "app/DisabledButtons.h"
#include "catalogue/CatalogueWorld.h"

#include "catalogue/mnuSpeichern.h"
#include "playlists/GetPlayEntrys.h"
#include "shell/MainWindow.h"

#include <QDir>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString Hint = u"Wenn Sie der aktuellen Wiedergabeliste weitere Audiodateien hinzufügen möchten, ziehen Sie die "
                     u"Datei(en) einfach in die Tabelle mit den Sounddateien."_s;

/// Two playlists: "Liste" as the test lays it out, and "Zuerst", which is open after the start.
class ReadPlaylists : public CatalogueWorld
{
protected:
    explicit ReadPlaylists(const DesktopOptions& options = {}) : CatalogueWorld(options)
    {
        // Missing tracks are not told of.
        setting(u"Error"_s, dwordSetting(0));
        first = putList(u"Zuerst"_s, {putTrack(u"erstes"_s), putTrack(u"zweites"_s)});
    }

    void startWith(const QByteArray& text, const IndexRow& row = {})
    {
        if (!text.isNull())
            put(list, text);
        IndexRow stored = row;
        stored.name = u"Liste"_s;
        stored.path = list;
        putDatabase(indexRow(1, stored) + indexRow(2, {.name = u"Zuerst"_s, .path = first}), sections);
        start();
    }

    void open(const QByteArray& text, const IndexRow& row = {})
    {
        startWith(text, row);
        click(1);
    }

    /// Number, track, name and path of each row.
    [[nodiscard]] std::string shown()
    {
        QStringList all;
        for (int row = 1; row <= tracks().count(); ++row)
            all += u"%1 %2 %3 <%4>%5"_s.arg(tracks().text(row), tracks().subItem(row, 1), tracks().subItem(row, 2),
                                            tracks().subItem(row, 3),
                                            tracks().color(row, 3) == Color::DarkRed ? u" red"_s : QString());
        return lines(all);
    }

    void expectWaitOver()
    {
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(tracks().Enabled.value());
    }

    const QString list = u"/l/liste.m3u"_s;
    QString first;
    QByteArray sections;
};

class ReadHostText : public ReadPlaylists
{
protected:
    ReadHostText() : ReadPlaylists({.adoptsHostTexts = false}) {}
};

class ReadMissing : public ReadPlaylists
{
protected:
    ReadMissing() { setting(u"Error"_s, dwordSetting(1)); }

    /// Start-up tells of the missing list; the click asks whether to go on.
    void openMissing()
    {
        desktop.messages.answer(Answer::Ok, u" Wiedergabelisten überprüfen"_s,
                                u"Es wurden 1 nicht vorhandene Playlisten in der Datenbank gefunden.    \n"
                                u"Überprüfen Sie bitte die Datenbankeinträge oder die Quelldateien."_s);
        startWith({});
        desktop.messages.take();
        desktop.messages.answer(Answer::Retry, u" Liste"_s,
                                u"Die folgende Wiedergabeliste ist nicht vorhanden: \n/l/liste.m3u"_s);
    }

    void answerMoved(Answer answer)
    {
        desktop.messages.answer(answer, u" Songinformationen"_s,
                                u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \n"
                                u"Möchten Sie jetzt die Wiedergabeliste im Dateisystem auswählen ?"_s);
    }
};

/// A real folder that is the current one and holds a file named "bak".
class ReadBackup : public CatalogueWorld
{
protected:
    ReadBackup() : CatalogueWorld({.disk = DiskKind::TemporaryFolder}) {}

    void SetUp() override
    {
        list = desktop.base + u"/l/liste.m3u"_s;
        put(desktop.base + u"/hier/bak"_s, "x");
        put(list + u"bak"_s, "/fehlt/eins.mp3\r\n");
        QDir::setCurrent(desktop.base + u"/hier"_s);
        putDatabase(indexRow(1, {.name = u"Liste"_s, .path = list}));
        setting(u"Error"_s, dwordSetting(0));
        start();
    }
    void TearDown() override { QDir::setCurrent(former); }

    const QString former = QDir::currentPath();
    QString list;
};

} // namespace

TEST_F(ReadPlaylists, ACommentInTheMiddleAndBlankLinesAreGoneFromTheDiskAfterTheFirstDisplay)
{
    open("#EXTM3U\r\n/m/erstes.mp3\r\n\r\n#EXTINF:1,x\r\n/n/fehlt.mp3\r\n\r\n");
    EXPECT_EQ("/m/erstes.mp3\r\n/n/fehlt.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(ReadPlaylists, TheColumnsAndTheRowsAreThoseOfTheList)
{
    open("/m/erstes.mp3\r\n/n/fehlt.mp3\r\n");
    EXPECT_EQ("1 \"ID\" 0\n2 \"Track\" 800\n3 \"Name\" 3600\n4 \"Path\" 2900\n5 \"Datei\" 0",
              lines(columnLines(tracks())));
    EXPECT_EQ("> 1 \"101\" \"01\" \"erstes\" \"/m/erstes.mp3\" \"erstes.mp3\" [icon Icon_2, 1 icon Icon_2]\n"
              "  2 \"102\" \"02\" \"fehlt\" \"/n/fehlt.mp3\" \"fehlt.mp3\" [icon Icon_2, 1 icon Icon_2, 3 darkred]",
              rows(tracks()));
    EXPECT_EQ("Liste", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_TRUE(tracks().Visible.value());
    EXPECT_FALSE(tracks().sorted());
    expectWaitOver();
}

TEST_F(ReadPlaylists, AnUnclosedLastLineIsNotCountedAndDropped)
{
    open("/m/erstes.mp3\r\n/m/zweites.mp3");
    EXPECT_EQ("101 01 erstes </m/erstes.mp3>", shown());
    EXPECT_EQ("/m/erstes.mp3\r\n\r\n", bytes(list).toStdString());
    EXPECT_EQ("(1)", root().tSoundzahl.Caption.value().toStdString());
}

TEST_F(ReadHostText, TextWithLineFeedsOnlyShowsRowsOfTheOldText)
{
    open("/a/1.mp3\n/a/2.mp3\n/a/3.mp3\n");
    EXPECT_EQ("101 01 erstes </m/erstes.mp3>\n102 02 zweites </m/zweites.mp3>", shown());
    EXPECT_EQ("/a/1.mp3\n/a/2.mp3\n/a/3.mp3\n", bytes(list).toStdString());
    EXPECT_EQ("(2)", root().tSoundzahl.Caption.value().toStdString());
}

TEST_F(ReadPlaylists, OneEntryOfFewerThanTenCharactersShowsTheFirstLineOfTheListBefore)
{
    open("a.mp3\r\n");
    EXPECT_EQ("101 01 erstes </m/erstes.mp3>", shown());
    EXPECT_EQ("a.mp3\r\n", bytes(list).toStdString());
}

TEST_F(ReadPlaylists, TheRowsOfTheListBeforeAreNotSavedOverTheFileOfAShortOne)
{
    startWith("a.mp3\r\n");
    for (const char* content : {"a.mp3\r\n", "\r\n", "a.mp3\r"}) {
        put(list, content);
        catalogue().Tag = u"0"_s;
        click(1);
        for (const bool local : {false, true}) {
            root().mnuLokalePlayliste.Checked = local;
            root().mnuFileSave.Click();
            root().mnuSpeichern.Click();
            EXPECT_EQ(content, bytes(list).toStdString()) << local;
            EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString()) << local;
        }
    }
}

TEST_F(ReadHostText, TheRowsOfTheListBeforeAreNotSavedOverTextWithLineFeedsOnly)
{
    open("/a/1.mp3\n/a/2.mp3\n");
    root().mnuLokalePlayliste.Checked = false;
    root().mnuFileSave.Click();
    EXPECT_EQ("/a/1.mp3\n/a/2.mp3\n", bytes(list).toStdString());
}

TEST_F(ReadPlaylists, AListWithoutEntriesIsSavedWithWhatStandsInTheTable)
{
    startWith("#EXTM3U\r\n\r\n");
    root().tPlayliste.Text = QString();
    click(1);
    ASSERT_EQ(0, tracks().count());
    root().mnuLokalePlayliste.Checked = false;
    tracks().append({.Text = u"001"_s, .SubItems = {{}, {}, {.Text = putTrack(u"neu"_s)}}});
    root().mnuFileSave.Click();
    EXPECT_EQ("/m/neu.mp3\r\n", bytes(list).toStdString());
}

TEST_F(ReadPlaylists, AnEntryOf300CharactersIsCutTo256)
{
    const QString entry = u"/x/"_s + QString(293, u'y') + u".mp3"_s;
    open((entry + u"\r\n"_s).toUtf8());
    ASSERT_EQ(1, tracks().count());
    EXPECT_EQ(entry.left(256), tracks().subItem(1, 3));
    EXPECT_EQ((entry + u"\r\n\r\n"_s).toStdString(), bytes(list).toStdString());
}

TEST_F(ReadPlaylists, ABarInAPathSplitsTheRow)
{
    open("/x/links|rechts.mp3\r\n/m/erstes.mp3\r\n");
    // The bar takes the place of a line end, so the last one is left over.
    EXPECT_EQ("101 01 l </x/links> red\n102 02 rechts.mp3 </l/rechts.mp3> red", shown());
    EXPECT_EQ("/x/links|rechts.mp3\r\n/m/erstes.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(ReadPlaylists, AnEmptyLineInTheTextLeavesAGapInTheNumbers)
{
    // A list that cannot be rewritten keeps its empty line.
    startWith("/m/erstes.mp3\r\n\r\n/m/zweites.mp3\r\n\r\n");
    desktop.memory()->setReadOnly(list);
    click(1);
    EXPECT_EQ("101 01 erstes </m/erstes.mp3>\n103 03 zweites </m/zweites.mp3>", shown());
    EXPECT_EQ("/m/erstes.mp3\r\n\r\n/m/zweites.mp3\r\n\r\n", bytes(list).toStdString());
    expectWaitOver();
    EXPECT_EQ("(2)", root().tSoundzahl.Caption.value().toStdString());
}

TEST_F(ReadPlaylists, TheKeysOfAPlsAreRedRowsWithThatText)
{
    open("[playlist]\r\nFile1=C:\\x.mp3\r\n");
    EXPECT_EQ("101 01 [playlist] </l/[playlist]> red\n102 02 x <File1=C:\\x.mp3> red", shown());
}

TEST_F(ReadPlaylists, NamesComeWithoutTheLastFourCharactersIfTheEntryNamesAFolder)
{
    put(u"/l/neben.mp3"_s, "x");
    open("neben.mp3\r\n/m/erstes.flac\r\n/m/abc\r\n/m/a\r\nC:\\m\\zweites.mp3\r\n");
    EXPECT_EQ("101 01 neben.mp3 </l/neben.mp3>\n"
              "102 02 erstes. </m/erstes.flac> red\n"
              "103 03  </m/abc> red\n"
              "104 04  </m/a> red\n"
              "105 05 zweites <C:\\m\\zweites.mp3> red",
              shown());
}

TEST_F(ReadPlaylists, TheNameInTagInfoWins)
{
    put(u"/l/neben.mp3"_s, "x");
    sections = "[TagInfo]\r\n/l/neben.mp3=Wir - Neben\r\n/m/erstes.mp3=Wir - Erstes\r\nneben.mp3=Falsch\r\n";
    open("neben.mp3\r\n/m/erstes.mp3\r\n");
    EXPECT_EQ("101 01 Wir - Neben </l/neben.mp3>\n102 02 Wir - Erstes </m/erstes.mp3>", shown());
}

TEST_F(ReadPlaylists, WidthsBelow500AreIgnored)
{
    setting(u"LV_1"_s, stringSetting(u"499"_s));
    setting(u"LV_2"_s, stringSetting(u"500"_s));
    setting(u"LV_4"_s, stringSetting(u"499"_s));
    setting(u"LV_5"_s, stringSetting(u"500"_s));
    setting(u"LV_6"_s, stringSetting(u"501"_s));
    setting(u"LV_7"_s, stringSetting(u"502"_s));
    open("/m/erstes.mp3\r\n");
    EXPECT_EQ("1 \"ID\" 0\n2 \"Name\" 2800\n3 \"Path\" 0\n4 \"Tracks\" 500", lines(columnLines(catalogue())));
    EXPECT_EQ("1 \"ID\" 0\n2 \"Track\" 800\n3 \"Name\" 500\n4 \"Path\" 501\n5 \"Datei\" 0",
              lines(columnLines(tracks())));
}

TEST_F(ReadPlaylists, OfPathAndFileOnlyOneIsEverSeen)
{
    setting(u"LV_6"_s, stringSetting(u"1000"_s));
    setting(u"LV_7"_s, stringSetting(u"1100"_s));
    startWith("/m/erstes.mp3\r\n");
    struct Case
    {
        bool path, file;
        const char* widths;
    };
    for (const Case& c : {Case{true, false, "1000 0"}, Case{false, true, "0 1100"}, Case{true, true, "0 0"},
                          Case{false, false, "0 0"}}) {
        root().mnuOrvmenu[1].Checked = c.path;
        root().mnuOrvmenu[2].Checked = c.file;
        QString path = list;
        GetPlayEntrys(root(), path);
        EXPECT_EQ(c.widths, u"%1 %2"_s.arg(tracks().columnWidth(4)).arg(tracks().columnWidth(5)).toStdString());
    }
}

TEST_F(ReadPlaylists, OfTheCoversTheBmpWinsAndThePaneOpens)
{
    struct Case
    {
        QStringList covers;
        const char* shown;
    };
    for (const Case& c : {Case{{u".jpg"_s}, "Resource/Liste.jpg"}, Case{{u".jpg"_s, u".gif"_s}, "Resource/Liste.gif"},
                          Case{{u".jpg"_s, u".gif"_s, u".bmp"_s}, "Resource/Liste.bmp"},
                          Case{{u".bmp"_s, u".jpg"_s}, "Resource/Liste.bmp"}}) {
        SCOPED_TRACE(c.shown);
        desktop.newProcess();
        for (const QString& extension : {u".jpg"_s, u".gif"_s, u".bmp"_s})
            desktop.disk().remove(data() + u"Resource/Liste"_s + extension);
        for (const QString& extension : c.covers)
            put(data() + u"Resource/Liste"_s + extension, "bild");
        startWith("/m/erstes.mp3\r\n");
        EXPECT_FALSE(root().mnuCoverShow.Checked.value());
        EXPECT_EQ("", root().pCovers.Picture.value().toStdString());
        click(1);
        EXPECT_EQ((data() + QLatin1StringView(c.shown)).toStdString(), root().pCovers.Picture.value().toStdString());
        EXPECT_TRUE(root().mnuCoverShow.Checked.value());
        EXPECT_TRUE(root().pCoverBack.Visible.value());
    }
}

TEST_F(ReadPlaylists, AListWithoutACoverClearsTheOneBeforeAndLeavesThePaneOpen)
{
    put(data() + u"Resource/Liste.jpg"_s, "bild");
    open("/m/erstes.mp3\r\n");
    ASSERT_FALSE(root().pCovers.Picture.value().isEmpty());
    catalogue().select(2);
    QString path = first;
    GetPlayEntrys(root(), path);
    EXPECT_EQ("", root().pCovers.Picture.value().toStdString());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
}

TEST_F(ReadPlaylists, TheDateOfTheLastRowsTrackIsWrittenWhereNoneStands)
{
    desktop.memory()->setModified(u"/m/zweites.mp3"_s, QDateTime(QDate(2003, 2, 1), QTime(12, 0)));
    startWith("/m/erstes.mp3\r\n/m/zweites.mp3\r\n", {.date = {}});
    const QByteArray before = bytes(database());
    click(1);
    EXPECT_EQ("01.02.2003", root().tDatum.Caption.value().toStdString());
    EXPECT_EQ((before + "1f=01.02.2003\r\n").toStdString(), bytes(database()).toStdString());
}

TEST_F(ReadPlaylists, AMissingLastTrackGivesNoDate)
{
    startWith("/m/erstes.mp3\r\n/m/fehlt.mp3\r\n", {.date = {}});
    const QByteArray before = bytes(database());
    click(1);
    EXPECT_EQ("", root().tDatum.Caption.value().toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(ReadPlaylists, AStoredDateIsShownAsItStands)
{
    open("/m/erstes.mp3\r\n", {.date = u"irgendwann"_s});
    EXPECT_EQ("irgendwann", root().tDatum.Caption.value().toStdString());
}

TEST_F(ReadPlaylists, TheDescriptionIsShownAndMarkedElseTheHint)
{
    open("/m/erstes.mp3\r\n", {.description = u"Für die Fahrt"_s});
    EXPECT_EQ("Für die Fahrt", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());
    click(2);
    EXPECT_EQ(Hint.toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
}

TEST_F(ReadPlaylists, TheTrackCountIsVisibleOnlyWithTheListPositions)
{
    startWith("/m/erstes.mp3\r\n\r\n/m/zweites.mp3\r\n");
    for (const bool positions : {false, true}) {
        root().mnuPositionen.Checked = positions;
        root().tSoundzahl.Visible = false;
        QString path = list;
        GetPlayEntrys(root(), path);
        EXPECT_EQ("(2)", root().tSoundzahl.Caption.value().toStdString());
        EXPECT_EQ(positions, root().tSoundzahl.Visible.value());
    }
}

TEST_F(ReadPlaylists, AnEmptyListEndsWithTheTracksOutOfSight)
{
    open("");
    EXPECT_EQ(0, tracks().count());
    EXPECT_FALSE(tracks().Visible.value());
    EXPECT_EQ("0", root().tSoundzahl.Caption.value().toStdString());
    EXPECT_EQ("", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(ReadPlaylists, AnEmptyPathDoesNothing)
{
    startWith("/m/erstes.mp3\r\n");
    const std::string before = rows(tracks());
    forgetCalls();
    QString path;
    GetPlayEntrys(root(), path);
    EXPECT_EQ("", lines(desktop.log.take()));
    EXPECT_EQ(before, rows(tracks()));
}

TEST_F(ReadPlaylists, OfMoreThan32767EntriesTheFirst32767AreShown)
{
    open(QByteArray("/x/y.mp3\r\n").repeated(32768));
    EXPECT_EQ(32767, tracks().count());
    EXPECT_EQ(32768, bytes(list).count("/x/y.mp3\r\n"));
}

TEST_F(ReadPlaylists, AReadOnlyListIsShownAllTheSame)
{
    startWith("#k\r\n/m/erstes.mp3\r\n/m/zweites.mp3\r\n");
    desktop.memory()->setReadOnly(list);
    click(1);
    // Nothing was rewritten: the comment is a row now, and one line end is missing for the last.
    EXPECT_EQ("101 01 #k </l/#k> red\n102 02 erstes </m/erstes.mp3>", shown());
    EXPECT_EQ("#k\r\n/m/erstes.mp3\r\n/m/zweites.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(ReadMissing, AHiddenWindowAsksNothingAndTheTracksStayEmptyAndOutOfSight)
{
    openMissing();
    root().Visible = false;
    click(1);
    EXPECT_EQ(0, tracks().count());
    EXPECT_FALSE(tracks().Visible.value());
    expectWaitOver();
    EXPECT_EQ("(missing)", bytes(list).toStdString());
}

TEST_F(ReadMissing, WithErrorMessagesOffNothingIsAsked)
{
    openMissing();
    root().mnuErrorDisplay.Checked = false;
    click(1);
    EXPECT_EQ(0, tracks().count());
    EXPECT_FALSE(tracks().Visible.value());
    expectWaitOver();
}

TEST_F(ReadMissing, NoLeavesTheListEmptyAndTheRowRed)
{
    openMissing();
    answerMoved(Answer::No);
    click(1);
    EXPECT_EQ(0, tracks().count());
    EXPECT_FALSE(tracks().Visible.value());
    EXPECT_EQ(Color::DarkRed, catalogue().color(1, 1));
    expectWaitOver();
}

TEST_F(ReadMissing, AnotherFileIsCopiedToTheOldPlaceAndTheColoursComeBack)
{
    put(u"/neu/ort.m3u"_s, "/m/erstes.mp3\r\n/m/zweites.mp3\r\n");
    putFolder(u"/l"_s);
    openMissing();
    answerMoved(Answer::Yes);
    desktop.choosers.open(u"/neu/ort.m3u"_s);
    forgetCalls();
    click(1);
    EXPECT_EQ("/m/erstes.mp3\r\n/m/zweites.mp3\r\n\r\n", bytes(list).toStdString());
    EXPECT_EQ("/m/erstes.mp3\r\n/m/zweites.mp3\r\n", bytes(u"/neu/ort.m3u"_s).toStdString());
    EXPECT_EQ("101 01 erstes </m/erstes.mp3>\n102 02 zweites </m/zweites.mp3>", shown());
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 1));
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 3));
    EXPECT_TRUE(tracks().Visible.value());
    expectWaitOver();
    EXPECT_EQ("choosers.open title \"Datei öffnen\" folder \"/l/\" name \"liste.m3u\" filter "
              "\"Mp3-Wiedergabeliste|*.m3u; *.pls; *.nml|Mp3 Playliste|*.m3u|Winamp Wiedergabeliste|*.pls|Traktor "
              "Playliste|*.nml|Alle Dateitypen|*.*\" extension \"m3u\"",
              calls({u"choosers"_s}));
}

TEST_F(ReadMissing, AFileAtTheTopOfTheFileSystemCanBeChosen)
{
    put(u"/ort.m3u"_s, "/m/erstes.mp3\r\n");
    putFolder(u"/l"_s);
    openMissing();
    answerMoved(Answer::Yes);
    desktop.choosers.open(u"/ort.m3u"_s);
    click(1);
    EXPECT_EQ("101 01 erstes </m/erstes.mp3>", shown());
}

TEST_F(ReadMissing, NothingChosenEndsTheWait)
{
    openMissing();
    answerMoved(Answer::Yes);
    desktop.choosers.cancel(ChooserKind::Open);
    click(1);
    EXPECT_EQ(0, tracks().count());
    EXPECT_FALSE(tracks().Visible.value());
    EXPECT_EQ("(missing)", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(ReadMissing, AResultOfFewerThanFourCharactersIsNothing)
{
    openMissing();
    answerMoved(Answer::Yes);
    desktop.choosers.queue.push(
        {.kind = ChooserKind::Open, .file = ChosenFile{u"/"_s, u"ab"_s}, .folder = {}, .font = {}, .meanwhile = {}});
    click(1);
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("(missing)", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(ReadBackup, AFileNamedBakInTheCurrentFolderBringsTheOtherQuestion)
{
    struct Case
    {
        const char* name;
        bool visible, errors, asked;
        Answer answer;
        bool restored;
    };
    for (const Case& c :
         {Case{"hidden", false, true, false, Answer::No, false},
          Case{"messages off", true, false, false, Answer::No, false}, Case{"no", true, true, true, Answer::No, false},
          Case{"yes", true, true, true, Answer::Yes, true}}) {
        SCOPED_TRACE(c.name);
        root().Visible = c.visible;
        root().mnuErrorDisplay.Checked = c.errors;
        if (c.asked)
            desktop.messages.answer(c.answer, u" Songinformationen"_s,
                                    u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \n"
                                    u"Eine Sicherungsdatei der Playliste ist im Ordner jedoch vorhanden.\n \n"
                                    u"Möchten Sie diese Backupdatei der Playliste wiederherstellen ?"_s);
        // The copy went to path + "m3u", so the list is still missing and the question comes again.
        if (c.restored)
            desktop.messages.answer(Answer::No);
        DisabledButtons(root(), 1);
        QString path = list;
        GetPlayEntrys(root(), path);
        EXPECT_EQ(0, tracks().count());
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
        EXPECT_EQ(c.restored ? "(missing)" : "/fehlt/eins.mp3\r\n", bytes(list + u"bak"_s).toStdString());
        EXPECT_EQ(c.restored ? "/fehlt/eins.mp3\r\n" : "(missing)", bytes(list + u"m3u"_s).toStdString());
    }
}

/// Whatever keeps a read from showing all of a list: no save, local or not, writes over its file.
TEST_F(ReadPlaylists, AListThatWasNotReadWholeIsNeverSaved)
{
    struct Case
    {
        const char* what;
        QByteArray bytes;
        int failingRead;
        bool missingAtTheClick;
    };
    const QByteArray whole = "/m/erstes.mp3\r\n/m/zweites.mp3\r\n\r\n";
    for (const bool local : {false, true}) {
        for (const Case& one : {Case{"first read", whole, 1, false}, Case{"second read", whole, 2, false},
                                Case{"third read", whole, 3, false}, Case{"fourth read", whole, 4, false},
                                Case{"CR only", "/m/erstes.mp3\r/m/zweites.mp3\r", 0, false},
                                Case{"CR and CR LF", "/m/erstes.mp3\r/m/zweites.mp3\r\n", 0, false},
                                Case{"missing at the click", whole, 0, true}}) {
            SCOPED_TRACE(std::string(one.what) + (local ? ", local" : ""));
            desktop.newProcess();
            const QString path = u"/l/Liste.m3u"_s;
            put(path, one.bytes);
            putDatabase(indexRow(1, {.name = u"Liste"_s, .path = path, .tracks = u"2"_s}) +
                        indexRow(2, {.name = u"Andere"_s, .path = putList(u"Andere"_s, {putTrack(u"x"_s)})}));
            setting(u"Error"_s, dwordSetting(0));
            start();
            root().mnuErrorDisplay.Checked = false;
            root().mnuLokalePlayliste.Checked = local;
            if (one.missingAtTheClick) {
                desktop.disk().remove(path);
                desktop.messages.answer(Answer::Retry);
            }
            if (one.failingRead > 0)
                desktop.log.failNext(u"files.readPlaylist"_s, one.failingRead);
            click(1);
            if (one.missingAtTheClick)
                put(path, one.bytes);
            desktop.log.failCall(0);
            root().mnuFileSave.Click();
            root().mnuSpeichern.Click();

            QByteArray entries;
            for (const QByteArray& name : {QByteArray("/m/erstes.mp3"), QByteArray("/m/zweites.mp3")}) {
                EXPECT_TRUE(bytes(catalogue().subItem(1, 2)).contains(name)) << name.toStdString();
                EXPECT_TRUE(bytes(path).contains(name)) << name.toStdString();
            }
        }
    }
}

} // namespace orvantine::fake
