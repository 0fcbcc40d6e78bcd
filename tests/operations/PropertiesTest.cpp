#include "operations/Properties.h"

#include "playback/PlaybackWorld.h"

#include "operations/Eigenschaften.h"
#include "playlists/ReadPlaylists.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Erste" is open with two tracks.
class Properties : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    Eigenschaften& form() { return *root().eigenschaften; }
    void open()
    {
        root().mnuEigenschaften.Click();
        ASSERT_TRUE(form().Visible.value());
        forgetCalls();
    }
    [[nodiscard]] std::string key(int row, char letter)
    {
        return root()
            .services.profiles.value(database(), u"Index"_s, QString::number(row) + QLatin1Char(letter))
            .toStdString();
    }
    void refuse(const QString& text) { desktop.messages.answer(Answer::Ok, u" Eigenschaften"_s, text); }

    // The repair of a missing source
    void lose(const QString& name) { desktop.disk().remove(u"/m/"_s + name + u".mp3"_s); }
    void answerMissing(Answer answer, const QString& file)
    {
        desktop.messages.answer(answer, u" Fehlerhafte Quelldatei(en)"_s,
                                u"Die Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner. \n"
                                u"Wahrscheinlich wurde die Datei(en) im Verzeichnis gelöscht oder verschoben.\n"
                                u"\n"
                                u"Klicken Sie ''Wiederholen'' um den Ordner für die Sounddatei anzugeben, \n"
                                u"oder klicken Sie ''Ignorieren'' um einen Netzwerkordner zu wählen.\n"_s +
                                    file);
    }
    void answerAll(Answer answer)
    {
        desktop.messages.answer(
            answer, u" Playlisten-Verzeichnis"_s,
            u"Möchten Sie für alle dieser Liste enthalten Tracks diesen als Quellordner verwenden ?   "_s);
    }
    [[nodiscard]] std::string paths()
    {
        QStringList all;
        for (int row = 1; row <= tracks().count(); ++row)
            all += tracks().subItem(row, 3) + (tracks().color(row, 3) == Color::DarkRed ? u" rot"_s : QString());
        return lines(all);
    }
    void markRed()
    {
        for (int row = 1; row <= tracks().count(); ++row)
            for (const int sub : {1, 3})
                tracks().setColor(row, sub, Color::DarkRed);
    }

    const QString noName = u"Bitte geben Sie eine korrekte Bezeichnung für diese Wiedergabeliste ein.   "_s;
    const QString noFile = u"Die eingetragene Wiedergabeliste konnte nicht gefunden werden.   "_s;
    const QString askText = u"Geben Sie bitte eine Beschreibung für die Wiedergabeliste ein:"_s;
};

struct DateCase
{
    const char* typed;
    const char* text;
    bool kept;
};

} // namespace

TEST_F(Properties, TheDialogShowsWhatTheCatalogueKnows)
{
    root().services.profiles.setValue(database(), u"Index"_s, u"1e"_s, u"Worum es geht"_s);
    put(data() + u"Resource/Erste.jpg"_s, "j");
    put(data() + u"Resource/Erste.bmp"_s, "b");
    EXPECT_EQ("<Wiedergabeliste>", form().tName.Caption.value().toStdString());
    EXPECT_EQ("Enthält 0 Tracks", form().tTracks.Caption.value().toStdString());
    open();
    EXPECT_EQ("Erste", form().tName.Caption.value().toStdString());
    EXPECT_EQ("2 Tracks", form().tTracks.Caption.value().toStdString());
    EXPECT_EQ("Erste", form().tPlaylistname.Text.value().toStdString());
    EXPECT_EQ(listPath(u"Erste"_s).toStdString(), form().tPlayliste.Text.value().toStdString());
    EXPECT_EQ("Worum es geht", form().tBeschreibung.Text.value().toStdString());
    EXPECT_EQ("01.02.2003", form().tDatum.Text.value().toStdString());
    EXPECT_EQ((data() + u"Resource/Erste.bmp"_s).toStdString(), form().tAlbumCover.Text.value().toStdString());
    EXPECT_TRUE(desktop.forms().modal().isEmpty());
}

TEST_F(Properties, TheDialogTakesTheDateOfTheMainWindow)
{
    root().tDatum.Caption = u"24.12.1999"_s;
    open();
    EXPECT_EQ("24.12.1999", form().tDatum.Text.value().toStdString());
}

TEST_F(Properties, WithoutASelectedPlaylistNoDialogOpensAndWithoutASelectedTrackItDoes)
{
    tracks().clearSelection();
    open();
    form().bAbbrechen.Click();
    catalogue().clearSelection();
    root().mnuEigenschaften.Click();
    EXPECT_FALSE(form().Visible.value());
}

TEST_F(Properties, CancelChangesNothing)
{
    const std::string before = rows(catalogue()) + databaseText();
    open();
    form().tPlaylistname.Text = u"Anders"_s;
    form().tDatum.Text = u"x"_s;
    form().bAbbrechen.Click();
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ("", actions());
    EXPECT_EQ(before, rows(catalogue()) + databaseText());
}

TEST_F(Properties, HelpOpensItsTopic)
{
    put(desktop.folders.program + u"/Orvantine.chm"_s, "x");
    open();
    form().bHilfe.Click();
    EXPECT_NE(std::string::npos, calls({u"launcher"_s}).find("Orvantine.chm::/1.9 Eigenschaften bearbeiten.htm"));
    EXPECT_TRUE(form().Visible.value());
}

TEST_F(Properties, AFieldThatGetsTheFocusIsSelectedWhole)
{
    open();
    for (TextBox* field : {&form().tDatum, &form().tPlayliste, &form().tPlaylistname}) {
        field->SelStart = 3;
        field->GotFocus();
        EXPECT_EQ(0, field->SelStart.value());
        EXPECT_EQ(field->Text.value().size(), field->SelLength.value());
    }
    EXPECT_FALSE(form().tBeschreibung.GotFocus);
    EXPECT_FALSE(form().tAlbumCover.GotFocus);
}

TEST_F(Properties, AcceptedFieldsGoToRowWindowAndDatabaseInThisOrder)
{
    open();
    put(u"/m/Neu.m3u"_s, "/m/Erste 1.mp3\r\n");
    form().tPlaylistname.Text = u"Neuer Name"_s;
    form().tPlayliste.Text = u"\"/m/Neu.m3u\""_s;
    form().tBeschreibung.Text = u"Schön"_s;
    form().tDatum.Text = u"05.06.2007"_s;
    forgetCalls();
    form().BReady.Click();
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ("Neuer Name", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("/m/Neu.m3u", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("Schön", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());
    EXPECT_EQ("05.06.2007", root().tDatum.Caption.value().toStdString());
    EXPECT_EQ("Neuer Name", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("Neuer Name /m/Neu.m3u Schön 05.06.2007",
              key(1, 'b') + ' ' + key(1, 'c') + ' ' + key(1, 'e') + ' ' + key(1, 'f'));
    EXPECT_EQ("1", key(1, 'g'));
    // The tracks in sight are those of the old file: they are never written to the new one.
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    root().mnuFileSave.Click();
    EXPECT_EQ("/m/Erste 1.mp3\r\n", bytes(u"/m/Neu.m3u"_s).toStdString());
}

TEST_F(Properties, TheFourKeysAreWrittenInThisOrder)
{
    open();
    form().tBeschreibung.Text = u"Worum"_s;
    for (const QString& name : {u"1b"_s, u"1c"_s, u"1e"_s, u"1f"_s})
        root().services.profiles.removeKey(database(), u"Index"_s, name);
    form().BReady.Click();
    EXPECT_EQ("1b 1c 1e 1f", root()
                                 .services.profiles.keys(database(), u"Index"_s)
                                 .mid(root().services.profiles.keys(database(), u"Index"_s).size() - 4)
                                 .join(u' ')
                                 .toStdString());
}

TEST_F(Properties, DialogAndDescriptionFollowTheProgramsName)
{
    const std::string before = databaseText();
    root().services.start.stem = u"Anders"_s;
    const QString other = data() + u"Anders.dat"_s;
    desktop.messages.enter(u"Neu beschrieben"_s);
    desktop.messages.answer(Answer::No);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("Neu beschrieben", root().services.profiles.value(other, u"Index"_s, u"1e"_s).toStdString());
    open();
    form().BReady.Click();
    EXPECT_EQ("Erste", root().services.profiles.value(other, u"Index"_s, u"1b"_s).toStdString());
    EXPECT_EQ(before, databaseText());
}

TEST_F(Properties, TheHeadingFollowsTheNameOfTheListThatIsShown)
{
    catalogue().Tag = u"0"_s;
    open();
    form().tPlaylistname.Text = u"Anders"_s;
    form().BReady.Click();
    EXPECT_EQ("Anders", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(Properties, ATextThatIsTheHintButForItsLastLetterIsADescription)
{
    const QString text = u"Wenn Sie der aktuellen Wiedergabelist"_s;
    open();
    form().tBeschreibung.Text = text;
    form().BReady.Click();
    EXPECT_EQ(text.toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());
}

TEST_F(Properties, OneQuoteGoesFromEachEnd)
{
    open();
    form().tPlayliste.Text = u"\"\"/m/a\"\""_s;
    refuse(noFile);
    form().BReady.Click();
    open();
    form().tPlayliste.Text = u'"' + listPath(u"Erste"_s);
    form().BReady.Click();
    EXPECT_EQ(listPath(u"Erste"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
}

TEST_F(Properties, AnEmptyNameIsToldAndTheDialogStays)
{
    const std::string before = rows(catalogue()) + databaseText();
    open();
    form().tPlaylistname.Text = QString();
    refuse(noName);
    form().BReady.Click();
    EXPECT_TRUE(form().Visible.value());
    EXPECT_EQ("box title \" Eigenschaften\" text \"Bitte geben Sie eine korrekte Bezeichnung für diese Wiedergabeliste "
              "ein.   \" icon critical buttons ok answer ok",
              boxes());
    EXPECT_EQ(before, rows(catalogue()) + databaseText());
}

TEST_F(Properties, AMissingFileIsToldAndTheFieldGoesBackToTheRowsPath)
{
    open();
    form().tPlayliste.Text = u"/m/nirgends.m3u"_s;
    refuse(noFile);
    form().BReady.Click();
    EXPECT_TRUE(form().Visible.value());
    EXPECT_EQ("box title \" Eigenschaften\" text \"Die eingetragene Wiedergabeliste konnte nicht gefunden werden.   \" "
              "icon critical buttons ok answer ok",
              boxes());
    EXPECT_EQ(listPath(u"Erste"_s).toStdString(), form().tPlayliste.Text.value().toStdString());
}

TEST_F(Properties, AnotherNameMovesAllPictures)
{
    for (const QString& extension : {u"jpg"_s, u"gif"_s, u"bmp"_s})
        put(data() + u"Resource/Erste."_s + extension, extension.toUtf8());
    open();
    form().tPlaylistname.Text = u"Neu"_s;
    form().BReady.Click();
    for (const QString& extension : {u"jpg"_s, u"gif"_s, u"bmp"_s}) {
        EXPECT_EQ("(missing)", bytes(data() + u"Resource/Erste."_s + extension));
        EXPECT_EQ(extension.toUtf8(), bytes(data() + u"Resource/Neu."_s + extension));
    }
}

TEST_F(Properties, APictureIsNeverLostByAnotherCaseAFailingCopyOrANameThatLeavesTheFolder)
{
    const QString picture = data() + u"Resource/Erste.jpg"_s;
    put(picture, "j");
    for (const QString& name : {u"ERSTE"_s, u"Er?te"_s, u"../Erste"_s}) {
        SCOPED_TRACE(name.toStdString());
        open();
        form().tPlaylistname.Text = name;
        form().BReady.Click();
        EXPECT_EQ("j", bytes(picture));
        catalogue().setSubItem(1, 1, u"Erste"_s);
    }
    EXPECT_EQ("(missing)", bytes(data() + u"Erste.jpg"_s));
}

TEST_F(Properties, AnEmptyDescriptionBringsTheHintAndItsMark)
{
    root().LSoundCaption.Tag = u"1"_s;
    open();
    form().tBeschreibung.Text = QString();
    form().BReady.Click();
    EXPECT_EQ(addTracksHint().toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
    EXPECT_EQ("", key(1, 'e'));
}

TEST_F(Properties, ATextThatBeginsWithTheHintNeitherShowsNorMarks)
{
    root().LSoundCaption.Caption = u"Vorher"_s;
    root().LSoundCaption.Tag = u"0"_s;
    open();
    form().tBeschreibung.Text = u"Wenn Sie der aktuellen Wiedergabeliste lauschen"_s;
    form().BReady.Click();
    EXPECT_EQ("Vorher", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
    EXPECT_EQ("Wenn Sie der aktuellen Wiedergabeliste lauschen", key(1, 'e'));
}

TEST_F(Properties, ATextOfTheOtherHintIsBlanked)
{
    open();
    form().tBeschreibung.Text = u"Fügen Sie Audiodateien ihrer Playlisten hinzu."_s;
    form().BReady.Click();
    EXPECT_EQ("", key(1, 'e'));
    EXPECT_EQ(addTracksHint().toStdString(), root().LSoundCaption.Caption.value().toStdString());
}

TEST_F(Properties, AChangedSelectionRedirectsTheSaveToTheRowThatIsSelectedNow)
{
    open();
    form().tPlaylistname.Text = u"Umgeleitet"_s;
    catalogue().select(3);
    form().BReady.Click();
    EXPECT_EQ("Erste", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Umgeleitet", catalogue().subItem(3, 1).toStdString());
    EXPECT_EQ("Umgeleitet", key(3, 'b'));
    EXPECT_EQ("Erste", key(1, 'b'));
}

TEST_F(Properties, WithNoRowLeftTheDialogOnlyCloses)
{
    open();
    catalogue().clear();
    form().BReady.Click();
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ("", actions());
}

TEST_F(Properties, ADateTakesDigitsDotsAndEditingKeysAndBeepsAtTheRest)
{
    open();
    for (TextBox* field : {&form().tDatum, &form().tAlbumCover}) {
        for (const int key : {1, 3, 8, 24, 46, int{u'0'}, int{u'5'}, int{u'9'}})
            EXPECT_EQ(key, field->KeyPress(key)) << key;
        EXPECT_EQ(46, field->KeyPress(44));
        EXPECT_EQ("", calls({u"messages.beep"_s}));
        for (const int key : {2, 22, 26, 32, 45, 47, 58, int{u'a'}, 0xE4, 0x20AC}) {
            desktop.log.take();
            EXPECT_EQ(0, field->KeyPress(key)) << key;
            EXPECT_EQ("messages.beep", calls({u"messages.beep"_s})) << key;
        }
        desktop.log.take();
    }
    EXPECT_FALSE(form().tPlaylistname.KeyPress);
    EXPECT_FALSE(form().tPlayliste.KeyPress);
    EXPECT_FALSE(form().tBeschreibung.KeyPress);
}

TEST_F(Properties, EnterIsDroppedAndGoesOnFromTheCoverToTheDescription)
{
    open();
    QStringList way;
    form().tDatum.SendTab = [&] { way += u"tab"_s; };
    form().tAlbumCover.SendTab = [&] { way += u"tab2"_s; };
    form().tBeschreibung.SetFocus = [&] { way += u"description"_s; };
    EXPECT_EQ(0, form().tDatum.KeyPress(13));
    EXPECT_EQ("tab", way.join(u' ').toStdString());
    EXPECT_EQ(0, form().tAlbumCover.KeyPress(13));
    EXPECT_EQ("tab tab2 description", way.join(u' ').toStdString());
    EXPECT_EQ("", calls({u"messages.beep"_s}));
}

TEST_F(Properties, TheShortFormsOfADateAreWrittenOut)
{
    open();
    for (const DateCase& c : {DateCase{"010203", "01.02.2003", false},
                              {"010299", "01.02.1999", false},
                              {"010250", "01.02.1950", false},
                              {"010249", "01.02.2049", false},
                              {"01.02", "01.02.2026", false},
                              {"01.02.03", "01.02.2003", false},
                              {"01.02.50", "01.02.1950", false},
                              {"01022003", "01.02.2003", false},
                              {"32.13.2001", "32.13.2001", false},
                              {"01.02.2003", "01.02.2003", false},
                              {"", "", true},
                              {"1.2", "1.2", true},
                              {"1.234", "1.234", true},
                              {"01.2.2", "01.2.2", true},
                              {"1.2.2003", "1.2.202003", true},
                              {"0102.003", "0102.02003", true},
                              {"01.0272003", "01.0272003", true},
                              {"0102", "0102", true},
                              {"01022", "01022", true},
                              {"01.02.20031", "01.02.20031", true}}) {
        const std::string typed = c.typed;
        form().tDatum.Text = QString::fromLatin1(c.typed);
        EXPECT_EQ(c.kept, form().tDatum.Validate()) << typed;
        EXPECT_EQ(c.text, form().tDatum.Text.value().toStdString()) << typed;
    }
}

TEST_F(Properties, ThePictureButtonClicksTheCoverAndTakesTheLastPictureThatIsThere)
{
    open();
    int clicks = 0;
    int focused = 0;
    root().pCovers.Click = [&] {
        ++clicks;
        put(data() + u"Resource/Erste.jpg"_s, "j");
        put(data() + u"Resource/Erste.gif"_s, "g");
    };
    form().tAlbumCover.SetFocus = [&] { ++focused; };
    form().bFindPic.Click();
    EXPECT_EQ(1, clicks);
    EXPECT_EQ(1, focused);
    EXPECT_EQ((data() + u"Resource/Erste.gif"_s).toStdString(), form().tAlbumCover.Text.value().toStdString());
}

TEST_F(Properties, ADescriptionIsAskedForShownMarkedAndWritten)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    desktop.messages.enter(u"Für den Abend"_s);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("input title \" Beschreibung der Playliste\" text \"Geben Sie bitte eine Beschreibung für die "
              "Wiedergabeliste ein:\" default \"\" entered \"Für den Abend\"",
              boxes());
    EXPECT_EQ("Für den Abend", key(1, 'e'));
    EXPECT_EQ("Für den Abend", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("1", root().LSoundCaption.Tag.toStdString());

    desktop.messages.enter(u"Anders"_s);
    root().mnuBeschriftung.Click();
    EXPECT_NE(std::string::npos, boxes().find("default \"Für den Abend\""));
}

TEST_F(Properties, WithoutACoverADescriptionLeadsToTheQuestionForOne)
{
    int clicks = 0;
    root().pCovers.Click = [&] { ++clicks; };
    const QString question = u"Möchten Sie zu dem Album ein CD-Cover hinzufügen ?   "_s;
    desktop.messages.enter(u"Text"_s);
    desktop.messages.answer(Answer::No, u" Beschreibung der Playliste"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ(0, clicks);
    desktop.messages.take();
    desktop.messages.enter(u"Text"_s);
    desktop.messages.answer(Answer::Yes, u" Beschreibung der Playliste"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ(1, clicks);
    EXPECT_NE(std::string::npos, boxes().find("icon question buttons yes-no"));
}

TEST_F(Properties, AnEmptyAnswerTakesADescriptionAwayAfterAQuestion)
{
    const QString question = u"Möchten Sie die Beschreibung der Playliste wirklich löschen ?   "_s;
    root().services.profiles.setValue(database(), u"Index"_s, u"1e"_s, u"Alt"_s);
    root().LSoundCaption.Caption = u"Alt"_s;
    root().LSoundCaption.Tag = u"1"_s;
    desktop.messages.enter({});
    desktop.messages.answer(Answer::No, u" Beschreibung entfernen"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ("Alt", key(1, 'e'));
    EXPECT_EQ("Alt", root().LSoundCaption.Caption.value().toStdString());
    EXPECT_NE(std::string::npos, boxes().find("icon exclamation buttons yes-no"));

    desktop.messages.enter({});
    desktop.messages.answer(Answer::Yes, u" Beschreibung entfernen"_s, question);
    root().mnuBeschriftung.Click();
    EXPECT_EQ(-1, bytes(database()).indexOf("1e"));
    EXPECT_EQ(addTracksHint().toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
}

TEST_F(Properties, AnEmptyAnswerToTheHintAsksNothingAndKeepsTheHint)
{
    ASSERT_TRUE(isHint(root().LSoundCaption.Caption));
    desktop.messages.enter({});
    root().LSoundCaption.Tag = u"1"_s;
    root().mnuBeschriftung.Click();
    EXPECT_EQ(addTracksHint().toStdString(), root().LSoundCaption.Caption.value().toStdString());
    EXPECT_EQ("0", root().LSoundCaption.Tag.toStdString());
}

TEST_F(Properties, WithoutASelectedRowNoDescriptionIsAskedFor)
{
    catalogue().clearSelection();
    root().mnuBeschriftung.Click();
    catalogue().clear();
    root().mnuBeschriftung.Click();
    EXPECT_EQ("", boxes());
}

TEST_F(Properties, ADescriptionGoesNowhereWhenAnotherRowWasChosenMeanwhile)
{
    desktop.messages.script({Answer::Ok, u"Text"_s, {}, {}, [this] { catalogue().select(2); }});
    forgetCalls();
    root().mnuBeschriftung.Click();
    EXPECT_EQ("", actions());
}

TEST_F(Properties, ThePencilAndADoubleClickOnTheHeadingAskForTheDescription)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    desktop.messages.enter(u"Eins"_s);
    root().pTrayicon.Click();
    EXPECT_EQ("Eins", key(1, 'e'));
    desktop.messages.enter(u"Zwei"_s);
    root().tBeschreibung.DblClick();
    EXPECT_EQ("Zwei", key(1, 'e'));
    root().tDateiname.Enabled = false;
    root().pTrayicon.Click();
    root().tBeschreibung.DblClick();
    EXPECT_EQ("Zwei", key(1, 'e'));
}

TEST_F(Properties, ALongDescriptionComesBackWith254Characters)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    desktop.messages.enter(QString(300, u'x'));
    root().mnuBeschriftung.Click();
    root().mnuEigenschaften.Click();
    EXPECT_EQ(254, form().tBeschreibung.Text.value().size());
}

TEST_F(Properties, AMissingTrackAsksForItsFolderInsteadAndAbortLeavesTheList)
{
    lose(u"Erste 1"_s);
    const std::string before = paths();
    answerMissing(Answer::Abort, u"Erste 1.mp3"_s);
    forgetCalls();
    root().mnuEigenschaften.Click();
    EXPECT_EQ(
        "box title \" Fehlerhafte Quelldatei(en)\" text \"Die Sounddatei(en) befindet sich nicht mehr am "
        "ursprünglichen Speicherordner. \\nWahrscheinlich wurde die Datei(en) im Verzeichnis gelöscht oder "
        "verschoben.\\n\\nKlicken Sie ''Wiederholen'' um den Ordner für die Sounddatei anzugeben, \\noder klicken "
        "Sie ''Ignorieren'' um einen Netzwerkordner zu wählen.\\nErste 1.mp3\" icon exclamation buttons "
        "abort-retry-ignore answer abort",
        boxes());
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ(before, paths());
    EXPECT_EQ("", calls({u"choosers"_s}));
    EXPECT_EQ("", actions());
}

TEST_F(Properties, InAHiddenWindowTheDialogOpensWhateverIsMissing)
{
    lose(u"Erste 1"_s);
    root().Visible = false;
    root().mnuEigenschaften.Click();
    EXPECT_TRUE(form().Visible.value());
}

TEST_F(Properties, RetryLooksFromTheComputerAndIgnoreFromTheNetwork)
{
    lose(u"Erste 1"_s);
    for (const Answer answer : {Answer::Retry, Answer::Ignore}) {
        answerMissing(answer, u"Erste 1.mp3"_s);
        desktop.choosers.cancel(ChooserKind::Folder);
        forgetCalls();
        root().mnuEigenschaften.Click();
        EXPECT_EQ("choosers.folder prompt \"Wählen Sie den entsprechenden Zielordner oder Laufwerk ...\" root " +
                      std::string(answer == Answer::Retry ? "17" : "18") + " folder \"\"",
                  calls({u"choosers"_s}));
    }
    EXPECT_FALSE(form().Visible.value());
}

TEST_F(Properties, AFolderThatDoesNotHoldTheFileChangesNothingAndAsksNothingMore)
{
    lose(u"Erste 1"_s);
    lose(u"Erste 2"_s);
    putFolder(u"/leer"_s);
    const std::string before = paths();
    for (const QString& folder : {u"/leer"_s, u"/nirgends"_s}) {
        answerMissing(Answer::Retry, u"Erste 1.mp3"_s);
        desktop.choosers.chooseFolder(folder);
        root().mnuEigenschaften.Click();
    }
    EXPECT_EQ(before, paths());
    EXPECT_FALSE(form().Visible.value());
}

TEST_F(Properties, TheOnlyMissingTrackIsMovedAndSavedWithoutTheSecondQuestion)
{
    lose(u"Erste 1"_s);
    put(u"/neu/Erste 1.mp3"_s, "x");
    markRed();
    answerMissing(Answer::Retry, u"Erste 1.mp3"_s);
    desktop.choosers.chooseFolder(u"/neu"_s);
    root().mnuEigenschaften.Click();
    EXPECT_EQ("/neu/Erste 1.mp3\n/m/Erste 2.mp3 rot", paths());
    EXPECT_EQ(Color::ButtonText, tracks().color(1, 1));
    EXPECT_EQ("/neu/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n", bytes(listPath(u"Erste"_s)).toStdString());
    EXPECT_FALSE(form().Visible.value());
}

TEST_F(Properties, AListOfOneTrackNeverAsksForTheWholeList)
{
    click(4);
    lose(u"Einzeln 1"_s);
    put(u"/neu/Einzeln 1.mp3"_s, "x");
    answerMissing(Answer::Ignore, u"Einzeln 1.mp3"_s);
    desktop.choosers.chooseFolder(u"/neu/"_s);
    root().mnuEigenschaften.Click();
    EXPECT_EQ("/neu/Einzeln 1.mp3", paths());
}

TEST_F(Properties, OnOkEveryTrackIsMovedWhetherItsFileIsThereOrNot)
{
    lose(u"Erste 1"_s);
    lose(u"Erste 2"_s);
    put(u"/neu/Erste 1.mp3"_s, "x");
    markRed();
    answerMissing(Answer::Retry, u"Erste 1.mp3"_s);
    desktop.choosers.chooseFolder(u"/neu"_s);
    answerAll(Answer::Ok);
    root().mnuEigenschaften.Click();
    EXPECT_EQ("/neu/Erste 1.mp3\n/neu/Erste 2.mp3", paths());
    EXPECT_EQ("/neu/Erste 1.mp3\r\n/neu/Erste 2.mp3\r\n", bytes(listPath(u"Erste"_s)).toStdString());
    EXPECT_NE(std::string::npos, boxes().find("Quellordner verwenden ?   \" icon exclamation buttons ok-cancel"));
}

TEST_F(Properties, OnCancelOnlyTheSelectedTrackIsMovedAndSaved)
{
    lose(u"Erste 1"_s);
    lose(u"Erste 2"_s);
    put(u"/neu/Erste 2.mp3"_s, "x");
    tracks().select(2);
    answerMissing(Answer::Retry, u"Erste 2.mp3"_s);
    desktop.choosers.chooseFolder(u"/neu"_s);
    answerAll(Answer::Cancel);
    root().mnuEigenschaften.Click();
    EXPECT_EQ("/m/Erste 1.mp3\r\n/neu/Erste 2.mp3\r\n", bytes(listPath(u"Erste"_s)).toStdString());
}

TEST_F(Properties, AnotherListThatOpensWhileTheChooserIsUpKeepsItsTracks)
{
    lose(u"Erste 1"_s);
    put(u"/neu/Erste 1.mp3"_s, "x");
    answerMissing(Answer::Retry, u"Erste 1.mp3"_s);
    desktop.choosers.queue.push(
        {.kind = ChooserKind::Folder, .file = {}, .folder = u"/neu"_s, .font = {}, .meanwhile = [this] { click(2); }});
    root().mnuEigenschaften.Click();
    EXPECT_EQ("/m/Zweite 1.mp3\n/m/Zweite 2.mp3", paths());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n\r\n", bytes(listPath(u"Erste"_s)).toStdString());
}

} // namespace orvantine::fake
