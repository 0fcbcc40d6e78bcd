#include "support/Wav.h"

#include <cmath>
#include <numbers>

namespace orvantine::fake {

namespace {

QByteArray littleEndian(quint32 number, int bytes)
{
    QByteArray text;
    for (int i = 0; i < bytes; ++i)
        text.append(static_cast<char>(number >> (8 * i) & 0xFF));
    return text;
}

QByteArray chunk(const QByteArray& name, QByteArray content)
{
    const QByteArray size = littleEndian(quint32(content.size()), 4);
    if (content.size() % 2 != 0)
        content.append('\0');
    return name + size + content;
}

QByteArray samples(const WavSound& sound)
{
    constexpr double Amplitude = 12000;
    const qint64 count = qint64{sound.samplesPerSecond} * sound.milliseconds / 1000;
    if (sound.hertz == 0)
        return QByteArray(count * 2, '\0');
    QByteArray bytes;
    bytes.reserve(count * 2);
    for (qint64 i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * sound.hertz * double(i) / sound.samplesPerSecond;
        const auto sample = static_cast<qint16>(std::lround(Amplitude * std::sin(angle)));
        bytes.append(littleEndian(static_cast<quint16>(sample), 2));
    }
    return bytes;
}

} // namespace

QByteArray wav(const WavSound& sound)
{
    const auto rate = quint32(sound.samplesPerSecond);
    const QByteArray format = littleEndian(1, 2) + littleEndian(1, 2) + littleEndian(rate, 4) +
                              littleEndian(rate * 2, 4) + littleEndian(2, 2) + littleEndian(16, 2);
    QByteArray body = QByteArray{"WAVE"} + chunk("fmt ", format);
    QByteArray info;
    if (!sound.artist.isEmpty())
        info += chunk("IART", sound.artist + '\0');
    if (!sound.title.isEmpty())
        info += chunk("INAM", sound.title + '\0');
    if (!info.isEmpty())
        body += chunk("LIST", "INFO" + info);
    body += chunk("data", samples(sound));
    return chunk("RIFF", body);
}

} // namespace orvantine::fake
