#include "system/app/Program.h"
#include "system/sound/Tones.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace orvantine::desk {

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
    void TearDown() override { EXPECT_TRUE(desk.tool(server, {u"stop"_s, soundFolder})); }

    /// Makes the catalogue with tracks of that length and begins to listen.
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
            table.hertz.append(fields[3].toDouble());
        }
        ASSERT_EQ(tracks.size(), 8);

        ASSERT_TRUE(desk.tool(server, {u"start"_s, soundFolder}));
        desk.environment.insert(u"PULSE_SERVER"_s, u"unix:"_s + soundFolder + u"/native"_s);
        desk.environment.insert(u"PULSE_COOKIE"_s, soundFolder + u"/cookie"_s);
        desk.environment.insert(u"PULSE_RUNTIME_PATH"_s, soundFolder + u"/runtime"_s);
        ASSERT_TRUE(desk.tool(server, {u"record"_s, soundFolder, recording}));
    }

    /// What has been heard since the last mark.
    [[nodiscard]] sound::Recording heard() const
    {
        auto all = sound::readWav(Desk::bytes(recording)).value_or(sound::Recording{});
        all.samples.erase(all.samples.begin(),
                          all.samples.begin() + std::min(m_mark, static_cast<std::ptrdiff_t>(all.samples.size())));
        return all;
    }
    void mark() { m_mark += static_cast<std::ptrdiff_t>(heard().samples.size()); }
    [[nodiscard]] QList<double> tones() const { return hertzOf(findTones(heard(), table)); }

    /// Whether the last tone that is heard from now on is this one.
    [[nodiscard]] bool awaitTone(double hertz)
    {
        mark();
        return await([this, hertz] {
            const QList<double> found = tones();
            return !found.isEmpty() && found.last() == hertz;
        });
    }
    /// Whether there is a second of silence, from now on or soon.
    [[nodiscard]] bool awaitSilence()
    {
        mark();
        return await([this] {
            const sound::Recording now = heard();
            if (now.samples.size() < static_cast<size_t>(now.samplesPerSecond))
                return false;
            const bool silent = findTones(now, table).isEmpty();
            mark();
            return silent;
        });
    }

    Desk desk;
    QString server = QStringLiteral(ORVANTINE_SOUND_SERVER);
    QString soundFolder = desk.path(u"sound"_s);
    QString recording = desk.path(u"heard.wav"_s);
    QList<DemoTrack> tracks;
    sound::ToneTable table;

private:
    std::ptrdiff_t m_mark = 0;
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
    EXPECT_TRUE(await([this, &told] { return tones().size() >= told.size(); })) << program.complaints();
    program.click(u"Wiedergabe stoppen"_s);
    EXPECT_TRUE(awaitSilence());
    EXPECT_TRUE(program.closes());
    EXPECT_TRUE(desk.tool(server, {u"stop-record"_s, soundFolder}));
    const auto all = sound::readWav(Desk::bytes(recording));
    ASSERT_TRUE(all);
    EXPECT_EQ(hertzOf(findTones(*all, table)).mid(0, told.size()), told);
}

TEST_F(DemoCatalogue, ObeysTheControlsOfTheWindow)
{
    prepare(u"25"_s);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    const QList<DemoTrack> list = tracks.mid(3, 3);
    program.click(u"Lange Fahrt nach Norden"_s);
    program.click(u"Wiedergabe starten"_s);
    ASSERT_TRUE(awaitTone(list[0].hertz));
    program.click(u"Pause"_s);
    ASSERT_TRUE(awaitSilence());
    program.click(u"Weiterspielen"_s);
    ASSERT_TRUE(awaitTone(list[0].hertz));
    program.click(u"Nächster Titel"_s);
    ASSERT_TRUE(awaitTone(list[1].hertz));
    program.click(u"Vorheriger Titel"_s);
    ASSERT_TRUE(awaitTone(list[0].hertz));
    program.doubleClick(list[2].name);
    ASSERT_TRUE(awaitTone(list[2].hertz));
    program.doubleClick(list[1].name);
    ASSERT_TRUE(awaitTone(list[1].hertz));
    program.click(u"Wiedergabe stoppen"_s);
    ASSERT_TRUE(awaitSilence());
    program.click(u"Playliste wiedergeben"_s);
    ASSERT_TRUE(awaitTone(list[0].hertz));

    EXPECT_TRUE(program.closes()) << program.complaints();
    EXPECT_TRUE(awaitSilence());
    EXPECT_TRUE(desk.tool(server, {u"stop-record"_s, soundFolder}));
    const auto all = sound::readWav(Desk::bytes(recording));
    ASSERT_TRUE(all);
    EXPECT_EQ(hertzOf(findTones(*all, table)),
              (QList<double>{list[0].hertz, list[0].hertz, list[1].hertz, list[0].hertz, list[2].hertz, list[1].hertz,
                             list[0].hertz}));
}

} // namespace

} // namespace orvantine::desk
