#pragma once

#include "desktop/tags/MpegHeader.h"
#include "desktop/tags/TrackLayout.h"

#include <optional>

namespace orvantine {

/// One frame in its place.
struct Frame
{
    MpegHeader header;
    qint64 offset = 0;
    int length = 0;
    /// Kilobits per second, also in the free format.
    double bitRate = 0;
};

/// Steps through the frames of one stream.
class FrameSearch
{
public:
    /// Reads through the window, which stays the caller's.
    FrameSearch(ByteWindow& window, const TrackLayout& layout);

    /// The first frame of the sound: where it should be, or further on, behind bytes that are none. Later steps find
    /// only frames that continue it.
    [[nodiscard]] std::optional<Frame> first();
    /// The first frame has its place right behind the leading tags (or NULs that fill them up) and another whole one
    /// follows it; or so many follow it elsewhere that chance is out of the question.
    [[nodiscard]] bool isCertain() const { return m_certain; }
    /// The frame at an offset, whole or cut short by the end of the sound.
    [[nodiscard]] std::optional<Frame> at(qint64 offset);
    /// The first frame from an offset on that another one follows.
    [[nodiscard]] std::optional<Frame> next(qint64 offset);
    /// Whether the frame only describes the stream, and what it says.
    [[nodiscard]] bool describes(const Frame& frame);
    [[nodiscard]] std::optional<StreamSummary> summary(const Frame& frame);
    [[nodiscard]] qint64 end() const { return m_layout.soundEnd; }

private:
    enum class Last { MayBeCut, IsWhole };
    /// So many frames from `offset` on; fewer only if the last one ends with the sound and `enough` are there.
    [[nodiscard]] bool isChain(qint64 offset, int frames, int enough, Last last = Last::MayBeCut);
    /// Takes the head at `offset` for the stream's; false if none stands there.
    [[nodiscard]] bool begin(qint64 offset);
    [[nodiscard]] bool measureFreeFormat(qint64 offset);
    [[nodiscard]] qint64 behindNuls();
    /// The next byte 0xff from `offset` on, before `limit`; -1 for none.
    [[nodiscard]] qint64 nextMark(qint64 offset, qint64 limit);

    ByteWindow& m_window;
    TrackLayout m_layout;
    std::optional<MpegHeader> m_stream;
    /// Bytes of a frame of the free format, without padding.
    int m_freeLength = 0;
    int m_freeTrials = 0;
    bool m_certain = false;
};

} // namespace orvantine
