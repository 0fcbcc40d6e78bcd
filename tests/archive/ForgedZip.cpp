#include "ForgedZip.h"

namespace orvantine {

namespace {

void put16(QByteArray& out, quint16 number)
{
    out += static_cast<char>(number & 0xff);
    out += static_cast<char>(number >> 8);
}

void put32(QByteArray& out, quint32 number)
{
    put16(out, static_cast<quint16>(number & 0xffff));
    put16(out, static_cast<quint16>(number >> 16));
}

/// Version, flags, method and time, which both heads have.
void putKind(QByteArray& out, const ForgedEntry& entry)
{
    constexpr quint16 Version = 20;
    constexpr quint16 Time = 0x6000;
    constexpr quint16 Date = 0x5a21;
    put16(out, Version);
    put16(out, entry.flags);
    put16(out, entry.method);
    put16(out, Time);
    put16(out, Date);
}

} // namespace

quint32 crcOf(const QByteArray& bytes)
{
    quint32 sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1U) != 0 ? 0xedb88320U : 0U);
    }
    return ~sum;
}

QByteArray deflated(const QByteArray& bytes)
{
    // Four bytes of length and two of a head stand in front, four of a checksum behind.
    return qCompress(bytes, 9).mid(6).chopped(4);
}

QByteArray forgedZip(const std::vector<ForgedEntry>& entries, const ForgedEnd& end)
{
    QByteArray out = end.before;
    QByteArray directory;
    for (const ForgedEntry& entry : entries) {
        const QByteArray packed = entry.method == 8 ? deflated(entry.bytes) : entry.bytes;
        const quint32 crc = entry.crc.value_or(crcOf(entry.bytes));
        const quint32 size = entry.size.value_or(static_cast<quint32>(entry.bytes.size()));
        const quint32 packedSize = entry.packedSize.value_or(static_cast<quint32>(packed.size()));
        const QByteArray localName = entry.localName.value_or(entry.name);
        const auto offset = static_cast<quint32>(out.size());

        out += "PK\3\4";
        putKind(out, entry);
        put32(out, entry.localCrc.value_or(crc));
        put32(out, packedSize);
        put32(out, entry.localSize.value_or(size));
        put16(out, static_cast<quint16>(localName.size()));
        put16(out, 0);
        out += localName + packed;

        directory += "PK\1\2";
        put16(directory, 0x0314);
        putKind(directory, entry);
        put32(directory, crc);
        put32(directory, packedSize);
        put32(directory, size);
        put16(directory, static_cast<quint16>(entry.name.size()));
        put16(directory, static_cast<quint16>(entry.extra.size()));
        put16(directory, 0);
        put16(directory, 0);
        put16(directory, 0);
        put32(directory, entry.attributes);
        put32(directory, entry.offset.value_or(offset));
        directory += entry.name + entry.extra;
    }
    const auto start = static_cast<quint32>(out.size());
    out += directory;
    out += "PK\5\6";
    put16(out, 0);
    put16(out, 0);
    const quint16 count = end.count.value_or(static_cast<quint16>(entries.size()));
    put16(out, count);
    put16(out, count);
    put32(out, end.directorySize.value_or(static_cast<quint32>(directory.size())));
    put32(out, end.directoryOffset.value_or(start));
    put16(out, 0);
    return out + end.behind;
}

} // namespace orvantine
