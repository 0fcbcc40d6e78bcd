#include "desktop/qt/window/Balloons.h"

#include "desktop/qt/widgets/FlatButton.h"

#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWindow>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

TEST(Balloon, ShowsATextOfWhichNothingElseIsToldAsItIs)
{
    EXPECT_EQ(Balloons::content({}, u"Vorherigen Titel \nwiedergeben."_s).toStdString(),
              "Vorherigen Titel \nwiedergeben.");
}

TEST(Balloon, ShowsEachOfItsProperties)
{
    struct Case
    {
        const char* name;
        std::function<void(TooltipsClass&)> tell;
        const char* shown;
    };
    for (const Case& c : {
             Case{"Title", [](TooltipsClass& t) { t.Title = u"A & B"_s; }, "<b>A &amp; B</b><br>"},
             Case{"Icon", [](TooltipsClass& t) { t.Icon = TooltipsClass::TipIcon::Warning; }, "<b>⚠ </b><br>"},
             Case{"ForeColor", [](TooltipsClass& t) { t.ForeColor = Color::DarkRed; }, "color:#c00000;"},
             Case{"BackColor", [](TooltipsClass& t) { t.BackColor = Color::DarkRed; }, "bgcolor=\"#c00000\""},
             Case{"Margin", [](TooltipsClass& t) { t.Margin = 7; }, "cellpadding=\"7\""},
             Case{"Width", [](TooltipsClass& t) { t.Width = 120; }, "width=\"120\""},
             Case{"Alignment", [](TooltipsClass& t) { t.Alignment = TooltipsClass::TipAlignment::Centre; },
                  "align=\"center\""},
         }) {
        SCOPED_TRACE(c.name);
        TooltipsClass tips;
        c.tell(tips);
        const QString shown = Balloons::content(tips, u"a <b>\nc"_s);
        EXPECT_TRUE(shown.contains(QString::fromUtf8(c.shown))) << shown.toStdString();
        EXPECT_TRUE(shown.contains(u"a &lt;b&gt;<br>c"_s)) << shown.toStdString();
    }
}

TEST(Balloon, KeepsItsFifteenPropertiesAsPlainData)
{
    const TooltipsClass tips;
    EXPECT_EQ(tips.ToolTipText, QString());
    EXPECT_EQ(tips.Title, QString());
    EXPECT_EQ(tips.Icon, TooltipsClass::TipIcon::None);
    EXPECT_FALSE(tips.ForeColor || tips.BackColor);
    EXPECT_TRUE(tips.Baloon);
    EXPECT_EQ(tips.Margin, 0);
    EXPECT_FALSE(tips.CenteredTooltip);
    EXPECT_TRUE(tips.Transparent);
    EXPECT_EQ(tips.Alignment, TooltipsClass::TipAlignment::Left);
    EXPECT_EQ(tips.Width, 0);
    EXPECT_EQ(tips.Show.count() + tips.AutoHide.count() + tips.ReShow.count(), 0);
    EXPECT_EQ(tips.ShowMode, TooltipsClass::TipShowMode::Always);
}

/// A window with two buttons that have tips.
class BalloonOnScreen : public testing::Test
{
protected:
    BalloonOnScreen()
    {
        frame.setGeometry(100, 100, 300, 100);
        first.setGeometry(0, 0, 60, 40);
        first.setToolTip(u"Erster"_s);
        second.setGeometry(100, 0, 60, 40);
        second.setToolTip(u"Zweiter"_s);
        balloons = std::make_unique<Balloons>(tips, frame);
        frame.show();
    }
    ~BalloonOnScreen() override { hide(); }

    /// The mouse has rested on a button.
    static void rest(FlatButton& button, const QPoint& at = {10, 10})
    {
        button.setAttribute(Qt::WA_UnderMouse);
        QHelpEvent event(QEvent::ToolTip, at, button.mapToGlobal(at));
        QApplication::sendEvent(&button, &event);
    }
    static void hide()
    {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return tip() == nullptr; }));
    }
    [[nodiscard]] static QWidget* tip()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            if (window->isVisible() && window->inherits("QTipLabel"))
                return window;
        return nullptr;
    }
    [[nodiscard]] static std::string shown() { return tip() == nullptr ? "" : QToolTip::text().toStdString(); }
    [[nodiscard]] QPoint placeOf(const QPoint& mouse)
    {
        hide();
        rest(first, mouse);
        return tip() == nullptr ? QPoint() : tip()->pos();
    }

    TooltipsClass tips;
    QWidget frame;
    FlatButton first{FlatButton::Form::Flat, 40, &frame};
    FlatButton second{FlatButton::Form::Flat, 40, &frame};
    std::unique_ptr<Balloons> balloons;
};

TEST_F(BalloonOnScreen, StandsBelowItsControlOrItsMiddleOrAtTheMouse)
{
    const QPoint below = placeOf({10, 10});
    EXPECT_EQ(placeOf({50, 30}), below) << "wherever the mouse is";
    tips.CenteredTooltip = true;
    EXPECT_EQ(placeOf({10, 10}) - below, QPoint(30, 0));
    tips.CenteredTooltip = false;
    tips.Baloon = false;
    EXPECT_EQ(placeOf({10, 10}) - below, QPoint(10, 10 - 40));
}

TEST_F(BalloonOnScreen, NeverComesWhereItIsToldSo)
{
    tips.ShowMode = TooltipsClass::TipShowMode::Never;
    rest(first);
    EXPECT_EQ(shown(), "");
    tips.ShowMode = TooltipsClass::TipShowMode::Always;
    rest(first);
    EXPECT_EQ(shown(), "Erster");
}

TEST_F(BalloonOnScreen, ComesAfterItsTimeIfTheMouseIsStillThere)
{
    tips.Show = std::chrono::milliseconds{40};
    rest(first);
    EXPECT_EQ(shown(), "");
    EXPECT_TRUE(QTest::qWaitFor([] { return shown() == "Erster"; }));
    hide();
    rest(first);
    first.setAttribute(Qt::WA_UnderMouse, false);
    bool passed = false;
    QTimer::singleShot(2 * tips.Show, &frame, [&] { passed = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return passed; }));
    EXPECT_EQ(shown(), "");
}

TEST_F(BalloonOnScreen, GoesAfterItsTime)
{
    tips.AutoHide = std::chrono::milliseconds{60};
    rest(first);
    ASSERT_EQ(shown(), "Erster");
    // Left to the toolkit, it would stand for ten seconds.
    EXPECT_TRUE(QTest::qWaitFor([] { return tip() == nullptr; }, 4000));
}

TEST_F(BalloonOnScreen, TheNextOneComesAfterATimeOfItsOwn)
{
    tips.ReShow = std::chrono::hours{1};
    rest(first);
    ASSERT_EQ(shown(), "Erster");
    rest(second);
    EXPECT_EQ(shown(), "Erster");
    tips.ReShow = std::chrono::milliseconds{0};
    tips.Show = std::chrono::hours{1};
    rest(second);
    EXPECT_EQ(shown(), "Zweiter");
}

TEST_F(BalloonOnScreen, LetsTheMouseThroughOnlyIfItIsTransparent)
{
    for (const bool transparent : {true, false}) {
        tips.Transparent = transparent;
        hide();
        rest(first);
        ASSERT_NE(tip(), nullptr);
        EXPECT_EQ(tip()->windowHandle()->flags().testFlag(Qt::WindowTransparentForInput), transparent);
    }
}

} // namespace

} // namespace orvantine
