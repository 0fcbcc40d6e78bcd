#pragma once

#include <QtGlobal>

#include <cstddef>

namespace orvantine {

/// The record exchanged with the tag library: a wire format of 5048 bytes, all text windows-1252, of fixed width,
/// padded with blanks, without a terminator. The unnamed parts of the numeric header belong to the library.
struct Mp3Record
{
    Mp3Record();

    char header0[8];
    /// Kilobits per second; -1 where no frame was found.
    qint16 bitRate;
    char header10[22];
    /// Whole seconds; -1 means unknown.
    qint32 playingTime;
    char header36[22];
    /// Before a write: 2 with a track number, 1 without.
    qint16 trackFlagA;
    qint16 trackFlagB;
    char header62[22];
    char title[30];
    char artist[30];
    char album[30];
    char year[4];
    char comment[30];
    char reserved208[30];
    qint16 genre;
    qint16 track;
    char extendedTrack[255];
    char extendedYear[255];
    char extendedTitle[255];
    char extendedArtist[255];
    char extendedAlbum[255];
    char extendedGenre[255];
    char reserved1772[255];
    char reserved2027[255];
    char reserved2282[255];
    char extendedBitRate[255];
    char reserved2792[255];
    char extendedComment[2000];
    char pad;
};

static_assert(offsetof(Mp3Record, header0) == 0);
static_assert(offsetof(Mp3Record, bitRate) == 8);
static_assert(offsetof(Mp3Record, header10) == 10);
static_assert(offsetof(Mp3Record, playingTime) == 32);
static_assert(offsetof(Mp3Record, header36) == 36);
static_assert(offsetof(Mp3Record, trackFlagA) == 58);
static_assert(offsetof(Mp3Record, trackFlagB) == 60);
static_assert(offsetof(Mp3Record, header62) == 62);
static_assert(offsetof(Mp3Record, title) == 84);
static_assert(offsetof(Mp3Record, artist) == 114);
static_assert(offsetof(Mp3Record, album) == 144);
static_assert(offsetof(Mp3Record, year) == 174);
static_assert(offsetof(Mp3Record, comment) == 178);
static_assert(offsetof(Mp3Record, reserved208) == 208);
static_assert(offsetof(Mp3Record, genre) == 238);
static_assert(offsetof(Mp3Record, track) == 240);
static_assert(offsetof(Mp3Record, extendedTrack) == 242);
static_assert(offsetof(Mp3Record, extendedYear) == 497);
static_assert(offsetof(Mp3Record, extendedTitle) == 752);
static_assert(offsetof(Mp3Record, extendedArtist) == 1007);
static_assert(offsetof(Mp3Record, extendedAlbum) == 1262);
static_assert(offsetof(Mp3Record, extendedGenre) == 1517);
static_assert(offsetof(Mp3Record, reserved1772) == 1772);
static_assert(offsetof(Mp3Record, reserved2027) == 2027);
static_assert(offsetof(Mp3Record, reserved2282) == 2282);
static_assert(offsetof(Mp3Record, extendedBitRate) == 2537);
static_assert(offsetof(Mp3Record, reserved2792) == 2792);
static_assert(offsetof(Mp3Record, extendedComment) == 3047);
static_assert(offsetof(Mp3Record, pad) == 5047);
static_assert(sizeof(Mp3Record) == 5048);

} // namespace orvantine
