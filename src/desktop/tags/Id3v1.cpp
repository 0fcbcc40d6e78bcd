#include "desktop/tags/Id3v1.h"

#include <algorithm>
#include <cstring>

namespace orvantine {
namespace {

constexpr qsizetype trackMark = 125;
constexpr qsizetype trackPlace = 126;
constexpr qsizetype genrePlace = 127;
constexpr int noGenre = 255;

QByteArray untilNul(QByteArrayView bytes)
{
    const auto* const end = std::find(bytes.cbegin(), bytes.cend(), '\0');
    return bytes.first(end - bytes.cbegin()).toByteArray();
}

template <std::size_t Width>
void put(char (&field)[Width], const QByteArray& text)
{
    const QByteArray padded = text.leftJustified(Width, ' ', true);
    std::memcpy(field, padded.constData(), Width);
}

template <std::size_t Width>
QByteArray taken(const char (&field)[Width], qsizetype width = Width)
{
    QByteArray text = untilNul(QByteArrayView(field, Width)).left(width);
    while (text.endsWith(' '))
        text.chop(1);
    return text.leftJustified(width, '\0');
}

} // namespace

std::optional<Id3v1> id3v1(QByteArrayView bytes)
{
    if (bytes.size() != id3v1Size || bytes.first(3) != QByteArrayView("TAG", 3))
        return std::nullopt;
    const bool hasTrack = bytes[trackMark] == '\0' && bytes[trackPlace] != '\0';
    return Id3v1{
        .title = untilNul(bytes.sliced(3, 30)),
        .artist = untilNul(bytes.sliced(33, 30)),
        .album = untilNul(bytes.sliced(63, 30)),
        .year = untilNul(bytes.sliced(93, 4)),
        .comment = untilNul(bytes.sliced(97, hasTrack ? 28 : 30)),
        .track = hasTrack ? static_cast<unsigned char>(bytes[trackPlace]) : 0,
        .genre = static_cast<unsigned char>(bytes[genrePlace]),
    };
}

void fill(Mp3Record& record, const std::optional<Id3v1>& tag)
{
    const Id3v1 found = tag.value_or(Id3v1{});
    put(record.title, found.title);
    put(record.artist, found.artist);
    put(record.album, found.album);
    put(record.year, found.year);
    put(record.comment, found.comment);
    record.track = static_cast<qint16>(found.track);
    record.genre = static_cast<qint16>(found.genre);
}

QByteArray id3v1Bytes(const Mp3Record& record)
{
    constexpr qint16 withTrack = 2;
    const bool hasTrack = record.trackFlagA == withTrack && record.track >= 1 && record.track <= 255;
    const int genre = record.genre >= 0 && record.genre <= noGenre ? record.genre : noGenre;

    QByteArray bytes = QByteArrayLiteral("TAG") + taken(record.title) + taken(record.artist) + taken(record.album) +
                       taken(record.year) + taken(record.comment, hasTrack ? 28 : 30);
    if (hasTrack)
        bytes.append('\0').append(static_cast<char>(record.track));
    return bytes.append(static_cast<char>(genre));
}

} // namespace orvantine
