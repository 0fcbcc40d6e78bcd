
#include "operations/PropertiesFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

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

TEST_F(Properties, ARepairLeavesNumbersNamesFilesAndStoredNamesAsTheyWere)
{
    root().services.profiles.setValue(database(), u"TagInfo"_s, u"/m/Erste 1.mp3"_s, u"Wir - Eins"_s);
    catalogue().Tag = u"0"_s;
    click(1);
    tracks().setSubItem(1, 4, u"0:03:25"_s);
    lose(u"Erste 1"_s);
    lose(u"Erste 2"_s);
    put(u"/neu/Erste 1.mp3"_s, "x");
    markRed();
    const std::string before = databaseText();
    answerMissing(Answer::Retry, u"Erste 1.mp3"_s);
    desktop.choosers.chooseFolder(u"/neu"_s);
    answerAll(Answer::Ok);
    root().mnuEigenschaften.Click();
    EXPECT_EQ("> 1 \"101\" \"01\" \"Wir - Eins\" \"/neu/Erste 1.mp3\" \"0:03:25\" [icon Icon_2, 1 icon Icon_2]\n"
              "  2 \"102\" \"02\" \"Erste 2\" \"/neu/Erste 2.mp3\" \"Erste 2.mp3\" [icon Icon_2, 1 icon Icon_2]",
              rows(tracks()));
    EXPECT_EQ(before, databaseText());
}

TEST_F(Properties, TheRepairIsWrittenToTheListInSightWhicheverRowIsSelected)
{
    lose(u"Erste 1"_s);
    put(u"/neu/Erste 1.mp3"_s, "x");
    catalogue().select(2);
    const QByteArray other = bytes(listPath(u"Zweite"_s));
    answerMissing(Answer::Retry, u"Erste 1.mp3"_s);
    desktop.choosers.chooseFolder(u"/neu"_s);
    root().mnuEigenschaften.Click();
    EXPECT_EQ("/neu/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n", bytes(listPath(u"Erste"_s)).toStdString());
    EXPECT_EQ(other, bytes(listPath(u"Zweite"_s)));
}

TEST_F(Properties, AnOkInTheWaitOfALoadIsPassedOverAndTheEditsStay)
{
    open();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    form().tBeschreibung.Text = u"Für die Fahrt"_s;
    bool pressed = false;
    desktop.events().after(std::chrono::milliseconds{500}, [&] {
        pressed = true;
        form().BReady.Click();
    });
    root().mnuLaden.Click();
    ASSERT_TRUE(pressed);
    EXPECT_TRUE(form().Visible.value());
    EXPECT_EQ("Für die Fahrt", form().tBeschreibung.Text.value().toStdString());
    EXPECT_EQ("", key(1, 'e'));
    form().BReady.Click();
    EXPECT_EQ("Für die Fahrt", key(1, 'e'));
    EXPECT_FALSE(form().Visible.value());
}

} // namespace orvantine::fake
