#include "desktop/tags/ByteSource.h"

#include <algorithm>

namespace orvantine {

QByteArrayView ByteWindow::at(qint64 offset, qint64 length)
{
    if (offset < 0 || length <= 0 || offset > size() - length)
        return {};
    const bool inHand = offset >= m_blockOffset && offset + length <= m_blockOffset + m_block.size();
    if (!inHand) {
        m_block = m_source.read(offset, std::max(length, m_blockSize));
        m_blockOffset = offset;
        if (m_block.size() < length)
            return {};
    }
    return QByteArrayView(m_block).sliced(offset - m_blockOffset, length);
}

QByteArrayView ByteWindow::from(qint64 offset)
{
    if (at(offset, 1).isEmpty())
        return {};
    return QByteArrayView(m_block).sliced(offset - m_blockOffset);
}

} // namespace orvantine
