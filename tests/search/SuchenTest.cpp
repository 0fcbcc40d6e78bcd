#include "search/Suchen.h"

#include "playback/PlaybackWorld.h"
#include "search/mnuSuchen.h"

#include "app/Registry.h"
#include "shell/Shutdown.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Erste", "Zweite" and "Dritte" with tracks "Erste 1", "Erste 2" and so on, "Einzeln" with one; "Zweite" is open.
class SearchDialog : public PlaybackWorld
{
protected:
    SearchDialog() { startPlayback(); }

    Suchen& form() { return *root().suchen; }
    void openDialog()
    {
        click(2);
        ASSERT_TRUE(root().mnuSuchen.press());
    }
    void type(const QString& text)
    {
        form().Text1.Text = text;
        form().Text1.Change();
    }
    void search(const QString& text)
    {
        type(text);
        ASSERT_TRUE(form().CSuchen.Enabled);
        form().CSuchen.Click();
    }
    void expectNothingFound(const QString& text)
    {
        desktop.messages.answer(Answer::Ok, u" Durchsuchen"_s,
                                u"Die Suche nach ''"_s + text + u"'' wurde ergebnislos beendet.   "_s);
    }
    /// Selected and loaded row, list in sight, selected track.
    [[nodiscard]] std::string place()
    {
        return u"%1/%2 %3 track %4"_s.arg(catalogue().selectedRow())
            .arg(catalogue().Tag, root().tPlaylisteinträge.Caption.value())
            .arg(tracks().selectedRow())
            .toStdString();
    }
    [[nodiscard]] std::string enabled()
    {
        QStringList on;
        for (const Control* control :
             {static_cast<Control*>(&form().OVorwärts), static_cast<Control*>(&form().ORückwärts),
              static_cast<Control*>(&form().CSuchen)})
            if (control->Enabled.value())
                on += control->name;
        return on.join(u' ').toStdString();
    }
    [[nodiscard]] std::string history()
    {
        QStringList found;
        for (const QString& key : desktop.profiles().keys(database(), u"Finder"_s))
            found += key + u'=' + desktop.profiles().value(database(), u"Finder"_s, key);
        return found.join(u' ').toStdString();
    }
};

const std::string AllEnabled = "OVorwärts ORückwärts CSuchen";

} // namespace

TEST_F(SearchDialog, BearsItsTexts)
{
    openDialog();
    QStringList texts{form().Caption};
    for (const QString& caption :
         {form().Label1.Caption.value(), form().Frame1.Caption.value(), form().OVorwärts.Caption.value(),
          form().ORückwärts.Caption.value(), form().bIndexFinder.Caption.value(), form().LIndexKey.Caption.value(),
          form().CSuchen.Caption.value(), form().CAbbrechen.Caption.value()})
        texts += caption;
    EXPECT_EQ(" Suchen|Suchen nach:|Suchrichtung|vorwärts |rückwärts |S&chnellsuche / Indexsuche |INDEX|&Suchen|"
              "&Abbrechen",
              texts.join(u'|').toStdString());
}

TEST_F(SearchDialog, CanSearchOnlyWhileATextStandsThere)
{
    openDialog();
    EXPECT_FALSE(form().CSuchen.Enabled);
    type(u"x"_s);
    EXPECT_TRUE(form().CSuchen.Enabled);
    type(QString());
    EXPECT_FALSE(form().CSuchen.Enabled);
    form().Text1.Text = u"aus der Liste"_s;
    form().Text1.Click();
    EXPECT_TRUE(form().CSuchen.Enabled);
}

TEST_F(SearchDialog, LeavesTheHitsPlaylistSelectedWithItsTracksLoaded)
{
    openDialog();
    search(u"DRITTE 2"_s);
    EXPECT_EQ("3/3 Dritte track 2", place());
    EXPECT_EQ("", boxes());
    EXPECT_EQ(AllEnabled, enabled());
    EXPECT_TRUE(root().mnuSuchDialog.Checked);
}

TEST_F(SearchDialog, FindsATrackByItsIdAndByItsNumber)
{
    openDialog();
    search(u"102"_s);
    EXPECT_EQ("1/1 Erste track 2", place());
    EXPECT_EQ("101 01", (tracks().text(1) + u' ' + tracks().subItem(1, 1)).toStdString());
    search(u"01"_s);
    EXPECT_EQ("1/1 Erste track 1", place());
}

TEST_F(SearchDialog, DoesNotLookAtThePathOfATrack)
{
    openDialog();
    expectNothingFound(u"/m/"_s);
    search(u"/m/"_s);
    EXPECT_EQ("2/2 Zweite track 1", place());
}

TEST_F(SearchDialog, WithoutAHitReturnsToTheRowAndTellsTheText)
{
    openDialog();
    expectNothingFound(u"nirgends"_s);
    search(u"nirgends"_s);
    EXPECT_EQ("2/2 Zweite track 1", place());
    EXPECT_EQ("box title \" Durchsuchen\" text \"Die Suche nach ''nirgends'' wurde ergebnislos beendet.   \" icon "
              "information buttons ok answer ok",
              boxes());
    EXPECT_EQ(AllEnabled, enabled());
    EXPECT_TRUE(form().Visible);
}

TEST_F(SearchDialog, TakesSignsOfOtherSearchesForThemselves)
{
    openDialog();
    for (const QString& text :
         {u"Erst?"_s, u"*"_s, u"Erste #"_s, u"[E]rste"_s, u"["_s, u"   "_s, u"Erste\r\n1"_s, QString(10000, u'E')}) {
        expectNothingFound(text);
        search(text);
        EXPECT_EQ("2/2 Zweite track 1", place());
    }
}

TEST_F(SearchDialog, SearchesForwardsWhicheverWayIsChosen)
{
    openDialog();
    form().OVorwärts.Value = false;
    form().ORückwärts.Value = true;
    search(u"e"_s);
    EXPECT_EQ("1/1 Erste track 1", place());
}

TEST_F(SearchDialog, QuickSearchLooksAtPathsAlone)
{
    openDialog();
    form().bIndexFinder.Value = true;
    search(u"PLAYLISTEN/DRITTE"_s);
    EXPECT_EQ("3/3 Dritte track 1", place());
    search(u"Erste 2"_s);
    EXPECT_EQ("3/3 Dritte track 1", place());
    EXPECT_EQ("", boxes());
    EXPECT_EQ(AllEnabled, enabled());
    EXPECT_FALSE(root().pAnimations.Visible);
}

TEST_F(SearchDialog, SwitchesTheSearchDisplayOnForItsTime)
{
    openDialog();
    expectNothingFound(u"nirgends"_s);
    std::string during;
    desktop.events().atYield(2, [&] {
        during = root().tBeschreibung.Caption.value().toStdString() + (root().pAnimations.Visible ? " busy" : "") +
                 (root().mnuSuchDialog.Checked ? " check" : "");
        EXPECT_EQ("", enabled());
        EXPECT_EQ("Durchsucht wird „Erste“, noch 3 Playlisten.", form().progress.Caption.value().toStdString());
    });
    search(u"nirgends"_s);
    EXPECT_EQ("Audiodateien suchen busy", during);
    EXPECT_EQ("Beschreibung der Playliste", root().tBeschreibung.Caption.value().toStdString());
    EXPECT_FALSE(root().pAnimations.Visible);
    EXPECT_EQ("", form().progress.Caption.value().toStdString());
}

TEST_F(SearchDialog, CancelReturnsToTheRowAndTellsNothing)
{
    openDialog();
    desktop.events().atYield(3, [&] { form().CAbbrechen.Click(); });
    search(u"Dritte"_s);
    EXPECT_EQ("2/2 Zweite track 1", place());
    EXPECT_EQ("", boxes());
    EXPECT_FALSE(form().Visible);
    EXPECT_FALSE(root().pAnimations.Visible);
}

TEST_F(SearchDialog, CancelWinsOverAHitOfTheSameList)
{
    openDialog();
    desktop.events().atYield(1, [&] { form().CAbbrechen.Click(); });
    search(u"Erste"_s);
    EXPECT_EQ("2/2 Zweite track 1", place());
}

TEST_F(SearchDialog, ASecondSearchBesideOneAtWorkDoesNothing)
{
    openDialog();
    expectNothingFound(u"nirgends"_s);
    desktop.events().atYield(2, [&] {
        type(u"Erste"_s);
        EXPECT_FALSE(form().CSuchen.Enabled);
        form().CSuchen.Click();
        forgetCalls();
        root().mnuSuchen.Click();
        EXPECT_EQ("forms.toFront Suchen", calls({u"forms"_s}));
    });
    search(u"nirgends"_s);
    EXPECT_EQ("2/2 Zweite track 1", place());
    EXPECT_EQ("01=nirgends", history());
    EXPECT_TRUE(form().CSuchen.Enabled);
}

TEST_F(SearchDialog, AListThatIsOpenedMeanwhileIsNotTakenForTheOneSearched)
{
    openDialog();
    desktop.events().atYield(1, [&] { click(3); });
    search(u"Erste 2"_s);
    EXPECT_EQ("1/1 Erste track 2", place());
}

TEST_F(SearchDialog, EndsWithTheProgram)
{
    openDialog();
    desktop.events().atYield(2, [&] { root().services.events.endProcess(); });
    search(u"nirgends"_s);
    EXPECT_EQ("", boxes());
}

TEST_F(SearchDialog, GoesOnBehindAListWhoseFileIsGone)
{
    openDialog();
    desktop.disk().remove(listPath(u"Erste"_s));
    search(u"Dritte 1"_s);
    EXPECT_EQ("3/3 Dritte track 1", place());
}

TEST_F(SearchDialog, KeepsANewTextAndNoTextTwice)
{
    openDialog();
    search(u"Erste"_s);
    search(u"Zweite"_s);
    search(u"Erste"_s);
    EXPECT_EQ("Erste\nZweite", lines(form().Text1.List));
    EXPECT_EQ("01=Erste 02=Zweite", history());
}

TEST_F(SearchDialog, BringsOnlyTheFirstNineTextsBack)
{
    openDialog();
    form().bIndexFinder.Value = true;
    for (int i = 1; i <= 11; ++i)
        search(u"t%1"_s.arg(i));
    EXPECT_EQ("01=t1 02=t2 03=t3 04=t4 05=t5 06=t6 07=t7 08=t8 09=t9 010=t10 011=t11", history());
    root().mnuSuchen.Click();
    EXPECT_EQ("t1\nt2\nt3\nt4\nt5\nt6\nt7\nt8\nt9", lines(form().Text1.List));
    EXPECT_EQ("", form().Text1.Text.value().toStdString());
}

TEST_F(SearchDialog, AHistoryThatCouldNotBeReadIsNotWrittenOver)
{
    put(database(), bytes(database()) + "[Finder]\r\n01=Alt\r\n");
    desktop.log.failNext(u"files.readBytes \""_s + database());
    openDialog();
    search(u"Erste"_s);
    EXPECT_EQ("01=Alt 02=Erste", history());
}

TEST_F(SearchDialog, ComesUpAfreshEachTime)
{
    openDialog();
    form().bIndexFinder.Value = true;
    form().ORückwärts.Value = true;
    form().OVorwärts.Value = false;
    root().mnuSuchen.Click();
    EXPECT_FALSE(form().bIndexFinder.Value.value() || form().ORückwärts.Value.value());
    EXPECT_TRUE(form().OVorwärts.Value.value());
}

TEST_F(SearchDialog, AWindowThatIsClosedMeanwhileStoresTheRowThatTheUserHadChosen)
{
    openDialog();
    type(u"nirgends"_s);
    desktop.events().atYield(4, [&] { Form_QueryUnload(root()); });
    form().CSuchen.Click();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_TRUE(readSetting(root(), u"Index"_s).is(2));
}

TEST_F(SearchDialog, ACancelledSearchTellsOfNoMissingTrack)
{
    openDialog();
    root().mnuErrorDisplay.Checked = true;
    for (const QString& name : {u"Erste 1"_s, u"Zweite 1"_s, u"Dritte 1"_s})
        desktop.disk().remove(u"/m/"_s + name + u".mp3"_s);
    desktop.events().atYield(3, [&] { form().CAbbrechen.Click(); });
    forgetCalls();
    search(u"nirgends"_s);
    EXPECT_EQ("", boxes());
}

TEST_F(SearchDialog, AFailedSaveOfTheHistoryLeavesTheOldOne)
{
    openDialog();
    search(u"Erste"_s);
    desktop.log.failNext(u"files.appendBytes"_s);
    desktop.log.failNext(u"files.replaceBytes"_s);
    desktop.log.failNext(u"files.writeBytes"_s);
    search(u"Zweite"_s);
    EXPECT_EQ("2/2 Zweite track 1", place());
    EXPECT_EQ("01=Erste", history());
}

TEST_F(SearchDialog, IsOffAgainOnceItIsUnloaded)
{
    openDialog();
    root().pAnimations.Visible = true;
    root().services.forms.unload(form());
    EXPECT_FALSE(root().pAnimations.Visible);
    EXPECT_TRUE(root().mnuSuchDialog.Checked);
}

TEST_F(SearchDialog, ItsMenuSwitchesTheDisplayAndComesUpOff)
{
    EXPECT_FALSE(root().mnuSuchDialog.Enabled);
    mnuSuchDialog_Click(root());
    EXPECT_TRUE(root().mnuSuchDialog.Checked);
    mnuSuchDialog_Click(root());
    EXPECT_FALSE(root().mnuSuchDialog.Checked);
    EXPECT_TRUE(root().pAnimations.Visible);
}

} // namespace orvantine::fake
