#pragma once

#include "platform/MixerDevice.h"
#include "platform/SoundOutput.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

namespace orvantine {

/// A sound server with one sink and no microphone, and the services that speak with it.
class SoundWorld
{
public:
    virtual ~SoundWorld() = default;
    [[nodiscard]] virtual MixerDevice& mixer() = 0;
    [[nodiscard]] virtual SoundOutput& sound() = 0;
    /// Somebody else sets the level of the speakers.
    virtual void turnElsewhere(long level) = 0;
    /// The server ends, or is there again.
    virtual void setRunning(bool running) = 0;
    virtual void removeSinks() = 0;
};

struct SoundFactory
{
    const char* name = "";
    std::function<std::unique_ptr<SoundWorld>()> make;
};

inline void PrintTo(const SoundFactory& factory, std::ostream* out)
{
    *out << factory.name;
}

/// What every mixer and sound output does alike. To run it: link SoundContract.cpp and
/// INSTANTIATE_TEST_SUITE_P(Name, SoundContract, testing::Values(SoundFactory{"Name", …}), SoundContract::nameOf);
class SoundContract : public testing::TestWithParam<SoundFactory>
{
public:
    static std::string nameOf(const testing::TestParamInfo<SoundFactory>& info) { return info.param.name; }

protected:
    std::unique_ptr<SoundWorld> world = GetParam().make();
};

} // namespace orvantine
