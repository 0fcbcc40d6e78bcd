#include "shell/MainWindow.h"
#include "app/ColumnWidths.h"
#include "app/DisabledButtons.h"
#include "app/TooltipRegister.h"

#include "catalogue/CatalogueWorld.h"

#include "playback/PlayerControl.h"
#include "shell/Info.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class MainWindow : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        putCatalogue({u"Erste"_s, u"Zweite"_s});
        start();
        forgetCalls();
    }

    /// Enabled states of all that DisabledButtons acts on.
    [[nodiscard]] std::string states()
    {
        std::string text;
        for (const Control* control :
             QList<Control*>{&root().mnuBearbeiten, &root().mnuAnsicht, &root().mnuVerwaltung, &root().mnuHelp,
                             &catalogue(), &tracks(), &root().pAnimations, &root().pSoundPlayer, &root().pSymbole})
            text += control->Enabled.value() ? '1' : '0';
        return text;
    }

    /// Names and values of the settings that were written since the last look.
    [[nodiscard]] std::string written()
    {
        QStringList all;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (line.startsWith(u"settings.setValue"_s))
                all += QString(line.section(u'"', 3)).remove(u'"');
        return lines(all);
    }

    [[nodiscard]] std::string widths(const ListView& list)
    {
        QStringList all;
        for (int column = 1; column <= list.columns(); ++column)
            all += QString::number(list.columnWidth(column));
        return all.join(u' ').toStdString();
    }
};

} // namespace

TEST_F(MainWindow, EveryTipStandsOnItsControl)
{
    struct Tip
    {
        Control* control;
        const char* text;
    };
    const std::vector<Tip> tips{{&root().pSymbole, "Klicken Sie hier um die gesamte Playlisten wiederzugeben."},
                                {&root().pPausePlayer, "Klicken Sie hier um die \nWiedergabe zu starten."},
                                {&root().pSoundPlayer, "Die Wiedergabe starten oder \nPause für die Wiedergabe."},
                                {&root().pPlayBack, "Vorherigen Titel \nwiedergeben."},
                                {&root().pPlayForward, "Nächsten Titel \nwiedergeben."},
                                {&root().bMoveDown, "Eintrag in Datenbank nach \nunten verschieben."},
                                {&root().bMoveUp, "Eintrag in Datenbank nach \noben verschieben."},
                                {&root().bEntryDown, "Eintrag in Playliste nach \nunten verschieben."},
                                {&root().bEntryUp, "Eintrag in Playliste nach \noben verschieben."}};
    for (const Tip& tip : tips)
        EXPECT_EQ(tip.text, tip.control->ToolTipText.value().toStdString()) << tip.control->fullName().toStdString();
    TooltipRegister(root(), 0);
    for (const Tip& tip : tips)
        EXPECT_EQ("", tip.control->ToolTipText.value().toStdString());
}

TEST_F(MainWindow, DisabledButtonsCalledTwiceLeavesAllAsItWas)
{
    EXPECT_EQ("111111111", states());
    DisabledButtons(root());
    EXPECT_EQ("000000000", states());
    DisabledButtons(root());
    EXPECT_EQ("111111111", states());
}

TEST_F(MainWindow, DisabledButtonsWithANumberIsIdempotent)
{
    for (int i = 0; i < 2; ++i) {
        DisabledButtons(root(), 1);
        EXPECT_EQ("000000000", states());
    }
    for (int i = 0; i < 2; ++i) {
        DisabledButtons(root(), 0);
        EXPECT_EQ("111111111", states());
    }
    // Without a number it turns around what the last call left.
    DisabledButtons(root(), 1);
    DisabledButtons(root());
    EXPECT_EQ("111111111", states());
}

TEST_F(MainWindow, WhileSomethingRunsThePlayButtonStaysOff)
{
    pSoundPlayer_Click(root());
    DisabledButtons(root(), 1);
    DisabledButtons(root(), 0);
    EXPECT_EQ("111111101", states());
    EXPECT_TRUE(root().pPausePlayer.Enabled.value());
}

TEST_F(MainWindow, VolumeAndPositionsExcludeOneAnotherWhicheverIsClicked)
{
    root().mnuPositionen.Click();
    root().mnuLautstärke.Click();
    EXPECT_TRUE(root().mnuLautstärke.Checked.value());
    EXPECT_TRUE(root().pVolume.Visible.value());
    EXPECT_FALSE(root().mnuPositionen.Checked.value());
    EXPECT_FALSE(root().bMoveUp.Visible.value());

    root().mnuPositionen.Click();
    EXPECT_TRUE(root().mnuPositionen.Checked.value());
    EXPECT_TRUE(root().bMoveUp.Visible.value());
    EXPECT_FALSE(root().mnuLautstärke.Checked.value());
    EXPECT_FALSE(root().pVolume.Visible.value());

    root().mnuPositionen.Click();
    EXPECT_FALSE(root().mnuPositionen.Checked.value());
    EXPECT_FALSE(root().mnuLautstärke.Checked.value());
}

TEST_F(MainWindow, PositionsShowTheButtonsAndHideTheCountsAndBack)
{
    for (const bool on : {true, false}) {
        root().mnuPositionen.Click();
        EXPECT_EQ(on, root().mnuPositionen.Checked.value());
        for (const Button* button : {&root().bMoveUp, &root().bMoveDown, &root().bEntryUp, &root().bEntryDown})
            EXPECT_EQ(on, button->Visible.value()) << button->name.toStdString();
        EXPECT_EQ(!on, root().tSoundzahl.Visible.value());
        EXPECT_EQ(!on, root().nAnzeige.Visible.value());
        EXPECT_EQ(!on, root().pDatum.Visible.value());
    }
}

TEST_F(MainWindow, TheDateMarkWritesNoughtWhenSetAndOneWhenCleared)
{
    ASSERT_TRUE(root().mnuDatumsanzeige.Checked.value());
    root().mnuDatumsanzeige.Click();
    EXPECT_EQ("dword 1", setting(u"ShowDate"_s).toStdString());
    EXPECT_FALSE(root().pDatum.Visible.value());
    root().mnuDatumsanzeige.Click();
    EXPECT_EQ("dword 0", setting(u"ShowDate"_s).toStdString());
    EXPECT_TRUE(root().pDatum.Visible.value());
}

TEST_F(MainWindow, ARestartNeverFlipsTheDateMark)
{
    for (const bool shown : {false, true}) {
        if (root().mnuDatumsanzeige.Checked.value() != shown)
            root().mnuDatumsanzeige.Click();
        for (int restart = 1; restart <= 2; ++restart) {
            desktop.newProcess();
            start();
            EXPECT_EQ(shown, root().mnuDatumsanzeige.Checked.value()) << restart;
            EXPECT_EQ(shown ? "dword 0" : "dword 1", setting(u"ShowDate"_s).toStdString());
        }
    }
}

TEST_F(MainWindow, GridLinesGoOnAndOffInBothLists)
{
    ASSERT_TRUE(root().mnuGridlines.Checked.value());
    for (const bool on : {false, true}) {
        root().mnuGridlines.Click();
        EXPECT_EQ(on, root().mnuGridlines.Checked.value());
        EXPECT_EQ(on, catalogue().GridLines.value());
        EXPECT_EQ(on, tracks().GridLines.value());
    }
    EXPECT_EQ("", written());
}

TEST_F(MainWindow, TheTracksColumnIsHiddenAndShownByItsWidth)
{
    ASSERT_TRUE(root().mnuTrackShow.Checked.value());
    root().mnuTrackShow.Click();
    EXPECT_FALSE(root().mnuTrackShow.Checked.value());
    EXPECT_EQ("0 3700 0 0", widths(catalogue()));
    root().mnuTrackShow.Click();
    EXPECT_TRUE(root().mnuTrackShow.Checked.value());
    EXPECT_EQ("0 2800 0 900", widths(catalogue()));
}

TEST_F(MainWindow, TheTracksColumnStaysHiddenOverReads)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s});
    setting(u"LV_1"_s, stringSetting(u"2000"_s));
    setting(u"LV_2"_s, stringSetting(u"1500"_s));
    desktop.newProcess();
    start();
    ASSERT_EQ(1500, catalogue().columnWidth(4));
    root().mnuTrackShow.Click();
    for (const int row : {1, 2, 1}) {
        catalogue().select(row);
        catalogue().Click();
        EXPECT_EQ(0, catalogue().columnWidth(4)) << row;
        catalogue().ColumnClick(2);
        EXPECT_EQ("sz \"1500\"", setting(u"LV_2"_s).toStdString()) << "what is hidden stores no width";
    }
    root().mnuBeenden.Click();
    EXPECT_EQ("sz \"1500\"", setting(u"LV_2"_s).toStdString());
}

TEST_F(MainWindow, EachViewOfTheTracksKeepsAWidthOfItsOwnAndNeverWritesThatOfTheName)
{
    tracks().setColumnWidth(4, 3111);
    root().mnuOrvmenu[2].Click();
    EXPECT_EQ("LV_1 sz 2800\nLV_2 sz 900\nLV_4 sz 800\nLV_6 sz 3111", written());
    EXPECT_FALSE(root().mnuOrvmenu[1].Checked.value());
    EXPECT_TRUE(root().mnuOrvmenu[2].Checked.value());
    EXPECT_EQ("0 800 3600 0 2200", widths(tracks()));

    tracks().setColumnWidth(5, 1555);
    tracks().setColumnWidth(3, 4000);
    root().mnuOrvmenu[1].Click();
    EXPECT_EQ("LV_1 sz 2800\nLV_2 sz 900\nLV_4 sz 800\nLV_7 sz 1555", written());
    EXPECT_EQ("0 800 4000 3111 0", widths(tracks()));

    root().mnuOrvmenu[2].Click();
    EXPECT_EQ("0 800 4000 0 1555", widths(tracks()));
    EXPECT_EQ("(absent)", setting(u"LV_5"_s).toStdString());
}

TEST_F(MainWindow, AResetOfTheColumnsAsksAndNoLeavesThem)
{
    tracks().setColumnWidth(3, 1234);
    desktop.messages.answer(Answer::No, u" Optionen zurücksetzen"_s,
                            u"Möchten Sie wirklich die Spaltenbreiten der Tabellen wiederherstellen ? "_s);
    root().mnuSpaltenReset.Click();
    EXPECT_EQ("box title \" Optionen zurücksetzen\" text \"Möchten Sie wirklich die Spaltenbreiten der Tabellen "
              "wiederherstellen ? \" icon question buttons yes-no answer no",
              boxes());
    EXPECT_EQ(1234, tracks().columnWidth(3));
    EXPECT_EQ("", written());
}

TEST_F(MainWindow, AResetOfTheColumnsGivesTheStartWidthsAndSavesTheOptions)
{
    for (int column = 1; column <= 5; ++column) {
        tracks().setColumnWidth(column, 1234);
        catalogue().setColumnWidth(column, 1234);
    }
    desktop.messages.answer(Answer::Yes);
    root().mnuSpaltenReset.Click();
    EXPECT_EQ("0 2800 0 900", widths(catalogue()));
    EXPECT_EQ("0 800 3600 2900 0", widths(tracks()));
    EXPECT_EQ("sz \"3600\"", setting(u"LV_5"_s).toStdString());
    EXPECT_EQ("sz \"0\"", setting(u"Maximized"_s).toStdString());
    EXPECT_TRUE(desktop.tray().shown());
}

TEST_F(MainWindow, F1WithoutTheHelpFileDoesNothing)
{
    root().mnuHilfe.Click();
    EXPECT_TRUE(desktop.launcher.started.empty());
    EXPECT_EQ("", boxes());
}

TEST_F(MainWindow, F1StartsTheHelpWithItsTopic)
{
    put(desktop.folders.program + u"/Orvantine.chm"_s, "x");
    root().mnuHilfe.Click();
    ASSERT_EQ(1U, desktop.launcher.started.size());
    const LaunchRequest& request = desktop.launcher.started[0];
    EXPECT_EQ((u"hh.exe "_s + desktop.folders.program + u"/Orvantine.chm::/1.0 Erste Schritte.htm"_s).toStdString(),
              request.command.toStdString());
    EXPECT_EQ("F1", root().mnuHilfe.Shortcut.toStdString());
}

TEST_F(MainWindow, TheInformationDialogShowsNameVersionAndBuild)
{
    desktop.services().start.versionMajor = 2;
    desktop.services().start.versionMinor = 3;
    desktop.services().start.versionRevision = 4;
    desktop.services().start.build = 5;
    desktop.forms().whileModal(u"Info"_s, [&](Form& form) {
        EXPECT_EQ(" Info über Orvanten Manager", form.Caption.value().toStdString());
        EXPECT_EQ("Orvanten Manager", root().info->RName.Caption.value().toStdString());
        EXPECT_EQ("2.3.4 Build 5", root().info->RVersion.Caption.value().toStdString());
        EXPECT_FALSE(root().info->RWerbung.Caption.value().isEmpty());
        EXPECT_FALSE(root().info->RContact.Caption.value().isEmpty());
        EXPECT_EQ("&Webseite", root().info->BWebseite.Caption.value().toStdString());
        EXPECT_EQ("&Abbrechen", root().info->BAbbrechen.Caption.value().toStdString());
        root().info->BMail.Click();
        root().info->BWebseite.Click();
        root().info->BAbbrechen.Click();
    });
    root().mnuInfo.Click();
    ASSERT_EQ(2U, desktop.launcher.started.size());
    EXPECT_EQ("mailto:info@orvanten.example?Subject=Orvanten%20Manager%202.3.4%20Build%205&Body=Guten%20Tag,",
              desktop.launcher.started[0].target.toStdString());
    EXPECT_EQ(LaunchKind::Link, desktop.launcher.started[0].kind);
    EXPECT_EQ("https://orvanten.example/", desktop.launcher.started[1].target.toStdString());
}

TEST_F(MainWindow, TheFontDialogSetsBothListsAndCancelNone)
{
    desktop.choosers.chooseFont({u"Serife"_s, 13});
    root().mnuSchriftarten.Click();
    for (const ListView* list : {&catalogue(), &tracks()}) {
        EXPECT_EQ("Serife", list->FontName.value().toStdString());
        EXPECT_EQ(13, list->FontSize.value());
    }
    desktop.choosers.cancel(ChooserKind::Font);
    root().mnuSchriftarten.Click();
    EXPECT_EQ("Serife", catalogue().FontName.value().toStdString());
    EXPECT_EQ(13, tracks().FontSize.value());
}

TEST_F(MainWindow, TheThreeOptionsFlipTheirMarks)
{
    for (MenuItem* item : {&root().mnuAddSoundfiles, &root().mnuErrorDisplay, &root().mnuLokalePlayliste}) {
        const bool before = item->Checked.value();
        item->Click();
        EXPECT_EQ(!before, item->Checked.value()) << item->name.toStdString();
        item->Click();
        EXPECT_EQ(before, item->Checked.value()) << item->name.toStdString();
    }
    EXPECT_EQ("", written());
}

TEST_F(MainWindow, AWindowIsKeptAtItsLeastSizeUnlessItIsMaximised)
{
    root().Width = 100;
    root().Height = 100;
    EXPECT_EQ(9365, root().Width.value());
    EXPECT_EQ(7245, root().Height.value());
    root().State = WindowState::Maximized;
    root().Width = 100;
    EXPECT_EQ(100, root().Width.value());
}

TEST_F(MainWindow, CommandsWithoutAHandlerAreNotAvailable)
{
    EXPECT_FALSE(root().mnuEditCut.available());
    EXPECT_FALSE(root().mnuAddChanges.available());
    EXPECT_FALSE(root().TagIDs.available());
}

TEST_F(MainWindow, ASavedDatabaseIsToldQuietlyAndOneThatIsNotSavedIsNot)
{
    catalogue().setSubItem(1, 1, u"Anders"_s);
    root().mnuSpeichern.Click();
    EXPECT_EQ("Gespeichert", root().quietLine.Caption.value().toStdString());
    EXPECT_TRUE(root().quietLine.Visible.value());
    EXPECT_EQ("", boxes());
    desktop.events().run(std::chrono::seconds{5});
    ASSERT_FALSE(root().quietLine.Visible.value());
    // The filter keeps the database as it is.
    root().mnuFavoritenShow.Click();
    root().mnuSpeichern.Click();
    EXPECT_NE("Gespeichert", root().quietLine.Caption.value().toStdString());
}

TEST_F(MainWindow, ADrawnWidthSurvivesTheNextClickAndTheNextStart)
{
    catalogue().select(1);
    catalogue().Click();
    tracks().setColumnWidth(3, 4321);
    tracks().WidthDrawn(3);
    catalogue().setColumnWidth(2, 3210);
    catalogue().WidthDrawn(2);
    noteCatalogueWidth(root(), 5250);
    catalogue().select(2);
    catalogue().Click();
    EXPECT_EQ(4321, tracks().columnWidth(3));
    EXPECT_EQ(3210, catalogue().columnWidth(2));
    desktop.newProcess();
    start();
    EXPECT_EQ(4321, tracks().columnWidth(3));
    EXPECT_EQ(3210, catalogue().columnWidth(2));
    EXPECT_EQ(5250, root().CatalogueWidth.value());
}

} // namespace orvantine::fake
