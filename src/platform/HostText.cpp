#include "platform/HostText.h"

#include <algorithm>

namespace orvantine {
namespace {

bool isControl(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return (value < 0x20 && byte != '\t' && byte != '\r' && byte != '\n') || value == 0x7f;
}

/// Heads that may go without a control character: all other kinds have one within their first bytes.
bool isSoundOrPicture(QByteArrayView bytes)
{
    if (bytes.startsWith("\x89PNG") || bytes.startsWith("\xff\xd8\xff") || bytes.startsWith("GIF87a") ||
        bytes.startsWith("GIF89a"))
        return true;
    if (bytes.size() >= 12 && bytes.startsWith("RIFF"))
        return bytes.sliced(8, 4) == "WAVE" || bytes.sliced(8, 4) == "WEBP";
    if (bytes.size() < 4)
        return false;
    // The head of an MPEG frame, less the values that are reserved.
    const auto at = [&bytes](qsizetype index) { return static_cast<unsigned char>(bytes[index]); };
    return at(0) == 0xff && (at(1) & 0xe0) == 0xe0 && (at(1) & 0x18) != 0x08 && (at(1) & 0x06) != 0 &&
           (at(2) & 0xf0) != 0xf0 && (at(2) & 0x0c) != 0x0c;
}

} // namespace

bool needsAdoption(QByteArrayView bytes)
{
    return bytes.contains('\n') && !bytes.contains('\r') && !bytes.contains('\0');
}

QByteArray adopted(QByteArrayView bytes)
{
    QByteArray result;
    result.reserve(bytes.size() + std::count(bytes.begin(), bytes.end(), '\n') + 2);
    for (const char byte : bytes) {
        if (byte == '\n')
            result += '\r';
        result += byte;
    }
    if (!result.isEmpty() && !result.endsWith('\n'))
        result += "\r\n";
    return result;
}

bool isText(QByteArrayView bytes)
{
    return bytes.size() <= LargestPlaylist && !isSoundOrPicture(bytes) &&
           std::none_of(bytes.begin(), bytes.end(), isControl);
}

} // namespace orvantine
