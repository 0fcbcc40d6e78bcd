#pragma once

#include "platform/Mp3Record.h"

#include <QString>

namespace orvantine {

/// Fills and takes the record of a track's tag and header.
class TagLibrary
{
public:
    virtual ~TagLibrary() = default;

    /// A file that cannot be read leaves the record as it was.
    virtual void Mp3FileInfo(const QString& path, Mp3Record& record) = 0;
    /// Puts a tag of the record's fields at the end of the file; the audio bytes, times and mode stay.
    virtual bool WriteID3V1(const QString& path, const Mp3Record& record) = 0;
    /// Takes a leading tag away; a file whose claimed tag does not end inside it is left alone.
    virtual bool EraseID3V2(const QString& path) = 0;
};

} // namespace orvantine
