#include "desktop/tags/TrackFacts.h"

#include <cstdint>
#include <cstdlib>

using namespace orvantine;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

/// Whatever the bytes are: no crash, and numbers that the record can hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const std::optional<TrackFacts> facts = trackFacts(MemoryBytes(bytes));
    if (!facts)
        return 0;
    require(facts->bitRate == -1 || (facts->bitRate >= 1 && facts->bitRate < 32768));
    require((facts->bitRate == -1) == (facts->seconds == -1));
    require(facts->seconds >= -1);
    // The slowest stream of free format has some 160 bytes a second; a summary may be off by a factor of two.
    require(facts->seconds <= bytes.size() / 75);
    Mp3Record record;
    fill(record, facts->tag);
    require(record.track >= 0 && record.track <= 255);
    return 0;
}
