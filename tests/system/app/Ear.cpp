#include "system/app/Ear.h"

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

const QString Server = QStringLiteral(ORVANTINE_SOUND_SERVER);

} // namespace

Ear::Ear(Desk& desk) : m_desk(desk), m_folder(desk.path(u"sound"_s)), m_recording(desk.path(u"heard.wav"_s))
{
    EXPECT_TRUE(desk.tool(Server, {u"start"_s, m_folder}));
    desk.environment.insert(u"PULSE_SERVER"_s, u"unix:"_s + m_folder + u"/native"_s);
    desk.environment.insert(u"PULSE_COOKIE"_s, m_folder + u"/cookie"_s);
    desk.environment.insert(u"PULSE_RUNTIME_PATH"_s, m_folder + u"/runtime"_s);
    EXPECT_TRUE(desk.tool(Server, {u"record"_s, m_folder, m_recording}));
}

Ear::~Ear()
{
    EXPECT_TRUE(m_desk.tool(Server, {u"stop"_s, m_folder}));
}

sound::Recording Ear::heard() const
{
    auto all = sound::readWav(Desk::bytes(m_recording)).value_or(sound::Recording{});
    all.samples.erase(all.samples.begin(),
                      all.samples.begin() + std::min(m_mark, static_cast<std::ptrdiff_t>(all.samples.size())));
    return all;
}

void Ear::mark()
{
    m_mark += static_cast<std::ptrdiff_t>(heard().samples.size());
}

bool Ear::awaitTone(double hertz)
{
    mark();
    return await([this, hertz] {
        const QList<double> found = tones();
        return !found.isEmpty() && found.last() == hertz;
    });
}

bool Ear::awaitSilence()
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

bool Ear::awaitTones(qsizetype count) const
{
    return await([this, count] { return tones().size() >= count; });
}

QList<double> Ear::allTones() const
{
    EXPECT_TRUE(m_desk.tool(Server, {u"stop-record"_s, m_folder}));
    const auto all = sound::readWav(Desk::bytes(m_recording));
    EXPECT_TRUE(all);
    return all ? hertzOf(findTones(*all, table)) : QList<double>();
}

QString Ear::control(const QStringList& arguments) const
{
    const auto told = m_desk.tool(u"pactl"_s, arguments);
    EXPECT_TRUE(told) << arguments.join(u' ').toStdString();
    return told.value_or(QString());
}

} // namespace orvantine::desk
