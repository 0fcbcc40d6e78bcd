#include "playlists/PlaylistText.h"
#include "support/Wav.h"
#include "system/app/Program.h"

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

constexpr auto MainTitle = "Orvanten Manager";
/// Places on the keyboard, in the X server's numbers: shift and the full stop type ">" on the desk's own one too.
constexpr auto KeyLeftOfLetters = "shift+94";
constexpr auto FullStopWithShift = "shift+60";
constexpr auto NumericZeroWithAlt = "alt+90";

/// Two lists of long tracks, and the keys of a keyboard pressed in the lists of the window.
class PressedKeys : public ::testing::Test
{
protected:
    explicit PressedKeys(const DeskOptions& options = {}) : desk(options)
    {
        desk.settle();
        desk.write(list(u"Eins"_s), linesOf({u"a"_s, u"b"_s, u"c"_s}));
        desk.write(list(u"Zwei"_s), linesOf({u"d"_s}));
        desk.writeCatalogue({list(u"Eins"_s), list(u"Zwei"_s)});
    }

    void SetUp() override
    {
        ASSERT_TRUE(program.awaitWindow()) << program.complaints();
        ASSERT_TRUE(awaitStatus(u"Stopped"_s)) << program.complaints();
    }

    [[nodiscard]] QString list(const QString& name) const { return desk.dataPath(u"Playlisten/"_s + name + u".m3u"_s); }
    QByteArray linesOf(const QStringList& names)
    {
        QString lines;
        for (const QString& name : names) {
            const QString path = desk.path(u"music/Titel "_s + name + u".wav"_s);
            desk.write(path, fake::wav({.milliseconds = 120'000, .hertz = 440, .samplesPerSecond = 8000}));
            lines += path + u"\r\n"_s;
        }
        return lines.toUtf8();
    }

    void press(const QString& keys) { desk.press(QString::fromLatin1(MainTitle), keys); }

    [[nodiscard]] QString player(const QStringList& question) const
    {
        return desk.tool(u"playerctl"_s, QStringList{u"--player=orvantine"_s} + question).value_or(QString()).trimmed();
    }
    bool awaitStatus(const QString& status)
    {
        return await([this, &status] { return player({u"status"_s}) == status; });
    }
    bool awaitTrack(const QString& name)
    {
        return await([this, &name] {
            return player({u"metadata"_s, u"xesam:url"_s}).endsWith(u"Titel%20"_s + name + u".wav"_s);
        });
    }
    /// Waits until the list's file holds the tracks in that order.
    bool awaitOrder(const QString& names)
    {
        return await([this, &names] {
            QString order;
            for (const QByteArray& line : Desk::bytes(list(u"Eins"_s)).split('\n'))
                if (const qsizetype at = line.indexOf("Titel "); at >= 0)
                    order += QLatin1Char(line[at + 6]);
            return order == names;
        });
    }
    [[nodiscard]] QByteArray database() const { return Desk::bytes(desk.dataPath(u"Orvantine.dat"_s)); }

    Desk desk;
    Program program{desk};
};

TEST_F(PressedKeys, WithAltDriveThePlayer)
{
    program.click(u"Titel a"_s);
    press(u"alt+End"_s);
    EXPECT_TRUE(awaitStatus(u"Playing"_s)) << program.complaints();
    EXPECT_TRUE(awaitTrack(u"a"_s));
    press(u"alt+Down"_s);
    EXPECT_TRUE(awaitTrack(u"b"_s));
    press(u"alt+Next"_s);
    EXPECT_TRUE(awaitTrack(u"c"_s));
    press(u"alt+Up"_s);
    EXPECT_TRUE(awaitTrack(u"b"_s));
    press(u"alt+Prior"_s);
    EXPECT_TRUE(awaitTrack(u"a"_s));

    // Over the end of two minutes by steps of ten seconds.
    for (int i = 0; i < 13; ++i)
        press(u"alt+Right"_s);
    EXPECT_TRUE(awaitTrack(u"b"_s)) << "nobody waits so long for its own end";

    press(u"Num_Lock"_s);
    press(QString::fromLatin1(NumericZeroWithAlt));
    EXPECT_TRUE(awaitStatus(u"Paused"_s));
    press(QString::fromLatin1(NumericZeroWithAlt));
    EXPECT_TRUE(awaitStatus(u"Playing"_s));
    press(QString::fromLatin1(NumericZeroWithAlt));
    EXPECT_TRUE(awaitStatus(u"Paused"_s));
    press(u"Num_Lock"_s);
    // Ten seconds back, and on from there.
    press(u"alt+Left"_s);
    EXPECT_TRUE(awaitStatus(u"Playing"_s));

    program.click(u"Wiedergabe stoppen"_s);
    EXPECT_TRUE(awaitStatus(u"Stopped"_s));
    press(u"alt+Home"_s);
    EXPECT_TRUE(awaitStatus(u"Playing"_s));
    press(u"alt+q"_s);
    EXPECT_TRUE(program.ends()) << program.complaints();
}

TEST_F(PressedKeys, MoveRowsAndOpenWhatIsSelected)
{
    program.click(u"Titel a"_s);
    press(u"ctrl+Next"_s);
    EXPECT_TRUE(awaitOrder(u"bac"_s)) << program.complaints();
    press(u"ctrl+Next"_s);
    EXPECT_TRUE(awaitOrder(u"bca"_s));
    press(QString::fromLatin1(KeyLeftOfLetters));
    EXPECT_TRUE(awaitOrder(u"bac"_s));
    // Types ">" and stays where it is.
    press(QString::fromLatin1(FullStopWithShift));
    press(u"ctrl+Prior"_s);
    EXPECT_TRUE(awaitOrder(u"abc"_s));

    press(u"alt+Return"_s);
    const QString properties = u" Eigenschaften"_s;
    EXPECT_TRUE(await([&] { return desk.windows().contains(properties); })) << program.complaints();
    desk.press(properties, u"Escape"_s);
    EXPECT_TRUE(await([&] { return !desk.windows().contains(properties); }));

    program.click(u"Titel b"_s);
    press(u"Return"_s);
    EXPECT_TRUE(awaitTrack(u"b"_s)) << program.complaints();

    program.click(u"Zwei"_s);
    press(u"Return"_s);
    EXPECT_TRUE(awaitTrack(u"d"_s)) << program.complaints();
    press(u"ctrl+Prior"_s);
    EXPECT_TRUE(await([this] { return database().contains("1b=Zwei\r\n") && database().contains("2b=Eins\r\n"); }));
    press(u"ctrl+Next"_s);
    EXPECT_TRUE(await([this] { return database().contains("1b=Eins\r\n") && database().contains("2b=Zwei\r\n"); }));
    EXPECT_TRUE(program.closes()) << program.complaints();
}

/// A window manager that has no key of its own: many take Alt and the space bar for a window's menu.
class KeysThatNobodyElseTakes : public PressedKeys
{
protected:
    KeysThatNobodyElseTakes()
        : PressedKeys({.windowManagerSettings =
                           "<openbox_config xmlns=\"http://openbox.org/3.4/rc\"><keyboard/></openbox_config>"})
    {
    }
};

TEST_F(KeysThatNobodyElseTakes, AltAndTheSpaceBarPause)
{
    program.click(u"Titel a"_s);
    press(u"alt+End"_s);
    EXPECT_TRUE(awaitStatus(u"Playing"_s)) << program.complaints();
    press(u"alt+space"_s);
    EXPECT_TRUE(awaitStatus(u"Paused"_s));
    press(u"alt+space"_s);
    EXPECT_TRUE(awaitStatus(u"Playing"_s));
    press(u"alt+q"_s);
    EXPECT_TRUE(program.ends()) << program.complaints();
}

} // namespace

} // namespace orvantine::desk
