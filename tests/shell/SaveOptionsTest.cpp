#include "shell/SaveOptions.h"

#include "catalogue/CatalogueWorld.h"

#include "playback/PlayerControl.h"
#include "shell/Shutdown.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Options : public CatalogueWorld
{
protected:
    /// Names, types and values of the settings that were written since the last look.
    [[nodiscard]] std::string written()
    {
        QStringList all;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (line.startsWith(u"settings.setValue"_s))
                all += QString(line.section(u'"', 3)).remove(u'"');
        return lines(all);
    }

    /// What is told to the player, the tray and the settings' first value, in its order.
    [[nodiscard]] std::string steps(const QStringList& starts)
    {
        QStringList all;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            for (const QString& start : starts)
                if (line.startsWith(start))
                    all += line;
        return lines(all);
    }
};

} // namespace

TEST_F(Options, AllValuesAreWrittenInThisOrderWithTheirTypes)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s});
    start();
    root().Left = 120;
    root().Top = 240;
    root().Width = 12000;
    root().Height = 9000;
    catalogue().FontName = u"Serife"_s;
    catalogue().FontSize = 11;
    forgetCalls();
    SaveOptions(root());
    EXPECT_EQ("Maximized sz 0\n"
              "Height sz 9000\n"
              "Width sz 12000\n"
              "Left sz 120\n"
              "Top sz 240\n"
              "Fontname sz Serife\n"
              "Fontsize sz 11\n"
              "LV_1 sz 2800\n"
              "LV_2 sz 900\n"
              "LV_4 sz 800\n"
              "LV_5 sz 3600\n"
              "LV_6 sz 2900\n"
              "Index binary 02 00 00 00\n"
              "Suche dword 0\n"
              "Position dword 0\n"
              "ReCall dword 3\n"
              "ShowFiles dword 0\n"
              "Lokal dword 1\n"
              "Error dword 1\n"
              "Volume dword 0",
              written());
}

TEST_F(Options, AFontOfAHalfPointComesBackAsItWas)
{
    start();
    catalogue().FontName = u"Serife"_s;
    catalogue().FontSize = 9.5;
    SaveOptions(root());
    EXPECT_EQ("sz \"9.5\"", setting(u"Fontsize"_s).toStdString());
    desktop.newProcess();
    start();
    EXPECT_EQ(9.5, catalogue().FontSize.value());
    EXPECT_EQ(9.5, tracks().FontSize.value());
}

TEST_F(Options, EachMarkIsWrittenAsOneOrNought)
{
    putCatalogue({u"Erste"_s});
    start();
    struct Case
    {
        MenuItem& item;
        QString name;
    };
    for (const Case& c : {Case{root().mnuSuchDialog, u"Suche"_s}, Case{root().mnuPositionen, u"Position"_s},
                          Case{root().mnuOrvmenu[2], u"ShowFiles"_s}, Case{root().mnuLokalePlayliste, u"Lokal"_s},
                          Case{root().mnuErrorDisplay, u"Error"_s}, Case{root().mnuLautstärke, u"Volume"_s}}) {
        for (const bool checked : {true, false}) {
            c.item.Checked = checked;
            SaveOptions(root());
            EXPECT_EQ(checked ? "dword 1" : "dword 0", setting(c.name).toStdString()) << c.name.toStdString();
        }
    }
}

TEST_F(Options, TheRepeatModeIsThatOfTheFirstCheckedItemAndWithoutOneNothingIsWritten)
{
    start();
    struct Case
    {
        bool one, two, three;
        const char* stored;
    };
    for (const Case& c : {Case{false, false, false, "(absent)"}, Case{true, false, false, "dword 1"},
                          Case{false, true, false, "dword 2"}, Case{false, false, true, "dword 3"},
                          Case{false, true, true, "dword 2"}, Case{false, false, false, "dword 2"}}) {
        root().mnuWiederholung[1].Checked = c.one;
        root().mnuWiederholung[2].Checked = c.two;
        root().mnuWiederholung[3].Checked = c.three;
        SaveOptions(root());
        EXPECT_EQ(c.stored, setting(u"ReCall"_s).toStdString());
    }
}

TEST_F(Options, ColumnsThatDoNotExistAndARowThatIsNotSelectedAreNotWritten)
{
    start();
    tracks().clearColumns();
    catalogue().clearSelection();
    forgetCalls();
    SaveOptions(root());
    const std::string all = written();
    EXPECT_NE(std::string::npos, all.find("LV_2 sz 900"));
    for (const char* name : {"LV_4", "LV_5", "LV_6", "LV_7", "Index"})
        EXPECT_EQ(std::string::npos, all.find(name)) << name;
}

TEST_F(Options, WhatRunsIsStoppedAndClosedAndTheTrayItemGoesBeforeAnythingIsWritten)
{
    putCatalogue({u"Erste"_s});
    start();
    pSoundPlayer_Click(root());
    root().pAnimation.play();
    forgetCalls();
    SaveOptions(root());
    EXPECT_EQ("Mediaplayer.controls.stop\nMediaplayer.close\nMediaplayer.close\ntray.remove",
              lines(desktop.log.linesOf({u"Mediaplayer"_s, u"tray"_s})));
    const QStringList all = desktop.log.linesOf({u"tray"_s, u"settings.setValue"_s});
    EXPECT_EQ("tray.remove", all.value(0).toStdString());
    EXPECT_EQ("1", root().Tag.toStdString());
    EXPECT_FALSE(root().pAnimation.Running.value());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
}

TEST_F(Options, AMinimisedWindowIsWrittenAsMinimisedAndComesBackNormal)
{
    start();
    desktop.trayPresent = false;
    root().State = WindowState::Minimized;
    SaveOptions(root());
    EXPECT_EQ("sz \"1\"", setting(u"Maximized"_s).toStdString());
    EXPECT_EQ(WindowState::Normal, root().State.value());
    EXPECT_NE("(absent)", setting(u"Height"_s).toStdString());
}

TEST_F(Options, ClosingStopsSavesAndEndsInThisOrder)
{
    putCatalogue({u"Erste"_s});
    start();
    pSoundPlayer_Click(root());
    put(data() + u"Orvantine.tmp"_s, "x");
    root().Timer3.Enabled = true;
    forgetCalls();
    Form_QueryUnload(root());
    QStringList order;
    for (const QString& line : desktop.log.lines()) {
        if (line.startsWith(u"settings.setValue"_s) && !line.contains(u"\"Maximized\""_s))
            continue;
        for (const QString& start :
             {u"Mediaplayer"_s, u"tray"_s, u"settings.setValue"_s, u"files.remove"_s, u"forms.unload"_s, u"events"_s})
            if (line.startsWith(start))
                order += line.section(u' ', 0, 0) + (line.contains(u"Maximized"_s) ? u" Maximized"_s : QString());
    }
    // The window is visible to the end, so the options are saved once more on the way out.
    EXPECT_EQ("Mediaplayer.controls.stop\n"
              "Mediaplayer.close\n"
              "Mediaplayer.close\n"
              "tray.remove\n"
              "settings.setValue Maximized\n"
              "tray.remove\n"
              "forms.unload\n"
              "forms.unload\n"
              "Mediaplayer.close\n"
              "tray.remove\n"
              "settings.setValue Maximized\n"
              "files.remove\n"
              "Mediaplayer.close\n"
              "tray.remove\n"
              "forms.unload\n"
              "forms.unload\n"
              "events.endProcess",
              lines(order));
    EXPECT_EQ("9", root().Tag.toStdString());
    EXPECT_FALSE(root().Timer1.Enabled.value());
    EXPECT_FALSE(root().Timer3.Enabled.value());
    EXPECT_EQ("", root().pSymbole.ToolTipText.value().toStdString());
}

TEST_F(Options, ClosingAProgramThatHasEndedOnlyEndsTheProcess)
{
    start();
    root().Tag = u"9"_s;
    root().Visible = false;
    forgetCalls();
    Form_QueryUnload(root());
    EXPECT_EQ("", written());
    EXPECT_TRUE(desktop.events().ended());
}

TEST_F(Options, UnloadingStopsAndEndsUnlessItHasEnded)
{
    putCatalogue({u"Erste"_s});
    start();
    pSoundPlayer_Click(root());
    root().Visible = false;
    Form_QueryUnload(root());
    EXPECT_EQ("9", root().Tag.toStdString());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
    EXPECT_TRUE(desktop.events().ended());
}

} // namespace orvantine::fake
