#include "platform/Mp3Record.h"

#include <cstring>

namespace orvantine {

Mp3Record::Mp3Record()
{
    // Only bytes: numbers start at 0, texts blank.
    std::memset(static_cast<void*>(this), 0, sizeof *this);
    std::memset(title, ' ', offsetof(Mp3Record, genre) - offsetof(Mp3Record, title));
    std::memset(extendedTrack, ' ', offsetof(Mp3Record, pad) - offsetof(Mp3Record, extendedTrack));
}

} // namespace orvantine
