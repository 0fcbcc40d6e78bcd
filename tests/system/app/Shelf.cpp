#include "system/app/Shelf.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

Shelf::Shelf(const Desk& desk, const QList<Content>& content, Way way) : m_desk(desk), m_process(desk.environment)
{
    QStringList arguments{way == Way::Copy ? u"--copy"_s : u"--drag"_s};
    for (const Content& part : content) {
        m_files += desk.path(u"shelf/"_s + QString::number(m_files.size()));
        arguments << part.format << m_files.constLast();
    }
    fill(content);
    m_process.start(QStringLiteral(ORVANTINE_SHELF), arguments);
    findMiddle();
}

void Shelf::fill(const QList<Content>& content) const
{
    ASSERT_EQ(content.size(), m_files.size());
    for (qsizetype i = 0; i < content.size(); ++i)
        m_desk.write(m_files[i], content[i].bytes);
}

std::optional<int> Shelf::dragTo(QPoint target)
{
    return dragTo(target, [] {});
}

std::optional<int> Shelf::dragTo(QPoint target, const std::function<void()>& meanwhile)
{
    m_told.clear();
    moveMouse(m_middle);
    button(u"mousedown"_s);
    // A move over the shelf itself, a copy over the program: so each change is told.
    if (!shakeUntil(m_middle, "accepted 2", 1) || !shakeUntil(target, "accepted 1", 1)) {
        button(u"mouseup"_s);
        return std::nullopt;
    }
    meanwhile();
    button(u"mouseup"_s);
    std::optional<int> done;
    EXPECT_TRUE(await([this, &done] {
        hear();
        for (const QByteArray& line : m_told)
            if (line.startsWith("done "))
                done = line.mid(5).toInt();
        return done.has_value();
    }));
    return done;
}

QByteArray Shelf::dragFrom(QPoint source)
{
    m_told.clear();
    moveMouse(source);
    button(u"mousedown"_s);
    moveMouse(source + QPoint(30, 4));
    // The second one is told only after the answer to the first has come to the program that draws.
    const bool over = shakeUntil(m_middle, "over", 2);
    button(u"mouseup"_s);
    if (!over)
        return {};
    QByteArray got;
    EXPECT_TRUE(await([this, &got] {
        hear();
        for (const QByteArray& line : m_told)
            if (line.startsWith("got "))
                got = line.mid(4);
        return !got.isEmpty();
    }));
    return got;
}

void Shelf::hear()
{
    while (m_process.canReadLine())
        m_told += m_process.readLine().trimmed();
}

void Shelf::findMiddle()
{
    EXPECT_TRUE(await([this] {
        hear();
        const QString told =
            m_desk.tool(u"xdotool"_s, {u"getwindowgeometry"_s, u"--shell"_s, m_desk.window(u"Shelf"_s)})
                .value_or(QString());
        QRect place;
        for (const QString& line : told.split(u'\n')) {
            const int value = line.section(u'=', 1).toInt();
            if (line.startsWith(u"X="))
                place.moveLeft(value);
            else if (line.startsWith(u"Y="))
                place.moveTop(value);
            else if (line.startsWith(u"WIDTH="))
                place.setWidth(value);
            else if (line.startsWith(u"HEIGHT="))
                place.setHeight(value);
        }
        m_middle = place.center();
        return m_told.contains("ready") && place.isValid();
    }));
}

void Shelf::moveMouse(QPoint point) const
{
    EXPECT_TRUE(m_desk.tool(u"xdotool"_s, {u"mousemove"_s, QString::number(point.x()), QString::number(point.y())}));
}

void Shelf::button(const QString& way) const
{
    EXPECT_TRUE(m_desk.tool(u"xdotool"_s, {way, u"1"_s}));
}

bool Shelf::shakeUntil(QPoint place, const QByteArray& line, qsizetype times)
{
    int step = 0;
    return await([&] {
        hear();
        if (std::count_if(m_told.begin(), m_told.end(),
                          [&line](const QByteArray& told) { return told.startsWith(line); }) >= times)
            return true;
        ++step;
        moveMouse(place + QPoint(step % 2 * 12, step % 3 * 6));
        return false;
    });
}

} // namespace orvantine::desk
