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
    setting(u"Width"_s, {.type = SettingType::String, .text = u"10000"_s, .bytes = {}});
    desktop.events().after(std::chrono::milliseconds{500}, [&] { endBySession(root()); });
    start();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_FALSE(root().Visible.value());
    EXPECT_EQ("sz \"10000\"", setting(u"Width"_s).toStdString());
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
