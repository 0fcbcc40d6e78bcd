#include "system/sound/Tones.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

namespace orvantine::sound {

namespace {

/// Softer than this is silence.
constexpr double Silence = 0.003;

using Spectrum = std::vector<std::complex<double>>;

/// In place; the size is a power of two.
void transform(Spectrum& values)
{
    const size_t count = values.size();
    for (size_t i = 1, j = 0; i < count; ++i) {
        size_t bit = count >> 1;
        for (; (j & bit) != 0; bit >>= 1)
            j ^= bit;
        j ^= bit;
        if (i < j)
            std::swap(values[i], values[j]);
    }
    for (size_t length = 2; length <= count; length *= 2) {
        const std::complex<double> step = std::polar(1.0, -2 * std::numbers::pi / double(length));
        for (size_t start = 0; start < count; start += length) {
            std::complex<double> turn = 1;
            for (size_t k = start; k < start + length / 2; ++k) {
                const std::complex<double> even = values[k];
                const std::complex<double> odd = values[k + length / 2] * turn;
                values[k] = even + odd;
                values[k + length / 2] = even - odd;
                turn *= step;
            }
        }
    }
}

/// Power of two that holds at least 80 ms.
size_t windowSize(int samplesPerSecond)
{
    size_t size = 256;
    while (double(size) < 0.08 * samplesPerSecond)
        size *= 2;
    return size;
}

/// The strongest frequency of a stretch; 0 for silence.
double strongest(const float* samples, size_t count, int samplesPerSecond)
{
    Spectrum spectrum(count);
    double power = 0;
    for (size_t i = 0; i < count; ++i) {
        const double window = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * double(i) / double(count));
        spectrum[i] = double(samples[i]) * window;
        power += double(samples[i]) * double(samples[i]);
    }
    if (std::sqrt(power / double(count)) < Silence)
        return 0;

    transform(spectrum);
    size_t peak = 1;
    for (size_t i = 2; i + 1 < count / 2; ++i)
        if (std::abs(spectrum[i]) > std::abs(spectrum[peak]))
            peak = i;
    // The top of a parabola through the three highest values lies nearer to the tone than the bin does.
    const double left = std::log(std::abs(spectrum[peak - 1]) + 1e-12);
    const double middle = std::log(std::abs(spectrum[peak]) + 1e-12);
    const double right = std::log(std::abs(spectrum[peak + 1]) + 1e-12);
    const double bend = left - 2 * middle + right;
    const double shift = bend == 0 ? 0 : std::clamp(0.5 * (left - right) / bend, -0.5, 0.5);
    return (double(peak) + shift) * samplesPerSecond / double(count);
}

/// What a window holds: a tone of the table, 0 for another sound, −1 for silence.
double heard(double hertz, const ToneTable& table)
{
    constexpr double Nothing = -1;
    if (hertz == 0)
        return Nothing;
    for (const double expected : table.hertz)
        if (std::abs(hertz - expected) <= table.toleranceHertz)
            return expected;
    return 0;
}

quint32 number32(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}
quint16 number16(const QByteArray& bytes, qsizetype at)
{
    const auto byte = [&bytes](qsizetype place) { return static_cast<quint8>(bytes.at(place)); };
    return static_cast<quint16>(byte(at) | byte(at + 1) << 8);
}

} // namespace

std::optional<Recording> readWav(const QByteArray& file)
{
    if (file.size() < 12 || !file.startsWith("RIFF") || file.mid(8, 4) != "WAVE")
        return std::nullopt;
    Recording recording;
    qsizetype channels = 0;
    qsizetype at = 12;
    while (at + 8 <= file.size()) {
        const QByteArray name = file.mid(at, 4);
        const qsizetype rest = file.size() - at - 8;
        qsizetype size = qsizetype(number32(file, at + 4));
        at += 8;
        if (name == "data" && (size == 0 || size > rest))
            size = rest;
        if (size > rest)
            return std::nullopt;
        if (name == "fmt " && size >= 16) {
            if (number16(file, at + 14) != 16)
                return std::nullopt;
            channels = number16(file, at + 2);
            recording.samplesPerSecond = int(number32(file, at + 4));
        } else if (name == "data") {
            if (channels == 0)
                return std::nullopt;
            const qsizetype frames = size / (2 * channels);
            recording.samples.reserve(size_t(frames));
            for (qsizetype frame = 0; frame < frames; ++frame) {
                int sum = 0;
                for (qsizetype channel = 0; channel < channels; ++channel)
                    sum += qFromLittleEndian<qint16>(file.constData() + at + 2 * (frame * channels + channel));
                recording.samples.push_back(float(sum) / (32768.0F * float(channels)));
            }
            return recording;
        }
        at += size + size % 2;
    }
    return std::nullopt;
}

QList<Tone> findTones(const Recording& recording, const ToneTable& table)
{
    const size_t size = windowSize(recording.samplesPerSecond);
    const size_t hop = size / 4;
    const double hopSeconds = double(hop) / recording.samplesPerSecond;

    struct Stretch
    {
        double hertz;
        size_t begin;
        size_t end;
    };
    std::vector<Stretch> stretches;
    size_t window = 0;
    for (size_t at = 0; at + size <= recording.samples.size(); at += hop, ++window) {
        const double hertz = heard(strongest(&recording.samples[at], size, recording.samplesPerSecond), table);
        if (stretches.empty() || stretches.back().hertz != hertz)
            stretches.push_back({hertz, window, window});
        stretches.back().end = window + 1;
    }

    QList<Tone> tones;
    bool joined = false;
    for (const Stretch& stretch : stretches) {
        const double seconds = double(stretch.end - stretch.begin) * hopSeconds;
        if (seconds < table.shortestSeconds)
            continue;
        if (stretch.hertz < 0) {
            joined = false;
        } else if (joined && tones.back().hertz == stretch.hertz) {
            tones.back().seconds = double(stretch.end) * hopSeconds - tones.back().beginSeconds;
        } else {
            tones.append({stretch.hertz, double(stretch.begin) * hopSeconds, seconds});
            joined = true;
        }
    }
    return tones;
}

QList<double> hertzOf(const QList<Tone>& tones)
{
    QList<double> hertz;
    for (const Tone& tone : tones)
        hertz.append(tone.hertz);
    return hertz;
}

} // namespace orvantine::sound
