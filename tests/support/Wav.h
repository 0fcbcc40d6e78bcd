#pragma once

#include <QByteArray>

namespace orvantine::fake {

/// A sound file to be made for a test.
struct WavSound
{
    int milliseconds = 100;
    /// Of a sine tone; 0 is silence.
    double hertz = 0;
    int samplesPerSecond = 8000;
    QByteArray artist;
    QByteArray title;
};

/// A WAV file of one channel with 16 bits a sample; artist and title stand in its INFO chunk unless they are empty.
[[nodiscard]] QByteArray wav(const WavSound& sound);

} // namespace orvantine::fake
