#pragma once

#include "platform/SoundOutput.h"

#include <memory>

namespace orvantine {

class PulsePlayback;

/// Plays WAV images on the sound server's default sink. As on the system that the flags come from, there is one sound
/// at a time: a new one ends the one before. A wait ends a moment after the sound's length at the latest.
class PulseSound final : public SoundOutput
{
public:
    PulseSound();
    /// Ends what is playing.
    ~PulseSound() override;
    PulseSound(const PulseSound&) = delete;
    PulseSound& operator=(const PulseSound&) = delete;

    /// The sinks of the server, 0 if none answers.
    [[nodiscard]] int deviceCount() const override;
    void play(const QByteArray& wave, int flags) override;

private:
    /// What is played without waiting.
    std::unique_ptr<PulsePlayback> m_playing;
};

} // namespace orvantine
