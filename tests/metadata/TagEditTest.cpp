#include "desktop/tags/TagEdit.h"
#include "TrackBytes.h"
#include "desktop/tags/Id3v1.h"

#include <gtest/gtest.h>

#include <cstring>

namespace orvantine::test {

using namespace Qt::StringLiterals;

namespace {

template <std::size_t Width>
void put(char (&field)[Width], const QByteArray& text)
{
    std::memcpy(field, text.leftJustified(Width, ' ', true).constData(), Width);
}

template <std::size_t Width>
std::string text(const char (&field)[Width])
{
    return {field, Width};
}

Mp3Record recordOf(const QByteArray& title, const QByteArray& artist, const QByteArray& comment = {}, int track = 0)
{
    Mp3Record record;
    put(record.title, title);
    put(record.artist, artist);
    put(record.album, "Album");
    put(record.year, "1999");
    put(record.comment, comment);
    record.track = static_cast<qint16>(track);
    record.trackFlagA = record.trackFlagB = track > 0 ? 2 : 1;
    record.genre = 17;
    return record;
}

/// The bytes after an edit; "(left alone)" where there is none.
QByteArray after(const QByteArray& bytes, const std::optional<TagEdit>& edit)
{
    return edit ? bytes.mid(edit->keptFrom, edit->keptTo - edit->keptFrom) + edit->tail : "(left alone)"_ba;
}
QByteArray written(const QByteArray& bytes, const Mp3Record& record)
{
    return after(bytes, id3v1Edit(MemoryBytes(bytes), record));
}
QByteArray erased(const QByteArray& bytes)
{
    return after(bytes, id3v2Removal(MemoryBytes(bytes)));
}

/// What the record holds once a file of these bytes was read.
Mp3Record readBack(const QByteArray& bytes)
{
    Mp3Record record;
    fill(record, id3v1(QByteArrayView(bytes).last(128)));
    return record;
}

const QByteArray LeftAlone = "(left alone)"_ba;

} // namespace

TEST(Id3v1, FieldsAreCutAtTheirFirstNulAndPaddedWithBlanks)
{
    const Mp3Record record =
        readBack(id3v1Tag("Titel\0Rest"_ba, "  Interpret"_ba, "Album \0\0x"_ba, "99\0x"_ba, "\0hidden"_ba));
    EXPECT_EQ("Titel" + std::string(25, ' '), text(record.title));
    EXPECT_EQ("  Interpret" + std::string(19, ' '), text(record.artist));
    EXPECT_EQ("Album" + std::string(25, ' '), text(record.album));
    EXPECT_EQ("99  ", text(record.year));
    EXPECT_EQ(std::string(30, ' '), text(record.comment));
}

TEST(Id3v1, ATextOfFullWidthKeepsAllCharacters)
{
    const QByteArray full = "123456789 123456789 1234567890";
    const Mp3Record record = readBack(id3v1Tag(full, full, full, "1999", full));
    EXPECT_EQ(full.toStdString(), text(record.title));
    EXPECT_EQ(full.toStdString(), text(record.comment));
    EXPECT_EQ("1999", text(record.year));
    EXPECT_EQ(0, record.track);
}

TEST(Id3v1, ATrackNumberStandsBehindANul)
{
    EXPECT_EQ(7, readBack(id3v1Tag("T", "A", {}, {}, QByteArray(28, 'c') + "\0\7"_ba)).track);
    EXPECT_EQ(255, readBack(id3v1Tag("T", "A", {}, {}, QByteArray(28, '\0') + "\0\xff"_ba)).track);
    EXPECT_EQ(std::string(28, 'c') + "  ",
              text(readBack(id3v1Tag("T", "A", {}, {}, QByteArray(28, 'c') + "\0\7"_ba)).comment));
    // A blank or a letter before it makes both a part of the comment.
    EXPECT_EQ(0, readBack(id3v1Tag("T", "A", {}, {}, QByteArray(28, 'c') + " \7"_ba)).track);
    EXPECT_EQ(0, readBack(id3v1Tag("T", "A", {}, {}, QByteArray(28, 'c') + "\0\0"_ba)).track);
}

TEST(Id3v1, EightBitBytesAndLineEndsStayAsTheyAre)
{
    const QByteArray odd = "M\xfcller \x80 \xc3\xbc\r\n[Index]=\"x\"";
    EXPECT_EQ((odd + QByteArray(30 - odd.size(), ' ')).toStdString(), text(readBack(id3v1Tag(odd, "A")).title));
}

TEST(Id3v1, WithoutATagTheTextsAreBlankAndTheTrackIsNought)
{
    Mp3Record record = recordOf("old", "old", "old", 9);
    put(record.extendedTitle, "stays");
    put(record.reserved208, "stays");
    record.bitRate = 77;
    fill(record, std::nullopt);
    EXPECT_EQ(std::string(30, ' '), text(record.title));
    EXPECT_EQ(std::string(30, ' '), text(record.artist));
    EXPECT_EQ(std::string(30, ' '), text(record.album));
    EXPECT_EQ(std::string(4, ' '), text(record.year));
    EXPECT_EQ(std::string(30, ' '), text(record.comment));
    EXPECT_EQ(0, record.track);
    EXPECT_EQ("stays", text(record.extendedTitle).substr(0, 5));
    EXPECT_EQ("stays", text(record.reserved208).substr(0, 5));
    EXPECT_EQ(77, record.bitRate);
    EXPECT_EQ(2, record.trackFlagA);
}

TEST(Id3v1, BytesOfATagWithATrackNumber)
{
    const QByteArray bytes = id3v1Bytes(recordOf("Titel", "Interpret", QByteArray(30, 'c'), 7));
    EXPECT_EQ(
        id3v1Tag("Titel", "Interpret", "Album", "1999", QByteArray(28, 'c') + "\0\7"_ba, 17).toHex().toStdString(),
        bytes.toHex().toStdString());
}

TEST(Id3v1, BytesOfATagWithoutOneKeepTheWholeComment)
{
    const QByteArray bytes = id3v1Bytes(recordOf("Titel", "Interpret", QByteArray(30, 'c')));
    EXPECT_EQ(id3v1Tag("Titel", "Interpret", "Album", "1999", QByteArray(30, 'c'), 17).toHex().toStdString(),
              bytes.toHex().toStdString());
}

TEST(Id3v1, WithTheFlagsOfNoTrackANumberThatIsThereDoesNotCutTheComment)
{
    Mp3Record record = recordOf("T", "A", QByteArray(30, 'c'), 7);
    record.trackFlagA = record.trackFlagB = 1;
    EXPECT_EQ(QByteArray(30, 'c'), id3v1Bytes(record).mid(97, 30));
}

TEST(Id3v1, ATrackNumberOutsideOneByteIsNotWritten)
{
    for (const int track : {-1, 0, 256, 32767}) {
        Mp3Record record = recordOf("T", "A", QByteArray(30, 'c'));
        record.trackFlagA = record.trackFlagB = 2;
        record.track = static_cast<qint16>(track);
        EXPECT_EQ(QByteArray(30, 'c'), id3v1Bytes(record).mid(97, 30)) << track;
    }
}

TEST(Id3v1, AGenreOutsideOneByteMeansNone)
{
    const std::pair<int, int> cases[] = {{0, 0}, {17, 17}, {255, 255}, {256, 255}, {-1, 255}, {32767, 255}};
    for (const auto& [genre, expected] : cases) {
        Mp3Record record = recordOf("T", "A");
        record.genre = static_cast<qint16>(genre);
        EXPECT_EQ(expected, static_cast<unsigned char>(id3v1Bytes(record).back())) << genre;
    }
}

TEST(WriteID3V1, AppendsATagAndKeepsAllBytesBeforeIt)
{
    const Mp3Record record = recordOf("Titel", "Interpret", "Wort", 3);
    for (const QByteArray& bytes : {sound(), id3v2(5000) + sound(), sound() + ape(), sound() + lyrics2()})
        EXPECT_EQ(bytes + id3v1Bytes(record), written(bytes, record)) << bytes.size();
}

TEST(WriteID3V1, PutsATagInThePlaceOfTheOldOne)
{
    const Mp3Record record = recordOf("Titel", "Interpret");
    const QByteArray before = id3v2(5000) + sound() + ape() + lyrics2();
    EXPECT_EQ(before + id3v1Bytes(record), written(before + id3v1Tag("Alt", "Alt"), record));
}

TEST(WriteID3V1, TwiceIsOnce)
{
    const Mp3Record record = recordOf("Titel", "Interpret", "Wort", 3);
    // The end of the sound together with the tag's head spells the head of another tag.
    const QByteArray trap = sound() + "APE";
    for (const QByteArray& bytes : {sound(), trap, sound() + ape(67)}) {
        for (const Mp3Record& fields : {record, recordOf("EX", "A", "PETAGEX")}) {
            const QByteArray once = written(bytes, fields);
            EXPECT_EQ(once, written(once, fields));
            EXPECT_EQ(bytes.size() + 128, once.size());
            EXPECT_TRUE(changesNothing(MemoryBytes(once), *id3v1Edit(MemoryBytes(once), fields)));
        }
    }
}

TEST(WriteID3V1, WhatIsNoMp3IsLeftAlone)
{
    const Mp3Record record = recordOf("Titel", "Interpret");
    const QByteArray others[] = {{},
                                 "text",
                                 QByteArray(10000, 'x'),
                                 "RIFF" + sound(),
                                 "\x30\x26\xb2\x75\x8e\x66\xcf\x11" + sound(),
                                 id3v1Tag("T", "A"),
                                 id3v2(100)};
    for (const QByteArray& bytes : others) {
        EXPECT_EQ(LeftAlone, written(bytes, record)) << bytes.left(40).toHex().toStdString();
        EXPECT_EQ(LeftAlone, erased(bytes)) << bytes.left(40).toHex().toStdString();
    }
}

TEST(WriteID3V1, OneFrameIsEnoughWhereverItIsFound)
{
    const Mp3Record record = recordOf("Titel", "Interpret");
    const QByteArray tracks[] = {frame({}), id3v2(100) + frame({}), id3v2(100) + "junk" + sound(),
                                 id3v2(0, 1 << 20) + sound(), id3v2(100) + frame({}) + frame({}).chopped(1)};
    for (const QByteArray& bytes : tracks) {
        EXPECT_EQ(bytes + id3v1Bytes(record), written(bytes, record)) << bytes.left(40).toHex().toStdString();
        EXPECT_EQ(LeftAlone, erased(bytes)) << bytes.left(40).toHex().toStdString();
    }
    const QByteArray behindJunk = QByteArray(100, 'x') + sound();
    EXPECT_EQ(behindJunk + id3v1Bytes(record), written(behindJunk, record));
}

TEST(EraseID3V2, TakesALeadingTagAndNothingElse)
{
    const QByteArray rest = sound(3) + ape() + lyrics2() + id3v1Tag("T", "A");
    for (const int size : {0, 1, 200, 300000})
        EXPECT_EQ(rest, erased(id3v2(size) + rest)) << size;
    EXPECT_EQ(rest, erased(id3v2(100) + id3v2(200) + rest));
    EXPECT_EQ(sound(2), erased(id3v2(100) + sound(2)));
}

TEST(EraseID3V2, WithoutATagNothingChanges)
{
    const QByteArray bytes = sound(3) + id3v1Tag("T", "A");
    EXPECT_EQ(bytes, erased(bytes));
    EXPECT_TRUE(changesNothing(MemoryBytes(bytes), *id3v2Removal(MemoryBytes(bytes))));
}

TEST(EraseID3V2, TakesAppendedTagsAndKeepsWhatStandsAroundThem)
{
    const QByteArray v1 = id3v1Tag("T", "A");
    const QByteArray tag = appendedId3v2();
    const std::pair<QByteArray, QByteArray> cases[] = {
        {tag, {}},
        {tag + v1, v1},
        {appendedId3v2(0) + appendedId3v2(5000) + v1, v1},
        {ape() + tag + lyrics2() + tag + v1, ape() + lyrics2() + v1},
        {tag + "TAG+" + QByteArray(223, '\0') + v1, "TAG+" + QByteArray(223, '\0') + v1}};
    for (const auto& [behind, kept] : cases) {
        EXPECT_EQ(sound(3) + kept, erased(sound(3) + behind)) << behind.size();
        EXPECT_EQ(sound(3) + kept, erased(id3v2(100) + sound(3) + behind)) << behind.size();
        EXPECT_EQ(sound(3) + kept, erased(sound(3) + kept)) << behind.size();
    }
}

TEST(EraseID3V2, AFooterThatItsHeadDoesNotRepeatIsSound)
{
    const QByteArray v1 = id3v1Tag("T", "A");
    const auto changed = [](int place, char byte) {
        QByteArray tag = appendedId3v2();
        tag[place < 0 ? tag.size() + place : place] = byte;
        return tag;
    };
    // Mark, version, flags and size of the head, then size and flags of the footer.
    for (const QByteArray& tag :
         {changed(0, 'J'), changed(3, '\3'), changed(5, '\0'), changed(9, '\1'), changed(-1, '\1'), changed(-1, '\x80'),
          changed(-2, '\x7f'), changed(-5, '\0'), changed(-10, '4')}) {
        const QByteArray bytes = sound(4) + tag + v1;
        EXPECT_EQ(bytes, erased(bytes)) << tag.toHex().toStdString();
    }
    // Without the flag of a footer it is the end of what the tag holds.
    QByteArray flagless = id3v2(60);
    flagless.replace(60, 10, "3DI" + flagless.sliced(3, 7));
    EXPECT_EQ(sound(4) + flagless + v1, erased(sound(4) + flagless + v1));
    // It would begin before the sound.
    const QByteArray whole = id3v2(100) + sound(4);
    EXPECT_EQ(sound(4) + appendedId3v2(60).last(10), erased(whole + appendedId3v2(60).last(10)));
}

TEST(EraseID3V2, TwiceIsOnce)
{
    for (const QByteArray& bytes : {id3v2(100) + sound(2), id3v2(1) + id3v2(1) + sound(3),
                                    id3v2(7) + QByteArray(50, '\0') + sound(3), sound(3)}) {
        const QByteArray once = erased(bytes);
        ASSERT_NE(LeftAlone, once);
        EXPECT_EQ(once, erased(once));
    }
}

TEST(EraseID3V2, ATagThatDoesNotEndInsideOrIsNotFollowedByTwoHeadsStays)
{
    const QByteArray tag = id3v2(100);
    QByteArray eightBits = tag;
    eightBits[8] = '\x81';
    const QByteArray stubborn[] = {
        id3v2(100, (1 << 28) - 1) + sound(),    eightBits + sound(),
        tag + frame({}) + QByteArray(500, 'x'), tag + frame({}) + frame({.sampleIndex = 1}),
        tag + QByteArray(3000, 'x') + sound(),  id3v2(0, 90) + QByteArray(100, 'x') + sound(),
        tag + id3v2(0, 5000) + sound(3)};
    for (const QByteArray& bytes : stubborn)
        EXPECT_EQ(LeftAlone, erased(bytes)) << bytes.left(10).toHex().toStdString();
}

} // namespace orvantine::test
