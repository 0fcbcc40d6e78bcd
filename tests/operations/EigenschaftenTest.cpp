#include "operations/Eigenschaften.h"

#include "catalogue/PlaylistTexts.h"
#include "operations/PropertiesFixture.h"
#include "shell/Shutdown.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

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

TEST_F(Properties, ANameThatReadsAsEmptyIsToldAsAnEmptyOne)
{
    const std::string before = rows(catalogue()) + databaseText();
    open();
    for (const QString& name : {u"  "_s, u"\t"_s, u"\"\""_s, u" ' ' "_s}) {
        SCOPED_TRACE(name.toStdString());
        form().tPlaylistname.Text = name;
        refuse(noName);
        form().BReady.Click();
        EXPECT_TRUE(form().Visible.value());
        EXPECT_EQ(before, rows(catalogue()) + databaseText());
    }
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

TEST_F(Properties, AnotherCaseOrANameThatNoFileCanHaveIsStoredAndLosesNoPicture)
{
    const QString picture = data() + u"Resource/Erste.jpg"_s;
    put(picture, "j");
    for (const QString& name : {u"ERSTE"_s, u"Er?te"_s, u"../Erste"_s, u"Live: 1999"_s}) {
        SCOPED_TRACE(name.toStdString());
        open();
        form().tPlaylistname.Text = name;
        form().tBeschreibung.Text = u"Worte zu "_s + name;
        form().BReady.Click();
        EXPECT_FALSE(form().Visible.value());
        EXPECT_EQ("j", bytes(picture));
        EXPECT_EQ(name.toStdString(), key(1, 'b'));
        EXPECT_EQ("Worte zu " + name.toStdString(), key(1, 'e'));
        catalogue().setSubItem(1, 1, u"Erste"_s);
    }
    EXPECT_EQ("(missing)", bytes(data() + u"Erste.jpg"_s));
}

TEST_F(Properties, AListWhoseNameIsAPatternTakesNoPictureOfAnother)
{
    const QString picture = data() + u"Resource/Erste.jpg"_s;
    put(picture, "j");
    catalogue().setSubItem(1, 1, u"Er?te"_s);
    open();
    form().tPlaylistname.Text = u"Neu"_s;
    form().BReady.Click();
    EXPECT_EQ("Neu", key(1, 'b'));
    EXPECT_EQ("j", bytes(picture));
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

TEST_F(Properties, WhateverIsSelectedMeanwhileTheSaveGoesToTheEntryThatIsShown)
{
    open();
    form().tPlaylistname.Text = u"Umgeleitet"_s;
    catalogue().select(3);
    form().BReady.Click();
    EXPECT_EQ("Umgeleitet", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Dritte", catalogue().subItem(3, 1).toStdString());
    EXPECT_EQ("Dritte", key(3, 'b'));
    EXPECT_EQ("Umgeleitet", key(1, 'b'));
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

TEST_F(Properties, OfAnEmptyNameAndAMissingFileTheNameIsToldFirstAndAlone)
{
    open();
    form().tPlaylistname.Text = QString();
    form().tPlayliste.Text = u"/m/nirgends.m3u"_s;
    refuse(noName);
    form().BReady.Click();
    EXPECT_EQ("/m/nirgends.m3u", form().tPlayliste.Text.value().toStdString());
    form().tPlaylistname.Text = u"Erste"_s;
    refuse(noFile);
    form().BReady.Click();
    EXPECT_EQ(listPath(u"Erste"_s).toStdString(), form().tPlayliste.Text.value().toStdString());
}

TEST_F(Properties, PicturesOfAnUnchangedNameAreNotTouched)
{
    for (const QString& extension : {u"jpg"_s, u"gif"_s, u"bmp"_s})
        put(data() + u"Resource/Erste."_s + extension, extension.toUtf8());
    open();
    form().BReady.Click();
    EXPECT_EQ("", calls({u"files.copy"_s, u"files.remove"_s}));
    for (const QString& extension : {u"jpg"_s, u"gif"_s, u"bmp"_s})
        EXPECT_EQ(extension.toUtf8(), bytes(data() + u"Resource/Erste."_s + extension));
}

TEST_F(Properties, APlaylistThatIsSetRightIsRedNoMore)
{
    desktop.disk().remove(listPath(u"Erste"_s));
    catalogue().setColor(1, 1, Color::DarkRed);
    catalogue().setColor(1, 3, Color::DarkRed);
    open();
    form().tPlayliste.Text = listPath(u"Zweite"_s);
    form().BReady.Click();
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 1));
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 3));
}

TEST_F(Properties, AnEntryThatGotAnotherPathOrNameMeanwhileKeepsItUnlessItWasTypedOver)
{
    open();
    form().tBeschreibung.Text = u"Text"_s;
    catalogue().setSubItem(1, 2, listPath(u"Dritte"_s));
    catalogue().setSubItem(1, 1, u"Umbenannt"_s);
    form().BReady.Click();
    EXPECT_EQ("Umbenannt", key(1, 'b'));
    EXPECT_EQ(listPath(u"Dritte"_s).toStdString(), key(1, 'c'));
    EXPECT_EQ("Text", key(1, 'e'));
    EXPECT_FALSE(form().Visible.value());
}

TEST_F(Properties, OfTwoAlikeRowsTheOneThatIsShownIsWritten)
{
    for (const int item : {1, 2})
        catalogue().setSubItem(2, item, catalogue().subItem(1, item));
    open();
    form().tBeschreibung.Text = u"Text"_s;
    catalogue().select(2);
    form().BReady.Click();
    EXPECT_EQ("Text", key(1, 'e'));
    EXPECT_EQ("", key(2, 'e'));
}

TEST_F(Properties, AnAlikeRowNeverStandsInForTheOneThatHasGone)
{
    for (const int item : {1, 2})
        catalogue().setSubItem(2, item, catalogue().subItem(1, item));
    open();
    form().tBeschreibung.Text = u"Text"_s;
    catalogue().remove(1);
    form().BReady.Click();
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ("", actions());
}

TEST_F(Properties, AnEntryThatIsShownIsFoundAgainBehindAReload)
{
    click(3);
    open();
    form().tBeschreibung.Text = u"Text"_s;
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    form().BReady.Click();
    EXPECT_EQ("Text", key(3, 'e'));
}

TEST_F(Properties, OfTwoListsWithOneFileTheHeadingFollowsTheOneInSight)
{
    catalogue().setSubItem(2, 2, listPath(u"Erste"_s));
    open();
    form().tPlaylistname.Text = u"Wer"_s;
    click(2);
    ASSERT_EQ("Zweite", root().tPlaylisteinträge.Caption.value().toStdString());
    form().BReady.Click();
    EXPECT_EQ("Wer", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Zweite", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(Properties, ThePictureButtonDoesNothingWhereAnotherListIsSelected)
{
    open();
    form().tAlbumCover.Text = u"vorher"_s;
    put(data() + u"Resource/Dritte.jpg"_s, "j");
    int clicks = 0;
    root().pCovers.Click = [&] { ++clicks; };
    catalogue().select(3);
    form().bFindPic.Click();
    catalogue().clear();
    form().bFindPic.Click();
    EXPECT_EQ(0, clicks);
    EXPECT_EQ("vorher", form().tAlbumCover.Text.value().toStdString());
}

TEST_F(Properties, ThePictureThatIsLookedForIsThatOfTheListThatIsShown)
{
    open();
    root().pCovers.Click = [&] {
        put(data() + u"Resource/Erste.jpg"_s, "1");
        put(data() + u"Resource/Dritte.jpg"_s, "3");
        catalogue().select(3);
    };
    form().bFindPic.Click();
    EXPECT_EQ((data() + u"Resource/Erste.jpg"_s).toStdString(), form().tAlbumCover.Text.value().toStdString());
}

TEST_F(Properties, WhereNoPictureIsFoundTheFieldStaysAndGetsTheFocus)
{
    open();
    form().tAlbumCover.Text = u"vorher"_s;
    int focused = 0;
    form().tAlbumCover.SetFocus = [&] { ++focused; };
    desktop.choosers.cancel(ChooserKind::Open);
    form().bFindPic.Click();
    EXPECT_EQ("vorher", form().tAlbumCover.Text.value().toStdString());
    EXPECT_EQ(1, focused);
}

TEST_F(Properties, AProgramThatEndsInTheChoiceOfAPictureTouchesTheFieldNoMore)
{
    put(data() + u"Resource/Erste.jpg"_s, "j");
    open();
    form().tAlbumCover.Text = u"vorher"_s;
    int focused = 0;
    form().tAlbumCover.SetFocus = [&] { ++focused; };
    desktop.choosers.queue.push({.kind = ChooserKind::Open, .file = {}, .folder = {}, .font = {}, .meanwhile = [this] {
                                     Form_QueryUnload(root());
                                 }});
    form().bFindPic.Click();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("vorher", form().tAlbumCover.Text.value().toStdString());
    EXPECT_EQ(0, focused);
}

/// Whichever single call of the acceptance fails: the picture is there under one of its names, the others keep theirs.
TEST_F(Properties, NoSingleFailingCallOfTheDialogLosesAPictureOrAnotherEntry)
{
    for (const QString& name : {u"Neu"_s, u"ERSTE"_s}) {
        int failing = 0;
        for (bool reached = true; reached;) {
            ++failing;
            SCOPED_TRACE(name.toStdString() + ' ' + std::to_string(failing));
            desktop.newProcess();
            desktop.disk().remove(data() + u"Resource/Neu.jpg"_s);
            startPlayback();
            put(data() + u"Resource/Erste.jpg"_s, "j");
            open();
            form().tPlaylistname.Text = name;
            form().tBeschreibung.Text = u"Text"_s;
            // A playlist that cannot be looked for is told as missing.
            desktop.messages.answer(Answer::Ok);
            const int begin = desktop.log.calls();
            desktop.log.failCall(begin + failing);
            form().BReady.Click();
            reached = desktop.log.calls() >= begin + failing;
            desktop.log.failCall(0);
            desktop.messages.queue.clear();
            desktop.messages.take();

            EXPECT_TRUE(bytes(data() + u"Resource/Erste.jpg"_s) == "j" || bytes(data() + u"Resource/Neu.jpg"_s) == "j");
            EXPECT_EQ("Zweite Dritte Einzeln", key(2, 'b') + ' ' + key(3, 'b') + ' ' + key(4, 'b'));
            if (form().Visible.value())
                form().bAbbrechen.Click();
            if (HasFailure())
                return;
        }
        EXPECT_GT(failing, 10);
    }
}

} // namespace orvantine::fake
