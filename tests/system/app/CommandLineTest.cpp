#include "system/app/Program.h"

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

/// What a call of the program printed to its standard output, and its exit code in front: "0: …".
QString called(const Desk& desk, const QString& word)
{
    Process call(desk.environment);
    call.start(QStringLiteral(ORVANTINE_PROGRAM), {word});
    if (!call.waitForFinished())
        return u"has not ended"_s;
    return QString::number(call.exitCode()) + u": "_s + QString::fromUtf8(call.readAllStandardOutput());
}

} // namespace

TEST(CommandLine, HelpAndVersionArePrintedWithoutADisplay)
{
    Desk desk;
    desk.environment.remove(u"DISPLAY"_s);
    EXPECT_TRUE(called(desk, u"--help"_s).startsWith(u"0: Aufruf: orvanten-manager "_s));
    EXPECT_TRUE(called(desk, u"--version"_s).startsWith(u"0: Orvanten Manager 2.3"_s));
}

TEST(CommandLine, WithoutARunningProgramPauseAndNextFail)
{
    const Desk desk;
    EXPECT_EQ("1: ", called(desk, u"--pause"_s).toStdString());
    EXPECT_EQ("1: ", called(desk, u"--next"_s).toStdString());
    EXPECT_EQ("", desk.windows().join(u", "_s).toStdString());
}

TEST(CommandLine, TheRunningProgramPlaysPausesAndGoesOn)
{
    Desk desk;
    const QString demo = desk.path(u"demo"_s);
    ASSERT_TRUE(desk.tool(QStringLiteral(ORVANTINE_MAKE_DEMO), {u"--small"_s, u"--seconds"_s, u"30"_s, demo}));
    for (const QString& name : {u"data"_s, u"config"_s, u"state"_s})
        desk.environment.insert(u"XDG_"_s + name.toUpper() + u"_HOME"_s, demo + u'/' + name);
    const auto told = [&desk](const QStringList& question) {
        return desk.tool(u"playerctl"_s, QStringList{u"--player=orvantine"_s} + question).value_or(QString()).trimmed();
    };

    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(await([&] { return told({u"status"_s}) == u"Stopped"_s; })) << program.complaints();

    EXPECT_EQ("0: ", called(desk, u"--play"_s).toStdString());
    EXPECT_TRUE(await([&] { return told({u"status"_s}) == u"Playing"_s; }));
    const QString first = told({u"metadata"_s, u"xesam:url"_s});
    EXPECT_EQ("0: ", called(desk, u"--next"_s).toStdString());
    EXPECT_TRUE(await([&] {
        const QString url = told({u"metadata"_s, u"xesam:url"_s});
        return !url.isEmpty() && url != first;
    }));
    EXPECT_EQ("0: ", called(desk, u"--pause"_s).toStdString());
    EXPECT_TRUE(await([&] { return told({u"status"_s}) == u"Paused"_s; }));
    EXPECT_TRUE(program.closes()) << program.complaints();
}

TEST(CommandLine, WithoutARunningProgramPlayStartsOne)
{
    Desk desk;
    const QString demo = desk.path(u"demo"_s);
    ASSERT_TRUE(desk.tool(QStringLiteral(ORVANTINE_MAKE_DEMO), {u"--small"_s, u"--seconds"_s, u"30"_s, demo}));
    for (const QString& name : {u"data"_s, u"config"_s, u"state"_s})
        desk.environment.insert(u"XDG_"_s + name.toUpper() + u"_HOME"_s, demo + u'/' + name);

    Program program(desk, {u"--play"_s});
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(await([&] {
        return desk.tool(u"playerctl"_s, {u"--player=orvantine"_s, u"status"_s}).value_or(QString()).trimmed() ==
               u"Playing"_s;
    })) << program.complaints();
    EXPECT_TRUE(program.terminates());
}

} // namespace orvantine::desk
