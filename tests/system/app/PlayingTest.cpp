#include "system/app/Ear.h"
#include "system/app/Program.h"

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

struct DemoTrack
{
    int list = 0;
    double hertz = 0;
    QString name;
};

/// The demo catalogue on a desk, played through a sound server whose sound is recorded.
class DemoCatalogue : public ::testing::Test
{
protected:
    /// Makes the catalogue with tracks of that length.
    void prepare(const QString& secondsOfATrack)
    {
        const QString demo = desk.path(u"demo"_s);
        ASSERT_TRUE(
            desk.tool(QStringLiteral(ORVANTINE_MAKE_DEMO), {u"--small"_s, u"--seconds"_s, secondsOfATrack, demo}));
        for (const QString& name : {u"data"_s, u"config"_s, u"state"_s})
            desk.environment.insert(u"XDG_"_s + name.toUpper() + u"_HOME"_s, demo + u'/' + name);
        const QList<QByteArray> lines = Desk::bytes(demo + u"/demo.tsv"_s).split('\n');
        for (const QByteArray& line : lines.mid(1)) {
            const QStringList fields = QString::fromUtf8(line).split(u'\t');
            if (fields.size() != 9)
                continue;
            tracks.append({fields[0].toInt(), fields[3].toDouble(), fields[6] + u" - "_s + fields[7]});
            ear.table.hertz.append(fields[3].toDouble());
        }
        ASSERT_EQ(tracks.size(), 8);
    }

    Desk desk;
    Ear ear{desk};
    QList<DemoTrack> tracks;
};

TEST_F(DemoCatalogue, IsHeardInOrderFromListToList)
{
    prepare(u"1.6"_s);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    program.click(u"Morgens auf dem Balkon"_s);
    program.click(u"Wiedergabe starten"_s);

    QList<double> told;
    for (const DemoTrack& track : tracks)
        told.append(track.hertz);
    // Behind the last list the first one begins anew.
    told.append(told.first());
    EXPECT_TRUE(ear.awaitTones(told.size())) << program.complaints();
    program.click(u"Wiedergabe stoppen"_s);
    EXPECT_TRUE(ear.awaitSilence());
    EXPECT_TRUE(program.closes());
    EXPECT_EQ(ear.allTones().mid(0, told.size()), told);
}

TEST_F(DemoCatalogue, IsMadeOfTheFoldersOfANewUserWhoseFirstStartEndsWithMusic)
{
    prepare(u"25"_s);
    const QByteArray userFolders = Desk::bytes(desk.path(u"demo/config/user-dirs.dirs"_s));
    for (const QString& name : {u"data"_s, u"config"_s, u"state"_s})
        desk.environment.insert(u"XDG_"_s + name.toUpper() + u"_HOME"_s, desk.path(u"neu/"_s + name));
    desk.write(desk.path(u"neu/config/user-dirs.dirs"_s), userFolders);

    Program program(desk);
    const QString wizard = u" Herzlich Willkommen"_s;
    ASSERT_TRUE(await([&] { return !desk.window(wizard).isEmpty(); })) << program.complaints();
    desk.press(wizard, u"Return"_s);
    ASSERT_TRUE(await([&] { return program.control(u"Ordner"_s).has_value(); })) << program.complaints();
    desk.press(wizard, u"Return"_s);
    ASSERT_TRUE(await([&] { return program.control(u"Fertig"_s).has_value(); })) << program.complaints();
    desk.press(wizard, u"Return"_s);
    EXPECT_TRUE(ear.awaitTone(tracks.first().hertz)) << program.complaints();
    EXPECT_EQ(desk.window(wizard), QString());
}

TEST_F(DemoCatalogue, TakesTheFolderThatAFileManagerSends)
{
    prepare(u"2"_s);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    const QString album = desk.path(u"demo/Musik/Velvet Orchard/Seventeen Pears"_s);
    ASSERT_TRUE(desk.tool(QStringLiteral(ORVANTINE_SENDER), {u"--senden"_s, album}));
    EXPECT_TRUE(await([&] { return program.control(u"Seventeen Pears"_s).has_value(); })) << program.complaints();
    EXPECT_TRUE(Desk::bytes(desk.path(u"demo/data/Orvanten Manager/Playlisten/Seventeen Pears.m3u"_s))
                    .contains("/02 Ladder.mp3\r\n"));
}

TEST_F(DemoCatalogue, ObeysTheControlsOfTheWindow)
{
    prepare(u"25"_s);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    const QList<DemoTrack> list = tracks.mid(3, 3);
    program.click(u"Lange Fahrt nach Norden"_s);
    program.click(u"Wiedergabe starten"_s);
    ASSERT_TRUE(ear.awaitTone(list[0].hertz));
    program.click(u"Pause"_s);
    ASSERT_TRUE(ear.awaitSilence());
    program.click(u"Weiterspielen"_s);
    ASSERT_TRUE(ear.awaitTone(list[0].hertz));
    program.click(u"Nächster Titel"_s);
    ASSERT_TRUE(ear.awaitTone(list[1].hertz));
    program.click(u"Vorheriger Titel"_s);
    ASSERT_TRUE(ear.awaitTone(list[0].hertz));
    program.doubleClick(list[2].name);
    ASSERT_TRUE(ear.awaitTone(list[2].hertz));
    program.doubleClick(list[1].name);
    ASSERT_TRUE(ear.awaitTone(list[1].hertz));
    program.click(u"Wiedergabe stoppen"_s);
    ASSERT_TRUE(ear.awaitSilence());
    program.click(u"Playliste wiedergeben"_s);
    ASSERT_TRUE(ear.awaitTone(list[0].hertz));

    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_TRUE(ear.awaitSilence());
    EXPECT_EQ(ear.allTones(), (QList<double>{list[0].hertz, list[0].hertz, list[1].hertz, list[0].hertz, list[2].hertz,
                                             list[1].hertz, list[0].hertz}));
}

} // namespace

} // namespace orvantine::desk
