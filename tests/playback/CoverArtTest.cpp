#include "playback/CoverArt.h"

#include "app/Command.h"
#include "catalogue/CoverFiles.h"
#include "playback/CoverPane.h"
#include "playback/PlaybackWorld.h"

#include "shell/MainWindow.h"

#include <QResource>

#include <tuple>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class CoverArt : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    [[nodiscard]] QString resource(const QString& name) const { return data() + u"Resource/"_s + name; }
    [[nodiscard]] std::string shown()
    {
        return QString(root().pCovers.Picture.value()).replace(data() + u"Resource/"_s, u"{r}"_s).toStdString();
    }
    [[nodiscard]] bool paneOn() { return root().pCoverBack.Visible.value(); }
    [[nodiscard]] Twips captionWidth() { return root().LSoundCaption.Width.value(); }
    /// What a frame of 7200 leaves to the description beside a cover of 1560, and without one.
    static constexpr Twips Narrow = 4785;
    static constexpr Twips Wide = 6345;

    void deleteWith(Answer answer)
    {
        desktop.messages.answer(answer, u" CD-Cover löschen"_s,
                                u"Möchten Sie das CD-Cover für diese Wiedergabeliste wirklich löschen ?   "_s);
        root().pCovers.MouseDown(MouseButton::Right);
    }
};

} // namespace

TEST_F(CoverArt, TheThreeExtensionsAreTestedInTheirOrderAndTheLastHitWins)
{
    EXPECT_EQ("", coverFile(root(), u"Erste"_s).toStdString());
    put(resource(u"Erste.jpg"_s), "1");
    EXPECT_EQ(resource(u"Erste.jpg"_s), coverFile(root(), u"Erste"_s));
    put(resource(u"Erste.bmp"_s), "3");
    EXPECT_EQ(resource(u"Erste.bmp"_s), coverFile(root(), u"Erste"_s));
    put(resource(u"Erste.gif"_s), "2");
    EXPECT_EQ(resource(u"Erste.bmp"_s), coverFile(root(), u"Erste"_s));
    put(resource(u"Zweite.png"_s), "4");
    EXPECT_EQ("", coverFile(root(), u"Zweite"_s).toStdString());
}

TEST_F(CoverArt, ANameThatNoFileCanHaveFindsNoCover)
{
    put(resource(u"a.jpg"_s), "1");
    putFolder(resource(u"AC"_s));
    put(resource(u"AC/DC.jpg"_s), "1");
    put(data() + u"b.jpg"_s, "1");
    for (const QString& name :
         {u"*"_s, u"?"_s, u"AC/DC"_s, u"AC\\DC"_s, u"../b"_s, u"a\n"_s, u"a:"_s, u"\"a\""_s, u"<a>"_s, u"a|b"_s})
        EXPECT_EQ("", coverFile(root(), name).toStdString()) << name.toStdString();
}

TEST_F(CoverArt, TheCommandShowsTheCoverOfTheSelectedRow)
{
    put(resource(u"Erste.jpg"_s), "1");
    root().mnuCoverShow.Click();
    EXPECT_TRUE(paneOn());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ(Narrow, captionWidth());
}

TEST_F(CoverArt, TheDescriptionHasItsWidthFromTheStartAndFollowsTheFrame)
{
    EXPECT_EQ(1560, root().pCoverBack.Width.value());
    EXPECT_EQ(Wide, captionWidth());
    root().xpFrame1.Width = 10000;
    fitDescription(root());
    EXPECT_EQ(9145, captionWidth());
    put(resource(u"Erste.jpg"_s), "1");
    root().mnuCoverShow.Click();
    EXPECT_EQ(7585, captionWidth());
    root().xpFrame1.Width = 7200;
    fitDescription(root());
    EXPECT_EQ(Narrow, captionWidth());
}

TEST_F(CoverArt, TheCommandHidesThePane)
{
    put(resource(u"Erste.jpg"_s), "1");
    root().mnuCoverShow.Click();
    root().mnuCoverShow.Click();
    EXPECT_FALSE(paneOn());
    EXPECT_FALSE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ(Wide, captionWidth());
}

TEST_F(CoverArt, WithoutACoverTheCommandLetsChooseOne)
{
    put(u"/bilder/Foto.JPG"_s, "bild");
    desktop.choosers.open(u"/bilder/Foto.JPG"_s);
    root().mnuCoverShow.Click();
    EXPECT_EQ("{r}Erste.JPG", shown());
    EXPECT_EQ("bild", bytes(resource(u"Erste.jpg"_s)).toStdString());
    EXPECT_TRUE(paneOn());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ(Narrow, captionWidth());
}

TEST_F(CoverArt, AFileAtTheTopOfTheFileSystemCanBeChosen)
{
    put(u"/Foto.gif"_s, "bild");
    desktop.choosers.open(u"/Foto.gif"_s);
    root().pCovers.Click();
    EXPECT_EQ("{r}Erste.gif", shown());
    EXPECT_EQ("bild", bytes(resource(u"Erste.gif"_s)).toStdString());
}

TEST_F(CoverArt, NothingChosenShowsNothing)
{
    desktop.choosers.cancel(ChooserKind::Open);
    root().mnuCoverShow.Click();
    EXPECT_FALSE(paneOn());
    EXPECT_FALSE(root().mnuCoverShow.Checked.value());
}

TEST_F(CoverArt, WithAnEmptyCatalogueTheCommandDoesNothingWhenUncheckedAndStillHidesWhenChecked)
{
    catalogue().clear();
    root().mnuCoverShow.Click();
    EXPECT_FALSE(paneOn());
    showCoverPane(root(), true);
    root().mnuCoverShow.Checked = true;
    root().mnuCoverShow.Click();
    EXPECT_FALSE(paneOn());
    EXPECT_FALSE(root().mnuCoverShow.Checked.value());
}

TEST_F(CoverArt, TheChooserStartsInTheFolderOfTheSelectedTrack)
{
    desktop.choosers.cancel(ChooserKind::Open);
    forgetCalls();
    root().pCovers.Click();
    const std::string asked = calls({u"choosers"_s});
    for (const char* part : {"\" CD-Coverdatei auswählen\"", "\"/m/\"",
                             "\"Bilddateien|*.bmp; *.gif; *.jpg|Alle Dateitypen|*.*\"", "extension \"*.jpg\""})
        EXPECT_NE(asked.find(part), std::string::npos) << part << " in " << asked;
}

TEST_F(CoverArt, WithoutATrackTheFlagFolderViewIsTheStartFolderAsItStands)
{
    tracks().clear();
    setting(u"FolderView"_s, dwordSetting(1));
    desktop.choosers.cancel(ChooserKind::Open);
    root().pCovers.Click();
    EXPECT_NE(calls({u"choosers"_s}).find("\"1\""), std::string::npos) << calls({u"choosers"_s});
}

TEST_F(CoverArt, WithoutTrackAndFlagTheDocumentsAreTheStartFolder)
{
    tracks().clear();
    desktop.choosers.cancel(ChooserKind::Open);
    root().pCovers.Click();
    EXPECT_NE(calls({u"choosers"_s}).find(u"\"%1\""_s.arg(desktop.folders.documents).toStdString()), std::string::npos);
}

TEST_F(CoverArt, AFullCatalogueIsToldAndTheChoiceGoesOn)
{
    while (catalogue().count() < 160)
        catalogue().append({});
    put(u"/bilder/x.gif"_s, "gif");
    desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s,
                            u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \nBitte löschen Sie eine der "
                            u"160 Playlisten aus der Liste."_s);
    desktop.choosers.open(u"/bilder/x.gif"_s);
    root().pCovers.Click();
    EXPECT_EQ("{r}Erste.gif", shown());
}

TEST_F(CoverArt, TheExtensionIsTakenAsItStands)
{
    put(u"/bilder/x.jpeg"_s, "j");
    desktop.choosers.open(u"/bilder/x.jpeg"_s);
    root().pCovers.Click();
    EXPECT_EQ("j", bytes(resource(u"Erstejpeg"_s)).toStdString());
    EXPECT_EQ("{r}Erstejpeg", shown());
    EXPECT_EQ("", coverFile(root(), u"Erste"_s).toStdString()) << "the three-way test never finds it";
    put(u"/bilder/abc"_s, "k");
    desktop.choosers.open(u"/bilder/abc"_s);
    root().pCovers.Click();
    EXPECT_EQ("{r}Ersteabc", shown());
}

TEST_F(CoverArt, APictureOfTheSameNameIsLoadedAnew)
{
    put(u"/bilder/x.jpg"_s, "alt");
    desktop.choosers.open(u"/bilder/x.jpg"_s);
    root().pCovers.Click();
    int loads = 0;
    const auto watch =
        root().pCovers.Picture.addNotifier([&] { loads += root().pCovers.Picture.value().isEmpty() ? 0 : 1; });
    put(u"/bilder/x.jpg"_s, "neu");
    desktop.choosers.open(u"/bilder/x.jpg"_s);
    root().pCovers.Click();
    EXPECT_EQ(1, loads);
    EXPECT_EQ("neu", bytes(resource(u"Erste.jpg"_s)).toStdString());
}

TEST_F(CoverArt, ACopyThatFailsShowsNothing)
{
    put(u"/bilder/x.jpg"_s, "x");
    desktop.choosers.open(u"/bilder/x.jpg"_s);
    desktop.log.failNext(u"files.copy"_s);
    root().pCovers.Click();
    EXPECT_EQ("", shown());
    EXPECT_FALSE(paneOn());
}

TEST_F(CoverArt, ANameThatNoFileCanHaveMakesTheCopyFailSilently)
{
    catalogue().setSubItem(1, 1, u"Was?"_s);
    put(u"/bilder/x.jpg"_s, "x");
    desktop.choosers.open(u"/bilder/x.jpg"_s);
    root().pCovers.Click();
    EXPECT_FALSE(paneOn());
}

TEST_F(CoverArt, OtherWaysToTheChoiceAreTheSame)
{
    put(u"/bilder/x.bmp"_s, "b");
    desktop.choosers.open(u"/bilder/x.bmp"_s);
    HelpDblClick(root());
    EXPECT_EQ("{r}Erste.bmp", shown());
    desktop.choosers.cancel(ChooserKind::Open);
    root().pMpeg.DblClick();
    catalogue().clear();
    root().pMpeg.DblClick();
}

TEST_F(CoverArt, TheRightButtonDeletesTheCover)
{
    put(resource(u"Erste.gif"_s), "1");
    click(2);
    click(1);
    ASSERT_EQ("{r}Erste.gif", shown());
    deleteWith(Answer::Yes);
    EXPECT_EQ("", shown());
    EXPECT_FALSE(paneOn());
    EXPECT_EQ("(missing)", bytes(resource(u"Erste.gif"_s)).toStdString());
    EXPECT_EQ("box title \" CD-Cover löschen\" text \"Möchten Sie das CD-Cover für diese Wiedergabeliste wirklich "
              "löschen ?   \" icon exclamation buttons yes-no answer yes",
              boxes());
}

TEST_F(CoverArt, AClickOnThePictureReplacesItByTheCopyThatThePaneThenShows)
{
    put(resource(u"Erste.bmp"_s), "alt");
    click(2);
    click(1);
    ASSERT_EQ("{r}Erste.bmp", shown());
    put(u"/bilder/x.jpg"_s, "neu");
    desktop.choosers.open(u"/bilder/x.jpg"_s);
    root().pCovers.Click();
    EXPECT_EQ("{r}Erste.jpg", shown()) << "the copy is loaded, not what the three-way test would find";
    EXPECT_EQ("alt", bytes(resource(u"Erste.bmp"_s)).toStdString());
    EXPECT_EQ(Narrow, captionWidth());
}

TEST_F(CoverArt, DeletingLeavesWidthAndCheckAndTheHousekeepingTakesTheCheckAway)
{
    put(resource(u"Erste.jpg"_s), "1");
    root().mnuCoverShow.Click();
    ASSERT_EQ(Narrow, captionWidth());
    deleteWith(Answer::Yes);
    EXPECT_FALSE(paneOn());
    EXPECT_EQ(Narrow, captionWidth());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
    run(280);
    EXPECT_FALSE(root().mnuCoverShow.Checked.value());
}

TEST_F(CoverArt, WithoutASelectedRowAPressDoesNothing)
{
    put(resource(u".gif"_s), "1");
    catalogue().clear();
    root().pCovers.Click();
    root().pCovers.MouseDown(MouseButton::Right);
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", calls({u"choosers"_s}));
    EXPECT_EQ("1", bytes(resource(u".gif"_s)).toStdString());
}

TEST_F(CoverArt, WhileTheCatalogueIsChangedNoWayLeadsToTheChoice)
{
    const Command outer(root(), Changes::Catalogue);
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        root().pMpeg.DblClick();
        HelpDblClick(root());
        root().mnuCoverShow.Click();
    });
    ASSERT_TRUE(Command(root()).yield());
    EXPECT_EQ("", calls({u"choosers"_s}));
}

TEST_F(CoverArt, TheCoverOfTheListInSightIsShownThoughTheSelectedRowHasNone)
{
    put(resource(u"Erste.jpg"_s), "1");
    catalogue().select(2);
    showCover(root());
    EXPECT_EQ("{r}Erste.jpg", shown());
    EXPECT_TRUE(paneOn());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ(Narrow, captionWidth());
    EXPECT_EQ("", calls({u"choosers"_s}));
}

TEST_F(CoverArt, AnythingButYesKeepsTheCover)
{
    put(resource(u"Erste.jpg"_s), "1");
    click(2);
    click(1);
    deleteWith(Answer::No);
    EXPECT_EQ("{r}Erste.jpg", shown());
    EXPECT_TRUE(paneOn());
    EXPECT_EQ("1", bytes(resource(u"Erste.jpg"_s)).toStdString());
}

TEST_F(CoverArt, TheLeftButtonDeletesNothing)
{
    put(resource(u"Erste.jpg"_s), "1");
    root().pCovers.MouseDown(MouseButton::Left);
    EXPECT_EQ("", boxes());
}

TEST_F(CoverArt, OfTwoCoversTheLaterHitIsDeletedAndTheOtherAppearsAtTheNextSelection)
{
    put(resource(u"Erste.gif"_s), "g");
    put(resource(u"Erste.jpg"_s), "j");
    click(2);
    click(1);
    deleteWith(Answer::Yes);
    EXPECT_EQ("(missing)", bytes(resource(u"Erste.gif"_s)).toStdString());
    EXPECT_EQ("j", bytes(resource(u"Erste.jpg"_s)).toStdString());
    click(2);
    click(1);
    EXPECT_EQ("{r}Erste.jpg", shown());
    EXPECT_TRUE(paneOn());
}

TEST_F(CoverArt, DeletingWithoutACoverChangesNothingOnTheDisk)
{
    forgetCalls();
    deleteWith(Answer::Yes);
    EXPECT_EQ("files.remove \"\"", actions());
    EXPECT_FALSE(paneOn());
}

TEST_F(CoverArt, TheCoverOfThePlaylistThatWasAskedForIsDeletedThoughTheSequenceWentOn)
{
    put(resource(u"Erste.jpg"_s), "1");
    put(resource(u"Zweite.jpg"_s), "2");
    click(2);
    click(1);
    desktop.messages.script(
        {.answer = Answer::Yes, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] { click(2); }});
    root().pCovers.MouseDown(MouseButton::Right);
    EXPECT_EQ("(missing)", bytes(resource(u"Erste.jpg"_s)).toStdString());
    EXPECT_EQ("2", bytes(resource(u"Zweite.jpg"_s)).toStdString());
    EXPECT_EQ("{r}Zweite.jpg", shown());
    EXPECT_TRUE(paneOn());
}

TEST_F(CoverArt, TheFirstPictureBesideTheTracksBecomesTheCover)
{
    put(u"/album/b.jpg"_s, "b");
    put(u"/album/A.gif"_s, "a");
    put(u"/album/0.bmp"_s, "0");
    root().LMp3Files.Path = u"/vorher"_s;
    root().LMp3Files.Pattern = u"*.mp3"_s;
    FindPicture(root(), u"/album/"_s);
    EXPECT_EQ("{r}Erste.gif", shown());
    EXPECT_EQ("a", bytes(resource(u"Erste.gif"_s)).toStdString());
    EXPECT_TRUE(paneOn());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ(Narrow, captionWidth());
    EXPECT_EQ("/vorher", root().LMp3Files.Path.toStdString());
    EXPECT_EQ("*.mp3", root().LMp3Files.Pattern.toStdString());
}

TEST_F(CoverArt, APictureIsTakenOverWhileThePaneIsOnAlready)
{
    put(resource(u"Erste.jpg"_s), "1");
    root().mnuCoverShow.Click();
    put(u"/album/cover.gif"_s, "c");
    FindPicture(root(), u"/album/"_s);
    EXPECT_EQ("{r}Erste.gif", shown());
    EXPECT_TRUE(paneOn());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value()) << "the command is not clicked";
    EXPECT_EQ(Narrow, captionWidth());
}

TEST_F(CoverArt, APictureThatCannotBeTakenOverLeavesTheShownPaneEmpty)
{
    catalogue().setSubItem(1, 1, u"Was?"_s);
    put(u"/album/cover.jpg"_s, "c");
    root().LMp3Files.Path = u"/vorher"_s;
    root().LMp3Files.Pattern = u"*.mp3"_s;
    forgetCalls();
    FindPicture(root(), u"/album/"_s);
    EXPECT_EQ("", calls({u"choosers"_s}));
    EXPECT_EQ("", shown());
    EXPECT_TRUE(paneOn());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ("/vorher", root().LMp3Files.Path.toStdString());
    EXPECT_EQ("*.mp3", root().LMp3Files.Pattern.toStdString());
}

TEST_F(CoverArt, AFolderWithoutASeparatorAtItsEndServesAsWell)
{
    put(u"/album/cover.jpg"_s, "c");
    FindPicture(root(), u"/album"_s);
    EXPECT_EQ("c", bytes(resource(u"Erste.jpg"_s)).toStdString());
}

TEST_F(CoverArt, AFolderWithoutPicturesTakesThePaneAway)
{
    putFolder(u"/leer"_s);
    put(resource(u"Erste.jpg"_s), "1");
    root().mnuCoverShow.Click();
    FindPicture(root(), u"/leer/"_s);
    EXPECT_FALSE(paneOn());
    FindPicture(root(), u"/leer/"_s);
    EXPECT_FALSE(paneOn()) << "a pane that is off stays off";
    EXPECT_EQ("1", bytes(resource(u"Erste.jpg"_s)).toStdString());
}

TEST_F(CoverArt, AnAbsentResourceLeavesEverythingAsItIs)
{
    root().pTrayicon.Picture = u"vorher"_s;
    forgetCalls();
    LoadJPG(root(), 1);
    LoadGIF(root(), 1);
    EXPECT_EQ("", actions());
    EXPECT_EQ("vorher", root().pTrayicon.Picture.value().toStdString());
}

TEST_F(CoverArt, AResourceGoesThroughAFileInTheCurrentFolder)
{
    ASSERT_TRUE(QResource::registerResource(QStringLiteral(ORVANTINE_TEST_PICTURES)));
    QStringList shownThere;
    const auto watch = root().pTrayicon.Picture.addNotifier([&] { shownThere += root().pTrayicon.Picture.value(); });
    for (const auto& [load, format, content] :
         {std::tuple{&LoadGIF, "GIF", "Bild 21 als GIF"}, std::tuple{&LoadJPG, "JPG", "Bild 21 als JPG"}}) {
        root().pTrayicon.Picture = u"vorher"_s;
        shownThere.clear();
        forgetCalls();
        load(root(), 1);
        const std::string file = std::string("\"Temp.") + format + '"';
        EXPECT_EQ("files.writeBytes " + file + " \"" + content + "\"\nfiles.remove " + file, actions());
        EXPECT_EQ(std::string(" Temp.") + format, shownThere.join(u' ').toStdString()) << "cleared, then loaded";
    }
    QResource::unregisterResource(QStringLiteral(ORVANTINE_TEST_PICTURES));
}

TEST_F(CoverArt, TheHiddenButtonAsksForAPictureOnlyWhileSomethingPlays)
{
    forgetCalls();
    root().Command1.Click();
    catalogue().DblClick();
    forgetCalls();
    root().Command1.Click();
    EXPECT_EQ("", actions());
}

} // namespace orvantine::fake
