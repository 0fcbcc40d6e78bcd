#include "system/app/Program.h"
#include "system/app/Shelf.h"

#include <gtest/gtest.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

/// A catalogue of two lists, and a list, a sound file and a folder that it does not know.
class OpenedFiles : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString& name : {u"eins"_s, u"zwei"_s, u"drei"_s})
            desk.write(track(name), "stands for a sound");
        for (const QString& name : {u"Erste"_s, u"Zweite"_s})
            desk.write(desk.path(u"listen/"_s + name + u".m3u"_s), track(u"eins"_s).toUtf8() + "\r\n\r\n");
        desk.write(desk.path(u"neu/Über den Wolken.m3u"_s), track(u"zwei"_s).toUtf8() + "\r\n\r\n");
        desk.write(desk.path(u"ordner/drei.mp3"_s), "stands for a sound");
        desk.settle({u"\"Lokal\"=dword:00000000"_s});
        desk.writeCatalogue({desk.path(u"listen/Erste.m3u"_s), desk.path(u"listen/Zweite.m3u"_s)});
    }

    [[nodiscard]] QString track(const QString& name) const { return desk.path(u"m/"_s + name + u".mp3"_s); }
    [[nodiscard]] QByteArray catalogue() const { return Desk::bytes(desk.dataPath(u"Orvantine.dat"_s)); }
    /// Starts the program again with these words; whether it ended at once and well.
    bool open(const QStringList& words)
    {
        Program later(desk, words);
        return later.ends();
    }
    bool awaitRow(Program& program, const QString& name)
    {
        return await([&] { return program.control(name).has_value(); });
    }

    Desk desk;
};

} // namespace

TEST_F(OpenedFiles, AListOfTheCommandLineIsTakenInAndOpened)
{
    Program program(desk, {desk.path(u"neu/Über den Wolken.m3u"_s)});
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(await([this] { return catalogue().contains("3b=Über den Wolken\r\n"); })) << catalogue().toStdString();
    EXPECT_TRUE(awaitRow(program, u"zwei"_s));
    EXPECT_TRUE(program.closes());
}

TEST_F(OpenedFiles, ASecondProcessHandsThemToTheFirst)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(awaitRow(program, u"eins"_s)) << program.complaints();

    EXPECT_TRUE(open({track(u"zwei"_s), u"file://"_s + track(u"drei"_s)}));
    const QByteArray added = "eins.mp3\r\n" + track(u"zwei"_s).toUtf8() + "\r\n" + track(u"drei"_s).toUtf8() + "\r\n";
    EXPECT_TRUE(await([&] { return Desk::bytes(desk.path(u"listen/Erste.m3u"_s)).contains(added); }))
        << Desk::bytes(desk.path(u"listen/Erste.m3u"_s)).toStdString();

    EXPECT_TRUE(open(
        {u"file://"_s + QString::fromLatin1(desk.path(u"neu/Über den Wolken.m3u"_s).toUtf8().toPercentEncoding("/"))}));
    EXPECT_TRUE(await([this] { return catalogue().contains("3b=Über den Wolken\r\n"); })) << catalogue().toStdString();

    EXPECT_TRUE(open({desk.path(u"ordner"_s)}));
    EXPECT_TRUE(await([this] { return catalogue().contains("4b=ordner\r\n"); })) << catalogue().toStdString();

    // One that stands there is only selected.
    const QByteArray before = catalogue();
    EXPECT_TRUE(open({desk.path(u"listen/Zweite.m3u"_s)}));
    EXPECT_TRUE(awaitRow(program, u"eins"_s));
    EXPECT_FALSE(catalogue().contains("5b="));
    EXPECT_EQ(Desk::bytes(desk.path(u"listen/Zweite.m3u"_s)), track(u"eins"_s).toUtf8() + "\r\n\r\n");
    EXPECT_TRUE(open({u"unbekannt"_s, u"--auch-nicht"_s}));
    EXPECT_TRUE(program.closes());
    // That there is no sound card, and nothing else.
    EXPECT_EQ(program.boxes().join(u'|').toStdString(), " Sound und Audiowiedergabe");
}

TEST_F(OpenedFiles, TheWindowComesToTheFront)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    const Shelf other(desk);
    ASSERT_TRUE(await([this] { return desk.titleOfActiveWindow() == u"Shelf"_s; })) << "it stands in front";
    EXPECT_TRUE(open({track(u"zwei"_s)}));
    EXPECT_TRUE(await([this] { return desk.titleOfActiveWindow() == u"Orvanten Manager"_s; }));
    EXPECT_TRUE(program.terminates());
}

TEST_F(OpenedFiles, WhileABoxIsOpenTheyWait)
{
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(awaitRow(program, u"eins"_s)) << program.complaints();
    const QString list = desk.path(u"listen/Erste.m3u"_s);
    const QByteArray before = Desk::bytes(list);
    desk.press(u"Orvanten Manager"_s, u"ctrl+l"_s);
    const QString box = u" Neue Playliste"_s;
    ASSERT_TRUE(await([&] { return desk.titleOfActiveWindow() == box; }));
    EXPECT_TRUE(open({track(u"zwei"_s)}));
    EXPECT_EQ(desk.titleOfActiveWindow(), box);
    EXPECT_EQ(Desk::bytes(list), before);
    desk.press(box, u"Escape"_s);
    EXPECT_TRUE(await([&] { return Desk::bytes(list).contains("zwei.mp3"); })) << Desk::bytes(list).toStdString();
    EXPECT_TRUE(program.closes());
}

} // namespace orvantine::desk
