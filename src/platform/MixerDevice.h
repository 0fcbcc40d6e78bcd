#pragma once

#include <memory>
#include <optional>

namespace orvantine {

struct MixerRange
{
    long minimum = 0;
    long maximum = 0;
};

/// An open mixer, closed when it goes. Its lines are named by component type: 4 speakers, 4099 microphone, 4104 wave
/// out, 4100 synthesizer, 4101 compact disc, 4098 line, 4105 auxiliary.
class MixerHandle
{
public:
    virtual ~MixerHandle() = default;

    /// Nothing for a line that is not there.
    [[nodiscard]] virtual std::optional<MixerRange> line(int componentType) = 0;
    /// 0 on failure.
    [[nodiscard]] virtual long level(int componentType) = 0;
    /// A level between the bounds of the line; false on failure.
    virtual bool setLevel(int componentType, long level) = 0;
};

class MixerDevice
{
public:
    virtual ~MixerDevice() = default;

    /// Null if no sound server answers. Every handle stands by itself: one may be opened before another is closed.
    [[nodiscard]] virtual std::unique_ptr<MixerHandle> open() = 0;
};

} // namespace orvantine
