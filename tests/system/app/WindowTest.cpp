#include "system/app/Program.h"

#include <QDir>
#include <QFile>

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

/// Where the window of the program stands on a desk, and what it remembers of that.
class PlaceOnDesk : public ::testing::Test
{
protected:
    struct Place
    {
        QRect frame;
        QPoint stored;
        bool operator==(const Place& other) const { return frame == other.frame && stored == other.stored; }
    };
    friend void PrintTo(const Place& place, std::ostream* out)
    {
        *out << place.frame.x() << ' ' << place.frame.y() << ' ' << place.frame.width() << ' ' << place.frame.height()
             << ", stored " << place.stored.x() << ' ' << place.stored.y();
    }

    [[nodiscard]] static int storedNumber(const Desk& desk, const QString& name)
    {
        const QString text = QString::fromUtf8(Desk::bytes(desk.path(u"config/Orvanten Manager/settings.reg"_s)));
        return text.section(u'"' + name + u"\"=\""_s, 1).section(u'"', 0, 0).toInt();
    }
    /// The frame that the window manager has put around it.
    [[nodiscard]] static QRect frameOf(const Desk& desk)
    {
        const QString told =
            desk.tool(u"xwininfo"_s, {u"-id"_s, desk.window(QString::fromLatin1(MainTitle))}).value_or(QString());
        const auto value = [&told](const QString& name) {
            return told.section(name, 1).section(u'\n', 0, 0).trimmed().toInt();
        };
        // The border is as wide below as beside.
        const QPoint inFrame(value(u"Relative upper-left X:"_s), value(u"Relative upper-left Y:"_s));
        const QPoint place(value(u"Absolute upper-left X:"_s), value(u"Absolute upper-left Y:"_s));
        const QSize size(value(u"Width:"_s), value(u"Height:"_s));
        return {place - inFrame, size + QSize(2 * inFrame.x(), inFrame.x() + inFrame.y())};
    }
    /// One start and its end.
    [[nodiscard]] static Place startAndEnd(Desk& desk)
    {
        Program program(desk);
        EXPECT_TRUE(program.awaitWindow()) << program.complaints();
        EXPECT_TRUE(await([&desk] { return !desk.window(QString::fromLatin1(MainTitle)).isEmpty(); }));
        const QRect frame = frameOf(desk);
        EXPECT_TRUE(program.closes()) << program.complaints();
        return {frame, {storedNumber(desk, u"Left"_s), storedNumber(desk, u"Top"_s)}};
    }
};

TEST_F(PlaceOnDesk, StartsAndEndsWithoutAMoveLeaveTheWindowWhereItStands)
{
    Desk desk;
    desk.settle({u"\"Left\"=\"1500\""_s, u"\"Top\"=\"2250\""_s, u"\"Width\"=\"10500\""_s, u"\"Height\"=\"7500\""_s});
    const Place first = startAndEnd(desk);
    EXPECT_EQ(first.frame.topLeft(), QPoint(100, 150));
    EXPECT_EQ(first.stored, QPoint(1500, 2250));
    for (int start = 2; start <= 5; ++start)
        EXPECT_EQ(startAndEnd(desk), first) << start;
}

TEST_F(PlaceOnDesk, AFirstStartInTheMiddleStaysThereAtTheNext)
{
    Desk desk;
    desk.settle();
    const Place first = startAndEnd(desk);
    EXPECT_EQ(first.frame.topLeft() * 15, first.stored);
    EXPECT_EQ(startAndEnd(desk), first);
}

TEST_F(PlaceOnDesk, AMovedWindowComesBackWhereItWasMovedTo)
{
    Desk desk;
    desk.settle();
    {
        Program program(desk);
        ASSERT_TRUE(program.awaitWindow()) << program.complaints();
        ASSERT_TRUE(await([&desk] {
            const QString window = desk.window(QString::fromLatin1(MainTitle));
            return desk.tool(u"xdotool"_s, {u"windowmove"_s, u"--sync"_s, window, u"200"_s, u"120"_s}).has_value();
        }));
        EXPECT_TRUE(program.closes()) << program.complaints();
    }
    const Place first = startAndEnd(desk);
    EXPECT_LT((first.frame.topLeft() - QPoint(200, 120)).manhattanLength(), 30);
    EXPECT_EQ(first.frame.topLeft() * 15, first.stored);
    EXPECT_EQ(startAndEnd(desk), first);
}

TEST_F(PlaceOnDesk, OnASmallScreenAllOfTheWindowIsSeen)
{
    Desk desk({.sessionBus = true, .windowManagerSettings = {}, .screen = "1024x600x24"});
    desk.settle();
    const QRect frame = startAndEnd(desk).frame;
    EXPECT_TRUE(QRect(0, 0, 1024, 600).contains(frame))
        << frame.x() << ' ' << frame.y() << ' ' << frame.width() << ' ' << frame.height();
}

TEST_F(PlaceOnDesk, TwoSessionsOfOneUserDoNotBothWorkOnOneCatalogue)
{
    Desk desk;
    desk.settle();
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    for (const QString& variable : {u"XDG_RUNTIME_DIR"_s, u"XDG_STATE_HOME"_s}) {
        SCOPED_TRACE(variable.toStdString());
        const QString before = desk.environment.value(variable);
        const QString other = desk.path(u"other-"_s + variable);
        QDir().mkpath(other);
        QFile::setPermissions(other, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        desk.environment.insert(variable, other);
        Program second(desk);
        EXPECT_TRUE(second.ends()) << second.complaints();
        desk.environment.insert(variable, before);
        EXPECT_EQ(desk.windows().count(QString::fromLatin1(MainTitle)), 1);
    }
    EXPECT_TRUE(program.closes()) << program.complaints();
}

} // namespace

} // namespace orvantine::desk
