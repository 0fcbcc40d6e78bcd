#include "metadata/Mp3HeaderReader.h"
#include "MetadataTest.h"

#include <cstring>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

using Mp3HeaderReader = MetadataTest;

const FakeTrack Full{.title = u"Titel"_s,
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
    addTrack(u"a.mp3"_s, Full);
    frmID3V1& form = *root().tagForm;
    form.ID3Genre.Text = u"leer"_s;
    root().sAnzeige[0].Visible = false;
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
    addTrack(u"a.mp3"_s, Full);
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
    addTrack(u"a.mp3"_s, Full);
    ReadMp3Header(root());
    frmID3V1& form = *root().tagForm;
    form.ID3Titel.Text = QString(300, u'T');
    form.ID3Interpret.Text = u"Müller"_s;
    form.ID3Album.Text = u"Neu"_s;
    form.ID3Bitrate.Caption = u"320 kBit"_s;
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
    EXPECT_EQ("Neu", text(record.album));
    EXPECT_EQ("Neu", text(record.extendedAlbum));
    EXPECT_EQ("?x", text(record.comment));
    EXPECT_EQ("?x", text(record.extendedComment));
    EXPECT_EQ("2001", text(record.year));
    EXPECT_EQ("20011", text(record.extendedYear));
    EXPECT_EQ(17, record.genre);
    EXPECT_EQ("17 Rock", text(record.extendedGenre));
    EXPECT_EQ(320, record.bitRate);
    EXPECT_EQ("320 kBit", text(record.extendedBitRate));
    // Converted back after the call: what the library does not know is lost here too.
    EXPECT_EQ(u"?x"_s, NullTrim(root().mp3Record.comment));
    EXPECT_EQ(music(u"a.mp3"_s), root().CurrentMp3File);
    EXPECT_EQ("tags.WriteID3V1 \"/music/a.mp3\"", calls({u"tags.Write"_s}));
}

TEST_F(Mp3HeaderReader, WhatBelongsToTheLibraryPassesThrough)
{
    addTrack(u"a.mp3"_s, Full);
    WideMp3Record& wide = root().mp3Record;
    for (int i = 0; i < wide.header.size(); ++i)
        wide.header[i] = static_cast<char>(i + 1);
    const QByteArray pattern = wide.header;
    setText(wide, &WideMp3Record::reserved208, u"R208"_s);
    setText(wide, &WideMp3Record::reserved1772, u"R1772"_s);
    setText(wide, &WideMp3Record::reserved2027, u"R2027"_s);
    setText(wide, &WideMp3Record::reserved2282, u"R2282"_s);
    setText(wide, &WideMp3Record::reserved2792, u"R2792"_s);
    ReadMp3Header(root());
    WriteMp3Tag(root());
    const Mp3Record& record = desktop.tags.written.first();
    const QByteArray bytes(reinterpret_cast<const char*>(&record), 84);
    // All but bit rate, playing time and the two flags.
    for (const auto& [from, to] : {std::pair{0, 8}, std::pair{10, 32}, std::pair{36, 58}, std::pair{62, 84}})
        EXPECT_EQ(pattern.mid(from, to - from), bytes.mid(from, to - from)) << from;
    EXPECT_EQ("R208", text(record.reserved208));
    EXPECT_EQ("R1772", text(record.reserved1772));
    EXPECT_EQ("R2027", text(record.reserved2027));
    EXPECT_EQ("R2282", text(record.reserved2282));
    EXPECT_EQ("R2792", text(record.reserved2792));
}

TEST_F(Mp3HeaderReader, ThePathIsWrittenToWithItsQuotes)
{
    addRow(u"\"/music/a.mp3\""_s);
    WriteMp3Tag(root());
    EXPECT_EQ("tags.WriteID3V1 \"\\\"/music/a.mp3\\\"\"", calls({u"tags.Write"_s}));
    EXPECT_EQ(u"\"/music/a.mp3\""_s, root().CurrentMp3File);
}

TEST_F(Mp3HeaderReader, AnEmptyGenreIsNumberNoughtAndAnEmptyText)
{
    addTrack(u"a.mp3"_s, Full);
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
                          {u"2.5"_s, 2, 2, "2.5"}, {u" 12 "_s, 2, 12, "12"}, {u"1234567"_s, 2, 12, "1234567"},
                          {u"0.4"_s, 2, 0, "0.4"}, {u"3.5"_s, 2, 4, "3.5"},  {u"0.6"_s, 2, 1, "0.6"}};
    addTrack(u"a.mp3"_s, Full);
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

TEST_F(Mp3HeaderReader, ANumberThatDoesNotFitLeavesTheOldValue)
{
    addTrack(u"a.mp3"_s, Full);
    frmID3V1& form = *root().tagForm;
    ReadMp3Header(root());
    for (const QString& text : {u"32768"_s, u"123456789"_s, u"-32769"_s}) {
        root().mp3Record.genre = 12;
        form.ID3Genre.Text = text;
        form.ID3Bitrate.Caption = text;
        form.ID3Track.Text = u"32767.6"_s;
        WriteMp3Tag(root());
        const Mp3Record& record = desktop.tags.written.last();
        EXPECT_EQ(12, record.genre) << text.toStdString();
        EXPECT_EQ(192, record.bitRate) << text.toStdString();
        EXPECT_EQ(7, record.track) << text.toStdString();
        EXPECT_EQ(2, record.trackFlagA) << text.toStdString();
    }
}

TEST_F(Mp3HeaderReader, AnUnknownBitRateShowsNothing)
{
    for (const int rate : {-1, 0}) {
        addTrack(u"%1.mp3"_s.arg(rate), {.title = u"T"_s, .bitRate = rate});
        ReadMp3Header(root());
        EXPECT_EQ(u""_s, root().sBitrate.Caption.value());
        EXPECT_EQ(QString::number(rate), root().tagForm->ID3Bitrate.Caption.value());
    }
}

TEST_F(Mp3HeaderReader, WithoutASelectedRowNothingIsSaid)
{
    root().CurrentMp3File = u"/music/last.mp3"_s;
    ReadMp3Header(root());
    WriteMp3Tag(root());
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", lines(libraryCalls()));
    EXPECT_EQ(u"/music/last.mp3"_s, root().CurrentMp3File);
}

TEST_F(Mp3HeaderReader, TheSaveOfTheDialogWritesErasesAndCloses)
{
    addTrack(u"a.mp3"_s, Full);
    root().CurrentMp3File = u"\"/music/other.mp3\""_s;
    ReadMp3Header(root());
    root().tagForm->cmdUpdate.Click();
    EXPECT_EQ("tags.WriteID3V1 \"/music/a.mp3\"\ntags.EraseID3V2 \"/music/other.mp3\"\nforms.unload frmID3V1",
              calls({u"tags.Write"_s, u"tags.Erase"_s, u"forms.unload frmID3"_s}));
    // A quote at one end only belongs to the path.
    root().CurrentMp3File = u"/music/other.mp3\""_s;
    root().tagForm->cmdUpdate.Click();
    EXPECT_EQ("tags.EraseID3V2 \"/music/other.mp3\\\"\"", libraryCalls().last().toStdString());
}

TEST_F(Mp3HeaderReader, TheSaveWithoutTitleAndArtistWritesNothing)
{
    addTrack(u"a.mp3"_s, Full);
    frmID3V1& form = *root().tagForm;
    form.ID3Titel.Text = QString();
    form.ID3Interpret.Text = QString();
    form.cmdUpdate.Click();
    EXPECT_EQ("", calls({u"tags.Write"_s, u"tags.Erase"_s, u"forms.unload frmID3"_s}));
    form.ID3Interpret.Text = u"A"_s;
    form.cmdUpdate.Click();
    EXPECT_EQ(1, desktop.tags.written.size());
}

TEST_F(Mp3HeaderReader, ASaveThatFailsClosesAsUsualWithoutAWord)
{
    addTrack(u"a.mp3"_s, Full);
    const auto save = [this] {
        ReadMp3Header(root());
        desktop.log.take();
        root().tagForm->cmdUpdate.Click();
        return calls({u"tags.Write"_s, u"tags.Erase"_s, u"forms.unload frmID3"_s});
    };
    const std::string all = "tags.WriteID3V1 \"/music/a.mp3\"\ntags.EraseID3V2 \"/music/a.mp3\"\nforms.unload frmID3V1";
    root().CurrentMp3File = music(u"a.mp3"_s);
    desktop.log.failNext(u"tags.Write"_s);
    EXPECT_EQ(all, save());
    desktop.log.failNext(u"tags.Erase"_s);
    EXPECT_EQ(all, save());
    desktop.disk().remove(music(u"a.mp3"_s));
    desktop.tags.tracks.clear();
    EXPECT_EQ(all, save());
    EXPECT_EQ("", boxes());
}

TEST_F(Mp3HeaderReader, TheOtherButtonsCloseTheirDialogAndWriteNothing)
{
    addTrack(u"a.mp3"_s, Full);
    root().tagForm->Load();
    root().tagForm->cmdCancel.Click();
    EXPECT_EQ("forms.unload frmID3V1", calls({u"forms.unload frmID3"_s}));
    root().otherTagForm->Command1.Click();
    EXPECT_EQ("forms.unload frmID3V1\nforms.unload frmID3V2", calls({u"forms.unload frmID3"_s}));
    EXPECT_EQ("", calls({u"tags.Write"_s, u"tags.Erase"_s}));
}

TEST_F(Mp3HeaderReader, AFieldThatGetsTheFocusIsSelectedWhole)
{
    frmID3V1& form = *root().tagForm;
    for (TextBox* field : {&form.ID3Titel, &form.ID3Interpret, &form.ID3Album, &form.ID3Kommentar}) {
        field->Text = field->name;
        field->SelStart = 3;
        ASSERT_TRUE(field->GotFocus) << field->name.toStdString();
        field->GotFocus();
        EXPECT_EQ(0, field->SelStart.value()) << field->name.toStdString();
        EXPECT_EQ(field->name.size(), field->SelLength.value());
    }
    for (TextBox* field : {&form.ID3Jahr, &form.ID3Genre, &form.ID3Track})
        EXPECT_FALSE(field->GotFocus) << field->name.toStdString();
}

TEST_F(Mp3HeaderReader, TheDialogsHaveTheirCaptions)
{
    const frmID3V1& tag = *root().tagForm;
    EXPECT_EQ(" ID3V1 Tag ändern\nTitel\nInterpret\nAlbum\nKommentar\nJahr\nGenre-Nr\nTrack #\n&Speichern\n&Abbrechen",
              lines({tag.Caption.value(), tag.LTitel.Caption.value(), tag.LInterpret.Caption.value(),
                     tag.LAlbum.Caption.value(), tag.LKommentar.Caption.value(), tag.LJahr.Caption.value(),
                     tag.LGenre.Caption.value(), tag.LTrack.Caption.value(), tag.cmdUpdate.Caption.value(),
                     tag.cmdCancel.Caption.value()}));
    const frmID3V2& other = *root().otherTagForm;
    EXPECT_EQ(" ID3V2 anzeigen\nGenre:\nTrack #:\nEncoded von:",
              lines({other.Caption.value(), other.LGenre.Caption.value(), other.LTrack.Caption.value(),
                     other.LEncoder.Caption.value()}));
}

} // namespace orvantine::fake
