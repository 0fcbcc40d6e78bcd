#include "TrackBytes.h"

#include <QtEndian>

namespace orvantine::test {
namespace {

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray apeHead(quint32 size, quint32 flags)
{
    return "APETAGEX" + littleEndian(2000) + littleEndian(size) + littleEndian(1) + littleEndian(flags) +
           QByteArray(8, '\0');
}

void overwrite(QByteArray& bytes, qsizetype offset, const QByteArray& with)
{
    bytes.replace(offset, with.size(), with);
}

} // namespace

QByteArray head(const FrameShape& shape)
{
    const quint32 version = shape.version == MpegVersion::V1 ? 3 : shape.version == MpegVersion::V2 ? 2 : 0;
    quint32 word = 0xffe00000U | version << 19U | static_cast<quint32>(4 - shape.layer) << 17U;
    word |= (shape.checksum ? 0U : 1U) << 16U | shape.rateIndex << 12U | shape.sampleIndex << 10U;
    word |= (shape.padded ? 1U : 0U) << 9U | (shape.mono ? 3U : 0U) << 6U;
    return bigEndian(word);
}

QByteArray frame(const FrameShape& shape, char content)
{
    const QByteArray start = head(shape);
    const int slot = shape.layer == 1 ? 4 : 1;
    const int length =
        shape.rateIndex == 0 ? shape.freeLength + (shape.padded ? slot : 0) : mpegHeader(start).value().length();
    return start.leftJustified(length, content);
}

QByteArray frames(const FrameShape& shape, int count)
{
    return frame(shape).repeated(count);
}

QByteArray xing(const FrameShape& shape, const QByteArray& mark, qint64 frameCount, qint64 byteCount)
{
    QByteArray bytes = frame(shape, '\0');
    QByteArray fields = mark + bigEndian((frameCount >= 0 ? 1U : 0U) | (byteCount >= 0 ? 2U : 0U));
    if (frameCount >= 0)
        fields += bigEndian(static_cast<quint32>(frameCount));
    if (byteCount >= 0)
        fields += bigEndian(static_cast<quint32>(byteCount));
    overwrite(bytes, mpegHeader(bytes).value().xingOffset() + (shape.checksum ? 2 : 0), fields);
    return bytes;
}

QByteArray vbri(const FrameShape& shape, quint32 frameCount, quint32 byteCount)
{
    QByteArray bytes = frame(shape, '\0');
    overwrite(bytes, 36, "VBRI" + QByteArray("\0\1\0\0\0\x4b", 6) + bigEndian(byteCount) + bigEndian(frameCount));
    return bytes;
}

QByteArray id3v2(int content, qint64 claimed)
{
    const auto size = static_cast<quint32>(claimed >= 0 ? claimed : content);
    QByteArray bytes = QByteArrayLiteral("ID3\3\0\0");
    for (const unsigned shift : {21U, 14U, 7U, 0U})
        bytes += static_cast<char>((size >> shift) & 0x7fU);
    return bytes + QByteArray(content, '\0');
}

QByteArray appendedId3v2(int content)
{
    QByteArray bytes = id3v2(content);
    overwrite(bytes, 3, "\4");
    overwrite(bytes, 5, "\x10");
    return bytes + "3DI" + bytes.sliced(3, 7);
}

QByteArray id3v1Tag(const QByteArray& title, const QByteArray& artist, const QByteArray& album, const QByteArray& year,
                    const QByteArray& comment, int genre)
{
    const auto field = [](const QByteArray& text, int width) { return text.leftJustified(width, '\0', true); };
    return "TAG" + field(title, 30) + field(artist, 30) + field(album, 30) + field(year, 4) + field(comment, 30) +
           static_cast<char>(genre);
}

QByteArray ape(int content, bool withHead)
{
    constexpr quint32 HasHead = 1U << 31U;
    constexpr quint32 IsHead = 1U << 29U;
    const quint32 size = static_cast<quint32>(content) + 32;
    const QByteArray start = withHead ? apeHead(size, HasHead | IsHead) : QByteArray();
    return start + QByteArray(content, 'i') + apeHead(size, withHead ? HasHead : 0);
}

QByteArray lyrics1(const QByteArray& text)
{
    return "LYRICSBEGIN" + text + "LYRICSEND";
}

QByteArray lyrics2(const QByteArray& text)
{
    const QByteArray body = "LYRICSBEGIN" + text;
    return body + QByteArray::number(body.size()).rightJustified(6, '0') + "LYRICS200";
}

} // namespace orvantine::test
