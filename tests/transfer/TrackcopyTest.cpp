#include "transfer/Trackcopy.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// Three lists of two tracks each; the second track of "Eins" is selected.
class TrackcopyDialog : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        setting(u"Error"_s, dwordSetting(0));
        setting(u"Lokal"_s, dwordSetting(0));
        putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
        start();
        click(1);
        tracks().select(2);
        forgetCalls();
    }

    /// What the user does in the dialog.
    void inDialog(std::function<void(Trackcopy&)> script)
    {
        desktop.forms().whileModal(u"Trackcopy"_s, [script](Form& form) { script(static_cast<Trackcopy&>(form)); });
        root().mnuCopyTrack.Click();
    }
    void copyTo(int index)
    {
        inDialog([index](Trackcopy& form) {
            form.LListen.ListIndex = index;
            form.BReady.Click();
        });
    }
};

} // namespace

TEST_F(TrackcopyDialog, ItNamesTheTrackAndListsTheCatalogueWithTheFirstRowSelected)
{
    inDialog([](Trackcopy& form) {
        EXPECT_EQ(" Sounddatei kopieren", form.Caption.value().toStdString());
        EXPECT_EQ("Die ausgewählte Sounddatei in der markierten Wiedergabeliste verknüpfen.",
                  form.LHinweis.Caption.value().toStdString());
        EXPECT_EQ("Eins 2", form.tTrackname.Caption.value().toStdString());
        EXPECT_EQ("Eins\nZwei\nDrei", lines(form.LListen.List.value()));
        EXPECT_EQ(0, form.LListen.ListIndex.value());
        form.bAbbrechen.Click();
    });
    EXPECT_EQ("", actions());
    EXPECT_EQ(1, catalogue().selectedRow());
}

TEST_F(TrackcopyDialog, TheTrackIsLinkedIntoTheChosenListAndNoFileIsCopied)
{
    copyTo(2);
    EXPECT_EQ(3, catalogue().selectedRow());
    EXPECT_EQ("> 1 \"101\" \"01\" \"Drei 1\" \"/m/Drei 1.mp3\" \"Drei 1.mp3\" [icon Icon_2, 1 icon Icon_2]\n"
              "  2 \"102\" \"02\" \"Drei 2\" \"/m/Drei 2.mp3\" \"Drei 2.mp3\" [icon Icon_2, 1 icon Icon_2]\n"
              "  3 \"103\" \"03\" \"Eins 2\" \"/m/Eins 2.mp3\" \"Eins 2.mp3\" [icon Icon_2, 1 icon Icon_2]",
              rows(tracks()));
    EXPECT_EQ("/m/Drei 1.mp3\r\r\n/m/Drei 2.mp3\r\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Drei"_s)).toStdString());
    EXPECT_EQ("", calls({u"files.copy"_s}));
    EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Eins"_s)).toStdString());
}

TEST_F(TrackcopyDialog, TheListOfTheTrackItselfIsRefusedAndTheDialogStays)
{
    desktop.messages.answer(Answer::Ok);
    inDialog([&](Trackcopy& form) {
        form.BReady.Click();
        EXPECT_TRUE(form.Visible.value());
        form.bAbbrechen.Click();
    });
    EXPECT_EQ("box title \" Sounddatei kopieren \" text \"Diese Wiedergabeliste ist der Quellplayliste des markierten "
              "Soundtracks. \" icon critical buttons ok answer ok",
              boxes());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(TrackcopyDialog, AnotherListOfTheSameNameIsRefusedToo)
{
    catalogue().setSubItem(2, 1, u"Eins"_s);
    desktop.messages.answer(Answer::Ok);
    inDialog([&](Trackcopy& form) {
        form.LListen.ListIndex = 1;
        form.BReady.Click();
        form.bAbbrechen.Click();
    });
    EXPECT_EQ(1U, desktop.messages.take().size());
    EXPECT_EQ(1, catalogue().selectedRow());
}

TEST_F(TrackcopyDialog, WithoutAnyListTheNamesAreBothEmptyAndSoEqual)
{
    catalogue().clear();
    desktop.messages.answer(Answer::Ok, u" Sounddatei kopieren "_s,
                            u"Diese Wiedergabeliste ist der Quellplayliste des markierten Soundtracks. "_s);
    inDialog([&](Trackcopy& form) {
        EXPECT_EQ(-1, form.LListen.ListIndex.value());
        form.BReady.Click();
        EXPECT_TRUE(form.Visible.value());
        form.bAbbrechen.Click();
    });
    EXPECT_NE(std::string::npos, boxes().find("icon critical buttons ok"));
    EXPECT_EQ(2, tracks().count());
}

TEST_F(TrackcopyDialog, WithoutAChosenListTheDialogGoesAndNothingIsAdded)
{
    copyTo(-1);
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("", actions());
}

TEST_F(TrackcopyDialog, AListThatIsMissingAndNotWantedLeavesTheOpenOneAlone)
{
    desktop.disk().remove(listPath(u"Drei"_s));
    const QByteArray before = bytes(listPath(u"Eins"_s));
    desktop.messages.answer(Answer::Cancel);
    copyTo(2);
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ(before.toStdString(), bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(listPath(u"Drei"_s)).toStdString());
    desktop.messages.take();
}

TEST_F(TrackcopyDialog, AListWhoseNumberIsMarkedThoughAnotherIsShownIsLoadedFirst)
{
    catalogue().Tag = u"2"_s;
    copyTo(1);
    EXPECT_EQ(3, tracks().count());
    EXPECT_EQ("/m/Zwei 1.mp3\r\r\n/m/Zwei 2.mp3\r\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Zwei"_s)).toStdString());
}

TEST_F(TrackcopyDialog, WithoutASelectedTrackTheChosenListIsOpenedAndNothingAdded)
{
    tracks().clearSelection();
    copyTo(1);
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(TrackcopyDialog, TheTrackThatIsNamedIsLinkedThoughAnotherListWasOpenedMeanwhile)
{
    inDialog([this](Trackcopy& form) {
        click(2);
        form.LListen.ListIndex = 2;
        form.BReady.Click();
    });
    EXPECT_EQ("/m/Drei 1.mp3\r\r\n/m/Drei 2.mp3\r\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Drei"_s)).toStdString());
}

TEST_F(TrackcopyDialog, ItOpensFromThePopUpMenuToo)
{
    QString name;
    desktop.forms().whileModal(u"Trackcopy"_s, [&name](Form& form) {
        auto& dialog = static_cast<Trackcopy&>(form);
        name = dialog.tTrackname.Caption.value();
        dialog.bAbbrechen.Click();
    });
    root().mnxBearbeiten[2].Click();
    EXPECT_EQ("Eins 2", name.toStdString());
}

TEST_F(TrackcopyDialog, CaseCountsInTheNameOfTheSourceList)
{
    catalogue().setSubItem(2, 1, u"EINS"_s);
    copyTo(1);
    EXPECT_EQ(3, tracks().count());
}

TEST_F(TrackcopyDialog, TheTracksCellAndTheCatalogueAreLeftToTheNextSave)
{
    const QByteArray before = bytes(database());
    copyTo(2);
    EXPECT_EQ("2", catalogue().subItem(3, 3).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(TrackcopyDialog, TheNamesAreReadAgainAtEachOpening)
{
    inDialog([](Trackcopy& form) { form.bAbbrechen.Click(); });
    catalogue().setSubItem(2, 1, u"Umbenannt"_s);
    inDialog([](Trackcopy& form) {
        EXPECT_EQ("Eins\nUmbenannt\nDrei", lines(form.LListen.List.value()));
        form.bAbbrechen.Click();
    });
}

TEST_F(TrackcopyDialog, WhileTheChosenListIsReadNothingElseCanBeChosen)
{
    bool looked = false;
    inDialog([&](Trackcopy& form) {
        desktop.events().after(std::chrono::milliseconds{0}, [&] {
            looked = true;
            EXPECT_FALSE(form.BReady.Enabled.value());
            EXPECT_FALSE(form.bAbbrechen.Enabled.value());
            EXPECT_FALSE(form.LListen.Enabled.value());
            form.LListen.DblClick();
            form.BReady.Click();
            form.bAbbrechen.Click();
            EXPECT_TRUE(form.Visible.value());
        });
        form.LListen.ListIndex = 1;
        form.BReady.Click();
        EXPECT_FALSE(form.Visible.value());
    });
    EXPECT_TRUE(looked);
    EXPECT_EQ("", boxes());
    EXPECT_EQ("/m/Zwei 1.mp3\r\r\n/m/Zwei 2.mp3\r\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Zwei"_s)).toStdString());
    inDialog([](Trackcopy& form) {
        EXPECT_TRUE(form.BReady.Enabled.value());
        EXPECT_TRUE(form.bAbbrechen.Enabled.value());
        EXPECT_TRUE(form.LListen.Enabled.value());
        form.bAbbrechen.Click();
    });
}

TEST_F(TrackcopyDialog, ADialogThatGoesWhileTheListIsReadAddsNothing)
{
    const std::string before = bytes(listPath(u"Zwei"_s)).toStdString();
    inDialog([&](Trackcopy& form) {
        desktop.events().after(std::chrono::milliseconds{0}, [&] { desktop.forms().unload(form); });
        form.LListen.ListIndex = 1;
        form.BReady.Click();
    });
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ(before, bytes(listPath(u"Zwei"_s)).toStdString());
}

TEST_F(TrackcopyDialog, ADoubleClickTakesAList)
{
    inDialog([](Trackcopy& form) {
        form.LListen.ListIndex = 1;
        form.LListen.DblClick();
    });
    EXPECT_EQ(3, tracks().count());
}

} // namespace orvantine::fake
