#include "playback/Tray.h"

#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

class Tray : public PlaybackWorld
{
};

TEST_F(Tray, ALeftAndARightClickAlikeHideTheWindowAndBringItBack)
{
    startPlayback();
    for (const MouseButton button : {MouseButton::Left, MouseButton::Right}) {
        SCOPED_TRACE(static_cast<int>(button));
        EXPECT_TRUE(desktop.tray().click(button));
        EXPECT_FALSE(root().Visible.value());
        EXPECT_EQ(WindowState::Minimized, root().State.value());
        EXPECT_TRUE(desktop.tray().click(button));
        EXPECT_TRUE(root().Visible.value());
        EXPECT_EQ(WindowState::Normal, root().State.value());
    }
}

TEST_F(Tray, AllOtherMessagesAreIgnored)
{
    startPlayback();
    for (const int x : {0, 1, 0x200 * 15, 0x202 * 15, 0x203 * 15, 0x205 * 15, 0x206 * 15, 0x201 * 12, 0x204 * 12, 7694,
                        7696, 7739, 7741, -7695}) {
        pTrayicons_MouseMove(root(), x);
        EXPECT_TRUE(root().Visible.value()) << x;
    }
    for (const int x : {0x204 * 15, 0x201 * 15}) {
        pTrayicons_MouseMove(root(), x);
        EXPECT_FALSE(root().Visible.value()) << x;
        pTrayicons_MouseMove(root(), x);
        EXPECT_TRUE(root().Visible.value()) << x;
    }
}

TEST_F(Tray, AWindowOutOfSightComesBackWhereItCanBeSeen)
{
    startPlayback();
    struct Case
    {
        Twips left, top, leftAfter, topAfter;
    };
    for (const Case& c : {Case{28800, 16200, 300, 500}, Case{40000, 40000, 300, 500}, Case{28799, 16199, 28799, 16199},
                          Case{100, 16200, 100, 500}, Case{28800, 100, 300, 100}}) {
        SCOPED_TRACE(std::to_string(c.left) + ' ' + std::to_string(c.top));
        pTrayicons_MouseMove(root(), 7695);
        ASSERT_FALSE(root().Visible.value());
        root().Left = c.left;
        root().Top = c.top;
        pTrayicons_MouseMove(root(), 7740);
        EXPECT_EQ(c.leftAfter, root().Left.value());
        EXPECT_EQ(c.topAfter, root().Top.value());
    }
}

TEST_F(Tray, TheWindowIsBroughtToTheFrontBeforeItShows)
{
    startPlayback();
    pTrayicons_MouseMove(root(), 7695);
    forgetCalls();
    pTrayicons_MouseMove(root(), 7695);
    EXPECT_EQ("forms.toFront Root", calls({u"forms"_s}));
}

TEST_F(Tray, TheIconStandsWithTheProgramsNameFromStartToEnd)
{
    startPlayback();
    EXPECT_TRUE(desktop.tray().shown());
    EXPECT_EQ("Orvanten Manager", desktop.tray().tip().toStdString());
    root().mnuBeenden.Click();
    EXPECT_FALSE(desktop.tray().shown());
}

TEST_F(Tray, WithoutATrayTheStartGoesOnAndMinimisingOnlyMinimises)
{
    desktop.trayPresent = false;
    desktop.newProcess();
    startPlayback();
    root().State = WindowState::Minimized;
    EXPECT_TRUE(root().Visible.value());
}

TEST_F(Tray, AWindowIsHiddenOnlyWhereAnItemStands)
{
    desktop.trayPresent = false;
    desktop.newProcess();
    startPlayback();
    root().State = WindowState::Minimized;
    EXPECT_TRUE(root().Visible.value());
    // The tray comes up after the program: the item goes there, and the minimised window with it.
    desktop.tray().setPresent(true);
    EXPECT_TRUE(desktop.tray().shown());
    EXPECT_FALSE(root().Visible.value());
    EXPECT_TRUE(desktop.tray().click(MouseButton::Left));
    EXPECT_TRUE(root().Visible.value());
    root().State = WindowState::Minimized;
    EXPECT_FALSE(root().Visible.value());
    // And leaves it in the task bar when it goes.
    desktop.tray().setPresent(false);
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ(WindowState::Minimized, root().State.value());
}

TEST_F(Tray, ATrayThatComesOrGoesLeavesAWindowThatIsSeen)
{
    startPlayback();
    desktop.tray().setPresent(false);
    EXPECT_TRUE(root().Visible.value());
    desktop.tray().setPresent(true);
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ(WindowState::Normal, root().State.value());
}

TEST_F(Tray, OnASecondScreenAWindowIsInSight)
{
    desktop.screen.all.push_back({{28800, 0, 28800, 16200}, {28800, 0, 28800, 16200}});
    startPlayback();
    pTrayicons_MouseMove(root(), 7695);
    root().Left = 30000;
    root().Top = 100;
    pTrayicons_MouseMove(root(), 7695);
    EXPECT_EQ(30000, root().Left.value());
    EXPECT_EQ(100, root().Top.value());
}

TEST_F(Tray, TheSmallControlsForwardWhileTheRunningNameIsEnabled)
{
    startPlayback();
    QStringList pressed;
    root().mnuBeschriftung.Click = [&] { pressed += u"mnuBeschriftung"_s; };
    root().mnuUmbenennen.Click = [&] { pressed += u"mnuUmbenennen"_s; };
    root().pTrayicon.Click();
    root().tBeschreibung.DblClick();
    root().tPlaylisteinträge.DblClick();
    EXPECT_EQ("mnuBeschriftung mnuBeschriftung mnuUmbenennen", pressed.join(u' ').toStdString());
    root().tDateiname.Enabled = false;
    root().pTrayicon.Click();
    root().tBeschreibung.DblClick();
    root().tPlaylisteinträge.DblClick();
    EXPECT_EQ(3, pressed.size());
}

TEST_F(Tray, TheBitRateSymbolChoosesACoverOnlyWithACatalogue)
{
    startPlayback();
    desktop.choosers.cancel(ChooserKind::Open);
    root().pMpeg.DblClick();
    EXPECT_EQ(1, desktop.log.linesOf({u"choosers.open"_s}).size());
    catalogue().clear();
    root().pMpeg.DblClick();
    EXPECT_EQ(1, desktop.log.linesOf({u"choosers.open"_s}).size());
}

TEST_F(Tray, AClickDuringTheStartDoesNothing)
{
    setting(u"Error"_s, dwordSetting(0));
    putCatalogue({u"Erste"_s});
    const auto seen = [this] {
        return std::to_string(static_cast<int>(root().State.value())) + ' ' + (root().Visible.value() ? "1" : "0");
    };
    std::string before;
    std::string after;
    const auto pauseBegins = root().State.addNotifier([&] {
        desktop.events().after(std::chrono::milliseconds{500}, [&] {
            before = seen();
            desktop.tray().click(MouseButton::Left);
            after = seen();
        });
    });
    start(u"/play"_s);
    EXPECT_EQ("1 0", before);
    EXPECT_EQ(before, after);
    EXPECT_EQ("1 0", seen());
}

TEST_F(Tray, TheWindowComesToTheFrontBeforeItsPlaceAndStateAreMended)
{
    startPlayback();
    pTrayicons_MouseMove(root(), 7695);
    root().Left = 40000;
    forgetCalls();
    std::string seen;
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        seen = calls({u"forms."_s}) + (root().Visible.value() ? " visible" : " hidden") +
               (root().State.value() == WindowState::Minimized ? " minimised " : " other ") +
               std::to_string(root().Left.value());
    });
    pTrayicons_MouseMove(root(), 7740);
    EXPECT_EQ("forms.toFront Root hidden minimised 40000", seen);
}

TEST_F(Tray, AMaximisedWindowComesBackAsANormalOne)
{
    startPlayback();
    root().State = WindowState::Maximized;
    pTrayicons_MouseMove(root(), 7695);
    pTrayicons_MouseMove(root(), 7695);
    EXPECT_EQ(WindowState::Normal, root().State.value());
    EXPECT_TRUE(root().Visible.value());
}

} // namespace orvantine::fake
