#include "desktop/qt/window/Balloons.h"

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

} // namespace

} // namespace orvantine
