#include "metadata/Mp3HeaderReader.h"
#include "MetadataTest.h"

#include <cstring>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

using Mp3HeaderReader = MetadataTest;

const FakeTrack full{.title = u"Titel"_s,
                     .artist = u"Interpret"_s,
                     .album = u"Album"_s,
                     .year = u"1999"_s,
                     .comment = u"Wort"_s,
                     .track = 7,
                     .bitRate = 192,
                     .seconds = 3661};

template <std::size_t Width>
std::string text(const char (&field)[Width])
{
    return QByteArray(field, Width).trimmed().toStdString();
}

} // namespace

TEST_F(Mp3HeaderReader, ShowsTheRecordOnLabelsAndInTheTagDialog)
{
    addTrack(u"a.mp3"_s, full);
    frmID3V1& form = *root().tagForm;
    form.ID3Genre.Text = u"leer"_s;
    ReadMp3Header(root());
    EXPECT_EQ("Interpret\nTitel\nAlbum\nWort\n1999\n7\n192\n01:01:01", labels());
    EXPECT_TRUE(root().sAnzeige[0].Visible.value());
    EXPECT_EQ(u"Titel"_s, form.ID3Titel.Text.value());
    EXPECT_EQ(u"Interpret"_s, form.ID3Interpret.Text.value());
    EXPECT_EQ(u"Album"_s, form.ID3Album.Text.value());
    EXPECT_EQ(u"Wort"_s, form.ID3Kommentar.Text.value());
    EXPECT_EQ(u"7"_s, form.ID3Track.Text.value());
    EXPECT_EQ(u"1999"_s, form.ID3Jahr.Text.value());
    EXPECT_EQ(u"192"_s, form.ID3Bitrate.Caption.value());
    // Deliberately not filled.
    EXPECT_EQ(u"leer"_s, form.ID3Genre.Text.value());
}

TEST_F(Mp3HeaderReader, PlayingTimes)
{
    const std::pair<int, const char*> cases[] = {
        {-1, "00:00:00"},      {0, "00:00:00"},   {59, "00:00:59"},    {60, "00:01:00"},    {3661, "01:01:01"},
        {360000, "100:00:00"}, {-2, "00:00:-02"}, {-61, "00:-01:-01"}, {86399, "23:59:59"},
    };
    for (const auto& [seconds, shown] : cases)
        EXPECT_EQ(shown, playingTimeText(seconds).toStdString()) << seconds;
}

TEST_F(Mp3HeaderReader, AnUnknownPlayingTimeShowsNoughtsAndNeverMinusOne)
{
    addTrack(u"a.mp3"_s, {.title = u"T"_s, .seconds = -1});
    ReadMp3Header(root());
    EXPECT_EQ(u"00:00:00"_s, root().sAnzeige[0].Caption.value());
}

TEST_F(Mp3HeaderReader, ATitleOf30CharactersKeepsAllAndInnerBlanksStay)
{
    const QString longest = u"123456789 123456789 1234567890"_s;
    addTrack(u"a.mp3"_s, {.title = longest, .artist = u" A  B  "_s});
    ReadMp3Header(root());
    EXPECT_EQ(longest, root().sTitle.Caption.value());
    EXPECT_EQ(u" A  B"_s, root().sArtist.Caption.value());
}

TEST_F(Mp3HeaderReader, NullTrimTakesBlanksAndNoNul)
{
    EXPECT_EQ(u"a"_s, NullTrim(u"a   "_s));
    EXPECT_EQ(u""_s, NullTrim(u"   "_s));
    EXPECT_EQ(u""_s, NullTrim({}));
    EXPECT_EQ(u"a\t"_s, NullTrim(u"a\t "_s));
    const QString nul = u"a"_s + QChar(0);
    EXPECT_EQ(nul, NullTrim(nul));
    EXPECT_EQ(nul, NullTrim(nul + u"  "_s));
}

TEST_F(Mp3HeaderReader, AFileThatCannotBeReadShowsTheOneBefore)
{
    addTrack(u"a.mp3"_s, full);
    ReadMp3Header(root());
    const std::string before = labels();
    addRow(music(u"b.wma"_s));
    ReadMp3Header(root());
    EXPECT_EQ(before, labels());
}

TEST_F(Mp3HeaderReader, ThePathGoesToTheLibraryWithItsQuotes)
{
    addRow(u"\"/music/a.mp3\""_s);
    ReadMp3Header(root());
    EXPECT_EQ("tags.Mp3FileInfo \"\\\"/music/a.mp3\\\"\"", lines(libraryCalls()));
}

TEST_F(Mp3HeaderReader, WriteMp3TagHandsTheDialogOver)
{
    addTrack(u"a.mp3"_s, full);
    ReadMp3Header(root());
    frmID3V1& form = *root().tagForm;
    form.ID3Titel.Text = QString(300, u'T');
    form.ID3Interpret.Text = u"Müller"_s;
    form.ID3Kommentar.Text = u"Жx"_s;
    form.ID3Jahr.Text = u"20011"_s;
    form.ID3Genre.Text = u"17 Rock"_s;
    WriteMp3Tag(root());

    ASSERT_EQ(1, desktop.tags.written.size());
    const Mp3Record& record = desktop.tags.written.first();
    EXPECT_EQ(std::string(30, 'T'), text(record.title));
    EXPECT_EQ(std::string(255, 'T'), text(record.extendedTitle));
    EXPECT_EQ("M\xfcller", text(record.artist));
    EXPECT_EQ("M\xfcller", text(record.extendedArtist));
    EXPECT_EQ("Album", text(record.album));
    EXPECT_EQ("Album", text(record.extendedAlbum));
    EXPECT_EQ("?x", text(record.comment));
    EXPECT_EQ("?x", text(record.extendedComment));
    EXPECT_EQ("2001", text(record.year));
    EXPECT_EQ("20011", text(record.extendedYear));
    EXPECT_EQ(17, record.genre);
    EXPECT_EQ("17 Rock", text(record.extendedGenre));
    EXPECT_EQ(192, record.bitRate);
    EXPECT_EQ("192", text(record.extendedBitRate));
    EXPECT_EQ(music(u"a.mp3"_s), root().CurrentMp3File);
    EXPECT_EQ("tags.WriteID3V1 \"/music/a.mp3\"", calls({u"tags.Write"_s}));
}

TEST_F(Mp3HeaderReader, AnEmptyGenreIsNumberNoughtAndAnEmptyText)
{
    addTrack(u"a.mp3"_s, full);
    ReadMp3Header(root());
    root().mp3Record.genre = 12;
    WriteMp3Tag(root());
    EXPECT_EQ(0, desktop.tags.written.first().genre);
    EXPECT_EQ("", text(desktop.tags.written.first().extendedGenre));
}

TEST_F(Mp3HeaderReader, TrackTexts)
{
    struct Case
    {
        QString text;
        int flags, track;
        const char* extended;
    };
    const Case cases[] = {{u""_s, 1, 0, "0"},      {u"0"_s, 1, 0, "0"},      {u"7"_s, 2, 7, "7"},
                          {u"7a"_s, 2, 7, "7"},    {u"x"_s, 1, 0, "0"},      {u"-3"_s, 1, 0, "-3"},
                          {u"2.5"_s, 2, 2, "2.5"}, {u" 12 "_s, 2, 12, "12"}, {u"1234567"_s, 2, 32767, "1234567"}};
    addTrack(u"a.mp3"_s, full);
    for (const Case& told : cases) {
        root().tagForm->ID3Track.Text = told.text;
        WriteMp3Tag(root());
        const Mp3Record& record = desktop.tags.written.last();
        EXPECT_EQ(told.flags, record.trackFlagA) << told.text.toStdString();
        EXPECT_EQ(told.flags, record.trackFlagB) << told.text.toStdString();
        EXPECT_EQ(told.track, record.track) << told.text.toStdString();
        EXPECT_EQ(told.extended, text(record.extendedTrack)) << told.text.toStdString();
    }
}

TEST_F(Mp3HeaderReader, WithoutASelectedRowNothingIsSaid)
{
    root().CurrentMp3File = u"/music/last.mp3"_s;
    ReadMp3Header(root());
    WriteMp3Tag(root());
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", calls({u"tags.Write"_s}));
    EXPECT_EQ(u"/music/last.mp3"_s, root().CurrentMp3File);
}

TEST_F(Mp3HeaderReader, TheSaveOfTheDialogWritesErasesAndCloses)
{
    addTrack(u"a.mp3"_s, full);
    root().CurrentMp3File = u"\"/music/other.mp3\""_s;
    ReadMp3Header(root());
    root().tagForm->cmdUpdate.Click();
    EXPECT_EQ("tags.WriteID3V1 \"/music/a.mp3\"\ntags.EraseID3V2 \"/music/other.mp3\"",
              calls({u"tags.Write"_s, u"tags.Erase"_s}));
    // A quote at one end only belongs to the path.
    root().CurrentMp3File = u"/music/other.mp3\""_s;
    root().tagForm->cmdUpdate.Click();
    EXPECT_EQ("tags.EraseID3V2 \"/music/other.mp3\\\"\"", libraryCalls().last().toStdString());
}

TEST_F(Mp3HeaderReader, TheSaveWithoutTitleAndArtistWritesNothing)
{
    addTrack(u"a.mp3"_s, full);
    frmID3V1& form = *root().tagForm;
    form.ID3Titel.Text = QString();
    form.ID3Interpret.Text = QString();
    form.cmdUpdate.Click();
    EXPECT_EQ("", calls({u"tags.Write"_s, u"tags.Erase"_s}));
    form.ID3Interpret.Text = u"A"_s;
    form.cmdUpdate.Click();
    EXPECT_EQ(1, desktop.tags.written.size());
}

TEST_F(Mp3HeaderReader, AFieldThatGetsTheFocusIsSelectedWhole)
{
    TextBox& field = root().tagForm->ID3Album;
    field.Text = u"Album"_s;
    field.GotFocus();
    EXPECT_EQ(0, field.SelStart);
    EXPECT_EQ(5, field.SelLength);
}

TEST_F(Mp3HeaderReader, TheDialogsHaveTheirCaptions)
{
    EXPECT_EQ(u" ID3V1 Tag ändern"_s, root().tagForm->Caption.value());
    EXPECT_EQ(u"&Speichern"_s, root().tagForm->cmdUpdate.Caption.value());
    EXPECT_EQ(u"&Abbrechen"_s, root().tagForm->cmdCancel.Caption.value());
    EXPECT_EQ(u" ID3V2 anzeigen"_s, root().otherTagForm->Caption.value());
}

} // namespace orvantine::fake
