#include "search/FolderReplacement.h"

#include "platform/CaseFold.h"

#include <gtest/gtest.h>

#include <random>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Told
{
    QString text;
    qint64 count = 0;
    bool operator==(const Told&) const = default;
};

/// The loop as it is told: search from the start, cut, join, count.
Told byLoop(QString text, const QString& old, const QString& fresh, int most)
{
    qint64 count = 0;
    for (;;) {
        const qsizetype at = folded(text).indexOf(folded(old));
        if (at < 0 || count == most)
            return {text, count};
        text = text.left(at) + fresh + text.mid(at + old.size());
        ++count;
    }
}

Told byWalk(const QString& text, const QString& old, const QString& fresh, int most)
{
    TextReplacement walk(text, old, fresh);
    while (walk.count() < most && walk.next()) {
    }
    return {walk.result(), walk.count()};
}

Told inFile(const QByteArray& bytes, const QString& old, const QString& fresh)
{
    FileReplacement walk(bytes, old, fresh);
    while (walk.next()) {
    }
    return {QString::fromLatin1(walk.result()), walk.count()};
}

std::string shown(const Told& told)
{
    return std::to_string(told.count) + ": " + told.text.toStdString();
}

} // namespace

TEST(TextReplacement, GivesTheTextAndTheCountOfTheLoop)
{
    struct Case
    {
        QString text, old, fresh;
    };
    const Case cases[] = {
        {u"C:\\Alt\\a.mp3\r\nc:\\ALT\\b.mp3\r\n"_s, u"C:\\Alt"_s, u"D:\\Neu und länger"_s},
        {u"/musik/a/musik/b"_s, u"/musik"_s, u"/m"_s},
        {u"/musikalisches/a"_s, u"/musik"_s, u"/m"_s},
        {u"nichts davon"_s, u"/musik"_s, u"/m"_s},
        // Put together by a replacement, in front of it and behind it
        {u"aabb aabb"_s, u"ab"_s, u""_s},
        {u"aaab"_s, u"ab"_s, u"b"_s},
        {u"abbb"_s, u"ab"_s, u"a"_s},
        {u"aab"_s, u"ab"_s, u"bba"_s},
        {u"abababab"_s, u"abab"_s, u"ba"_s},
        {u"xxxxxxx"_s, u"xx"_s, u"x"_s},
        {u"xaxaxax"_s, u"a"_s, u"b"_s},
        // One character, the whole text, nothing
        {u"a"_s, u"a"_s, u"b"_s},
        {u"a"_s, u"aa"_s, u"b"_s},
        {u""_s, u"a"_s, u"b"_s},
        // Letters that have no partner of one unit
        {u"/Straße/STRASSE/straSSe/STRAßE"_s, u"/straße"_s, u"/gasse"_s},
        {u"/İzmir/izmir/Izmir/ızmir"_s, u"/izmir"_s, u"/x"_s},
        {u"/ÄÖÜ/äöü/Äöü"_s, u"/äöü"_s, u"/aou"_s},
        {u"\U0001F3B5/a \U0001F3B5/b"_s, u"\U0001F3B5"_s, u"Ton"_s},
        // A pair that never ends, cut off
        {u"/musik/a"_s, u"/musik"_s, u"/musik/neu"_s},
        {u"/musik/a"_s, u"/musik"_s, u"/musik"_s},
        {u"/musik/a"_s, u"/musik"_s, u"/MUSIK"_s},
        {u"/musik/a"_s, u"k"_s, u"kk"_s},
    };
    for (const Case& c : cases)
        EXPECT_EQ(shown(byLoop(c.text, c.old, c.fresh, 50)), shown(byWalk(c.text, c.old, c.fresh, 50)))
            << c.text.toStdString() << " | " << c.old.toStdString() << " | " << c.fresh.toStdString();
}

TEST(TextReplacement, GivesTheSameAsTheLoopForTextsOfFewLetters)
{
    std::mt19937 chance(20261122);
    const auto drawn = [&chance](qsizetype longest) {
        QString text;
        for (auto left = static_cast<qsizetype>(chance()) % (longest + 1); left > 0; --left)
            text += u"abAB"_s[static_cast<qsizetype>(chance() % 4)];
        return text;
    };
    int replaced = 0;
    for (int i = 0; i < 4000; ++i) {
        const QString text = drawn(12);
        const QString old = drawn(4);
        const QString fresh = drawn(5);
        if (old.isEmpty())
            continue;
        const Told loop = byLoop(text, old, fresh, 30);
        replaced += loop.count > 0 ? 1 : 0;
        ASSERT_EQ(shown(loop), shown(byWalk(text, old, fresh, 30)))
            << text.toStdString() << " | " << old.toStdString() << " | " << fresh.toStdString();
    }
    EXPECT_GT(replaced, 1000);
}

TEST(TextReplacement, AnEmptyOldTextStandsNowhere)
{
    EXPECT_EQ("0: abc", shown(byWalk(u"abc"_s, {}, u"x"_s, 10)));
}

TEST(TextReplacement, APairThatNeverEndsStopsGrowing)
{
    TextReplacement walk(u"a"_s, u"a"_s, QString(1 << 22, u'a'));
    for (int i = 0; i < 1000; ++i)
        ASSERT_TRUE(walk.next());
    EXPECT_TRUE(walk.isBeyondMeasure());
    EXPECT_LT(walk.result().size(), qsizetype{40} << 20);
}

TEST(FileReplacement, TheLastTwoCharactersTakeNoPart)
{
    EXPECT_EQ("1: yy\r\n", shown(inFile("x\r\n", u"x"_s, u"yy"_s)));
    EXPECT_EQ("1: yxx", shown(inFile("xxx", u"x"_s, u"y"_s)));
    EXPECT_EQ("0: xx", shown(inFile("xx", u"x"_s, u"y"_s)));
    EXPECT_EQ("0: x", shown(inFile("x", u"x"_s, u"y"_s)));
    EXPECT_EQ("0: ", shown(inFile("", u"x"_s, u"y"_s)));
}

TEST(FileReplacement, NoLineEndIsAdded)
{
    EXPECT_EQ("1: /n/a.mp3", shown(inFile("/m/a.mp3", u"/m/"_s, u"/n/"_s)));
    EXPECT_EQ("2: /n/a.mp3\n/n/b.mp3\n", shown(inFile("/m/a.mp3\n/m/b.mp3\n", u"/m/"_s, u"/n/"_s)));
}

TEST(FileReplacement, BytesOutsideAMatchStay)
{
    // A line of windows-1252 among UTF-8, a mark in front
    const QByteArray before = "\xEF\xBB\xBF/m/\xC3\xBC.mp3\r\n/m/\xFC.mp3\r\n#\xFF\r\n\r\n";
    FileReplacement walk(before, u"/M/"_s, u"/n\u00E4/"_s);
    while (walk.next()) {
    }
    EXPECT_EQ(walk.count(), 2);
    EXPECT_EQ(walk.result().toStdString(), "\xEF\xBB\xBF/n\xC3\xA4/\xC3\xBC.mp3\r\n/n\xE4/\xFC.mp3\r\n#\xFF\r\n\r\n");
}

TEST(FileReplacement, ALineThatCannotHoldTheNewTextIsWrittenAnew)
{
    FileReplacement walk("/m/\xFC.mp3\r\n/x/\xFC.mp3\r\n", u"/m/"_s, u"/\u0416/"_s);
    while (walk.next()) {
    }
    EXPECT_EQ(walk.result().toStdString(), "/\xD0\x96/\xC3\xBC.mp3\r\n/x/\xFC.mp3\r\n");
}

TEST(FileReplacement, AnUmlautOfEitherCodePageIsFound)
{
    FileReplacement walk("/M\xFCsik/a\r\n/M\xC3\xBCsik/b\r\n", u"/m\u00DCsik"_s, u"/Musik"_s);
    while (walk.next()) {
    }
    EXPECT_EQ(walk.count(), 2);
    EXPECT_EQ(walk.result().toStdString(), "/Musik/a\r\n/Musik/b\r\n");
}

} // namespace orvantine
