#include "system/app/Program.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <cmath>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

/// The program on the demo catalogue, told what to do by the tools that desktops bring along.
class RemoteControl : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const QString demo = desk.path(u"demo"_s);
        ASSERT_TRUE(desk.tool(QStringLiteral(ORVANTINE_MAKE_DEMO), {u"--small"_s, u"--seconds"_s, u"30"_s, demo}));
        for (const QString& name : {u"data"_s, u"config"_s, u"state"_s})
            desk.environment.insert(u"XDG_"_s + name.toUpper() + u"_HOME"_s, demo + u'/' + name);
    }

    /// What the tool prints; nothing where it fails.
    QString playerctl(const QStringList& arguments)
    {
        return desk.tool(u"playerctl"_s, QStringList{u"--player=orvantine"_s} + arguments)
            .value_or(QString())
            .trimmed();
    }
    /// Waits until the property is seen so.
    bool awaitTold(const QStringList& question, const QString& answer)
    {
        return await([&] { return playerctl(question) == answer; });
    }
    /// The answer to a call; nothing where it fails.
    std::optional<QString> call(const QString& method, const QStringList& arguments = {})
    {
        return desk.tool(u"dbus-send"_s,
                         QStringList{u"--session"_s, u"--print-reply"_s, u"--dest=org.mpris.MediaPlayer2.orvantine"_s,
                                     u"/org/mpris/MediaPlayer2"_s, method} +
                             arguments);
    }

    Desk desk;
};

} // namespace

TEST_F(RemoteControl, PlaysPausesSkipsAndStops)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(awaitTold({u"status"_s}, u"Stopped"_s)) << program.complaints();
    // What is announced, one line a change.
    Process follower(desk.environment);
    follower.start(u"playerctl"_s, {u"--player=orvantine"_s, u"--follow"_s, u"status"_s});
    ASSERT_TRUE(follower.waitForStarted());
    QStringList followed;
    const auto follow = [&] {
        while (follower.canReadLine())
            if (const QString line = QString::fromUtf8(follower.readLine()).trimmed(); !line.isEmpty())
                followed += line;
        return followed.size();
    };
    ASSERT_TRUE(await([&] { return follow() >= 1; }));

    playerctl({u"play"_s});
    EXPECT_TRUE(awaitTold({u"status"_s}, u"Playing"_s));
    const QString first = playerctl({u"metadata"_s, u"xesam:url"_s});
    EXPECT_TRUE(first.startsWith(u"file:///"_s)) << first.toStdString();
    EXPECT_TRUE(await([&] { return playerctl({u"metadata"_s, u"mpris:length"_s}).startsWith(u"30"_s); }));
    EXPECT_FALSE(playerctl({u"metadata"_s, u"xesam:title"_s}).isEmpty());
    EXPECT_FALSE(playerctl({u"metadata"_s, u"xesam:artist"_s}).isEmpty());

    playerctl({u"next"_s});
    EXPECT_TRUE(await([&] {
        const QString url = playerctl({u"metadata"_s, u"xesam:url"_s});
        return !url.isEmpty() && url != first;
    }));
    playerctl({u"previous"_s});
    EXPECT_TRUE(awaitTold({u"metadata"_s, u"xesam:url"_s}, first));
    playerctl({u"pause"_s});
    EXPECT_TRUE(awaitTold({u"status"_s}, u"Paused"_s));
    playerctl({u"play-pause"_s});
    EXPECT_TRUE(awaitTold({u"status"_s}, u"Playing"_s));
    playerctl({u"loop"_s, u"Playlist"_s});
    EXPECT_TRUE(awaitTold({u"loop"_s}, u"Playlist"_s));
    playerctl({u"stop"_s});
    EXPECT_TRUE(awaitTold({u"status"_s}, u"Stopped"_s));

    EXPECT_TRUE(await([&] { return follow() >= 5; }));
    EXPECT_EQ(followed.join(u' ').toStdString(), "Stopped Playing Paused Playing Stopped");
    follower.end();
    EXPECT_TRUE(program.closes());
    EXPECT_EQ(playerctl({u"status"_s}), QString());
}

TEST_F(RemoteControl, SeeksInWhatPlays)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(awaitTold({u"status"_s}, u"Stopped"_s)) << program.complaints();
    const auto position = [this] { return playerctl({u"position"_s}).toDouble(); };
    playerctl({u"play"_s});
    ASSERT_TRUE(awaitTold({u"status"_s}, u"Playing"_s));
    EXPECT_TRUE(await([&] { return position() > 1; })) << "it goes on by itself";
    const QString first = playerctl({u"metadata"_s, u"xesam:url"_s});
    playerctl({u"pause"_s});
    ASSERT_TRUE(awaitTold({u"status"_s}, u"Paused"_s));
    const auto isAt = [&](double seconds) { return std::abs(position() - seconds) < 0.5; };
    playerctl({u"position"_s, u"20"_s});
    EXPECT_TRUE(await([&] { return isAt(20); })) << position();
    playerctl({u"position"_s, u"5-"_s});
    EXPECT_TRUE(await([&] { return isAt(15); })) << position();
    playerctl({u"position"_s, u"8+"_s});
    EXPECT_TRUE(await([&] { return isAt(23); })) << position();

    // A title that is over, and a place that the title does not have.
    const auto seek = [this](const QString& track, const QString& place) {
        return call(u"org.mpris.MediaPlayer2.Player.SetPosition"_s, {u"objpath:"_s + track, u"int64:"_s + place});
    };
    const QString here = playerctl({u"metadata"_s, u"mpris:trackid"_s}).remove(u'\'');
    EXPECT_TRUE(seek(u"/example/orvanten/track/andere"_s, u"2000000"_s));
    EXPECT_TRUE(seek(here, u"31000000"_s));
    EXPECT_TRUE(seek(here, u"-1"_s));
    EXPECT_TRUE(isAt(23)) << position();
    EXPECT_TRUE(seek(here, u"2000000"_s));
    EXPECT_TRUE(await([&] { return isAt(2); })) << position();

    EXPECT_TRUE(call(u"org.mpris.MediaPlayer2.Player.Seek"_s, {u"int64:60000000"_s}));
    EXPECT_TRUE(await([&] {
        const QString url = playerctl({u"metadata"_s, u"xesam:url"_s});
        return !url.isEmpty() && url != first;
    })) << "behind the end lies the next title";
    EXPECT_TRUE(program.closes());
}

TEST_F(RemoteControl, ChoosesAPlaylistAndEndsTheProgram)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    const QString playlistsOf = u"org.mpris.MediaPlayer2.Playlists."_s;
    QString told;
    ASSERT_TRUE(await([&] {
        told = call(playlistsOf + u"GetPlaylists"_s,
                    {u"uint32:0"_s, u"uint32:100"_s, u"string:UserDefined"_s, u"boolean:false"_s})
                   .value_or(QString());
        return !told.isEmpty();
    })) << program.complaints();
    static const QRegularExpression entry(u"object path \"([^\"]+)\"\\s+string \"Lange Fahrt nach Norden\""_s);
    const QString wanted = entry.match(told).captured(1);
    ASSERT_FALSE(wanted.isEmpty()) << told.toStdString();
    EXPECT_TRUE(call(playlistsOf + u"ActivatePlaylist"_s, {u"objpath:"_s + wanted}));
    EXPECT_TRUE(awaitTold({u"status"_s}, u"Playing"_s));
    const QString active = call(u"org.freedesktop.DBus.Properties.Get"_s,
                                {u"string:org.mpris.MediaPlayer2.Playlists"_s, u"string:ActivePlaylist"_s})
                               .value_or(QString());
    EXPECT_TRUE(active.contains(u"boolean true"_s) && active.contains(wanted)) << active.toStdString();
    EXPECT_TRUE(call(u"org.mpris.MediaPlayer2.Quit"_s));
    EXPECT_TRUE(program.ends()) << program.complaints();
}

} // namespace orvantine::desk
