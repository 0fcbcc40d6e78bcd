#include "metadata/WideMp3Record.h"

#include <gtest/gtest.h>

#include <cstring>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct TextField
{
    const char* name;
    QString WideMp3Record::*wide;
    std::size_t offset;
    int width;
};

/// Offsets and widths as the library's form has them, told here once more.
const TextField TextFields[] = {
    {"title", &WideMp3Record::title, 84, 30},
    {"artist", &WideMp3Record::artist, 114, 30},
    {"album", &WideMp3Record::album, 144, 30},
    {"year", &WideMp3Record::year, 174, 4},
    {"comment", &WideMp3Record::comment, 178, 30},
    {"reserved208", &WideMp3Record::reserved208, 208, 30},
    {"extendedTrack", &WideMp3Record::extendedTrack, 242, 255},
    {"extendedYear", &WideMp3Record::extendedYear, 497, 255},
    {"extendedTitle", &WideMp3Record::extendedTitle, 752, 255},
    {"extendedArtist", &WideMp3Record::extendedArtist, 1007, 255},
    {"extendedAlbum", &WideMp3Record::extendedAlbum, 1262, 255},
    {"extendedGenre", &WideMp3Record::extendedGenre, 1517, 255},
    {"reserved1772", &WideMp3Record::reserved1772, 1772, 255},
    {"reserved2027", &WideMp3Record::reserved2027, 2027, 255},
    {"reserved2282", &WideMp3Record::reserved2282, 2282, 255},
    {"extendedBitRate", &WideMp3Record::extendedBitRate, 2537, 255},
    {"reserved2792", &WideMp3Record::reserved2792, 2792, 255},
    {"extendedComment", &WideMp3Record::extendedComment, 3047, 2000},
};

QByteArray bytesOf(const Mp3Record& record)
{
    return {reinterpret_cast<const char*>(&record), static_cast<qsizetype>(sizeof record)};
}

/// A record whose every byte is another one than its neighbours.
Mp3Record patterned()
{
    Mp3Record record;
    auto* const bytes = reinterpret_cast<unsigned char*>(&record);
    for (std::size_t i = 0; i < sizeof record; ++i)
        bytes[i] = static_cast<unsigned char>(i * 7 + i / 256);
    record.pad = '\0';
    return record;
}

} // namespace

TEST(WideMp3Record, EachTextStandsInItsPlaceAndNowhereElse)
{
    const QByteArray blank = bytesOf(narrow(WideMp3Record{}));
    for (const TextField& field : TextFields) {
        WideMp3Record wide;
        setText(wide, field.wide, u"Ü"_s);
        EXPECT_EQ(field.width, (wide.*field.wide).size()) << field.name;
        QByteArray expected = blank;
        expected[static_cast<qsizetype>(field.offset)] = '\xdc';
        EXPECT_EQ(expected, bytesOf(narrow(wide))) << field.name;
        EXPECT_EQ(wide.*field.wide, widen(narrow(wide)).*field.wide) << field.name;
    }
}

TEST(WideMp3Record, EachNumberStandsInItsPlaceInTheHostsOrder)
{
    WideMp3Record wide;
    wide.bitRate = 0x0102;
    wide.playingTime = 0x01020304;
    wide.trackFlagA = 0x0506;
    wide.trackFlagB = 0x0708;
    wide.genre = 0x090a;
    wide.track = 0x0b0c;
    const QByteArray bytes = bytesOf(narrow(wide));
    EXPECT_EQ("0201", bytes.mid(8, 2).toHex());
    EXPECT_EQ("04030201", bytes.mid(32, 4).toHex());
    EXPECT_EQ("0605", bytes.mid(58, 2).toHex());
    EXPECT_EQ("0807", bytes.mid(60, 2).toHex());
    EXPECT_EQ("0a09", bytes.mid(238, 2).toHex());
    EXPECT_EQ("0c0b", bytes.mid(240, 2).toHex());
}

TEST(WideMp3Record, ThereAndBackKeepsEveryByte)
{
    const Mp3Record record = patterned();
    EXPECT_EQ(bytesOf(record).toHex(), bytesOf(narrow(widen(record))).toHex());
}

TEST(WideMp3Record, TheRestOfTheHeaderPassesThrough)
{
    WideMp3Record wide = widen(patterned());
    wide.bitRate = 1;
    wide.playingTime = 2;
    wide.trackFlagA = wide.trackFlagB = 3;
    const QByteArray before = bytesOf(patterned());
    const QByteArray after = bytesOf(narrow(wide));
    for (const auto& [from, to] : {std::pair{0, 8}, std::pair{10, 32}, std::pair{36, 58}, std::pair{62, 84}})
        EXPECT_EQ(before.mid(from, to - from), after.mid(from, to - from)) << from;
}

TEST(WideMp3Record, ALongTextIsCutToTheWidthOfItsField)
{
    WideMp3Record wide;
    for (const TextField& field : TextFields) {
        setText(wide, field.wide, QString(3000, u'x'));
        EXPECT_EQ(QString(field.width, u'x'), wide.*field.wide) << field.name;
        setText(wide, field.wide, u"kurz"_s);
        EXPECT_EQ(u"kurz"_s.leftJustified(field.width), wide.*field.wide) << field.name;
    }
}

TEST(WideMp3Record, WhatDoesNotFitTheCodePageIsLostThere)
{
    WideMp3Record wide;
    setText(wide, &WideMp3Record::title, u"Ж€ü😀x"_s);
    const Mp3Record record = narrow(wide);
    EXPECT_EQ("?\x80\xfc?x" + QByteArray(25, ' '), QByteArray(record.title, sizeof record.title));
}

} // namespace orvantine
