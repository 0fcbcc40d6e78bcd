#pragma once

#include <QByteArray>
#include <QList>

#include <optional>
#include <vector>

namespace orvantine::sound {

/// What was recorded, mixed to one channel, full scale is 1.
struct Recording
{
    int samplesPerSecond = 0;
    std::vector<float> samples;
};

/// Reads a WAV file of 16 bits a sample. A file whose recorder was stopped before it could write the sizes is read to
/// its end. Nothing for another format.
[[nodiscard]] std::optional<Recording> readWav(const QByteArray& file);

/// A stretch of the recording in which one tone is the strongest.
struct Tone
{
    /// From the table of expected tones; 0 for one that is not in it.
    double hertz = 0;
    double beginSeconds = 0;
    double seconds = 0;
};

struct ToneTable
{
    QList<double> hertz;
    /// How far the measured tone may be from the table's.
    double toleranceHertz = 8;
    /// Shorter stretches are taken for clicks and transitions and are left out.
    double shortestSeconds = 0.12;
};

/// The tones of a recording in their order; silence stands between tones but is not listed, so that one tone played
/// twice with silence between is found twice.
[[nodiscard]] QList<Tone> findTones(const Recording& recording, const ToneTable& table);

/// The tones' frequencies, to be compared with what should have been played.
[[nodiscard]] QList<double> hertzOf(const QList<Tone>& tones);

} // namespace orvantine::sound
