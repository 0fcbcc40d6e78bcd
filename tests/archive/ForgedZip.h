#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

namespace orvantine {

/// One entry of an archive, with whatever lies its heads are to tell.
struct ForgedEntry
{
    QByteArray name;
    QByteArray bytes = "boese";
    /// As the central directory has it; else as it is.
    std::optional<quint32> crc = {};
    std::optional<quint32> size = {};
    std::optional<quint32> packedSize = {};
    /// As the head in front of the bytes has it; else as the directory.
    std::optional<QByteArray> localName = {};
    std::optional<quint32> localSize = {};
    std::optional<quint32> localCrc = {};
    /// 0 stored, 8 deflated.
    quint16 method = 0;
    /// Bit 0: encrypted. Bit 11: the name is UTF-8.
    quint16 flags = 0x800;
    /// Upper half: the mode of the other desktop.
    quint32 attributes = 0x81a40000;
    /// Of the directory's extra field.
    QByteArray extra = {};
    /// Bytes of the archive that it claims to begin at.
    std::optional<quint32> offset = {};
};

struct ForgedEnd
{
    std::optional<quint16> count = {};
    std::optional<quint32> directorySize = {};
    std::optional<quint32> directoryOffset = {};
    QByteArray before = {};
    QByteArray behind = {};
};

[[nodiscard]] QByteArray forgedZip(const std::vector<ForgedEntry>& entries, const ForgedEnd& end = {});
[[nodiscard]] quint32 crcOf(const QByteArray& bytes);
/// As method 8 has it.
[[nodiscard]] QByteArray deflated(const QByteArray& bytes);

} // namespace orvantine
