#pragma once

#include "platform/Desktop.h"

namespace orvantine {

/// A machine without a sound server: no line, no device.
class NullMixer final : public MixerDevice
{
public:
    bool open() override { return false; }
    void close() override {}
    [[nodiscard]] std::optional<MixerRange> line(int) override { return std::nullopt; }
    [[nodiscard]] long level(int) override { return 0; }
    bool setLevel(int, long) override { return false; }
};

class NullSound final : public SoundOutput
{
public:
    [[nodiscard]] int deviceCount() const override { return 0; }
    void play(const QByteArray&, int) override {}
};

} // namespace orvantine
