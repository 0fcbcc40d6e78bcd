#include "platform/HostText.h"

#include <algorithm>

namespace orvantine {

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

} // namespace orvantine
