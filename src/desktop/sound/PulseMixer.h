#pragma once

#include "platform/MixerDevice.h"

#include <memory>

namespace orvantine {

/// The volumes of the sound server: the speakers (4) are the default sink, the microphone (4099) is the default source
/// if it is none that listens to a sink; there are no other lines. Both run from 0 to 65535, which is the server's full
/// volume; what is louder reads as that. The balance between the channels stays.
///
/// A handle whose server went away looks for it again with the next question.
class PulseMixer final : public MixerDevice
{
public:
    [[nodiscard]] std::unique_ptr<MixerHandle> open() override;
};

} // namespace orvantine
