#include "desktop/tags/FrameSearch.h"

#include <algorithm>

namespace orvantine {
namespace {

/// How far from its place the first frame is looked for.
constexpr qint64 searchLimit = qint64{1} << 20;
/// Longer than a frame of any rate that decoders take.
constexpr int longestFreeFrame = 8192;
constexpr int shortestFreeFrame = 24;
/// Bytes that are no sound can be full of heads of the free format, each of which asks for a search.
constexpr int mostFreeTrials = 64;

} // namespace

FrameSearch::FrameSearch(ByteWindow& window, const TrackLayout& layout) : m_window(window), m_layout(layout) {}

std::optional<Frame> FrameSearch::first()
{
    constexpr int inPlace = 2;
    constexpr int elsewhere = 4;

    const qint64 place = behindNuls();
    if (begin(place)) {
        m_certain = isChain(place, inPlace, inPlace, Last::IsWhole);
        if (m_certain || isChain(place, inPlace, 1))
            return at(place);
    }
    const qint64 limit = std::min(end(), m_layout.soundBegin + searchLimit);
    for (qint64 offset = nextMark(place, limit); offset >= 0; offset = nextMark(offset + 1, limit)) {
        if (begin(offset) && isChain(offset, elsewhere, inPlace)) {
            m_certain = m_layout.soundBegin == 0 && !m_layout.brokenId3v2 &&
                        isChain(offset, elsewhere, elsewhere, Last::IsWhole);
            return at(offset);
        }
    }
    m_stream.reset();
    return std::nullopt;
}

std::optional<Frame> FrameSearch::at(qint64 offset)
{
    if (offset > end() - mpegHeaderSize)
        return std::nullopt;
    const std::optional<MpegHeader> header = mpegHeader(m_window.at(offset, mpegHeaderSize));
    if (!header || (m_stream && !header->continues(*m_stream)))
        return std::nullopt;
    Frame frame{.header = *header, .offset = offset, .length = 0, .bitRate = static_cast<double>(header->bitRate)};
    if (header->bitRate > 0) {
        frame.length = header->length();
    } else {
        frame.length = m_freeLength + (header->padded ? header->slot() : 0);
        frame.bitRate = 8.0 * m_freeLength * header->sampleRate / header->samples() / 1000;
    }
    if (frame.length <= mpegHeaderSize)
        return std::nullopt;
    return frame;
}

std::optional<Frame> FrameSearch::next(qint64 offset)
{
    for (qint64 mark = nextMark(offset, end()); mark >= 0; mark = nextMark(mark + 1, end())) {
        if (isChain(mark, 2, 2))
            return at(mark);
    }
    return std::nullopt;
}

bool FrameSearch::describes(const Frame& frame)
{
    const qint64 length = std::min<qint64>(streamSummarySize, end() - frame.offset);
    return describesStream(frame.header, m_window.at(frame.offset, length));
}

std::optional<StreamSummary> FrameSearch::summary(const Frame& frame)
{
    const qint64 length = std::min<qint64>(streamSummarySize, end() - frame.offset);
    return streamSummary(frame.header, m_window.at(frame.offset, length));
}

bool FrameSearch::isChain(qint64 offset, int frames, int enough, Last last)
{
    for (int found = 0; found < frames; ++found) {
        if (offset == end() && found >= enough)
            return true;
        const std::optional<Frame> frame = at(offset);
        if (!frame)
            return false;
        offset += frame->length;
    }
    return last == Last::MayBeCut || offset <= end();
}

bool FrameSearch::begin(qint64 offset)
{
    m_stream.reset();
    m_freeLength = 0;
    if (offset < 0 || offset > end() - mpegHeaderSize)
        return false;
    m_stream = mpegHeader(m_window.at(offset, mpegHeaderSize));
    if (!m_stream)
        return false;
    return m_stream->bitRate > 0 || measureFreeFormat(offset);
}

bool FrameSearch::measureFreeFormat(qint64 offset)
{
    if (++m_freeTrials > mostFreeTrials)
        return false;
    const MpegHeader head = *m_stream;
    const int padding = head.padded ? head.slot() : 0;
    const qint64 limit = std::min(end(), offset + longestFreeFrame);
    for (qint64 mark = nextMark(offset + shortestFreeFrame, limit); mark >= 0; mark = nextMark(mark + 1, limit)) {
        m_freeLength = static_cast<int>(mark - offset) - padding;
        if (m_freeLength % head.slot() == 0 && isChain(offset, 3, 2))
            return true;
    }
    m_freeLength = 0;
    return false;
}

qint64 FrameSearch::behindNuls()
{
    const qint64 limit = std::min(end(), m_layout.soundBegin + searchLimit);
    qint64 offset = m_layout.soundBegin;
    while (offset < limit) {
        const QByteArrayView block = m_window.from(offset);
        const auto* const found = std::find_if(block.cbegin(), block.cend(), [](char byte) { return byte != '\0'; });
        offset += found - block.cbegin();
        if (block.isEmpty() || found != block.cend())
            break;
    }
    return std::min(offset, limit);
}

qint64 FrameSearch::nextMark(qint64 offset, qint64 limit)
{
    while (offset >= 0 && offset < limit) {
        const QByteArrayView block = m_window.from(offset);
        if (block.isEmpty())
            break;
        const auto* const found = std::find(block.cbegin(), block.cend(), '\xff');
        offset += found - block.cbegin();
        if (found != block.cend())
            return offset < limit ? offset : -1;
    }
    return -1;
}

} // namespace orvantine
