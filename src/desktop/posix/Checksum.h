#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstring>

namespace orvantine {

/// Tells a whole note of a journal from a torn one: after a loss of power its mark can stand without its bytes. Runs
/// over pieces: start with 0, then with the last result.
[[nodiscard]] inline quint64 checksum(quint64 start, QByteArrayView bytes)
{
    constexpr quint64 factor = 0x9e3779b97f4a7c15;
    quint64 sum = start;
    while (bytes.size() >= qsizetype{sizeof(quint64)}) {
        quint64 word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        sum = (sum ^ word) * factor;
        sum ^= sum >> 29;
        bytes = bytes.sliced(sizeof word);
    }
    for (const char byte : bytes)
        sum = (sum ^ static_cast<unsigned char>(byte)) * factor;
    return sum;
}

} // namespace orvantine
