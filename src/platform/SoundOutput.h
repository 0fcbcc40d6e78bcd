#pragma once

#include <QByteArray>

namespace orvantine {

/// Bits that a sound is played with.
namespace SoundFlag {
inline constexpr int Async = 1;
inline constexpr int NoDefault = 2;
inline constexpr int Memory = 4;
} // namespace SoundFlag

class SoundOutput
{
public:
    virtual ~SoundOutput() = default;

    [[nodiscard]] virtual int deviceCount() const = 0;
    /// Plays a WAV image, `Memory` set; with `Async` it returns at once, else at the sound's end, and serves no events
    /// in between. What cannot be played is silence.
    virtual void play(const QByteArray& wave, int flags) = 0;
};

} // namespace orvantine
