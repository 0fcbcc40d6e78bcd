#include "playlists/PlaylistText.h"

#include "catalogue/CatalogueWorld.h"
#include "playlists/GetPlayCounts.h"
#include "playlists/TextDosConvert.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// Line ends stay as they are: what a host's text file would become is the business of the files service.
class PlaylistText : public CatalogueWorld
{
protected:
    PlaylistText() : CatalogueWorld({.adoptsHostTexts = false}) {}

    const QString list = u"/m/liste.m3u"_s;
};

} // namespace

TEST(GetPlayCounts, LinesClosedByLfCountUnlessTheyAreComments)
{
    struct Case
    {
        QString text;
        int count;
    };
    for (const Case& c :
         {Case{u""_s, 0}, Case{u"a.mp3\r\n"_s, 1}, Case{u"a.mp3\n"_s, 1}, Case{u"a.mp3\r"_s, 0},
          Case{u"a.mp3\r\nb.mp3"_s, 1}, Case{u"a.mp3\r\nb.mp3\r"_s, 1}, Case{u"\r\n\r\na.mp3\r\n"_s, 3},
          Case{u"#EXTM3U\r\na.mp3\r\n#EXTINF\r\nb.mp3\r\n"_s, 2}, Case{u"\r#Kommentar\r\na.mp3\r\n"_s, 1},
          Case{u"\r\r#Kommentar\n"_s, 0}, Case{u" #kein Kommentar\r\n"_s, 1}, Case{u"a#b.mp3\r\n"_s, 1},
          Case{u"a.mp3\r\r\nb.mp3\r\r\n"_s, 2}})
        EXPECT_EQ(c.count, countEntries(c.text)) << c.text.toStdString();
}

TEST(GetPlayCounts, AnythingAbove32767Shows32767)
{
    EXPECT_EQ(32766, countEntries(u"a\r\n"_s.repeated(32766)));
    EXPECT_EQ(32767, countEntries(u"a\r\n"_s.repeated(32767)));
    EXPECT_EQ(32767, countEntries(u"a\r\n"_s.repeated(32768)));
}

TEST(TextDosConvertGrammar, AnEntryIsALineClosedByCr)
{
    struct Case
    {
        QString text;
        QString out;
    };
    for (const Case& c :
         {Case{u"a.mp3\r\nb.mp3\r\n"_s, u"a.mp3\r\nb.mp3\r\n"_s}, Case{u"a.mp3\rb.mp3\r"_s, u"a.mp3\r\nb.mp3\r\n"_s},
          Case{u"a.mp3\nb.mp3\n"_s, u""_s}, Case{u"a.mp3\nb.mp3\r"_s, u"a.mp3b.mp3\r\n"_s},
          Case{u"a.\nmp3\r\n"_s, u"a.mp3\r\n"_s}, Case{u"a.mp3\r\nb.mp3"_s, u"a.mp3\r\n"_s},
          Case{u"\r\n\r\na.mp3\r\n\r\n"_s, u"a.mp3\r\n"_s},
          Case{u"#EXTM3U\r\na.mp3\r\n#EXTINF:1\r\nb.mp3\r\n"_s, u"a.mp3\r\nb.mp3\r\n"_s},
          Case{u" #a.mp3\r\n"_s, u" #a.mp3\r\n"_s}, Case{u"\n\n#a.mp3\r\n\nb\n.m\np3\r\n\n\r"_s, u"b.mp3\r\n"_s},
          Case{u"[playlist]\r\nFile1=C:\\x.mp3\r\n"_s, u"[playlist]\r\nFile1=C:\\x.mp3\r\n"_s}})
        EXPECT_EQ(c.out.toStdString(),
                  normalisedEntries(c.text, [](const QString& line) { return line; }).toStdString())
            << c.text.toStdString();
}

TEST(LinesForField, LineFeedsBecomeBarsAndBarsBecomeLineEndsAsOftenAsThereAreEntries)
{
    struct Case
    {
        const char* name;
        QString text;
        int count;
        QString field;
    };
    for (const Case& c :
         {Case{"each line is closed by CR CR LF", u"a.mp3\r\nb.mp3\r\n"_s, 2, u"a.mp3\r\r\nb.mp3\r\r\n"_s},
          Case{"a bar in a path splits the row", u"x|y.mp3\r\nb.mp3\r\n"_s, 2, u"x\r\ny.mp3\r\r\nb.mp3\r|"_s},
          Case{"an end cut to mp gets its 3", u"a.mp3\r\nb.mp"_s, 1, u"a.mp3\r\r\nb.mp3"_s},
          Case{"no more than the count", u"a\r\nb\r\n"_s, 1, u"a\r\r\nb\r\n"_s},
          Case{"none for nothing", u""_s, 3, u""_s}})
        EXPECT_EQ(c.field.toStdString(), linesForField(c.text, c.count).toStdString()) << c.name;
}

TEST(GetTextZeile, ALineHas256CharactersAtTheMostAndNoSurrogatePairIsHalved)
{
    const QString note = u"\U0001F3B5"_s;
    EXPECT_EQ(QString(256, u'x'), TextLines(QString(300, u'x') + u"\r\r\nzwei\r\r\n"_s).GetTextZeile(0));
    EXPECT_EQ(QString(256, u'x'), TextLines(QString(256, u'x') + u"\r\r\n"_s).GetTextZeile(0));
    EXPECT_EQ(QString(255, u'x'), TextLines(QString(255, u'x') + note + u"y\r\r\n"_s).GetTextZeile(0));
    EXPECT_EQ(QString(254, u'x') + note, TextLines(QString(254, u'x') + note + u"y\r\r\n"_s).GetTextZeile(0));
    EXPECT_EQ("zwei", TextLines(QString(300, u'x') + u"\r\r\nzwei\r\r\n"_s).GetTextZeile(1).toStdString());
}

TEST(GetTextZeile, CrCrLfIsOneLineEnd)
{
    const QString text = u"eins\r\r\n\r\r\ndrei\r\nvier"_s;
    QStringList read;
    for (int line = -1; line <= 5; ++line)
        read += TextLines(text).GetTextZeile(line);
    EXPECT_EQ("|eins||drei|vier||", read.join(u'|').toStdString());
}

TEST_F(PlaylistText, TextDosConvertIsFalseOnlyForAMissingFile)
{
    EXPECT_FALSE(TextDosConvert(root(), list));
    put(list, "");
    EXPECT_TRUE(TextDosConvert(root(), list));
    put(list, "a.mp3\r\n");
    EXPECT_TRUE(TextDosConvert(root(), list));
    desktop.memory()->setUnreadable(list);
    EXPECT_TRUE(TextDosConvert(root(), list));
}

TEST_F(PlaylistText, BelowTenCharactersTheFileAndTheOldTextStay)
{
    root().tPlayliste.Text = u"altes Lied.mp3\r\r\n"_s;
    put(list, "#k\r\n\r\nabc.mp3\r\n");
    TextDosConvert(root(), list);
    EXPECT_EQ("#k\r\n\r\nabc.mp3\r\n", bytes(list).toStdString());
    EXPECT_EQ("altes Lied.mp3\r\r\n", root().tPlayliste.Text.value().toStdString());
}

TEST_F(PlaylistText, ExactlyTenCharactersAreConverted)
{
    root().tPlayliste.Text = u"altes Lied.mp3\r\r\n"_s;
    put(list, "#k\r\n\r\nabcd.mp3\r\n");
    TextDosConvert(root(), list);
    EXPECT_EQ("abcd.mp3\r\n\r\n", bytes(list).toStdString());
    EXPECT_EQ("abcd.mp3\r\r\n", root().tPlayliste.Text.value().toStdString());
}

TEST_F(PlaylistText, TheFirstRewriteAddsOneEmptyLineAndTheSecondLeavesBytesAndStampAlone)
{
    put(list, "/m/eins.mp3\r\n/m/zwei.mp3\r\n");
    TextDosConvert(root(), list);
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\r\n\r\n", bytes(list).toStdString());
    const auto stamp = desktop.disk().stamp(list);
    desktop.events().setNow(desktop.events().now().addSecs(60));
    TextDosConvert(root(), list);
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\r\n\r\n", bytes(list).toStdString());
    EXPECT_TRUE(stamp == desktop.disk().stamp(list));
    EXPECT_EQ("/m/eins.mp3\r\r\n/m/zwei.mp3\r\r\n", root().tPlayliste.Text.value().toStdString());
}

TEST_F(PlaylistText, ALastLineThatTheCutOfTwoBytesHitsGetsItsThreeBack)
{
    put(list, "/m/eins.mp3\r\n/m/zwei.mp3\n");
    desktop.memory()->setReadOnly(list);
    EXPECT_TRUE(TextDosConvert(root(), list));
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\n", bytes(list).toStdString());
    EXPECT_EQ("/m/eins.mp3\r\r\n/m/zwei.mp3", root().tPlayliste.Text.value().toStdString());
}

TEST_F(PlaylistText, NeighboursBecomeRelativeAlsoThoseThatNameAnotherFolder)
{
    put(u"/m/nah.mp3"_s, "x");
    put(u"/n/fern.mp3"_s, "x");
    put(list, "/m/nah.mp3\r\nC:\\irgendwo\\nah.mp3\r\n/n/fern.mp3\r\nnah.mp3\r\n/m/fehlt.mp3\r\n");
    TextDosConvert(root(), list);
    EXPECT_EQ("nah.mp3\r\nnah.mp3\r\n/n/fern.mp3\r\nnah.mp3\r\n/m/fehlt.mp3\r\n\r\n", bytes(list).toStdString());
}

TEST_F(PlaylistText, ALineThatEndsInASeparatorStaysAsItIs)
{
    put(u"/m/nah.mp3"_s, "x");
    put(u"/m/Ordner/a.mp3"_s, "x");
    const QByteArray text = "C:\\x\\\r\n/m/\r\n/m/Ordner/\r\nOrdner\\\r\n/\r\n";
    put(list, text);
    TextDosConvert(root(), list);
    EXPECT_EQ((text + "\r\n").toStdString(), bytes(list).toStdString());
}

TEST_F(PlaylistText, TextWithLineFeedsOnlyLeavesFileAndOldText)
{
    root().tPlayliste.Text = u"altes Lied.mp3\r\r\n"_s;
    put(list, "/m/eins.mp3\n/m/zwei.mp3\n");
    TextDosConvert(root(), list);
    EXPECT_EQ("/m/eins.mp3\n/m/zwei.mp3\n", bytes(list).toStdString());
    EXPECT_EQ("altes Lied.mp3\r\r\n", root().tPlayliste.Text.value().toStdString());
}

TEST_F(PlaylistText, AReadOnlyFileStaysAndTheRestGoesOn)
{
    put(list, "#k\r\n/m/eins.mp3\r\n/m/zwei.mp3\r\n");
    desktop.memory()->setReadOnly(list);
    TextDosConvert(root(), list);
    EXPECT_EQ("#k\r\n/m/eins.mp3\r\n/m/zwei.mp3\r\n", bytes(list).toStdString());
    // Two entries: the two first line feeds count, the last two characters are cut.
    EXPECT_EQ("#k\r\r\n/m/eins.mp3\r\r\n/m/zwei.mp3", root().tPlayliste.Text.value().toStdString());
}

TEST_F(PlaylistText, GetPlayCountsOfAMissingFileIsNought)
{
    EXPECT_EQ(0, GetPlayCounts(root(), u"/m/fehlt.m3u"_s));
}

} // namespace orvantine::fake
