#include "desktop/tags/TrackFacts.h"

#include "desktop/tags/FrameSearch.h"
#include "desktop/tags/TrackLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvantine {
namespace {

/// Up to here each frame is counted.
constexpr qint64 shortTrack = qint64{64} << 10;
/// A walk ends here; the rest of the track counts as more of the same.
constexpr qint64 walkLimit = qint64{256} << 20;
constexpr int framesOfSample = 12;

/// Some frames of a stream.
struct Sample
{
    qint64 frames = 0;
    double sum = 0;
    double lowest = std::numeric_limits<double>::max();
    double highest = 0;

    void add(const Frame& frame)
    {
        ++frames;
        sum += frame.bitRate;
        lowest = std::min(lowest, frame.bitRate);
        highest = std::max(highest, frame.bitRate);
    }
    void add(const Sample& other)
    {
        frames += other.frames;
        sum += other.sum;
        lowest = std::min(lowest, other.lowest);
        highest = std::max(highest, other.highest);
    }
    [[nodiscard]] bool isConstant() const { return lowest == highest; }
    [[nodiscard]] double mean() const { return frames > 0 ? sum / static_cast<double>(frames) : 0; }
};

struct Measure
{
    /// Kilobits per second.
    double bitRate = 0;
    double seconds = 0;
};

class Measuring
{
public:
    Measuring(FrameSearch& search, const Frame& first)
        : m_search(search), m_first(first), m_begin(first.offset + (search.describes(first) ? first.length : 0))
    {
    }

    [[nodiscard]] Measure measure()
    {
        if (bytes() <= shortTrack)
            return walked();
        Sample sample = sampleFrom(m_begin);
        if (const std::optional<StreamSummary> summary = m_search.summary(m_first)) {
            if (!hasTrueSize(*summary))
                return walked();
            Measure claimed = measureOf(*summary);
            if (!fits(claimed, sample)) {
                for (const int quarter : {1, 2, 3})
                    sample.add(sampleFrom(m_begin + bytes() / 4 * quarter));
                if (!fits(claimed, sample))
                    return walked();
            }
            if (summary->constant && sample.isConstant())
                claimed.bitRate = sample.mean();
            return claimed;
        }
        sample.add(sampleFrom(m_begin + bytes() / 2));
        if (sample.frames == 0 || !sample.isConstant())
            return walked();
        return {.bitRate = sample.mean(), .seconds = static_cast<double>(bytes()) * 8 / (sample.mean() * 1000)};
    }

private:
    [[nodiscard]] qint64 bytes() const { return m_search.end() - m_begin; }
    [[nodiscard]] double secondsOf(qint64 frames) const
    {
        return static_cast<double>(frames) * m_first.header.samples() / m_first.header.sampleRate;
    }

    [[nodiscard]] Sample sampleFrom(qint64 offset)
    {
        Sample sample;
        std::optional<Frame> frame = m_search.at(offset);
        if (!frame)
            frame = m_search.next(offset);
        while (frame && sample.frames < framesOfSample) {
            sample.add(*frame);
            frame = m_search.at(frame->offset + frame->length);
        }
        return sample;
    }

    [[nodiscard]] Measure measureOf(const StreamSummary& summary) const
    {
        const double seconds = secondsOf(summary.frames);
        const qint64 sound = summary.bytes > 0 ? summary.bytes - (m_begin - m_first.offset) : bytes();
        return {.bitRate = seconds > 0 ? static_cast<double>(sound) * 8 / seconds / 1000 : 0, .seconds = seconds};
    }
    /// The bytes are those that are there: the track was not cut or lengthened since, and the summary is its own.
    [[nodiscard]] bool hasTrueSize(const StreamSummary& summary) const
    {
        const qint64 here = m_search.end() - m_first.offset;
        return summary.bytes == 0 || std::abs(here - static_cast<qint64>(summary.bytes)) <= here / 50;
    }
    /// A rate that never changes must be the claimed one; one that varies allows for quiet and loud passages.
    [[nodiscard]] static bool fits(const Measure& claimed, const Sample& sample)
    {
        const double slack = sample.isConstant() ? 1.05 : 2;
        return sample.frames > 0 && claimed.bitRate > 0 && claimed.bitRate <= sample.mean() * slack &&
               claimed.bitRate >= sample.mean() / slack;
    }

    /// Counts the frames one by one.
    [[nodiscard]] Measure walked()
    {
        Sample all;
        const qint64 limit = std::min(m_search.end(), m_begin + walkLimit);
        qint64 offset = m_begin;
        while (offset < limit) {
            const std::optional<Frame> here = m_search.at(offset);
            const std::optional<Frame> frame = here ? here : m_search.next(offset);
            if (!frame || frame->offset + frame->length > m_search.end())
                break;
            all.add(*frame);
            offset = frame->offset + frame->length;
        }
        const double share = limit < m_search.end() ? static_cast<double>(bytes()) / walkLimit : 1;
        return {.bitRate = all.mean(), .seconds = secondsOf(all.frames) * share};
    }

    FrameSearch& m_search;
    Frame m_first;
    /// Where the sound begins, behind a frame that only describes it.
    qint64 m_begin;
};

int whole(double number)
{
    return static_cast<int>(std::clamp(std::floor(number), 0.0, double{std::numeric_limits<int>::max()}));
}

} // namespace

std::optional<TrackFacts> trackFacts(const ByteSource& source)
{
    constexpr qint64 blockSize = 8192;
    ByteWindow window(source, blockSize);
    const TrackLayout layout = trackLayout(window);
    if (layout.foreign)
        return std::nullopt;
    TrackFacts facts;
    if (layout.hasId3v1)
        facts.tag = id3v1(layout.id3v1);
    FrameSearch search(window, layout);
    if (const std::optional<Frame> first = search.first()) {
        const Measure measure = Measuring(search, *first).measure();
        facts.bitRate = whole(measure.bitRate > 0 ? measure.bitRate + 0.5 : first->bitRate + 0.5);
        facts.seconds = whole(measure.seconds);
    }
    return facts;
}

} // namespace orvantine
