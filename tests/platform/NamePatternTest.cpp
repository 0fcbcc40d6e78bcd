#include "platform/NamePattern.h"

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

TEST(NamePattern, MatchesIgnoringCase)
{
    struct Case
    {
        QString name;
        QString pattern;
        bool matches;
    };
    for (const Case& c :
         {Case{u"a.mp3"_s, u"*.mp3"_s, true}, Case{u"A.MP3"_s, u"*.mp3"_s, true},
          Case{u"a.mp3.txt"_s, u"*.mp3"_s, false}, Case{u"ohne"_s, u"*.*"_s, true}, Case{u"ohne"_s, u"*"_s, true},
          Case{u"ab"_s, u"?"_s, false}, Case{u"a"_s, u"?"_s, true}, Case{u"Über"_s, u"ü*"_s, true},
          Case{u"aXbXc"_s, u"a*b*c"_s, true}, Case{u"aXbXcd"_s, u"a*b*c"_s, false}, Case{u""_s, u"*"_s, true},
          Case{u""_s, u"?"_s, false}, Case{u"a"_s, u""_s, false}, Case{u"abc"_s, u"a**c"_s, true}}) {
        EXPECT_EQ(matchesPattern(c.name, c.pattern), c.matches)
            << c.name.toStdString() << " " << c.pattern.toStdString();
    }
}

TEST(NamePattern, ALongNameAgainstManyStarsEnds)
{
    const QString name(2000, u'a');
    EXPECT_FALSE(matchesPattern(name, u"*a*a*a*a*a*a*a*a*a*a*b"_s));
}

TEST(NamePattern, OneOfManyIsEnough)
{
    EXPECT_TRUE(matchesAnyPattern(u"a.wav", u"*.mp3; *.wma;*.wav"));
    EXPECT_FALSE(matchesAnyPattern(u"a.ogg", u"*.mp3; *.wma;*.wav"));
    EXPECT_FALSE(matchesAnyPattern(u"a.ogg", u""));
}

} // namespace
} // namespace orvantine
