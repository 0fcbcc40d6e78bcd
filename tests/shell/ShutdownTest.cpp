#include "support/DesktopTest.h"

#include "shell/SaveOptions.h"
#include "shell/Shutdown.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

class Shutdown : public DesktopTest
{
};

TEST_F(Shutdown, ClosingWhileMinimisedToTheTrayRestoresTheWindowSoThatTheOptionsAreSaved)
{
    start();
    root().State = WindowState::Minimized;
    ASSERT_FALSE(root().Visible.value());
    Form_QueryUnload(root());
    EXPECT_EQ("sz \"0\"", setting(u"Maximized"_s).toStdString());
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("9", root().Tag.toStdString());
}

TEST_F(Shutdown, TheEndOfTheSessionSavesAndEndsAsTheWindowButtonDoes)
{
    start();
    root().Width = 12345;
    endBySession(root());
    EXPECT_EQ("sz \"12345\"", setting(u"Width"_s).toStdString());
    EXPECT_EQ("9", root().Tag.toStdString());
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("", boxes());
}

TEST_F(Shutdown, ASessionThatEndsTwiceEndsTheProgramOnce)
{
    start();
    desktop.log.take();
    desktop.events().after(std::chrono::milliseconds{0}, [&] { endBySession(root()); });
    endBySession(root());
    endBySession(root());
    EXPECT_EQ("events.endProcess", calls({u"events.endProcess"_s}));
}

TEST_F(Shutdown, ASessionThatEndsDuringTheStartEndsItWithoutSavingOptions)
{
    for (const QString& command : {QString(), u"/play"_s, u"/hide"_s}) {
        SCOPED_TRACE(command.toStdString());
        desktop.newProcess();
        setting(u"Version"_s, stringSetting(u"2.2"_s));
        setting(u"Width"_s, stringSetting(u"10000"_s));
        setting(u"Volume"_s, dwordSetting(1));
        desktop.events().after(std::chrono::milliseconds{500}, [&] { endBySession(root()); });
        start(command);
        EXPECT_TRUE(desktop.events().ended());
        EXPECT_FALSE(root().Visible.value());
        EXPECT_EQ("sz \"10000\"", setting(u"Width"_s).toStdString());
        EXPECT_EQ("dword 1", setting(u"Volume"_s).toStdString());
        EXPECT_EQ("(absent)", setting(u"Maximized"_s).toStdString());
    }
}

TEST_F(Shutdown, ASessionThatEndsWhenAHiddenStartBeginsToPlaySavesNoOptionsAndPlaysNothing)
{
    setting(u"Width"_s, stringSetting(u"10000"_s));
    root().mnuWiedergabe.Click = [this] { endBySession(root()); };
    start(u"/hide"_s);
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_FALSE(root().Visible.value());
    EXPECT_EQ("sz \"10000\"", setting(u"Width"_s).toStdString());
    EXPECT_FALSE(root().Timer1.Enabled.value());
    EXPECT_EQ("9", root().Tag.toStdString());
}

TEST_F(Shutdown, ASessionThatEndsInTheYieldOfTheUpdateCheckShowsNoWindowAnyMore)
{
    for (const QString& command : {QString(), u"/play"_s}) {
        SCOPED_TRACE(command.toStdString());
        desktop.newProcess();
        desktop.settings.drop(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"Update"_s);
        put(desktop.folders.program + u"/Netzpflege.exe"_s, "x");
        desktop.launcher.Started = [this](const LaunchRequest&) {
            desktop.events().after(std::chrono::milliseconds{0}, [this] { endBySession(root()); });
        };
        start(command);
        EXPECT_TRUE(desktop.events().ended());
        EXPECT_FALSE(root().Visible.value());
        EXPECT_EQ(WindowState::Normal, root().State.value());
        EXPECT_EQ("9", root().Tag.toStdString());
    }
}

TEST_F(Shutdown, AHiddenWindowNeverSavesItsOptions)
{
    start();
    root().Visible = false;
    mnuBeenden_Click(root());
    EXPECT_EQ("(absent)", setting(u"Maximized"_s).toStdString());
}

TEST_F(Shutdown, EndingDeletesTheTemporaryFile)
{
    start();
    put(data() + u"Orvantine.tmp"_s, "x");
    mnuBeenden_Click(root());
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.tmp"_s).toStdString());
}

TEST_F(Shutdown, TheTagDialogsAreUnloaded)
{
    for (const auto& end : {mnuBeenden_Click, Form_QueryUnload}) {
        desktop.newProcess();
        start();
        root().mnuGetIDTag.Click();
        desktop.log.take();
        end(root());
        EXPECT_EQ("forms.unload frmID3V1\nforms.unload frmID3V2",
                  lines(desktop.log.linesOf({u"forms.unload frmID3"_s}).mid(0, 2)));
    }
}

TEST_F(Shutdown, AMaximisedWindowKeepsTheGeometryOfTheLastNormalOne)
{
    start();
    root().Left = 150;
    SaveOptions(root());
    root().State = WindowState::Maximized;
    root().Left = 0;
    SaveOptions(root());
    EXPECT_EQ("sz \"2\"", setting(u"Maximized"_s).toStdString());
    EXPECT_EQ("sz \"150\"", setting(u"Left"_s).toStdString());
}

TEST_F(Shutdown, TheSearchMarkIsWrittenAndNeverRestored)
{
    start();
    root().mnuSuchDialog.Checked = true;
    SaveOptions(root());
    EXPECT_EQ("dword 1", setting(u"Suche"_s).toStdString());
    desktop.newProcess();
    start();
    EXPECT_FALSE(root().mnuSuchDialog.Checked.value());
}

} // namespace orvantine::fake
