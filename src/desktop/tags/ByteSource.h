#pragma once

#include <QByteArray>

namespace orvantine {

/// The bytes of a track, read in pieces: a file on the disk or bytes in memory.
class ByteSource
{
public:
    virtual ~ByteSource() = default;

    [[nodiscard]] virtual qint64 size() const = 0;
    /// Up to `length` bytes at `offset`; fewer at the end and where the device fails.
    [[nodiscard]] virtual QByteArray read(qint64 offset, qint64 length) const = 0;
};

/// Bytes that somebody else keeps alive.
class MemoryBytes final : public ByteSource
{
public:
    explicit MemoryBytes(QByteArrayView bytes) : m_bytes(bytes) {}

    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const override
    {
        if (offset < 0 || offset >= m_bytes.size() || length <= 0)
            return {};
        return m_bytes.sliced(offset, qMin(length, m_bytes.size() - offset)).toByteArray();
    }

private:
    QByteArrayView m_bytes;
};

/// Looks at single places of a source and reads it in blocks for that.
class ByteWindow
{
public:
    explicit ByteWindow(const ByteSource& source, qint64 blockSize = 4096) : m_source(source), m_blockSize(blockSize) {}

    [[nodiscard]] const ByteSource& source() const { return m_source; }
    [[nodiscard]] qint64 size() const { return m_source.size(); }
    /// Valid until the next call; empty if the source ends before `offset` + `length`.
    [[nodiscard]] QByteArrayView at(qint64 offset, qint64 length);
    /// All bytes of the block in hand from `offset` on, at least one; empty at the end of the source.
    [[nodiscard]] QByteArrayView from(qint64 offset);

private:
    const ByteSource& m_source;
    qint64 m_blockSize;
    QByteArray m_block;
    qint64 m_blockOffset = 0;
};

} // namespace orvantine
