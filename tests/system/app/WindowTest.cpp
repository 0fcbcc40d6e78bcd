#include "system/app/Program.h"

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

constexpr auto MainTitle = "Orvanten Manager";

/// A user with one list.
class MainWindowOnDesk : public ::testing::Test
{
protected:
    MainWindowOnDesk()
    {
        desk.settle();
        const QString list = desk.dataPath(u"Playlisten/Eins.m3u"_s);
        desk.write(list, "gone.mp3\r\n");
        desk.writeCatalogue({list});
    }

    [[nodiscard]] QByteArray settings() const
    {
        return Desk::bytes(desk.path(u"config/Orvanten Manager/settings.reg"_s));
    }

    Desk desk;
};

TEST_F(MainWindowOnDesk, SavesTheOptionsAndEndsTheProcessWhenItIsClosed)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    // There is no sound server on the desk.
    EXPECT_EQ(program.boxes(), (QStringList{u" Sound und Audiowiedergabe"_s}));
    EXPECT_FALSE(settings().contains("\"ReCall\""));
    EXPECT_TRUE(program.closes()) << program.complaints();
    // What only the saving of the options writes.
    EXPECT_TRUE(settings().contains("\"ReCall\"")) << settings().toStdString();
    EXPECT_TRUE(settings().contains("\"Width\""));
}

TEST_F(MainWindowOnDesk, ComesToTheFrontWhenTheProgramIsStartedAgain)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();

    Process other(desk.environment);
    other.start(u"xmessage"_s, {u"-title"_s, u"Something else"_s, u"-geometry"_s, u"1300x800+0+0"_s, u"in front"_s});
    ASSERT_TRUE(await([this] { return !desk.window(u"Something else"_s).isEmpty(); }));
    ASSERT_TRUE(desk.tool(u"xdotool"_s, {u"windowactivate"_s, u"--sync"_s, desk.window(u"Something else"_s)}));
    ASSERT_EQ(desk.titleOfActiveWindow(), u"Something else"_s);

    Program second(desk);
    EXPECT_TRUE(second.ends());
    EXPECT_TRUE(await([this] { return desk.titleOfActiveWindow() == QLatin1StringView(MainTitle); }))
        << desk.titleOfActiveWindow().toStdString();
    EXPECT_EQ(desk.windows().count(QString::fromLatin1(MainTitle)), 1);
    other.end();
    EXPECT_TRUE(program.closes());
}

} // namespace

} // namespace orvantine::desk
